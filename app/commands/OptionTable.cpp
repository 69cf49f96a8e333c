// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The options of all commands, and what help says of them.
#include <algorithm>
#include <iterator>
#include <type_traits>
#include <vector>

#include "app/commands/CommandTable.h"
#include "app/commands/HelpLayout.h"
#include "app/commands/OptionChoices.h"

namespace pim::app {
namespace {

constexpr OptionRow kOptions[] = {
    {Option::All, 0, "all", nullptr, "All of them, not only the first"},
    {Option::As, 0, "as", "FORM", "Read it as {choices}, whatever it looks like"},
    {Option::CodePage, 0, "code-page", "NAME",
     "Charset of texts that name none, such as CP1252 (default: UTF-8)"},
    {Option::Csv, 0, "csv", nullptr, "Print comma-separated values (RFC 4180)"},
    {Option::CsvColumns, 0, "csv-columns", "FILE",
     "With --to csv: its columns, as lines \"name = field\"; 'pimvobj help columns' tells more"},
    {Option::Delete, 0, "delete", nullptr, "Remove them"},
    {Option::DryRun, 'n', "dry-run", nullptr, "Tell what would be done, and do nothing"},
    {Option::Fields, 0, "fields", "NAME,...", "Which fields, in this order; \"help\" names them"},
    {Option::Force, 'f', "force", nullptr, "Replace a file, or add to a folder that isn't empty"},
    {Option::From, 0, "from", "FILE|URL", "The store to copy"},
    {Option::Group, 0, "group", "NAME", "Those in this group"},
    {Option::Groups, 0, "groups", nullptr,
     "With --to vcard4, vcard3 or jcard: write each group too, with its members"},
    {Option::Help, 'h', "help", nullptr, "Print help of the command"},
    {Option::Import, 0, "import", "N", "Those of that import alone, by its number in the history"},
    {Option::Json, 0, "json", nullptr, "Print all there is as one JSON object"},
    {Option::JsonLines, 0, "jsonl", nullptr, "Print whole records as JSON, one a line"},
    {Option::KeepDuplicates, 0, "keep-duplicates", nullptr,
     "Store also what equals a stored record (default: it is left out)"},
    {Option::Labels, 0, "labels", "FILE",
     "Labels of your own, as lines \"key = text\"; 'pimvobj help labels' tells the keys"},
    {Option::Lang, 0, "lang", "LANG",
     "Language of labels and titles: {choices} (default: the locale's)"},
    {Option::Losses, 0, "losses", nullptr, "Tell each line that isn't kept, or not as it is"},
    {Option::NoGroups, 0, "no-groups", nullptr, "Leave the cards' group names out"},
    {Option::NoName, 0, "no-name", nullptr, "Those that have no name"},
    {Option::NoOriginals, 0, "no-originals", nullptr, "Keep no copy of the files' bytes"},
    {Option::Output, 'o', "output", "FILE", "Write into this file (- for standard output)"},
    {Option::Prepare, 0, "prepare", nullptr,
     "Take broken or modern files as 'pimvobj prepare' mends them"},
    {Option::Quiet, 'q', "quiet", nullptr, "Show no progress"},
    {Option::Rejects, 0, "rejects", "FILE",
     "Put records that are rejected into this file, and take the others"},
    {Option::Report, 0, "report", "FILE",
     "Write into this file what became of each line, as JSON, one text a line"},
    {Option::SkipDuplicates, 0, "skip-duplicates", nullptr,
     "Leave out what equals a stored record, as is done without it"},
    {Option::Sort, 0, "sort", "ORDER", "By {choices} (default: key)"},
    {Option::Split, 0, "split", nullptr, "With -o DIR: one file for each record"},
    {Option::Steps, 0, "steps", "STEP,...", "These alone: {choices} (default: all)"},
    {Option::Store, 0, "store", "FILE|URL",
     "The store: a file, or a PostgreSQL server's URL (default: $PIMVOBJ_STORE, else "
     "pimvobj/pim.db "
     "in the application-data folder)"},
    {Option::Strict, 0, "strict", nullptr, "With --losses: exit status 4 when there are any"},
    {Option::To, 0, "to", "FORM", "Write {choices}"},
    {Option::ToTheLetter, 0, "to-the-letter", nullptr,
     "Write blanks at the head of a line and line breaks in numbers as they stand, though readers "
     "lose them"},
    {Option::Version, 'V', "version", nullptr, "Print the program's version"},
};

constexpr const char* kDay = "DAY";
constexpr const char* kFromDay =
    "Of a calendar: what reaches into the days from this one on, such as 2010-03-01, 2010-03 or "
    "2010";
constexpr const char* kToDay =
    "Of a calendar: what reaches into the days up to this one, to which repeats are followed "
    "(default: for two years from today, or from where they begin)";

// Where an option of some commands means more than elsewhere, or less, or takes another value.
constexpr struct {
  std::optional<Action> action;
  std::optional<Family> family;
  Option option;
  const char* help;
  const char* value = nullptr;  // null for the same as elsewhere
} kOwnHelp[] = {
    {Action::Album, {}, Option::Force, "Replace a file"},
    {Action::Album, {}, Option::From, kFromDay, kDay},
    {Action::Album, {}, Option::To, kToDay, kDay},
    {Action::Check, {}, Option::Json, "Print one JSON object for each FILE"},
    {Action::Convert, {}, Option::Force, "Replace files"},
    {Action::Convert, {}, Option::Report, "Write into this file what the form can't hold, as JSON"},
    {Action::Convert, {}, Option::Strict, "Exit status 4 when there is something that it can't"},
    {Action::CopyStore,
     {},
     Option::To,
     "Where the copy goes: a store without any records, or a new one",
     "FILE|URL"},
    {Action::Export, {}, Option::All, "All three kinds"},
    {Action::Export,
     {},
     Option::Report,
     "With --to: write into this file what the form can't hold"},
    {Action::Export, {}, Option::To, "Write {choices}, not the old form"},
    {Action::Export, Family::Items, Option::Force, "Replace a file"},
    {Action::FileAlbum, {}, Option::Force, "Replace a file"},
    {Action::FileAlbum, {}, Option::From, kFromDay, kDay},
    {Action::FileAlbum, {}, Option::To, kToDay, kDay},
    {Action::Import, {}, Option::Force, "Replace the files of --rejects and --report"},
    {Action::Import, {}, Option::Group, "Put all of them into this group, not into the file's own"},
    {Action::Import, {}, Option::Json, "With --dry-run: print one JSON object"},
    {Action::Inspect, {}, Option::Json, "Print one JSON object for each FILE"},
    {Action::Prepare, {}, Option::Report, "Write into this file what can't be carried, as JSON"},
    {Action::Prepare, {}, Option::Strict, "Exit status 4 when something can't be carried"},
    {Action::TellCharsets, {}, Option::Json, "Print one JSON object for each FILE"},
    {Action::Undo, {}, Option::Force, "Take what was changed since, too"},
    {{}, Family::Items, Option::NoName, "Those that have neither summary nor description"},
};

constexpr bool StandInOrder() {
  for (std::size_t i = 0; i < std::size(kOptions); ++i)
    if (kOptions[i].id != static_cast<Option>(i)) return false;
  return true;
}
static_assert(StandInOrder());

constexpr Option kCommon[] = {Option::Store,       Option::CodePage, Option::Lang,   Option::Quiet,
                              Option::ToTheLetter, Option::Help,     Option::Version};

constexpr std::pair<Option, Option> kEitherOr[] = {{Option::Group, Option::NoGroups},
                                                   {Option::Json, Option::Csv},
                                                   {Option::Json, Option::JsonLines},
                                                   {Option::JsonLines, Option::Csv},
                                                   {Option::Json, Option::Fields},
                                                   {Option::JsonLines, Option::Fields},
                                                   {Option::KeepDuplicates, Option::SkipDuplicates},
                                                   {Option::DryRun, Option::Report},
                                                   {Option::Split, Option::Groups}};

// The last of the rows that are about an option of the command; null without one.
const auto* OwnHelpOf(Option option, const CommandRow* command) {
  const std::remove_extent_t<decltype(kOwnHelp)>* found = nullptr;
  for (const auto& own : kOwnHelp) {
    if (command != nullptr && own.option == option &&
        own.action.value_or(command->action) == command->action &&
        own.family.value_or(command->family) == command->family)
      found = &own;
  }
  return found;
}

// "; not with --csv or --fields", of an option of the command; empty where it goes with all others.
std::string Exclusions(Option option, const CommandRow& command) {
  std::vector<std::string> names;
  for (const auto& [one, other] : kEitherOr) {
    if (one != option && other != option) continue;
    const Option excluded = one == option ? other : one;
    if (std::ranges::find(command.options, excluded) != command.options.end())
      names.push_back(DashedName(RowOf(excluded)));
  }
  const std::vector<std::string_view> words(names.begin(), names.end());
  return words.empty() ? "" : "; not with " + Listed(words);
}

}  // namespace

std::span<const OptionRow> OptionRows() { return kOptions; }
const char* ValueOf(Option option, const CommandRow* command) {
  const auto* const own = OwnHelpOf(option, command);
  return own != nullptr && own->value != nullptr ? own->value : RowOf(option).value;
}
std::string HelpOf(Option option, const CommandRow* command) {
  const auto* const own = OwnHelpOf(option, command);
  std::string help = own != nullptr ? own->help : RowOf(option).help;
  const Family family = command != nullptr ? command->family : Family::NoNoun;
  ReplaceAll(help, "{choices}", Listed(ChoicesOf(option, family)));
  return help + (command != nullptr ? Exclusions(option, *command) : "");
}
std::span<const std::pair<Option, Option>> EitherOr() { return kEitherOr; }
std::span<const Option> CommonOptions() { return kCommon; }

}  // namespace pim::app
