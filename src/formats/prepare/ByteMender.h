// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "formats/prepare/PrepareNotes.h"
#include "formats/prepare/UnitDecoder.h"

namespace pim {

// The steps that know bytes alone: Unicode, Nul and LineEnds. A text comes in pieces of any size;
// what it gives is the same for all ways to cut it.
class ByteMender {
 public:
  ByteMender(PrepareStepMask steps, PrepareNotes& notes) : notes_(notes), steps_(steps) {}

  // Takes the next piece where it comes out as it stands, with nothing held back ahead of it and
  // nothing of it; else does nothing.
  bool Passes(std::string_view piece);
  // Appends what the next piece gives, and for the last one what was held back. `line` is the
  // number of the line that all of it so far, but for what is held back, ends in.
  void Append(std::string_view piece, bool isLast, std::int64_t line, std::string& out);

 private:
  // What ends the lines of the text; a carriage return in another one's lines may be a slip.
  enum class Ends : std::uint8_t { Undecided, LineFeeds, Returns };

  bool Has(PrepareStep step) const { return (steps_ & BitOf(step)) != 0; }
  void Decide(std::string_view head);
  void AppendMended(std::string_view bytes, bool isLast, std::string& out);
  bool AppendReturns(std::string_view rest, bool isLast, std::string& out);

  PrepareNotes& notes_;
  std::optional<UnitDecoder> decoder_;
  std::string held_;          // bytes that wait for what follows them, behind the returns
  std::string whole_;         // those and the next piece
  std::string decoded_;       // of a piece
  std::int64_t returns_ = 0;  // that wait for it, too
  std::int64_t line_ = 1;     // of what is appended next
  PrepareStepMask steps_;
  Ends ends_ = Ends::Undecided;
  bool isDecided_ = false;  // whether there is a decoder
};

}  // namespace pim
