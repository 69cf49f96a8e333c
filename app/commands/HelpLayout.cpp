// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/HelpLayout.h"

#include <algorithm>
#include <cstddef>

namespace pim::app {
namespace {

constexpr std::size_t kWidth = 79;  // of a line, in characters

// What begins at a column and goes on there in further lines.
void AppendWrapped(std::string& text, std::string_view words, std::size_t column) {
  std::size_t at = column;
  while (!words.empty()) {
    const std::string_view word = words.substr(0, words.find(' '));
    words.remove_prefix(std::min(word.size() + 1, words.size()));
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

}  // namespace

void Columns::Add(std::string left, std::string_view right) {
  widest_ = std::max(widest_, left.size());
  rows_.emplace_back(std::move(left), right);
}

std::string Columns::Text() const {
  const std::size_t column = widest_ + 4;
  std::string text;
  for (const auto& [left, right] : rows_) {
    text.append("  ").append(left).append(column - left.size() - 2, ' ');
    AppendWrapped(text, right, column);
  }
  return text;
}

std::string Indented(std::string_view lines) {
  std::string text;
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    text.append("  ").append(line).append("\n");
  }
  return text;
}

std::string Wrapped(std::string_view text, std::size_t indent) {
  std::string lines(indent, ' ');
  AppendWrapped(lines, text, indent);
  return lines;
}

void ReplaceAll(std::string& text, std::string_view mark, std::string_view by) {
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += by.size())
    text.replace(at, mark.size(), by);
}

}  // namespace pim::app
