// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/prepare/LineHead.h"
#include "formats/prepare/PrepareNotes.h"

namespace pim {

// A property with all of its physical lines, folds, soft breaks and a continued head included.
struct PropertyLine {
  std::string text;  // with line ends
  std::int64_t first = 0;
  std::int64_t last = 0;    // physical lines of the source
  bool isIndented = false;  // lines of base64 got a blank

  LineHead head() const { return LineHead::Of(text); }
  // What stands behind the colon, its line ends included; empty without a colon.
  std::string_view value() const {
    const LineHead own = head();
    return own.hasColon() ? std::string_view(text).substr(own.colon + 1) : std::string_view();
  }
  // The line end behind it; CR LF where it has none.
  std::string_view lineEnd() const {
    return text.ends_with('\n') && !text.ends_with("\r\n") ? "\n" : "\r\n";
  }
};

// Follows the physical lines of a text and tells which of them begin a property. Lines that the
// tokeniser would join, it joins; those of a picture that lost their blanks, too.
class LineJoints {
 public:
  enum class Kind : std::uint8_t {
    Begins,  // a property, or a line that is none
    Blank,   // nothing but a line end
    GoesOn,  // of the property before
    Base64,  // the same, without the blank that should say so
  };

  // Of the next line, with its line end, which isn't empty. `joins64` tells whether lines of base64
  // are joined.
  Kind Take(std::string_view line, bool joins64);
  // What may follow a property that isn't base64 and whose head is whole.
  struct Tail {
    bool isQuotedPrintable = false;
    bool isSoftBreak = false;  // the next line is a part of it
  };
  bool IsAtEnd() const { return !isOpenHead_ && !isPicture_ && !isFoldOpen_; }
  Tail tail() const { return {coding_.isQuotedPrintable, isSoftBreak_}; }
  // Lines were passed over; the last one ended so.
  void Pass(Tail tail) {
    coding_ = LineCoding();
    coding_.isQuotedPrintable = tail.isQuotedPrintable;
    isSoftBreak_ = tail.isSoftBreak;
  }

  // Of the property that Begins gave last.
  const LineHead& head() const { return head_; }
  const LineCoding& coding() const { return coding_; }

 private:
  void TakeHeadLine(std::string_view line);

  LineHead head_{};
  LineCoding coding_;
  std::string openParams_;    // of a head that goes on, so far
  bool isOpenHead_ = false;   // no colon yet
  bool isSoftBreak_ = false;  // quoted-printable that goes on
  bool isPicture_ = false;    // base64 may go on
  bool isFoldOpen_ = false;   // a fold of nothing, which the next line ends
};

// The properties of a text whose first physical line has that number. With `mends64`, lines of
// base64 without the blank at their head get it.
std::vector<PropertyLine> PropertyLinesOf(std::string_view text, std::int64_t firstLine,
                                          bool mends64);
std::string TextOf(const std::vector<PropertyLine>& lines);

}  // namespace pim
