// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Nearest.h"

#include <algorithm>
#include <array>
#include <vector>

namespace pim::app {
namespace {

constexpr std::size_t kLongestWord = 32;  // what is longer resembles no word of ours

// Steps from one word to the other, by three rows of the table of all their beginnings.
std::size_t Distance(std::string_view from, std::string_view to) {
  std::array<std::vector<std::size_t>, 3> rows;
  for (auto& row : rows) row.resize(to.size() + 1);
  for (std::size_t j = 0; j <= to.size(); ++j) rows[0][j] = j;
  for (std::size_t i = 1; i <= from.size(); ++i) {
    auto& row = rows[i % 3];
    const auto& above = rows[(i + 2) % 3];
    const auto& twoAbove = rows[(i + 1) % 3];
    row[0] = i;
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const bool equal = from[i - 1] == to[j - 1];
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (equal ? 0 : 1)});
      if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
        row[j] = std::min(row[j], twoAbove[j - 2] + 1);
    }
  }
  return rows[from.size() % 3][to.size()];
}

}  // namespace

std::string_view Nearest(std::string_view word, std::span<const std::string_view> choices) {
  if (word.empty() || word.size() > kLongestWord) return {};
  std::string_view nearest;
  std::size_t least = word.size() / 3 + 1;  // more than a third mistyped is another word
  for (const std::string_view choice : choices) {
    // A choice that begins like that is one that wasn't typed to its end.
    const std::size_t distance = choice.starts_with(word) ? 1 : Distance(word, choice);
    if (distance > least || (distance == least && !nearest.empty())) continue;
    least = distance;
    nearest = choice;
  }
  return nearest;
}

std::string Suggestion(std::string_view word, std::span<const std::string_view> choices) {
  const std::string_view nearest = Nearest(word, choices);
  return nearest.empty() ? std::string() : "; did you mean '" + std::string(nearest) + "'?";
}

}  // namespace pim::app
