// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "formats/prepare/Preparer.h"
#include "formats/prepare/TextGroups.h"

namespace pim {

// What a preparing gives.
struct Prepared {
  std::string text;
  std::string told;       // a line each: "2-3 nul: ...", "4 X-FOO dropped no-property"
  bool isSame = true;     // no piece of it was made anew
  bool isInOrder = true;  // its pieces tell lines that follow one another
};

inline Prepared Prepare(std::string_view text, PrepareStepMask steps, std::size_t pieceSize,
                        FindGroups groups = {}) {
  Prepared prepared;
  const PrepareObserver observer = {
      [&prepared](const PrepareNote& note) {
        prepared.told += std::to_string(note.first);
        if (note.last != note.first) prepared.told += "-" + std::to_string(note.last);
        prepared.told.append(" ").append(RowOf(note.step).name).append(": ").append(note.what);
        prepared.told += "\n";
      },
      [&prepared](std::int64_t line, const FormatLoss& loss) {
        prepared.told += std::to_string(line) + " " + loss.field +
                         (loss.verdict == FormatVerdict::Changed ? " changed " : " dropped ");
        prepared.told.append(RowOf(loss.reason).name).append("\n");
      }};
  std::int64_t next = 1;
  const auto take = [&](const PreparedPiece& piece) {
    prepared.text += piece.text;
    prepared.isSame = prepared.isSame && piece.isSame;
    prepared.isInOrder = prepared.isInOrder && piece.firstLine >= next && piece.lines >= 0;
    next = piece.firstLine + piece.lines;
  };
  Preparer preparer(steps, observer, take, std::move(groups));
  for (std::size_t at = 0; at < text.size(); at += pieceSize) {
    const std::string_view piece = text.substr(at, pieceSize);
    std::ranges::copy(piece, preparer.Room(piece.size()));
    preparer.Took(piece.size());
  }
  preparer.Finish();
  return prepared;
}
inline Prepared Prepare(std::string_view text, PrepareStepMask steps) {
  return Prepare(text, steps, text.size() + 1);
}
// As a text that can be read more than once.
inline Prepared PrepareWithGroups(std::string_view text, PrepareStepMask steps,
                                  std::size_t pieceSize) {
  GroupBook book;
  return Prepare(text, steps, pieceSize, [&] {
    book = GroupsOfText(
        [&](const auto& take) {
          for (std::size_t at = 0; at < text.size(); at += pieceSize)
            take(text.substr(at, pieceSize));
        },
        steps);
    return &book;
  });
}

}  // namespace pim
