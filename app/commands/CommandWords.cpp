// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/CommandWords.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>

#include "app/commands/Nearest.h"
#include "app/output/Output.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

using Words = std::vector<std::string_view>;

// A command that needs a noun ahead of it: its only one, or that of the files that it was given.
std::string WithItsNoun(const std::vector<std::string>& words, Family family) {
  const auto isCalendar = [](const std::string& word) {
    const std::string extension = std::filesystem::path(word).extension().string();
    return EqualsIgnoringCase(extension, ".vcs") || EqualsIgnoringCase(extension, ".ics");
  };
  if (std::any_of(words.begin() + 1, words.end(), isCalendar) && family == Family::Contacts)
    family = Family::Items;
  std::string line = std::ranges::find(Nouns(), family, &NounRow::family)->word;
  for (const std::string& word : words) line += " " + word;
  return line;
}

[[noreturn]] void FailAtFirstWord(const std::vector<std::string>& words,
                                  std::span<const std::string_view> topics) {
  const std::string& word = words.front();
  for (const CommandRow& command : Commands()) {
    if (word == command.verb) {
      throw WrongUsage("'" + word + "' needs to know of what; did you mean 'pimvobj " +
                       ShownName(WithItsNoun(words, command.family)) + "'?");
    }
  }
  Words choices = FirstWords();
  choices.insert(choices.end(), topics.begin(), topics.end());
  throw WrongUsage(std::string("unknown command ") + (topics.empty() ? "'" : "or topic '") +
                   ShownName(word) + "'" + Suggestion(word, choices));
}

const CommandRow* FindCommand(Family family, std::string_view verb) {
  for (const CommandRow& command : Commands())
    if (command.family == family && command.verb == verb) return &command;
  return nullptr;
}

}  // namespace

std::string CommandPlace::Words() const {
  std::string words = noun != nullptr ? noun->word : "";
  if (command != nullptr) words.append(words.empty() ? "" : " ").append(command->verb);
  return words;
}

void TakeCommand(std::vector<std::string>& words, CommandPlace& place,
                 std::span<const std::string_view> topics) {
  if (words.empty()) return;
  const auto noun = std::ranges::find(Nouns(), std::string_view(words.front()), &NounRow::word);
  if (noun == Nouns().end()) {
    place.command = FindCommand(Family::NoNoun, words.front());
    if (place.command == nullptr) FailAtFirstWord(words, topics);
    words.erase(words.begin());
    return;
  }
  place.noun = &*noun;
  words.erase(words.begin());
  if (words.empty()) return;
  const Family family = noun->family;
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

std::vector<std::string_view> FirstWords() {
  Words words;
  for (const NounRow& noun : Nouns()) words.emplace_back(noun.word);
  for (const CommandRow& command : Commands())
    if (command.family == Family::NoNoun) words.emplace_back(command.verb);
  return words;
}

}  // namespace pim::app
