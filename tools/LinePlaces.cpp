// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "tools/LinePlaces.h"

#include <algorithm>

#include "app/commands/HelpTopics.h"

namespace pim::app {
namespace {

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::vector<PlaceWord> VerbsOf(const NounRow& noun) {
  std::vector<PlaceWord> words;
  for (const CommandRow& command : Commands()) {
    if (command.family == noun.family)
      words.push_back({command.verb, Filled(command.summary, noun)});
  }
  return words;
}

std::vector<PlaceWord> FirstWordsOfLine() {
  std::vector<PlaceWord> words;
  for (const NounRow& noun : Nouns()) words.push_back({noun.word, noun.summary});
  for (const CommandRow& command : Commands()) {
    if (command.family == Family::NoNoun) words.push_back({command.verb, command.summary});
  }
  return words;
}

// Words in small letters with bars between them, which stand for themselves.
std::vector<PlaceWord> LiteralWords(std::string_view operand) {
  std::vector<PlaceWord> words;
  while (!operand.empty()) {
    const std::string_view word = operand.substr(0, operand.find('|'));
    operand.remove_prefix(std::min(word.size() + 1, operand.size()));
    if (std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; }))
      words.push_back({std::string(word), "A record's kind"});
  }
  return words;
}

std::string_view EndingsOf(Family family) {
  switch (family) {
    case Family::Contacts:
      return "vcf";
    case Family::Items:
      return "vcs ics";
    default:
      return "vcf vcs ics";
  }
}

// What operands are follows from how help shows them.
LinePlace PlaceOf(std::string key, const CommandRow& command, const NounRow* noun) {
  LinePlace place{std::move(key), &command, noun};
  const std::string_view operands = command.operands;
  const std::string_view first = operands.substr(0, operands.find(' '));
  if (Contains(first, "FILE") || Contains(first, "PATH")) place.endings = EndingsOf(command.family);
  if (Contains(first, "FILE.html")) place.endings = "html";
  place.isFolder = first == "DIR";
  place.words = LiteralWords(first);
  place.repeats = Contains(first, "...");
  if (command.action == Action::TellHelp) {
    place.words = FirstWordsOfLine();
    for (const TopicRow& topic : Topics()) {
      const auto isThere = [&topic](const PlaceWord& word) { return word.word == topic.word; };
      if (std::ranges::none_of(place.words, isThere))
        place.words.push_back({topic.word, topic.summary});
    }
    place.repeats = false;
  }
  return place;
}

}  // namespace

std::vector<LinePlace> LinePlaces() {
  std::vector<LinePlace> places = {{"", nullptr, nullptr, FirstWordsOfLine()}};
  for (const NounRow& noun : Nouns()) {
    places.push_back({noun.word, nullptr, nullptr, VerbsOf(noun)});
    places.push_back({std::string("help ") + noun.word, nullptr, nullptr, VerbsOf(noun)});
    for (const CommandRow& command : Commands()) {
      if (command.family == noun.family)
        places.push_back(PlaceOf(std::string(noun.word) + " " + command.verb, command, &noun));
    }
  }
  for (const CommandRow& command : Commands()) {
    if (command.family == Family::NoNoun) places.push_back(PlaceOf(command.verb, command, nullptr));
  }
  return places;
}

std::vector<std::string> WordsThatGoOn() {
  std::vector<std::string> words;
  for (const LinePlace& place : LinePlaces()) {
    const std::string word = place.key.substr(0, place.key.find(' '));
    if (word != place.key && std::ranges::find(words, word) == words.end()) words.push_back(word);
  }
  return words;
}

bool TakesFile(const OptionRow& row, const CommandRow* command) {
  const char* const value = ValueOf(row.id, command);
  return value != nullptr && std::string_view(value).starts_with("FILE");
}

bool TakesList(const OptionRow& row) {
  return row.value != nullptr && std::string_view(row.value).ends_with(",...");
}

}  // namespace pim::app
