// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/PreparedText.h"

#include <algorithm>
#include <iterator>

#include "formats/prepare/TextGroups.h"

namespace pim::app {

PreparedText::PreparedText(NarrowStringView bytes, PrepareStepMask steps,
                           const PrepareObserver& observer) {
  constexpr std::size_t kPiece = std::size_t{1} << 20;
  GroupBook groups;
  const auto findGroups = [&groups, bytes, steps] {
    groups = GroupsOfText([bytes](const auto& take) { take(bytes); }, steps);
    return &groups;
  };
  Preparer preparer(
      steps, observer, [this](const PreparedPiece& piece) { Take(piece); }, findGroups);
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), kPiece);
    std::ranges::copy(bytes.substr(0, size), preparer.Room(size));
    preparer.Took(size);
    bytes.remove_prefix(size);
  }
  preparer.Finish();
}

void PreparedText::Take(const PreparedPiece& piece) {
  const std::int64_t count = piece.isSame ? piece.lines : std::ranges::count(piece.text, '\n');
  text_ += piece.text;
  if (!rows_.empty()) {
    Row& last = rows_.back();
    if (last.isSame && piece.isSame && last.originalFirst + last.originalCount == piece.firstLine) {
      last.count += count;
      last.originalCount += count;
      return;
    }
  }
  const std::int64_t first = rows_.empty() ? 1 : rows_.back().first + rows_.back().count;
  if (count != 0) rows_.push_back({first, count, piece.firstLine, piece.lines, piece.isSame});
}

std::int64_t PreparedText::Original(std::int64_t line) const {
  const auto next = std::ranges::upper_bound(rows_, line, {}, &Row::first);
  if (next == rows_.begin()) return line;
  const Row& row = *std::prev(next);
  const std::int64_t offset = line - row.first;
  if (row.isSame) return row.originalFirst + offset;
  const std::int64_t last = std::max<std::int64_t>(row.originalCount - 1, 0);
  return row.originalFirst + (offset + 1 >= row.count ? last : std::min(offset, last));
}

}  // namespace pim::app
