// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "stream/ParserStates.h"

#include <algorithm>

#include "stream/ByteClasses.h"
#include "stream/ParserStorage.h"
#include "support/WordTable.h"

namespace pim {
namespace {

constexpr Word kEncodingWords[] = {kQuotedPrintableWord, kBase64Word, k8BitWord};
static_assert(TextsDiffer(kEncodingWords));
constexpr WordIndex kEncodingIndex(kEncodingWords);

// Whether a parameter's name can be ENCODING or an encoding word, by its first letter alone: few
// parameters are either, and each property has some.
constexpr bool MayNameEncoding(char first) {
  const char upper = ToUpper(first);
  return upper == kEncodingName.front() ||
         std::ranges::any_of(kEncodingWords,
                             [upper](const Word& word) { return word.text.front() == upper; });
}

// A word behind ENCODING= or in its place names the encoding; the last one that does counts.
void TakeEncoding(VObjectParser& parser, const ParserParam& param) {
  if (!MayNameEncoding(*param.name.text)) return;
  WordKey word = KeyOf(param.name.text);
  if (EqualsIgnoringCase(word.text, kEncodingName)) {
    if (param.value.text == nullptr) return;
    word = KeyOf(param.value.text);
  }
  if (const auto encoding = kEncodingIndex.CodeOf(word))
    parser.encoding = static_cast<TransferEncoding>(*encoding);
}

// Offsets become texts, now that the buffer stays where it is, and the encoding is known.
void ResolveParams(VObjectParser& parser) {
  const char* const buffer = parser.buffer.get();
  for (std::int32_t i = 0; i < parser.paramCount; ++i) {
    ParserParam& param = parser.params[static_cast<std::size_t>(i)];
    const std::size_t value = param.value.offset;
    param.name.text = buffer + param.name.offset;
    param.value.text = value == 0 ? nullptr : buffer + value;
    TakeEncoding(parser, param);
  }
}

}  // namespace

bool EmitProperty(VObjectParser& parser) {
  if (parser.propertyHandler != nullptr) {
    if (!AppendByte(parser, '\0')) return false;
    if (parser.paramCount != 0) ResolveParams(parser);
    if (!AddParam(parser, 0)) return false;
    ParserParam& last = parser.params[static_cast<std::size_t>(parser.paramCount) - 1];
    last.name.text = nullptr;
    last.value.text = nullptr;
    parser.propertyHandler(parser.userData, parser.buffer.get(), parser.params.get());
  }
  parser.length = 0;
  parser.state = ParserState::StateValue;
  return true;
}

namespace {

// Ends a name or value in the buffer and goes on in `next`.
bool EndWord(VObjectParser& parser, ParserState next) {
  parser.state = next;
  return AppendByte(parser, '\0');
}

// Gives null. The name stands at the start of the buffer, zero-terminated.
const char* RejectHeader(VObjectParser& parser, TextFault fault) {
  parser.fault = fault;
  parser.rejectedName = parser.buffer.get();
  Reset(parser);
  return nullptr;
}

// Each takes as much of the run as belongs to its state and gives where it stopped, or null when
// the byte there is rejected.

const char* FeedName(VObjectParser& parser, const char* from, const char* end) {
  const char* const stop = FindClass(from, end, BYTE_COLON | BYTE_SEMICOLON | BYTE_BLANK);
  if (!AppendRun(parser, from, static_cast<std::size_t>(stop - from))) return nullptr;
  if (stop == end) return end;
  if (*stop == ':' && !EmitProperty(parser)) return nullptr;
  if (*stop == ';' && !EndWord(parser, ParserState::StateParamStart)) return nullptr;
  return stop + 1;
}

const char* FeedParamStart(VObjectParser& parser, const char* from, const char*) {
  // "TEL;:1": the semicolon promised a parameter
  if (*from == ':') return RejectHeader(parser, TextFault::NoParameter);
  if (IsWhiteSpace(*from)) return from + 1;
  if (!AddParam(parser, static_cast<std::size_t>(parser.length))) return nullptr;
  parser.state = ParserState::StateParamName;
  return AppendByte(parser, *from) ? from + 1 : nullptr;
}

const char* FeedParamName(VObjectParser& parser, const char* from, const char* end) {
  const char* const stop =
      FindClass(from, end, BYTE_COLON | BYTE_SEMICOLON | BYTE_EQUALS | BYTE_WHITE_SPACE);
  if (!AppendRun(parser, from, static_cast<std::size_t>(stop - from))) return nullptr;
  if (stop == end) return end;
  if (*stop == ':' && !EmitProperty(parser)) return nullptr;
  if (*stop == ';' && !EndWord(parser, ParserState::StateParamStart)) return nullptr;
  if (*stop == '=' && !EndWord(parser, ParserState::StateParamValueStart)) return nullptr;
  return stop + 1;
}

const char* FeedParamValueStart(VObjectParser& parser, const char* from, const char*) {
  // "TEL;TYPE=:1": the equals sign promised a value
  if (*from == ':' || *from == ';') return RejectHeader(parser, TextFault::NoParameterValue);
  if (IsWhiteSpace(*from)) return from + 1;
  if (!SetParamValue(parser, static_cast<std::size_t>(parser.length))) return nullptr;
  parser.state = ParserState::StateParamValue;
  return AppendByte(parser, *from) ? from + 1 : nullptr;
}

// The backslash of a parameter value holds until a semicolon or a further backslash: "a\b;c" is
// one value, ab;c.
const char* FeedParamValue(VObjectParser& parser, const char* from, const char* end) {
  const char* const stop =
      FindClass(from, end, BYTE_COLON | BYTE_SEMICOLON | BYTE_BACKSLASH | BYTE_WHITE_SPACE);
  if (!AppendRun(parser, from, static_cast<std::size_t>(stop - from))) return nullptr;
  if (stop == end) return end;
  if (*stop == ':') return EmitProperty(parser) ? stop + 1 : nullptr;
  if (*stop == ';' || *stop == '\\') {
    if (parser.escaped) {
      parser.escaped = false;
      if (!AppendByte(parser, *stop)) return nullptr;
    } else if (*stop == '\\') {
      parser.escaped = true;
    } else if (!EndWord(parser, ParserState::StateParamStart)) {
      return nullptr;
    }
  }
  return stop + 1;
}

const char* FeedState(VObjectParser& parser, const char* from, const char* end) {
  switch (parser.state) {  // no default: the compiler names a state that is left out
    case ParserState::StateName:
      return FeedName(parser, from, end);
    case ParserState::StateParamStart:
      return FeedParamStart(parser, from, end);
    case ParserState::StateParamName:
      return FeedParamName(parser, from, end);
    case ParserState::StateParamValueStart:
      return FeedParamValueStart(parser, from, end);
    case ParserState::StateParamValue:
      return FeedParamValue(parser, from, end);
    case ParserState::StateValue:
      return FeedValue(parser, from, end);
  }
  return nullptr;
}

}  // namespace

bool FeedRun(VObjectParser& parser, const char* from, const char* end) {
  while (from != end) {
    from = FeedState(parser, from, end);
    if (from == nullptr) return false;
  }
  return true;
}

// Inside a header a line feed is only white space: TEL;HOME with X:1 below is one property.
void FeedLineFeed(VObjectParser& parser) {
  if (parser.state == ParserState::StateName) {
    if (parser.length > 0 && parser.junkHandler != nullptr) parser.junkHandler(parser.userData);
    Reset(parser);  // a line without a colon is dropped
  } else if (parser.state == ParserState::StateValue) {
    EndValue(parser);
  }
}

}  // namespace pim
