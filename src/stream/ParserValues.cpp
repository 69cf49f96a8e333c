// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstring>

#include "stream/ByteClasses.h"
#include "stream/ParserStates.h"
#include "stream/ParserStorage.h"
#include "support/Base64.h"

namespace pim {
namespace {

// Running out of memory inside a value only loses the bytes collected so far, so the results of
// the append operations aren't looked at here.

const char* FeedPlain(VObjectParser& parser, const char* from, const char* end) {
  const auto* carriageReturn =
      static_cast<const char*>(std::memchr(from, '\r', static_cast<std::size_t>(end - from)));
  const char* const stop = carriageReturn == nullptr ? end : carriageReturn;
  AppendRun(parser, from, static_cast<std::size_t>(stop - from));
  if (stop == end) return end;
  parser.returnSeen = true;
  return stop + 1;
}

}  // namespace

const char* FindSoftBreak(const char* from, const char* end) {
  for (;;) {
    from = FindClass(from, end, BYTE_EQUALS | BYTE_RETURN);
    if (end - from < 3 || *from == '\r' || from[1] == '\r' || from[1] == '\0' || from[2] == '\r')
      return from;
    from += 3;
  }
}

namespace {

// The two bytes behind an equals sign that stood at a line's end or in front of a carriage return.
void FeedEscapeDigit(VObjectParser& parser, char c) {
  if (parser.group[0] == '\0') {
    if (c == '\0') parser.valueLosses |= LOSS_NUL;  // taken for no digit at all
    parser.group[0] = c;
    return;
  }
  parser.group[1] = c;
  parser.group[2] = '\0';
  const char escape[] = {'=', parser.group[0], parser.group[1]};
  AppendRun(parser, escape, sizeof escape);
  parser.softBreak = false;
}

const char* FeedQuotedPrintable(VObjectParser& parser, const char* from, const char* end) {
  if (parser.softBreak) {
    if (*from == '\r') {
      parser.returnSeen = true;
    } else {
      FeedEscapeDigit(parser, *from);
    }
    return from + 1;
  }
  const char* const stop = FindSoftBreak(from, end);
  AppendRun(parser, from, static_cast<std::size_t>(stop - from));
  if (stop == end) return end;
  if (*stop == '=') {
    parser.softBreak = true;
    std::memset(parser.group, 0, sizeof parser.group);
    parser.groupCount = 0;
  } else {
    parser.returnSeen = true;
  }
  return stop + 1;
}

constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> MakeBase64Values() {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoDigit);
  for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i)
    values[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<std::uint8_t>(i);
  return values;
}
constexpr std::array<std::uint8_t, 256> kBase64Values = MakeBase64Values();

// For each place of a digit in its group: the digit's bits where they stand in the 24 bits of the
// group, or all ones.
constexpr std::uint32_t kNoGroup = 0xFFFFFFFF;
using PlaceTable = std::array<std::uint32_t, 256>;
constexpr PlaceTable MakePlace(unsigned shift) {
  PlaceTable place{};
  for (std::size_t i = 0; i < place.size(); ++i) {
    place[i] = kBase64Values[i] == kNoDigit ? kNoGroup
                                            : static_cast<std::uint32_t>(kBase64Values[i]) << shift;
  }
  return place;
}
constexpr std::array<PlaceTable, 4> kPlaces = {MakePlace(18), MakePlace(12), MakePlace(6),
                                               MakePlace(0)};

// The 24 bits of the four digits at `from`, or kNoGroup when one is none.
std::uint32_t GroupBits(const char* from) {
  const auto digit = [from](std::size_t i) { return static_cast<unsigned char>(from[i]); };
  return kPlaces[0][digit(0)] | kPlaces[1][digit(1)] | kPlaces[2][digit(2)] | kPlaces[3][digit(3)];
}

// Decodes whole groups without padding or white space, by far the most; stops at any other. The
// buffer grows only for a group that is one.
const char* DecodeGroups(VObjectParser& parser, const char* from, const char* end) {
  while (end - from >= 4) {
    if (parser.capacity - parser.length < 3 &&
        (GroupBits(from) == kNoGroup || !ReserveBytes(parser, 3)))
      break;
    const auto room = static_cast<std::size_t>(parser.capacity - parser.length) / 3;
    const char* const last = from + std::min(static_cast<std::size_t>(end - from) / 4, room) * 4;
    char* to = parser.buffer.get() + parser.length;
    const char* const start = to;
    std::uint32_t bits = 0;
    for (; from != last && (bits = GroupBits(from)) != kNoGroup; from += 4, to += 3) {
      to[0] = static_cast<char>(bits >> 16);
      to[1] = static_cast<char>(bits >> 8);
      to[2] = static_cast<char>(bits);
    }
    parser.length += static_cast<std::int32_t>(to - start);
    if (from != last) break;
  }
  return from;
}

// The four digits of `group`, of which the last or the last two may be padding. A digit outside
// the alphabet rejects the text and leaves the group as it is.
bool DecodeGroup(VObjectParser& parser) {
  std::uint8_t digits[4];
  for (std::size_t i = 0; i < 4; ++i)
    digits[i] = kBase64Values[static_cast<unsigned char>(parser.group[i])];
  if (digits[0] == kNoDigit || digits[1] == kNoDigit) return false;
  AppendByte(parser, static_cast<char>(digits[0] << 2 | digits[1] >> 4));
  if (parser.group[2] == '=') {
    if (parser.group[3] != '=') parser.valueLosses |= LOSS_BAD_BASE64;
  } else {
    if (digits[2] == kNoDigit) return false;
    AppendByte(parser, static_cast<char>((digits[1] & 15) << 4 | digits[2] >> 2));
    if (parser.group[3] != '=') {
      if (digits[3] == kNoDigit) return false;
      AppendByte(parser, static_cast<char>((digits[2] & 3) << 6 | digits[3]));
    }
  }
  std::memset(parser.group, 0, sizeof parser.group);
  parser.groupCount = 0;
  return true;
}

bool FeedBase64Digit(VObjectParser& parser, char c) {
  if (parser.groupCount < 4 && !IsWhiteSpace(c)) {
    const auto count = static_cast<std::size_t>(parser.groupCount++);
    parser.group[count] = c;
    parser.groupLines[count] = parser.lineFeeds;
  }
  return parser.groupCount < 4 || DecodeGroup(parser);
}

// How many lines ahead the byte of a full group stands that is none of base64.
std::uint32_t LinesBackToFault(const VObjectParser& parser) {
  for (std::size_t i = 0; i < 4; ++i) {
    const auto digit = static_cast<unsigned char>(parser.group[i]);
    if (kBase64Values[digit] == kNoDigit && (i < 2 || digit != '='))
      return parser.lineFeeds - parser.groupLines[i];
  }
  return 0;
}

const char* FeedBase64(VObjectParser& parser, const char* from, const char* end) {
  if (parser.groupCount == 0) {
    from = DecodeGroups(parser, from, end);
    if (from == end) return end;
  }
  if (*from != '\r' && !FeedBase64Digit(parser, *from)) {
    parser.fault = TextFault::NoBase64;
    parser.faultLinesBack = LinesBackToFault(parser);
    return nullptr;
  }
  return from + 1;
}

}  // namespace

const char* FeedValue(VObjectParser& parser, const char* from, const char* end) {
  if (parser.skipBlanks) {
    for (; from != end && IsBlank(*from); ++from) parser.returnSeen = *from == '\r';
    if (from == end) return end;
    parser.skipBlanks = false;
  }
  if (parser.returnSeen && *from != '\r') {
    parser.returnSeen = false;
    parser.valueLosses |= LOSS_RETURN;
  }
  if (parser.dataHandler == nullptr) return end;
  switch (parser.encoding) {
    case TransferEncoding::EncodingQuotedPrintable:
      return FeedQuotedPrintable(parser, from, end);
    case TransferEncoding::EncodingBase64:
      return FeedBase64(parser, from, end);
    case TransferEncoding::EncodingNone:
    case TransferEncoding::Encoding8Bit:
      break;
  }
  return FeedPlain(parser, from, end);
}

void EndSoftBreak(VObjectParser& parser) {
  if (parser.softBreak && parser.group[0] != '\0') parser.valueLosses |= LOSS_BAD_ESCAPE;
  parser.softBreak = false;
}

void EndValue(VObjectParser& parser) {
  if (parser.encoding == TransferEncoding::EncodingQuotedPrintable && parser.softBreak) {
    EndSoftBreak(parser);  // the value goes on with the next line
    return;
  }
  if (parser.dataHandler != nullptr) {
    if (parser.encoding == TransferEncoding::EncodingBase64 && parser.groupCount > 0) {
      parser.valueLosses |= LOSS_BAD_BASE64;
      // A short last group is padded. One that can't be decoded stays full and ends the loop; the
      // bytes ahead of it are still the value.
      while (parser.groupCount > 0 && FeedBase64Digit(parser, '=')) {
      }
    }
    if (parser.length > 0) parser.dataHandler(parser.userData, parser.buffer.get(), parser.length);
    parser.dataHandler(parser.userData, nullptr, 0);
  }
  Reset(parser);
}

}  // namespace pim
