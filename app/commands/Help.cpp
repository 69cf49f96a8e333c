// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Help.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace pim::app {
namespace {

constexpr std::size_t kWidth = 79;  // of a line, in characters

// Aligned rows "  left  right", whose right sides are broken between words.
class Columns {
 public:
  void Add(std::string left, std::string_view right) {
    widest_ = std::max(widest_, left.size());
    rows_.emplace_back(std::move(left), right);
  }
  std::string Text() const {
    std::string text;
    for (const auto& [left, right] : rows_) AppendRow(text, left, right);
    return text;
  }

 private:
  void AppendRow(std::string& text, const std::string& left, std::string_view right) const {
    const std::size_t column = widest_ + 4;
    text.append("  ").append(left).append(column - left.size() - 2, ' ');
    std::size_t at = column;
    while (!right.empty()) {
      const std::string_view word = right.substr(0, right.find(' '));
      right.remove_prefix(std::min(word.size() + 1, right.size()));
      if (at > column && at + word.size() + 1 > kWidth) {
        text.append("\n").append(column, ' ');
        at = column;
      }
      if (at > column) {
        text += ' ';
        ++at;
      }
      text += word;
      at += word.size();
    }
    text += '\n';
  }

  std::vector<std::pair<std::string, std::string>> rows_;
  std::size_t widest_ = 0;
};

std::string Indented(std::string_view lines) {
  std::string text;
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    text.append("  ").append(line).append("\n");
  }
  return text;
}

std::string Wrapped(std::string_view text) {
  Columns one;
  one.Add("", text);
  return one.Text();
}

std::string OptionList(std::span<const Option> options, const CommandRow* command = nullptr) {
  Columns columns;
  for (const Option option : options) {
    const OptionRow& row = RowOf(option);
    std::string left = row.letter != '\0' ? std::string{'-', row.letter, ',', ' '} : "    ";
    left.append("--").append(row.name);
    if (row.value != nullptr) left.append(" ").append(row.value);
    columns.Add(std::move(left), HelpOf(option, command));
  }
  return columns.Text();
}

std::string CommandHelp(const HelpPlace& place) {
  const CommandRow& command = *place.command;
  const auto filled = [&place](std::string_view text) {
    return place.noun != nullptr ? Filled(text, *place.noun) : std::string(text);
  };
  std::string text = filled(command.summary) + ".\n\nExamples:\n" +
                     Indented(filled(command.examples)) + "\nUsage:\n  pimvobj " + place.Words() +
                     " [OPTION...]";
  if (*command.operands != '\0') text.append(" ").append(command.operands);
  text += "\n\n";
  if (*command.remarks != '\0') text += Wrapped(command.remarks) + "\n";
  if (!command.options.empty()) text += "Options:\n" + OptionList(command.options, &command) + "\n";
  return text + "Options of all commands:\n" + OptionList(CommonOptions());
}

std::string CommandList(const NounRow& noun) {
  Columns columns;
  for (const CommandRow& command : Commands()) {
    if (command.family != noun.family) continue;
    columns.Add(Filled(std::string(command.verb) + " " + command.operands, noun),
                Filled(command.summary, noun));
  }
  return columns.Text();
}

std::string NounHelp(const NounRow& noun) {
  std::string examples;
  for (const CommandRow& command : Commands()) {
    if (command.family != noun.family) continue;
    const std::string_view all = command.examples;
    examples.append(all.substr(0, all.find('\n'))).append("\n");
  }
  return std::string(noun.summary) + ".\n\nExamples:\n" + Indented(Filled(examples, noun)) +
         "\nCommands:\n" + CommandList(noun) + "\n'pimvobj " + noun.word +
         " COMMAND --help' tells the options of each.\n";
}

constexpr const char* kAbout =
    "pimvobj moves contacts, events, to-dos and memos between a store on this\n"
    "machine and the vCard 2.1 and vCalendar 1.0 files of phones.\n";

constexpr const char* kExamples =
    "pimvobj inspect backup.vcf\n"
    "pimvobj contacts import backup.vcf\n"
    "pimvobj contacts list müller --sort name\n"
    "pimvobj contacts export all.vcf\n"
    "pimvobj calendar import calendar.vcs\n";

std::string ProgramHelp() {
  Columns columns;
  for (const NounRow& noun : Nouns()) {
    std::string verbs;
    for (const CommandRow& command : Commands()) {
      if (command.family == noun.family)
        verbs.append(verbs.empty() ? ": " : ", ").append(command.verb);
    }
    columns.Add(noun.word, noun.summary + verbs);
  }
  for (const CommandRow& command : Commands()) {
    if (command.family == Family::NoNoun)
      columns.Add(std::string(command.verb) + " " + command.operands, command.summary);
  }
  return std::string(kAbout) + "\nExamples:\n" + Indented(kExamples) + "\nCommands:\n" +
         columns.Text();
}

}  // namespace

std::string HelpPlace::Words() const {
  std::string words = noun != nullptr ? noun->word : "";
  if (command != nullptr) words.append(words.empty() ? "" : " ").append(command->verb);
  return words;
}

std::string HelpText(const HelpPlace& place) {
  if (place.command != nullptr) return CommandHelp(place);
  if (place.noun != nullptr) return NounHelp(*place.noun);
  return ProgramHelp() + "\nOptions of all commands, anywhere in the line:\n" +
         OptionList(CommonOptions()) + "\n'pimvobj COMMAND --help' tells more of each.\n";
}

std::string ShortHelp(const HelpPlace& place) {
  if (place.noun != nullptr)
    return "Commands of '" + std::string(place.noun->word) + "':\n" + CommandList(*place.noun);
  return ProgramHelp() + "\n'pimvobj --help' tells more.\n";
}

}  // namespace pim::app
