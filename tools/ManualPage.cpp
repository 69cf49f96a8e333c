// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "app/commands/CommandTable.h"
#include "app/commands/HelpLayout.h"
#include "app/commands/HelpTopics.h"
#include "platform/CodePages.h"
#include "tools/Templates.h"

namespace pim::app {
namespace {

struct Escape {
  char16_t unit;
  const char* text;
};
// What would be printed as another character: a hyphen, a quotation mark, an accent.
constexpr Escape kEscapes[] = {{u'\\', "\\e"},  {u'-', "\\-"},   {u'\'', "\\(aq"},
                               {u'`', "\\(ga"}, {u'^', "\\(ha"}, {u'~', "\\(ti"}};

// With the escapes that have each character stand for itself; one that isn't ASCII by its number,
// so that any locale may show the page.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char16_t unit : WideFromUtf8(text)) {
    const auto* escape = std::ranges::find(kEscapes, unit, &Escape::unit);
    if (escape != std::end(kEscapes)) {
      escaped += escape->text;
    } else if (unit < 0x80) {
      escaped += static_cast<char>(unit);
    } else {
      char number[sizeof "\\[uFFFF]"];
      std::snprintf(number, sizeof number, "\\[u%04X]", static_cast<unsigned>(unit));
      escaped += number;
    }
  }
  return escaped;
}

// Calls take(line) for each line.
template <class Take>
void EachLine(std::string_view lines, Take take) {
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    take(line);
  }
}

// A text in lines; each sentence begins one.
std::string Filled(std::string_view text) {
  std::string sentences = Escaped(text);
  for (std::size_t at = 0; (at = sentences.find(". ", at)) != std::string::npos; ++at)
    sentences[at + 1] = '\n';
  std::string lines;
  EachLine(sentences, [&lines](std::string_view sentence) {
    EachLine(Wrapped(sentence, 0), [&lines](std::string_view line) {
      // What begins with a point would be a request.
      lines.append(line.starts_with('.') ? "\\&" : "").append(line).append("\n");
    });
  });
  return lines;
}

std::string Paragraph(std::string_view text) { return ".PP\n" + Filled(text); }

std::string Example(std::string_view lines) {
  return ".PP\n.RS 4\n.EX\n" + Escaped(lines) + "\n.EE\n.RE\n";
}

std::string OptionEntries(std::span<const Option> options, const CommandRow* command) {
  std::string entries;
  for (const Option option : options) {
    const OptionRow& row = RowOf(option);
    std::string names;
    if (row.letter != '\0') names = "\\fB" + Escaped(std::string{'-', row.letter}) + "\\fR, ";
    names += "\\fB" + Escaped(DashedName(row)) + "\\fR";
    if (row.value != nullptr) names += std::string(" \\fI") + ValueOf(option, command) + "\\fR";
    entries += ".TP\n" + names + "\n" + Filled(HelpOf(option, command) + ".");
  }
  return entries;
}

// The nouns of a family share its commands, and examples are those of its first one.
struct SharedNoun {
  std::string words;  // "calendar|todo|memo"
  NounRow row{};
};
SharedNoun NounsOf(Family family) {
  SharedNoun shared;
  for (const NounRow& noun : Nouns()) {
    if (noun.family != family) continue;
    if (shared.words.empty()) {
      shared.row = noun;
    } else {
      shared.row.one = "item";
    }
    shared.words.append(shared.words.empty() ? "" : "|").append(noun.word);
  }
  return shared;
}

std::string CommandEntry(const CommandRow& command) {
  const SharedNoun nouns = NounsOf(command.family);
  const auto filled = [&nouns](std::string_view text) {
    return nouns.words.empty() ? std::string(text) : app::Filled(text, nouns.row);
  };
  std::string title = "pimvobj ";
  if (!nouns.words.empty()) title += nouns.words + " ";
  title += command.verb;
  if (*command.operands != '\0') title.append(" ").append(command.operands);
  std::string entry = ".SS \"" + Escaped(title) + "\"\n" + Filled(filled(command.summary) + ".") +
                      Example(filled(command.examples));
  if (*command.remarks != '\0') entry += Paragraph(filled(command.remarks));
  return entry + OptionEntries(command.options, &command);
}

std::string TopicEntries(std::string_view word) {
  std::string entries;
  bool isFirst = true;
  for (const TopicBlock& block : BlocksOf(*FindTopic(word))) {
    if (!block.term.empty()) {
      entries += ".TP\n.B " + Escaped(block.term) + "\n" + Filled(block.text + ".");
    } else {
      entries += isFirst ? Filled(block.text) : Paragraph(block.text);
    }
    isFirst = false;
  }
  return entries;
}

}  // namespace

std::string ManualPage(std::string text) {
  std::string commands;
  for (const CommandRow& command : Commands()) commands += CommandEntry(command);
  FillPlace(text, "common-options", OptionEntries(CommonOptions(), nullptr));
  FillPlace(text, "commands", commands);
  for (const TopicRow& topic : Topics()) FillPlace(text, topic.word, TopicEntries(topic.word));
  return text;
}

}  // namespace pim::app
