// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pim::app {

// Aligned rows "  left  right", whose right sides are broken between words.
class Columns {
 public:
  void Add(std::string left, std::string_view right);
  bool IsEmpty() const { return rows_.empty(); }
  std::string Text() const;

 private:
  std::vector<std::pair<std::string, std::string>> rows_;
  std::size_t widest_ = 0;
};

// Each line behind two blanks.
std::string Indented(std::string_view lines);

// A paragraph, broken between words, behind so many blanks.
std::string Wrapped(std::string_view text, std::size_t indent = 4);

// Puts a text in each place of a mark.
void ReplaceAll(std::string& text, std::string_view mark, std::string_view by);

}  // namespace pim::app
