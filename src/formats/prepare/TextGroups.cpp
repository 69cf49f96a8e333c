// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/TextGroups.h"

#include <algorithm>
#include <string>

#include "formats/prepare/Preparer.h"

namespace pim {
namespace {

using namespace std::string_view_literals;

// What ends the line that makes a card a group's, as programs write it; also in UTF-16.
constexpr std::string_view kMarks[] = {
    "KIND:group",
    "KIND:GROUP",
    "kind:group",
    "K\0I\0N\0D\0:\0g\0r\0o\0u\0p"sv,
};
constexpr std::size_t kLongestMark = kMarks[3].size();

bool HasMark(std::string_view text) {
  return std::ranges::any_of(
      kMarks, [text](std::string_view mark) { return text.find(mark) != std::string_view::npos; });
}

// Also where a mark goes over the end of a piece.
bool HasMark(const ReadPieces& read) {
  bool isFound = false;
  std::string seam;
  read([&](std::string_view piece) {
    if (isFound) return;
    seam.append(piece.substr(0, kLongestMark));
    isFound = HasMark(seam) || HasMark(piece);
    if (piece.size() > kLongestMark) seam = piece.substr(piece.size() - kLongestMark);
    if (seam.size() > kLongestMark) seam.erase(0, seam.size() - kLongestMark);
  });
  return isFound;
}

}  // namespace

GroupBook GroupsOfText(const ReadPieces& read, PrepareStepMask steps) {
  GroupBook book;
  const bool hasMark = HasMark(read);
  for (; !book.IsComplete(); book.EndLook()) {
    if (!hasMark) continue;
    Preparer preparer(
        steps, {}, [](const PreparedPiece&) {}, [&book] { return &book; });
    read([&preparer](std::string_view piece) {
      constexpr std::size_t kMost = std::size_t{1}
                                    << 20;  // so that a text in memory isn't twice there
      for (; !piece.empty(); piece.remove_prefix(std::min(kMost, piece.size()))) {
        const std::string_view next = piece.substr(0, kMost);
        std::ranges::copy(next, preparer.Room(next.size()));
        preparer.Took(next.size());
      }
    });
    preparer.Finish();
  }
  return book;
}

}  // namespace pim
