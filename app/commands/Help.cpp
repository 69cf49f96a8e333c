// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Help.h"

#include <algorithm>
#include <vector>

#include "app/commands/HelpLayout.h"
#include "app/commands/HelpTopics.h"
#include "app/output/Output.h"

namespace pim::app {
namespace {

std::string OptionList(std::span<const Option> options, const CommandRow* command = nullptr) {
  Columns columns;
  for (const Option option : options) {
    const OptionRow& row = RowOf(option);
    std::string left = row.letter != '\0' ? std::string{'-', row.letter, ',', ' '} : "    ";
    left.append("--").append(row.name);
    if (row.value != nullptr) left.append(" ").append(ValueOf(option, command));
    columns.Add(std::move(left), HelpOf(option, command));
  }
  return columns.Text();
}

std::string CommandHelp(const CommandPlace& place) {
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
  std::string text = std::string(noun.summary) + ".\n\nExamples:\n" +
                     Indented(Filled(examples, noun)) + "\nCommands:\n" + CommandList(noun) +
                     "\n'pimvobj " + noun.word + " COMMAND --help' tells the options of each.\n";
  // A topic of the noun's name is told with it.
  if (const TopicRow* topic = FindTopic(noun.word))
    text += "\n" + std::string(topic->summary) + ":\n" + TopicBody(*topic);
  return text;
}

constexpr const char* kAbout =
    "pimvobj moves contacts, events, to-dos and memos between a store, in a file or\n"
    "a PostgreSQL server, and the vCard 2.1 and vCalendar 1.0 files of phones.\n";

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

std::string TopicList() {
  Columns columns;
  for (const TopicRow& topic : Topics()) columns.Add(topic.word, topic.summary);
  return columns.Text();
}

}  // namespace

std::string HelpText(const CommandPlace& place) {
  if (place.command != nullptr) return CommandHelp(place);
  if (place.noun != nullptr) return NounHelp(*place.noun);
  return ProgramHelp() + "\nOptions of all commands, anywhere in the line:\n" +
         OptionList(CommonOptions()) + "\nTopics:\n" + TopicList() +
         "\n'pimvobj help COMMAND' and 'pimvobj help TOPIC' tell more of each.\n";
}

std::string ShortHelp(const CommandPlace& place) {
  if (place.noun != nullptr)
    return "Commands of '" + std::string(place.noun->word) + "':\n" + CommandList(*place.noun);
  return ProgramHelp() + "\n'pimvobj --help' tells more.\n";
}

int TellHelp(const Options& options) {
  std::vector<std::string> words = options.operands;
  CommandPlace place;
  const TopicRow* topic = words.empty() ? nullptr : FindTopic(words.front());
  const auto commands = FirstWords();
  if (topic != nullptr && std::ranges::find(commands, words.front()) == commands.end()) {
    words.erase(words.begin());
  } else {
    topic = nullptr;
    std::vector<std::string_view> topics;
    for (const TopicRow& row : Topics()) topics.emplace_back(row.word);
    TakeCommand(words, place, topics);
  }
  if (!words.empty()) throw WrongUsage("extra operand '" + ShownName(words.front()) + "'");
  Print(topic != nullptr ? TopicText(*topic) : HelpText(place));
  return kDone;
}

}  // namespace pim::app
