// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/CommandTable.h"
#include "app/commands/HelpLayout.h"
#include "app/commands/OptionChoices.h"
#include "tools/LinePlaces.h"
#include "tools/Templates.h"

namespace pim::app {
namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(word);
  return text;
}

std::string Joined(std::span<const std::string_view> words) {
  return Joined(std::vector<std::string>(words.begin(), words.end()));
}

// "-o", "--output".
std::vector<std::string> NamesOf(const OptionRow& row) {
  std::vector<std::string> names;
  if (row.letter != '\0') names.push_back({'-', row.letter});
  names.push_back(DashedName(row));
  return names;
}

std::vector<std::string> NamesOf(std::span<const Option> options) {
  std::vector<std::string> names;
  for (const Option option : options)
    for (const std::string& name : NamesOf(RowOf(option))) names.push_back(name);
  return names;
}

std::string ValuedOptions() {
  std::vector<std::string> names;
  for (const OptionRow& row : OptionRows()) {
    if (row.value == nullptr) continue;
    for (const std::string& name : NamesOf(row)) names.push_back(name);
  }
  return Joined(names);
}

std::string AllOptions() {
  std::vector<std::string> names;
  for (const OptionRow& row : OptionRows())
    for (const std::string& name : NamesOf(row)) names.push_back(name);
  return Joined(names);
}

// A text of the shell that stands for itself.
std::string ShellQuoted(std::string text) {
  ReplaceAll(text, "'", "'\\''");
  return "'" + text + "'";
}

std::string WordsOf(const LinePlace& place) {
  std::vector<std::string> words;
  for (const PlaceWord& word : place.words) words.push_back(word.word);
  return Joined(words);
}

// ---- bash

std::string BashPlaces() {
  std::string places;
  for (const LinePlace& place : LinePlaces()) {
    std::string first = WordsOf(place);
    if (!place.endings.empty()) first = "@" + std::string(place.endings);
    if (place.isFolder) first = "/";
    places += "    " + ShellQuoted(place.key) + ") ";
    if (place.command != nullptr && !place.command->options.empty())
      places += "options+=' " + Joined(NamesOf(place.command->options)) + "' ";
    if (!first.empty()) places += "first=" + ShellQuoted(first) + " ";
    if (place.repeats && !first.empty()) places += "rest=$first ";
    places += ";;\n";
  }
  return places;
}

// The words that an option's value may be, of a command or of those of a family.
std::string ChoicesFor(const OptionRow& row, const CommandRow* command) {
  if (command == nullptr) return Joined(ChoicesOf(row.id, Family::NoNoun));
  const bool isOwn = ValueOf(row.id, command) != RowOf(row.id).value;
  return isOwn ? std::string() : Joined(ChoicesOf(row.id, command->family));
}

std::string BashValues() {
  std::string rows;
  const auto add = [&rows](const OptionRow& row, std::string_view noun, const std::string& values) {
    std::string patterns;
    for (const std::string& name : NamesOf(row)) {
      patterns.append(patterns.empty() ? "" : " | ").append("'").append(name).append(" '");
      patterns.append(noun);
    }
    rows += "    " + patterns + ") values=" + ShellQuoted(values) + " ;;\n";
  };
  for (const OptionRow& row : OptionRows()) {
    const std::string mark = TakesList(row) ? "," : "";
    const std::string ofContacts = Joined(ChoicesOf(row.id, Family::Contacts));
    const std::string ofItems = Joined(ChoicesOf(row.id, Family::Items));
    // Some commands take something else, and those without a noun may take other words.
    for (const CommandRow& command : Commands()) {
      if (std::ranges::find(command.options, row.id) == command.options.end()) continue;
      const std::string verb = "'" + std::string(command.verb) + " '*";
      const bool hasNoun = command.family != Family::NoNoun;
      const std::string own = ChoicesFor(row, &command);
      if (ValueOf(row.id, &command) != row.value) {
        add(row, (hasNoun ? "*' '" : "") + verb, TakesFile(row, &command) ? "@" : "");
      } else if (own != ofItems && !hasNoun) {
        add(row, verb, mark + own);
      }
    }
    if (TakesFile(row)) add(row, "*", "@");
    if (ofContacts != ofItems) add(row, "'contacts '*", mark + ofContacts);
    if (!ofItems.empty()) add(row, "*", mark + ofItems);
  }
  return rows;
}

// ---- zsh

std::string ZshDescription(std::string text) {
  for (const char* mark : {"\\", "[", "]", ":"}) ReplaceAll(text, mark, std::string("\\") + mark);
  return text;
}

std::string ZshValue(const OptionRow& row, const CommandRow* command) {
  if (row.value == nullptr) return {};
  const std::string choices = ChoicesFor(row, command);
  std::string value = std::string(":") + ValueOf(row.id, command) + ":";
  if (TakesFile(row, command)) return value + "_files";
  if (choices.empty()) return value + " ";
  return value + (TakesList(row) ? "_sequence compadd - " + choices : "(" + choices + ")");
}

// As _arguments takes it; one line for all names of the option.
std::string ZshOption(const OptionRow& row, const CommandRow* command) {
  const std::string text =
      "[" + ZshDescription(HelpOf(row.id, command)) + "]" + ZshValue(row, command);
  const std::string name = DashedName(row) + (row.value != nullptr ? "=" : "");
  if (row.letter == '\0') return ShellQuoted(name + text);
  const std::string letter = std::string{'-', row.letter} + (row.value != nullptr ? "+" : "");
  return "'(" + Joined(NamesOf(row)) + ")'{" + letter + "," + name + "}" + ShellQuoted(text);
}

// Bars in parentheses, since the shell takes a last parenthesis without one as more than a pattern.
std::string ZshFiles(std::string_view endings) {
  std::string choice(endings);
  ReplaceAll(choice, " ", "|");
  return "_files -g \"(#i)*." +
         (choice.find('|') != std::string::npos ? "(" + choice + ")" : choice) + "\"";
}

std::string ZshPlaces() {
  std::string places;
  for (const LinePlace& place : LinePlaces()) {
    places += "    " + ShellQuoted(place.key) + ")\n";
    if (place.command != nullptr && !place.command->options.empty()) {
      places += "      options=(\n";
      for (const Option option : place.command->options)
        places += "        " + ZshOption(RowOf(option), place.command) + "\n";
      places += "      )\n";
    }
    std::string first;
    if (!place.words.empty()) {
      places += "      offered=(\n";
      for (const PlaceWord& word : place.words)
        places += "        " + ShellQuoted(word.word + ":" + word.summary) + "\n";
      places += "      )\n";
      first = "_pimvobj_words";
    }
    if (!place.endings.empty()) first = ZshFiles(place.endings);
    if (place.isFolder) first = "_files -/";
    if (!first.empty()) places += "      first=" + ShellQuoted(first) + "\n";
    if (place.repeats && !first.empty()) places += "      rest=$first\n";
    places += "      ;;\n";
  }
  return places;
}

// ---- fish

std::string FishQuoted(std::string text) {
  ReplaceAll(text, "\\", "\\\\");
  ReplaceAll(text, "'", "\\'");
  return "'" + text + "'";
}

std::string FishCondition(const char* where, const std::vector<std::string>& keys) {
  std::string condition = std::string("__pimvobj_at ") + where;
  for (const std::string& key : keys) condition += " \"" + key + "\"";
  return "complete -c pimvobj -n " + FishQuoted(condition);
}

std::string FishOption(const OptionRow& row, const CommandRow* command) {
  std::string text;
  if (row.letter != '\0') text += std::string(" -s ") + row.letter;
  text += std::string(" -l ") + row.name;
  if (row.value != nullptr) {
    const std::string choices = ChoicesFor(row, command);
    text += TakesFile(row, command) ? " -r -F" : " -x";
    if (TakesList(row)) {
      text += " -a " + FishQuoted("(__pimvobj_list " + choices + ")");
    } else if (!choices.empty()) {
      text += " -a " + FishQuoted(choices);
    }
  }
  return text + " -d " + FishQuoted(HelpOf(row.id, command)) + "\n";
}

// One line for each option, of all commands for which it is the same.
std::string FishOptions() {
  std::vector<std::pair<std::string, std::vector<std::string>>> lines;
  for (const LinePlace& place : LinePlaces()) {
    if (place.command == nullptr) continue;
    for (const Option option : place.command->options) {
      const std::string line = FishOption(RowOf(option), place.command);
      auto found = std::ranges::find(lines, line, [](const auto& one) { return one.first; });
      if (found == lines.end()) found = lines.insert(found, {line, {}});
      found->second.push_back(place.key);
    }
  }
  std::string text;
  for (const auto& [line, keys] : lines) text += FishCondition("any", keys) + line;
  return text;
}

std::string FishFiles(std::string_view endings) {
  std::string commands;
  for (; !endings.empty(); endings.remove_prefix(std::min(endings.find(' '), endings.size()))) {
    endings.remove_prefix(endings.front() == ' ' ? 1 : 0);
    commands.append(commands.empty() ? "" : "; ").append("__fish_complete_suffix .");
    commands += endings.substr(0, endings.find(' '));
  }
  return "(" + commands + ")";
}

std::string FishPlaces() {
  std::string lines;
  for (const LinePlace& place : LinePlaces()) {
    const char* where = place.repeats ? "any" : "first";
    const std::string start = FishCondition(where, {place.key}) + " -a ";
    const auto offer = [&](const std::string& what) { lines += start + what + "\n"; };
    for (const PlaceWord& word : place.words) offer(word.word + " -d " + FishQuoted(word.summary));
    if (!place.endings.empty()) offer(FishQuoted(FishFiles(place.endings)));
    if (place.isFolder) offer("'(__fish_complete_directories)'");
  }
  return lines;
}

}  // namespace

void FillPlace(std::string& text, std::string_view name, std::string_view by) {
  const std::string mark = "{" + std::string(name) + "}";
  if (text.find(mark) == std::string::npos) throw std::logic_error("no place for " + mark);
  // The last line's end is the template's.
  if (by.ends_with('\n')) by.remove_suffix(1);
  ReplaceAll(text, mark, by);
}

std::string BashCompletion(std::string text) {
  FillPlace(text, "common-options", Joined(NamesOf(CommonOptions())));
  FillPlace(text, "places", BashPlaces());
  FillPlace(text, "values", BashValues());
  FillPlace(text, "valued-options", ValuedOptions());
  FillPlace(text, "all-options", AllOptions());
  FillPlace(text, "going-on", Joined(WordsThatGoOn()));
  return text;
}

std::string ZshCompletion(std::string text) {
  std::string common;
  for (const Option option : CommonOptions())
    common += "    " + ZshOption(RowOf(option), nullptr) + " \\\n";
  FillPlace(text, "places", ZshPlaces());
  FillPlace(text, "common-options", common);
  FillPlace(text, "valued-options", ValuedOptions());
  FillPlace(text, "all-options", AllOptions());
  FillPlace(text, "going-on", Joined(WordsThatGoOn()));
  return text;
}

std::string FishCompletion(std::string text) {
  std::string lines;
  for (const Option option : CommonOptions()) {
    lines += "complete -c pimvobj" + FishOption(RowOf(option), nullptr);
  }
  FillPlace(text, "lines", lines + FishPlaces() + FishOptions());
  FillPlace(text, "valued-options", ValuedOptions());
  FillPlace(text, "all-options", AllOptions());
  FillPlace(text, "going-on", Joined(WordsThatGoOn()));
  return text;
}

}  // namespace pim::app
