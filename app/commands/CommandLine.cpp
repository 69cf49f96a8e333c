// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/CommandLine.h"

#include <getopt.h>

#include <algorithm>
#include <utility>

#include "app/commands/CommandTable.h"
#include "app/commands/CommandWords.h"
#include "app/commands/Help.h"
#include "app/commands/Nearest.h"
#include "app/commands/OptionValues.h"
#include "app/output/Output.h"
#include "app/output/Passwords.h"
#include "pim/Version.h"

namespace pim::app {
namespace {

using Words = std::vector<std::string_view>;

// The command line taken apart: options with their values, and the words between them.
struct Parts {
  std::vector<GivenOption> options;
  std::vector<std::string> words;

  bool Has(Option id) const {
    return std::ranges::find(options, id, &GivenOption::id) != options.end();
  }
};

// Copies of the arguments. Those of the process, which others can look at, lose their passwords.
class Arguments {
 public:
  Arguments(int argc, char** argv) : texts_(argv, argv + argc) {
    for (std::string& text : texts_) pointers_.push_back(text.data());
    pointers_.push_back(nullptr);
    for (int i = 0; i < argc; ++i) {
      for (const auto& [first, end] : PasswordsIn(texts_[static_cast<std::size_t>(i)]))
        std::fill(argv[i] + first, argv[i] + end, '*');
    }
  }

  int count() const { return static_cast<int>(texts_.size()); }
  char** pointers() { return pointers_.data(); }

 private:
  std::vector<std::string> texts_;
  std::vector<char*> pointers_;
};

// Numbers that no letter has, for options that have none.
constexpr int kFirstNumber = 256;

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

// Throws WrongUsage at an option that can't be taken; `parts` has what stands ahead of it then.
void TakeApart(int argc, char** argv, Parts& parts) {
  const Grammar grammar;
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
}

// The command that the words begin with, as far as they do.
std::string CommandAhead(std::vector<std::string> words) {
  CommandPlace place;
  try {
    TakeCommand(words, place);
  } catch (const WrongUsage&) {
    return place.Words();
  }
  return place.Words();
}

void CheckOptions(const Parts& parts, const CommandPlace& place) {
  for (const GivenOption& given : parts.options) {
    const auto takes = [&given](std::span<const Option> options) {
      return std::ranges::find(options, given.id) != options.end();
    };
    if (!takes(CommonOptions()) && !takes(place.command->options)) {
      throw WrongUsage("'" + place.Words() + "' has no option '" + DashedName(RowOf(given.id)) +
                       "'");
    }
  }
  for (const auto& [one, other] : EitherOr()) {
    if (parts.Has(one) && parts.Has(other))
      throw WrongUsage("take either " + DashedName(RowOf(one)) + " or " + DashedName(RowOf(other)));
  }
  for (const Option needed : {Option::From, Option::To}) {
    if (place.command->action == Action::CopyStore && !parts.Has(needed))
      throw WrongUsage("'" + place.Words() + "' needs " + DashedName(RowOf(needed)));
  }
  if (place.command->action == Action::CopyStore && parts.Has(Option::Store))
    throw WrongUsage("take either --store or --from");
  const std::span<const Option> own = place.command->options;
  for (const auto& [one, with] :
       {std::pair(Option::Strict, Option::Losses), std::pair(Option::Steps, Option::Prepare)}) {
    const bool isWith = std::ranges::find(own, with) != own.end();
    if (isWith && parts.Has(one) && !parts.Has(with))
      throw WrongUsage(DashedName(RowOf(one)) + " goes with " + DashedName(RowOf(with)));
  }
  if (place.command->action == Action::Import && parts.Has(Option::Json) &&
      !parts.Has(Option::DryRun))
    throw WrongUsage("--json goes with --dry-run");
}

void CheckOperands(const std::vector<std::string>& operands, const CommandPlace& place) {
  const CommandRow& command = *place.command;
  if (operands.size() < command.fewest)
    throw WrongUsage("'" + place.Words() + "' needs " + command.operands);
  if (operands.size() > command.most)
    throw WrongUsage("extra operand '" + ShownName(operands[command.most]) + "'");
  if (std::ranges::find(operands, std::string()) != operands.end())
    throw WrongUsage("an operand is empty");
}

// What changes the result of a command; of the common options only the charset does.
bool IsWorthKeeping(Option id) {
  return id == Option::CodePage || std::ranges::find(CommonOptions(), id) == CommonOptions().end();
}

std::optional<Options> ReadParts(Parts& parts, CommandPlace& place, int& status) {
  status = kDone;
  if (parts.Has(Option::Version)) {
    Print("pimvobj " PIM_VERSION "\n");
    return std::nullopt;
  }
  TakeCommand(parts.words, place);
  if (parts.Has(Option::Help)) {
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
  for (const GivenOption& given : parts.options) {
    SetOption(options, given);
    const OptionRow& row = RowOf(given.id);
    const std::string value = row.value != nullptr ? "=" + given.value : "";
    if (IsWorthKeeping(given.id)) options.given.push_back(DashedName(row) + value);
  }
  CheckOperands(parts.words, place);
  options.operands = std::move(parts.words);
  options.action = place.command->action;
  options.command = place.Words();
  if (place.noun != nullptr && place.noun->kind) options.kind = *place.noun->kind;
  return options;
}

}  // namespace

std::optional<Options> ReadCommandLine(int argc, char** argv, int& status) {
  CommandPlace place;
  Parts parts;
  status = kWrongUsage;
  Arguments arguments(argc, argv);
  try {
    TakeApart(arguments.count(), arguments.pointers(), parts);
  } catch (const WrongUsage& wrong) {
    TellWrongUsage(wrong.what(), CommandAhead(std::move(parts.words)));
    return std::nullopt;
  }
  try {
    return ReadParts(parts, place, status);
  } catch (const WrongUsage& wrong) {
    TellWrongUsage(wrong.what(), place.Words());
    status = kWrongUsage;
    return std::nullopt;
  }
}

void TellWrongUsage(std::string_view problem, std::string_view command) {
  Complain(WithoutPasswords(problem));
  const std::string words = command.empty() ? "" : " " + std::string(command);
  // Of 'help' itself there is less to say than by it.
  Warn("Try 'pimvobj" + words + (command == "help" ? "" : " --help") + "' for more information.\n");
}

}  // namespace pim::app
