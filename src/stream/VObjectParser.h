// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "pim/stream/TextAccount.h"
#include "pim/support/Strings.h"
#include "support/ParameterWords.h"

namespace pim {

enum class ParserState : std::int32_t {
  StateName = 0,  // at rest, and in a property's name
  StateParamStart = 1,
  StateParamName = 2,
  StateParamValueStart = 3,
  StateParamValue = 4,
  StateValue = 5,
};

// One parameter of a property. While its header is read the words are offsets into the parser's
// buffer, which may move; the handlers get them as zero-terminated texts, null for none.
struct ParserParam {
  union Word {
    std::size_t offset;
    const char* text;
  };
  // What the handlers read of the value: empty for a parameter without one.
  NarrowStringView ValueText() const {
    return value.text == nullptr ? NarrowStringView{} : value.text;
  }

  Word name;
  Word value;
};

// Called once for each logical line that has a colon. `params` ends with a pair of two nulls.
using PropertyHandler = void (*)(void* userData, const char* name, const ParserParam* params);
// Called with the value's bytes, unless it is empty, and then with null and 0.
using DataHandler = void (*)(void* userData, const char* bytes, std::int32_t length);

struct FreeMemory {
  void operator()(void* block) const noexcept { std::free(block); }
};

// A push parser for the line grammar of vObject text: logical lines, folding, parameters and
// transfer encodings. It knows no vCard or vCalendar word and no charset. Base64 is decoded;
// quoted-printable loses its soft line breaks and keeps its escapes. What the handlers are given
// lies in the parser's buffer, or in the text where a value stands there as it is, and holds for
// that call only.
//
// The idea: what a line feed means shows only in the first byte behind it, a blank there being the
// mark of a folded line. So a line feed waits (Parse), and goes to the state machine once it is
// known to end its line (ParserStates.cpp for headers, ParserValues.cpp for values). The machine
// takes whole runs of bytes between those that change its state. Nearly all lines stand whole in
// the text and need no state at all: WholeLines.cpp takes them and leaves the rest to the machine,
// and both give the same events for the same text, however it is cut.
//
// Devices break lines in their own ways, and the grammar takes them: a carriage return is dropped
// wherever it stands; an empty line ends a base64 value, since many write its lines without the
// blank of a fold; a line without a colon is passed over.
struct VObjectParser {
  // Null when memory is out.
  static std::unique_ptr<VObjectParser> Create() noexcept;

  void SetPropertyHandler(PropertyHandler handler) { propertyHandler = handler; }
  void SetDataHandler(DataHandler handler) { dataHandler = handler; }
  void SetUserData(void* data) { userData = data; }

  // Takes the next piece of the text, cut anywhere; `final` ends the last line. False when a byte
  // was rejected: nothing behind it is read, and what the handlers were given stands.
  [[nodiscard]] bool Parse(const char* bytes, std::int32_t count, bool final);

  bool atLineStart = true;  // the last byte was a line feed, or there was none yet
  bool foldSeen = false;    // a first blank was dropped: the line continues the one before
  std::unique_ptr<char[], FreeMemory> buffer;
  std::int32_t capacity = 0;  // grows in steps of 128
  std::int32_t length = 0;
  ParserState state = ParserState::StateName;
  bool skipBlanks = true;  // blanks ahead of the value's first byte are being dropped
  std::unique_ptr<ParserParam[], FreeMemory> params;
  std::int32_t paramCount = 0;
  bool escaped = false;  // a backslash was taken in a parameter's value
  TransferEncoding encoding = TransferEncoding::EncodingNone;
  bool softBreak = false;            // in quoted-printable, an equals sign was taken
  char group[4] = {};                // digits of an escape, or of a base64 group
  std::uint32_t groupLines[4] = {};  // `lineFeeds` at each of the latter
  std::int32_t groupCount = 0;
  void* userData = nullptr;
  PropertyHandler propertyHandler = nullptr;
  DataHandler dataHandler = nullptr;

  // What the allocator was asked for, which grows by doubling, so that a long value isn't copied
  // at each step of `capacity` and a long list of parameters isn't at each entry.
  std::size_t bufferAllocated = 0;
  std::size_t paramsAllocated = 0;

  // Where, in the piece being parsed, the logical line begins that is being read; null when that
  // was in an earlier piece.
  const char* lineStart = nullptr;

  // Behind the last byte in the piece that was a part of it: not of blank lines that follow it.
  const char* contentEnd = nullptr;

  // Called with the user data at the end of a logical line without a colon.
  void (*junkHandler)(void* userData) = nullptr;

  bool returnSeen = false;  // the last byte of the value was a carriage return

  // What was lost of a value as it was put together; whoever looks at it sets it back.
  LossMask valueLosses = 0;

  // The text has ended inside a group of base64 digits: its last value was cut, or lacks padding.
  bool endsInGroup = false;

  // Line feeds in what went to the state machine; only differences inside a value tell anything.
  std::uint32_t lineFeeds = 0;

  // Why a byte was rejected; the start, in its piece, of the run of bytes without a line feed in
  // which that showed; how many line feeds ahead of it the byte stands; and the name of its
  // property, where it stands in the header.
  TextFault fault = TextFault::None;
  std::uint32_t faultLinesBack = 0;
  std::size_t rejectedRun = 0;
  NarrowString rejectedName;
};

}  // namespace pim
