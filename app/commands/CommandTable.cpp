// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/CommandTable.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <vector>

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

// Where an option of some commands means more than elsewhere, or less, or takes another value.
constexpr struct {
  std::optional<Action> action;
  std::optional<Family> family;
  Option option;
  const char* help;
  const char* value = nullptr;  // null for the same as elsewhere
} kOwnHelp[] = {
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
                                                   {Option::Store, Option::From},
                                                   {Option::DryRun, Option::Report},
                                                   {Option::Split, Option::Groups}};

constexpr NounRow kNouns[] = {
    {"contacts", Family::Contacts, RecordKind::Contacts, "contact", "Contacts, as vCard 2.1"},
    {"calendar", Family::Items, RecordKind::Calendar, "event", "Events, as vCalendar 1.0"},
    {"todo", Family::Items, RecordKind::Todo, "to-do", "To-dos, as vCalendar 1.0"},
    {"memo", Family::Items, RecordKind::Memo, "memo", "Memos, as vCalendar 1.0"},
    {"original", Family::Original, std::nullopt, "original", "Copies of imported files"},
    {"store", Family::Store, std::nullopt, "store", "The store and what belongs to it"},
};

constexpr Option kContactImport[] = {
    Option::Group,  Option::NoGroups,    Option::KeepDuplicates, Option::SkipDuplicates,
    Option::DryRun, Option::Json,        Option::Rejects,        Option::Report,
    Option::Force,  Option::NoOriginals, Option::Prepare,        Option::Steps};
constexpr Option kItemImport[] = {Option::KeepDuplicates, Option::SkipDuplicates, Option::DryRun,
                                  Option::Json,           Option::Rejects,        Option::Report,
                                  Option::Force,          Option::NoOriginals,    Option::Prepare,
                                  Option::Steps};
constexpr Option kContactExport[] = {Option::Group,  Option::NoName,     Option::Output,
                                     Option::Force,  Option::To,         Option::Split,
                                     Option::Groups, Option::CsvColumns, Option::Report};
constexpr Option kItemExport[] = {Option::All, Option::NoName, Option::Output, Option::Force,
                                  Option::To,  Option::Split,  Option::Report};
constexpr Option kConvert[] = {Option::To,         Option::Output,  Option::Split, Option::Groups,
                               Option::CsvColumns, Option::Prepare, Option::Steps, Option::Force,
                               Option::Report,     Option::Strict};
constexpr Option kPrepare[] = {Option::Output, Option::Steps, Option::Force, Option::Report,
                               Option::Strict};
constexpr Option kRedact[] = {Option::Output, Option::Force};
constexpr Option kCharsets[] = {Option::Json};
constexpr Option kContactList[] = {Option::Group, Option::NoName,    Option::Sort, Option::Fields,
                                   Option::Json,  Option::JsonLines, Option::Csv};
constexpr Option kItemList[] = {Option::NoName, Option::Sort,      Option::Fields,
                                Option::Json,   Option::JsonLines, Option::Csv};
constexpr Option kContactCount[] = {Option::Group, Option::NoName};
constexpr Option kItemCount[] = {Option::NoName};
constexpr Option kPreview[] = {Option::Labels};
constexpr Option kContactDelete[] = {Option::Group, Option::DryRun};
constexpr Option kItemDelete[] = {Option::DryRun};
constexpr Option kJson[] = {Option::Json};
constexpr Option kOfImport[] = {Option::Import};
constexpr Option kCopy[] = {Option::From, Option::To};
constexpr Option kTidy[] = {Option::Delete, Option::Json};
constexpr Option kUndo[] = {Option::DryRun, Option::Force, Option::Json};
constexpr Option kShowFile[] = {Option::All, Option::Labels};
constexpr Option kCheck[] = {Option::Json, Option::As};
constexpr Option kInspect[] = {Option::Json, Option::As, Option::Losses, Option::Strict};

constexpr const char* kWords =
    "WORDs choose the records that hold all of them in any text, whatever their letter case and "
    "accents.";
constexpr const char* kCounting =
    "WORDs choose as those of list do. Operands that are files (or -) are counted themselves; no "
    "store is looked at.";
constexpr const char* kContactExporting =
    "Nothing is replaced unless --force is given. WORDs choose as those of list do. With --to, all "
    "go into one file, whatever its name; --split makes one each in a folder.";
constexpr const char* kExporting =
    "Nothing is replaced unless --force is given. WORDs choose as those of list do.";

constexpr CommandRow kCommands[] = {
    {Family::Contacts, Action::Import, "import", "PATH...", 1, kAnyNumber,
     "Read vCard files into the store", kContactImport,
     "pimvobj contacts import backup.vcf\n"
     "pimvobj contacts import phone/ --group Phone\n"
     "pimvobj contacts import backup.vcf --dry-run\n"
     "unzip -p backup.zip contacts.vcf | pimvobj contacts import -\n"
     "pimvobj contacts import damaged.vcf --rejects rejects.vcf",
     "A PATH is a file, a folder (its .vcf files, subfolders too) or - for standard input. A file "
     "goes in wholly or not at all, but for what --rejects puts aside. 'pimvobj undo' takes an "
     "import back."},
    {Family::Contacts, Action::Export, "export", "DIR|FILE.vcf|- [WORD...]", 0, kAnyNumber,
     "Write contacts as vCard: one file each into DIR, or all into one file", kContactExport,
     "pimvobj contacts export cards/\n"
     "pimvobj contacts export all.vcf\n"
     "pimvobj contacts export - --group Family > family.vcf\n"
     "pimvobj contacts export new.vcf --to vcard4",
     kContactExporting},
    {Family::Contacts, Action::List, "list", "[WORD...]", 0, kAnyNumber, "List stored contacts",
     kContactList,
     "pimvobj contacts list müller berlin\n"
     "pimvobj contacts list --group Family --sort name\n"
     "pimvobj contacts list --fields name,mail --csv > mail.csv",
     kWords},
    {Family::Contacts, Action::Count, "count", "[WORD...|FILE...]", 0, kAnyNumber,
     "Count stored contacts, or those of files", kContactCount,
     "pimvobj contacts count\n"
     "pimvobj contacts count --no-name\n"
     "pimvobj contacts count old.vcf new.vcf",
     kCounting},
    {Family::Contacts, Action::ShowRecords, "show", "KEY...", 1, kAnyNumber,
     "Show stored contacts in a few lines", kPreview, "pimvobj contacts show 17", ""},
    {Family::Contacts, Action::Delete, "delete", "KEY...", 0, kAnyNumber,
     "Delete stored contacts, with pictures that no other one has", kContactDelete,
     "pimvobj contacts delete 17 18\n"
     "pimvobj contacts delete --group Phone --dry-run",
     ""},
    {Family::Items, Action::Import, "import", "PATH...", 1, kAnyNumber,
     "Read vCalendar files into the store", kItemImport,
     "pimvobj {noun} import calendar.vcs\n"
     "pimvobj {noun} import phone/",
     "A PATH is a file, a folder (its .vcs and .ics files, subfolders too) or - for standard "
     "input. A file goes in wholly or not at all, but for what --rejects puts aside. 'pimvobj "
     "undo' takes an import back."},
    {Family::Items, Action::Export, "export", "FILE|- [WORD...]", 0, kAnyNumber,
     "Write {one}s into one vCalendar file", kItemExport,
     "pimvobj {noun} export all.vcs\n"
     "pimvobj {noun} export - --all > everything.vcs\n"
     "pimvobj {noun} export all.ics --to icalendar",
     kExporting},
    {Family::Items, Action::List, "list", "[WORD...]", 0, kAnyNumber, "List stored {one}s",
     kItemList,
     "pimvobj {noun} list lunch\n"
     "pimvobj {noun} list --sort time\n"
     "pimvobj {noun} list --jsonl | jq .summary",
     kWords},
    {Family::Items, Action::Count, "count", "[WORD...|FILE...]", 0, kAnyNumber,
     "Count stored {one}s, or the items of files", kItemCount,
     "pimvobj {noun} count\n"
     "pimvobj {noun} count calendar.vcs",
     kCounting},
    {Family::Items, Action::ShowRecords, "show", "KEY...", 1, kAnyNumber,
     "Show stored {one}s in a few lines", kPreview, "pimvobj {noun} show 3", ""},
    {Family::Items, Action::Delete, "delete", "KEY...", 1, kAnyNumber, "Delete stored {one}s",
     kItemDelete, "pimvobj {noun} delete 3 4", ""},
    {Family::Original, Action::ListOriginals, "list", "", 0, 0,
     "List the files of all imports: their size, SHA-256, and whether a copy is kept", kJson,
     "pimvobj original list\n"
     "pimvobj original list --json | jq -r '.files[] | .sha256'",
     ""},
    {Family::Original, Action::ExportOriginals, "export", "DIR", 1, 1,
     "Write the kept files, byte for byte, into a folder", kOfImport,
     "pimvobj original export originals/\n"
     "pimvobj original export originals/ --import 3",
     "Each gets its own name, without what a file name may not hold. Nothing is replaced: where "
     "something has that name, a counter tells them apart."},
    {Family::Original,
     Action::ShowOriginal,
     "show",
     "contact|calendar|todo|memo KEY",
     2,
     2,
     "Show the lines of a file that a stored record came from",
     {},
     "pimvobj original show contact 17\n"
     "pimvobj original show todo 3 > lines.vcs",
     "A terminal gets each line behind its number, with control bytes made visible; a file or "
     "pipe gets the bytes alone, as they stand in the file."},
    {Family::Original, Action::DropOriginals, "drop", "", 0, 0,
     "Remove the kept copies; the history stays", kOfImport,
     "pimvobj original drop\n"
     "pimvobj original drop --import 3",
     "A copy that another import has read too, byte for byte, is gone for both."},
    {Family::Original,
     Action::OriginalsOn,
     "on",
     "",
     0,
     0,
     "Have imports keep a copy of each file, as they do at first",
     {},
     "pimvobj original on",
     ""},
    {Family::Original,
     Action::OriginalsOff,
     "off",
     "",
     0,
     0,
     "Have imports keep no copies from now on",
     {},
     "pimvobj original off",
     "Copies that are kept already stay; 'pimvobj original drop' removes them."},
    {Family::Store, Action::TidyStore, "tidy", "", 0, 0,
     "Name pictures that no contact of the store has, and remove them with --delete", kTidy,
     "pimvobj store tidy\n"
     "pimvobj store tidy --delete",
     "All stores of one user have the copies of their pictures in one folder, so that those of "
     "another store are named too. Removed ones are made again when their store needs them, "
     "unless an earlier version of this program was the last to open it: then they are lost."},
    {Family::Store, Action::CopyStore, "copy", "", 0, 0,
     "Copy all that a store holds into another one that is empty", kCopy,
     "pimvobj store copy --from my.db --to postgresql://ann@db.example.org/pim\n"
     "pimvobj store copy --from postgresql://ann@db.example.org/pim --to backup.db",
     "Records keep their keys, and groups, pictures, the history and the copies of imported files "
     "come along. The copy is there wholly or not at all."},
    {Family::Store,
     Action::PrintSchema,
     "schema",
     "",
     0,
     0,
     "Print the SQL that makes the tables of a store in a PostgreSQL server",
     {},
     "pimvobj store schema | psql -f - pim",
     "An import makes them by itself where it has the right to. No server is asked."},
    {Family::NoNoun, Action::History, "history", "", 0, 0,
     "Tell what was imported, and what was taken back", kJson,
     "pimvobj history\n"
     "pimvobj history --json | jq '.imports[-1].files'",
     "The last import stands last. An interrupted one holds what it had stored until then."},
    {Family::NoNoun, Action::Undo, "undo", "[N]", 0, 1,
     "Take an import back: the last one that stands, or that with the number N", kUndo,
     "pimvobj undo\n"
     "pimvobj undo 3 --dry-run\n"
     "pimvobj undo 3 --force",
     "The records that it brought go, with the groups that it made. What was changed since stays "
     "and is named, with exit status 1; --force takes that too. 'pimvobj history' tells the "
     "numbers."},
    {Family::NoNoun, Action::Check, "check", "FILE...", 1, kAnyNumber,
     "Tell what in files would not come back from an export", kCheck,
     "pimvobj check backup.vcf\n"
     "pimvobj check calendar.vcs --json | jq '.differences[].field'",
     "Each record is read, written and read again. Exit status 4 when one doesn't come back as it "
     "was. A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun, Action::Convert, "convert", "FILE...", 1, kAnyNumber,
     "Write what files hold in a form of today's programs", kConvert,
     "pimvobj convert old.vcf --to vcard4 -o new.vcf\n"
     "pimvobj convert old.vcs --to icalendar > new.ics\n"
     "pimvobj convert phone/*.vcf --to csv -o contacts.csv",
     "All records of the FILEs become one text. What the form can't hold is told on standard "
     "error. "
     "A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun, Action::Prepare, "prepare", "FILE", 1, 1,
     "Write a broken or modern file as one that is read well", kPrepare,
     "pimvobj prepare new.vcf | pimvobj contacts import -\n"
     "pimvobj prepare mac.vcf --steps line-ends -o mended.vcf",
     "A text that needs nothing comes out byte for byte. Each thing that is done is told on "
     "standard "
     "error with its line. 'pimvobj help steps' tells what the steps do. FILE may be - for "
     "standard "
     "input."},
    {Family::NoNoun, Action::TellCharsets, "charsets", "FILE...", 1, kAnyNumber,
     "Show the lines that are no text in their charset as they would be in others", kCharsets,
     "pimvobj charsets old.vcf",
     "The likeliest charset stands first, with the option that reads the file in it; nothing is "
     "decided. A FILE may be - for standard input."},
    {Family::NoNoun, Action::Redact, "redact", "FILE", 1, 1,
     "Write a file without what is private in it, to show it to others", kRedact,
     "pimvobj redact failing.vcf -o shown.vcf",
     "Letters and digits of values become other ones, of the same kind and length; names, "
     "parameters, line ends and damaged bytes stay, so that it fails as the file does. FILE may be "
     "- "
     "for standard input."},
    {Family::NoNoun, Action::Inspect, "inspect", "FILE...", 1, kAnyNumber,
     "Show what files hold, record by record", kInspect,
     "pimvobj inspect backup.vcf\n"
     "pimvobj inspect backup.vcf --json | jq '.contacts[0]'\n"
     "pimvobj inspect backup.vcf --losses",
     "A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun, Action::ShowFile, "show", "FILE...", 1, kAnyNumber,
     "Show the first record of a file in a few lines", kShowFile,
     "pimvobj show card.vcf\n"
     "pimvobj show --all calendar.vcs --lang ja",
     "A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun,
     Action::TellHelp,
     "help",
     "[COMMAND...|TOPIC]",
     0,
     2,
     "Tell more of a command, or of a topic",
     {},
     "pimvobj help contacts import\n"
     "pimvobj help exit-statuses",
     "Without operands it tells all commands and topics."},
};

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
std::span<const NounRow> Nouns() { return kNouns; }
std::span<const CommandRow> Commands() { return kCommands; }

const NounRow& NounOf(RecordKind kind) { return *std::ranges::find(kNouns, kind, &NounRow::kind); }

std::string Filled(std::string_view text, const NounRow& noun) {
  std::string filled(text);
  ReplaceAll(filled, "{noun}", noun.word);
  ReplaceAll(filled, "{one}", noun.one);
  return filled;
}

}  // namespace pim::app
