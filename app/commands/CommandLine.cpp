#include "app/commands/CommandLine.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "app/commands/CommandTable.h"
#include "app/commands/Help.h"
#include "app/commands/Nearest.h"
#include "app/labels/Labels.h"
#include "app/output/Output.h"
#include "pim/platform/Host.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

using Words = std::vector<std::string_view>;

struct GivenOption {
  Option id;
  std::string value;
};

// The command line taken apart: options with their values, and the words between them.
struct Parts {
  std::vector<GivenOption> options;
  std::vector<std::string> words;

  bool Has(Option id) const {
    return std::ranges::find(options, id, &GivenOption::id) != options.end();
  }
};

// Numbers that no letter has, for options that have none.
constexpr int kFirstNumber = 256;

std::string DashedName(const OptionRow& row) { return "--" + std::string(row.name); }

// What was typed can't be taken as an option; `word` is that argument.
[[noreturn]] void FailAtOption(const std::string& word) {
  const std::string name = word.substr(0, word.find('='));
  if (!name.starts_with("--")) throw WrongUsage("unknown option '" + word + "'");
  std::vector<std::string> names;
  std::vector<std::string> begun;
  for (const OptionRow& row : OptionRows()) {
    names.push_back(DashedName(row));
    if (names.back() == name) throw WrongUsage("option '" + name + "' takes no value");
    if (names.back().starts_with(name)) begun.push_back(names.back());
  }
  if (begun.size() > 1) {
    std::string both;
    for (const std::string& one : begun) both.append(both.empty() ? "" : " or ").append(one);
    throw WrongUsage("option '" + name + "' could be " + both);
  }
  const Words choices(names.begin(), names.end());
  throw WrongUsage("unknown option '" + name + "'" + Suggestion(name, choices));
}

// The letters and names as getopt_long takes them.
struct Grammar {
  // Words come one by one in their order, whatever the environment asks for; a missing value is
  // told apart from an unknown option.
  std::string letters = "-:";
  std::vector<option> names;

  Grammar() {
    for (const OptionRow& row : OptionRows()) {
      const int argument = row.value != nullptr ? required_argument : no_argument;
      names.push_back({row.name, argument, nullptr, kFirstNumber + static_cast<int>(row.id)});
      if (row.letter == '\0') continue;
      letters += row.letter;
      if (row.value != nullptr) letters += ':';
    }
    names.push_back({});
  }

  static Option OptionOf(int found) {
    if (found >= kFirstNumber) return static_cast<Option>(found - kFirstNumber);
    return std::ranges::find(OptionRows(), static_cast<char>(found), &OptionRow::letter)->id;
  }
};

Parts TakeApart(int argc, char** argv) {
  const Grammar grammar;
  Parts parts;
  opterr = 0;
  for (;;) {
    const int at = std::max(optind, 1);
    const int found =
        getopt_long(argc, argv, grammar.letters.c_str(), grammar.names.data(), nullptr);
    if (found == -1) break;
    if (found == 1) {
      parts.words.emplace_back(optarg);
    } else if (found == ':') {
      throw WrongUsage("option '" + std::string(argv[optind - 1]) + "' needs a value");
    } else if (found == '?') {
      FailAtOption(optopt != 0 && optopt < kFirstNumber
                       ? std::string{'-', static_cast<char>(optopt)}
                       : argv[at]);
    } else {
      parts.options.push_back({Grammar::OptionOf(found), optarg != nullptr ? optarg : ""});
    }
  }
  parts.words.insert(parts.words.end(), argv + optind, argv + argc);
  return parts;
}

// A command that needs a noun ahead of it: the one of the files that it was given.
std::string WithItsNoun(const std::vector<std::string>& words) {
  const auto isCalendar = [](const std::string& word) {
    const std::string extension = std::filesystem::path(word).extension().string();
    return EqualsIgnoringCase(extension, ".vcs") || EqualsIgnoringCase(extension, ".ics");
  };
  std::string line =
      std::any_of(words.begin() + 1, words.end(), isCalendar) ? "calendar" : "contacts";
  for (const std::string& word : words) line += " " + word;
  return line;
}

[[noreturn]] void FailAtFirstWord(const std::vector<std::string>& words) {
  const std::string& word = words.front();
  Words choices;
  for (const NounRow& noun : Nouns()) choices.emplace_back(noun.word);
  for (const CommandRow& command : Commands()) {
    if (command.family == Family::Files) {
      choices.emplace_back(command.verb);
    } else if (word == command.verb) {
      throw WrongUsage("'" + word + "' needs to know of what; did you mean 'pimvobj " +
                       ShownName(WithItsNoun(words)) + "'?");
    }
  }
  throw WrongUsage("unknown command '" + ShownName(word) + "'" + Suggestion(word, choices));
}

const CommandRow* FindCommand(Family family, std::string_view verb) {
  for (const CommandRow& command : Commands())
    if (command.family == family && command.verb == verb) return &command;
  return nullptr;
}

// The command that the first words name, which are taken away. A noun alone gives its help's place
// and no command.
void TakeCommand(std::vector<std::string>& words, HelpPlace& place) {
  if (words.empty()) return;
  const auto noun = std::ranges::find(Nouns(), std::string_view(words.front()), &NounRow::word);
  if (noun == Nouns().end()) {
    place.command = FindCommand(Family::Files, words.front());
    if (place.command == nullptr) FailAtFirstWord(words);
    words.erase(words.begin());
    return;
  }
  place.noun = &*noun;
  words.erase(words.begin());
  if (words.empty()) return;
  const Family family = FamilyOf(noun->kind);
  place.command = FindCommand(family, words.front());
  if (place.command == nullptr) {
    Words choices;
    for (const CommandRow& command : Commands())
      if (command.family == family) choices.emplace_back(command.verb);
    throw WrongUsage("unknown command '" + ShownName(words.front()) + "' of '" + noun->word + "'" +
                     Suggestion(words.front(), choices));
  }
  words.erase(words.begin());
}

// One of the words that an option's value may be.
template <class Value>
Value Choice(const OptionRow& row, const std::string& value,
             std::initializer_list<std::pair<std::string_view, Value>> choices) {
  Words words;
  std::string all;
  for (const auto& [word, meaning] : choices) {
    if (word == value) return meaning;
    words.push_back(word);
    all.append(all.empty()                               ? ""
               : word == std::prev(choices.end())->first ? " or "
                                                         : ", ")
        .append(word);
  }
  throw WrongUsage(DashedName(row) + " takes " + all + ", not '" + ShownName(value) + "'" +
                   Suggestion(value, words));
}

std::vector<std::string> Parted(const std::string& list) {
  std::vector<std::string> parts;
  for (std::size_t at = 0;;) {
    const std::size_t comma = list.find(',', at);
    parts.push_back(list.substr(at, comma - at));
    if (comma == std::string::npos) return parts;
    at = comma + 1;
  }
}

void CheckLanguage(const std::string& name) {
  if (FindLabels(name) != nullptr) return;
  std::string all;
  for (const LabelFile& file : LabelFiles())
    all.append(all.empty() ? "" : ", ").append(file.language);
  throw WrongUsage("no labels for language '" + ShownName(name) + "'; there are " + all);
}

void Set(Options& options, const GivenOption& given) {
  const OptionRow& row = RowOf(given.id);
  const std::string& value = given.value;
  if (row.value != nullptr && value.empty()) throw WrongUsage(DashedName(row) + " is empty");
  if ((given.id == Option::Rejects || given.id == Option::Report) && value == "-")
    throw WrongUsage(DashedName(row) + " takes the name of a file");
  switch (given.id) {
    case Option::All:
      options.all = true;
      break;
    case Option::As:
      options.form = Choice<TextForm>(
          row, value, {{"vcard", TextForm::VCard}, {"vcalendar", TextForm::VCalendar}});
      break;
    case Option::CodePage:
      if (!SetDefaultCodePage(value))
        throw WrongUsage("unknown code page '" + ShownName(value) + "'");
      break;
    case Option::Csv:
      options.listForm = ListForm::Csv;
      break;
    case Option::DryRun:
      options.dryRun = true;
      break;
    case Option::Fields:
      options.fields = Parted(value);
      break;
    case Option::Force:
      options.force = true;
      break;
    case Option::Group:
      options.group = value;
      break;
    case Option::Json:
      options.listForm = ListForm::Json;
      break;
    case Option::JsonLines:
      options.listForm = ListForm::JsonLines;
      break;
    case Option::KeepDuplicates:
      options.keepDuplicates = true;
      break;
    case Option::Labels:
      options.labels = value;
      break;
    case Option::Lang:
      CheckLanguage(value);
      options.language = value;
      break;
    case Option::Losses:
      options.losses = true;
      break;
    case Option::NoGroups:
      options.noGroups = true;
      break;
    case Option::NoName:
      options.noName = true;
      break;
    case Option::Output:
      options.output = value;
      break;
    case Option::Quiet:
      options.quiet = true;
      break;
    case Option::Rejects:
      options.rejects = value;
      break;
    case Option::Report:
      options.report = value;
      break;
    case Option::Sort:
      options.order = Choice<ListOrder>(
          row, value,
          {{"name", ListOrder::Name}, {"key", ListOrder::Key}, {"time", ListOrder::Time}});
      break;
    case Option::Store:
      options.store = value;
      break;
    case Option::Strict:
      options.strict = true;
      break;
    case Option::ToTheLetter:
      options.toTheLetter = true;
      break;
    case Option::Help:
    case Option::SkipDuplicates:
    case Option::Version:
      break;
  }
}

// Pairs of which a command line holds one at most.
constexpr std::pair<Option, Option> kEitherOr[] = {
    {Option::Group, Option::NoGroups},
    {Option::Json, Option::Csv},
    {Option::Json, Option::JsonLines},
    {Option::JsonLines, Option::Csv},
    {Option::Json, Option::Fields},
    {Option::JsonLines, Option::Fields},
    {Option::KeepDuplicates, Option::SkipDuplicates}};

void CheckOptions(const Parts& parts, const HelpPlace& place) {
  for (const GivenOption& given : parts.options) {
    const auto takes = [&given](std::span<const Option> options) {
      return std::ranges::find(options, given.id) != options.end();
    };
    if (!takes(CommonOptions()) && !takes(place.command->options)) {
      throw WrongUsage("'" + place.Words() + "' has no option '" + DashedName(RowOf(given.id)) +
                       "'");
    }
  }
  for (const auto& [one, other] : kEitherOr) {
    if (parts.Has(one) && parts.Has(other))
      throw WrongUsage("take either " + DashedName(RowOf(one)) + " or " + DashedName(RowOf(other)));
  }
  if (parts.Has(Option::Strict) && !parts.Has(Option::Losses))
    throw WrongUsage("--strict goes with --losses");
}

void CheckOperands(const std::vector<std::string>& operands, const HelpPlace& place) {
  const CommandRow& command = *place.command;
  if (operands.size() < command.fewest)
    throw WrongUsage("'" + place.Words() + "' needs " + command.operands);
  if (std::ranges::find(operands, std::string()) != operands.end())
    throw WrongUsage("an operand is empty");
}

std::optional<Options> ReadParts(Parts& parts, HelpPlace& place, int& status) {
  status = kDone;
  if (parts.Has(Option::Version)) {
    Print("pimvobj " PIMVOBJ_VERSION "\n");
    return std::nullopt;
  }
  bool wantsHelp = parts.Has(Option::Help);
  if (!parts.words.empty() && parts.words.front() == "help") {
    wantsHelp = true;
    parts.words.erase(parts.words.begin());
  }
  TakeCommand(parts.words, place);
  if (wantsHelp) {
    Print(HelpText(place));
    return std::nullopt;
  }
  if (place.command == nullptr) {
    Warn(ShortHelp(place));
    status = kWrongUsage;
    return std::nullopt;
  }
  CheckOptions(parts, place);
  Options options;
  for (const GivenOption& given : parts.options) Set(options, given);
  CheckOperands(parts.words, place);
  options.operands = std::move(parts.words);
  options.action = place.command->action;
  options.command = place.Words();
  if (place.noun != nullptr) options.kind = place.noun->kind;
  return options;
}

}  // namespace

std::optional<Options> ReadCommandLine(int argc, char** argv, int& status) {
  HelpPlace place;
  try {
    Parts parts = TakeApart(argc, argv);
    return ReadParts(parts, place, status);
  } catch (const WrongUsage& wrong) {
    TellWrongUsage(wrong.what(), place.Words());
    status = kWrongUsage;
    return std::nullopt;
  }
}

void TellWrongUsage(std::string_view problem, std::string_view command) {
  Complain(problem);
  Warn("Try 'pimvobj" + (command.empty() ? std::string() : " " + std::string(command)) +
       " --help' for more information.\n");
}

}  // namespace pim::app
