// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "app/commands/CommandTable.h"
#include "app/commands/ExitStatuses.h"
#include "app/commands/Help.h"
#include "app/commands/HelpTopics.h"
#include "app/commands/OptionChoices.h"
#include "app/commands/OptionValues.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

const fs::path kRoot = fs::path(PIM_TEST_DATA) / ".." / "..";

std::string TextOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Names NamesOf(std::span<const Option> options) {
  Names names;
  for (const Option option : options) names.insert(DashedName(RowOf(option)));
  return names;
}

// What the first group of the pattern is in each line.
Names Found(const std::string& text, const std::string& pattern) {
  Names found;
  const std::regex regex(pattern, std::regex::ECMAScript | std::regex::multiline);
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
    found.insert((*match)[1]);
  return found;
}

Names OptionsOnPage(const std::string& section) {
  Names names;
  for (std::string name : Found(section, R"(^(?:\\fB.*, )?\\fB(\\-\\-[^ ]*)\\fR)")) {
    std::erase(name, '\\');
    names.insert(name);
  }
  return names;
}

// From its heading to the next one.
std::string Section(const std::string& page, const std::string& heading) {
  const std::size_t at = page.find("\n" + heading);
  if (at == std::string::npos) return "no section " + heading;
  return page.substr(at, page.find("\n.S", at + 1) - at);
}

std::vector<CommandPlace> AllPlaces() {
  std::vector<CommandPlace> places = {{}};
  for (const NounRow& noun : Nouns()) places.push_back({&noun, nullptr});
  for (const CommandRow& command : Commands()) {
    if (command.family == Family::NoNoun) places.push_back({nullptr, &command});
    for (const NounRow& noun : Nouns())
      if (noun.family == command.family) places.push_back({&noun, &command});
  }
  return places;
}

TEST(HelpTest, TellsTheOptionsThatACommandTakes) {
  const std::string page = TextOf(kRoot / "app/manual/pimvobj.1");
  EXPECT_EQ(OptionsOnPage(Section(page, ".SH OPTIONS")), NamesOf(CommonOptions()));
  for (const CommandPlace& place : AllPlaces()) {
    if (place.command == nullptr) continue;
    SCOPED_TRACE(place.Words());
    Names taken = NamesOf(place.command->options);
    std::string heading = "^(\\.SS \"pimvobj ";
    if (place.noun != nullptr) heading += "[^ ]*" + std::string(place.noun->word) + "[^ ]* ";
    heading += std::string(place.command->verb) + "[ \"].*)$";
    const Names headings = Found(page, heading);
    ASSERT_EQ(headings.size(), 1U);
    EXPECT_EQ(OptionsOnPage(Section(page, *headings.begin())), taken);
    taken.merge(NamesOf(CommonOptions()));
    EXPECT_EQ(Found(HelpText(place), "^  (?:-.,|   ) (--[^ ]*)"), taken);
  }
}

TEST(HelpTest, FitsATerminal) {
  std::vector<std::string> texts;
  for (const CommandPlace& place : AllPlaces()) texts.push_back(HelpText(place));
  for (const TopicRow& topic : Topics()) texts.push_back(TopicText(topic));
  for (const std::string& text : texts) {
    EXPECT_EQ(Found(text, "^((?:[^\n\x80-\xBF][\x80-\xBF]*){80,})$"), Names());
    EXPECT_EQ(text.find('{'), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("\n") && !text.ends_with("\n\n"));
  }
}

TEST(HelpTest, TellsTheExitStatuses) {
  Names rows;
  for (const ExitStatusRow& row : kExitStatuses)
    rows.insert(std::to_string(row.status) + " | " + row.meaning);
  std::string table = TextOf(kRoot / "docs/exit-statuses.md");
  std::erase(table, '`');
  EXPECT_EQ(Found(table, R"(^\| (\d+ \| .*) \| .* \|$)"), rows);
}

// Sources that look at the environment, and the names in them.
TEST(HelpTest, TellsTheEnvironment) {
  Names looked;
  for (const char* folder : {"app", "src"}) {
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
      const std::string text = entry.is_regular_file() ? TextOf(entry.path()) : "";
      if (text.find("getenv(") != std::string::npos)
        looked.merge(Found(text, R"re([ ({]"([A-Z]+(?:_[A-Z]+)*)")re"));
    }
  }
  Names told;
  for (const TopicBlock& block : BlocksOf(*FindTopic("environment")))
    told.merge(Found(block.term, "([A-Z_]+)"));
  EXPECT_EQ(told, looked);
}

TEST(OptionChoicesTest, AreTaken) {
  for (const OptionRow& row : OptionRows()) {
    for (const std::string_view word : ChoicesOf(row.id, Family::NoNoun)) {
      Options options;
      EXPECT_NO_THROW(SetOption(options, {row.id, std::string(word)})) << row.name << " " << word;
    }
  }
  Options options;
  SetOption(options, {Option::CodePage, "UTF-8"});
}

}  // namespace
}  // namespace pim::app
