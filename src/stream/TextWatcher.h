// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "pim/stream/TextWatch.h"
#include "stream/PieceLines.h"
#include "stream/VObjectParser.h"

namespace pim {

// The word of an END, and whether a BEGIN stands behind it in its line, as in texts that were
// joined without a line end.
struct WordBehindEnd {
  NarrowStringView word;
  bool isJoined = false;
};
WordBehindEnd WordOfEnd(NarrowStringView value);

// Keeps what a host is told of one text: where each thing stood, and of which record it was.
class TextWatcher {
 public:
  // `parser` must outlive this.
  TextWatcher(WatchText watch, const VObjectParser& parser)
      : watch_(std::move(watch)), parser_(parser), lines_(parser) {}

  // Runs parse(), which takes the next piece of the text and gives false when it is rejected.
  // nameOfLast() tells how the last record is called. Gives what parse() gives.
  template <class Parse, class NameOfLast>
  bool Around(NarrowStringView piece, bool final, Parse parse, NameOfLast nameOfLast) {
    lines_.StartPiece(piece);
    const bool accepted = parse();
    lines_.EndPiece();
    if (!accepted || final) Complete(nameOfLast);
    if (accepted && final && EndsInside()) TellEnd(nameOfLast());
    return accepted;
  }

  // At the value of a BEGIN or END, with the words of the records that a text can hold; a frame
  // holds records and is none. What the END of a frame or record ends is closed.
  void BeginRecord() { openRecord_ = lines_.First(); }
  void BeginFrame() { openFrame_ = lines_.First(); }
  void EndRecord() { openRecord_ = 0; }
  void EndFrame() { openFrame_ = openRecord_ = 0; }
  void Note(TextEvent event, NarrowStringView property, NarrowStringView value);

  // Tells what was noted of a record, now that all of it is known, its name too.
  template <class NameOfLast>
  void Complete(NameOfLast nameOfLast) {
    if (!noted_.empty()) TellNoted(nameOfLast());
  }

 private:
  void TellNoted(WideStringView record);
  // At the end of the text: whether it breaks off.
  bool EndsInside() const { return openRecord_ != 0 || openFrame_ != 0 || parser_.endsInGroup; }
  void TellEnd(WideStringView record);

  WatchText watch_;
  const VObjectParser& parser_;
  PieceLines lines_;
  std::int64_t openRecord_ = 0;  // where one begins that has no END yet, or 0
  std::int64_t openFrame_ = 0;
  std::vector<TextNotice> noted_;
};

}  // namespace pim
