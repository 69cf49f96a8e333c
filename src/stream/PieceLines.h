// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>

#include "stream/VObjectParser.h"

namespace pim {

// The physical lines, from 1, of what a parser reads in pieces. They are counted once, up to the
// places that are asked for, which must not go back, and to the end of each piece.
class PieceLines {
 public:
  // `parser` must outlive this.
  explicit PieceLines(const VObjectParser& parser) : parser_(parser) {}

  void StartPiece(NarrowStringView piece) {
    counted_ = piece.data();
    end_ = piece.data() + piece.size();
  }
  void EndPiece() {
    openFirst_ = First();
    openLast_ = Last();
    Pass({counted_, static_cast<std::size_t>(end_ - counted_)});
  }
  // Counts what the parser isn't given.
  void Pass(NarrowStringView text) {
    if (text.empty()) return;
    line_ += std::ranges::count(text, '\n');
    endsInLine_ = text.back() != '\n';
  }

  // Where the logical line begins that is being read, and the last line so far with a part of it.
  std::int64_t First() { return parser_.lineStart == nullptr ? openFirst_ : At(parser_.lineStart); }
  std::int64_t Last() { return parser_.contentEnd == nullptr ? openLast_ : At(parser_.contentEnd); }
  // The first of these when the last piece ended.
  std::int64_t OpenFirst() const { return openFirst_; }
  // Of a place in the piece.
  std::int64_t At(const char* place) {
    if (place > counted_) {
      line_ += std::count(counted_, place, '\n');
      endsInLine_ = place[-1] != '\n';
      counted_ = place;
    }
    return line_;
  }
  // Those of all that was counted.
  std::int64_t Total() const { return endsInLine_ ? line_ : line_ - 1; }

 private:
  const VObjectParser& parser_;
  const char* counted_ = nullptr;  // up to here, in the piece
  const char* end_ = nullptr;
  std::int64_t line_ = 1;  // at `counted_`
  bool endsInLine_ = false;
  std::int64_t openFirst_ = 1;  // of the logical line that the piece before left open
  std::int64_t openLast_ = 1;
};

}  // namespace pim
