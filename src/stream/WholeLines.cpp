// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "stream/WholeLines.h"

#include <bit>

#include "stream/ParserStates.h"
#include "stream/ParserStorage.h"
#include "support/ByteBlock.h"

namespace pim {
namespace {

// The bytes of a header that do something, and some that don't: control bytes.
unsigned HeaderMarks(const ByteBlock& block) {
  return block.UpToOrAnyOf<' ', ':', ';', '=', '\\'>();
}

bool IsHeaderMark(char c) {
  return c == ':' || c == ';' || c == '=' || c == '\\' || static_cast<unsigned char>(c) <= ' ';
}

// Takes a header into the buffer, where a zero byte replaces each mark. False for one that isn't
// plain, with blanks, escapes, a missing word or more text than fits; the state machine then takes
// all of it.
class HeaderTaker {
 public:
  HeaderTaker(VObjectParser& parser, const char* from, const char* end)
      : parser_(parser), from_(from), end_(end) {}

  bool Take() {
    constexpr auto kBlock = static_cast<std::ptrdiff_t>(ByteBlock::kSize);
    for (std::ptrdiff_t start = 0;; start += kBlock) {
      // A mark may be the block's last byte, and what follows it is looked at.
      if (end_ - from_ <= start + kBlock || parser_.capacity < start + kBlock) return false;
      const ByteBlock block(from_ + start);
      block.Store(parser_.buffer.get() + start);
      for (unsigned marks = HeaderMarks(block); marks != 0; marks &= marks - 1) {
        const std::ptrdiff_t at = start + std::countr_zero(marks);
        if (from_[at] == ':') {
          parser_.length = static_cast<std::int32_t>(at);
          return true;
        }
        if (!TakeMark(static_cast<std::size_t>(at))) return false;
      }
    }
  }

 private:
  enum class Word { Name, ParamName, ParamValue };

  bool TakeMark(std::size_t at) {
    if (from_[at] == ';') {
      if (IsHeaderMark(from_[at + 1]) || !AddParam(parser_, at + 1)) return false;
      word_ = Word::ParamName;
    } else if (from_[at] == '=' && word_ != Word::ParamValue) {
      if (word_ == Word::Name) return true;  // one of its letters
      if (IsHeaderMark(from_[at + 1]) || !SetParamValue(parser_, at + 1)) return false;
      word_ = Word::ParamValue;
    } else {
      return from_[at] == '=';
    }
    parser_.buffer[at] = '\0';
    return true;
  }

  VObjectParser& parser_;
  const char* from_;
  const char* end_;
  Word word_ = Word::Name;
};

// Hands on the value that begins at `from`, and gives the line behind it. Null when the line goes
// on, isn't whole, must be decoded, or would make the buffer grow.
const char* TakeValue(VObjectParser& parser, const char* from, const char* end) {
  if (parser.dataHandler == nullptr || parser.encoding == TransferEncoding::EncodingBase64)
    return nullptr;
  while (from != end && (*from == ' ' || *from == '\t')) ++from;
  const char* const stop = FindAnyOf<'\r', '\n'>(from, end);
  const char* next = stop;
  while (next != end && *next == '\r') ++next;
  if (end - next < 2 || *next != '\n') return nullptr;
  ++next;
  if (*next == '\n' || *next == ' ' || *next == '\t') return nullptr;
  if (stop - from > parser.capacity) return nullptr;
  if (parser.encoding == TransferEncoding::EncodingQuotedPrintable &&
      FindSoftBreak(from, stop) != stop)
    return nullptr;
  parser.contentEnd = stop;
  if (stop != from)
    parser.dataHandler(parser.userData, from, static_cast<std::int32_t>(stop - from));
  parser.dataHandler(parser.userData, nullptr, 0);
  // All that isn't as Reset leaves it: the buffer hasn't grown, and no other field was touched.
  parser.state = ParserState::StateName;
  parser.paramCount = 0;
  parser.encoding = TransferEncoding::EncodingNone;
  return next;
}

}  // namespace

const char* FeedWholeLines(VObjectParser& parser, const char* from, const char* end) {
  for (;;) {
    parser.lineStart = from;
    if (!HeaderTaker(parser, from, end).Take()) {
      parser.paramCount = 0;
      return from;
    }
    const char* const value = from + parser.length + 1;
    if (!EmitProperty(parser)) return nullptr;
    const char* const next = TakeValue(parser, value, end);
    if (next == nullptr) {
      parser.contentEnd = value;
      return value;
    }
    from = next;
  }
}

}  // namespace pim
