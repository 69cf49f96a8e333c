// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "stream/VObjectParser.h"

#include <cstring>
#include <new>

#include "stream/ParserStates.h"
#include "stream/ParserStorage.h"
#include "stream/WholeLines.h"
#include "support/Ascii.h"

namespace pim {
namespace {

// Takes what may stand ahead of a line's first byte: line feeds, and the one blank that folds.
const char* SkipLineStart(VObjectParser& parser, const char* from, const char* end) {
  for (; from != end; ++from) {
    const char c = *from;
    if (c == '\n') {
      ++parser.lineFeeds;
      continue;
    }
    if (parser.foldSeen || !IsBlank(c) || c == '\r') break;
    parser.foldSeen = true;
  }
  return from;
}

// Decides what the line feed meant, now that the byte behind it is known.
void StartLine(VObjectParser& parser) {
  parser.atLineStart = false;
  if (!parser.foldSeen) {
    FeedLineFeed(parser);
  } else if (parser.encoding == TransferEncoding::EncodingQuotedPrintable) {
    EndSoftBreak(parser);
  }
}

// What stands ahead of the carriage returns at the end of a run.
const char* WithoutReturns(const char* from, const char* end) {
  while (end != from && end[-1] == '\r') --end;
  return end;
}

bool Fail(VObjectParser& parser, const char* piece, const char* run) {
  if (parser.fault == TextFault::None) parser.fault = TextFault::NoMemory;
  parser.rejectedRun = static_cast<std::size_t>(run - piece);
  return false;
}

}  // namespace

std::unique_ptr<VObjectParser> VObjectParser::Create() noexcept {
  return std::unique_ptr<VObjectParser>(new (std::nothrow) VObjectParser);
}

bool VObjectParser::Parse(const char* bytes, std::int32_t count, bool final) {
  const char* from = bytes;
  const char* const end = bytes + count;
  lineStart = nullptr;
  contentEnd = nullptr;
  while (from != end) {
    if (atLineStart) {
      from = SkipLineStart(*this, from, end);
      if (from == end) break;
      StartLine(*this);
      if (state == ParserState::StateName && length == 0) lineStart = from;
      if (!foldSeen && state == ParserState::StateName) {
        from = FeedWholeLines(*this, from, end);
        if (from == nullptr) return Fail(*this, bytes, lineStart);  // no memory for a header
      }
    }
    const auto* lineFeed =
        static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
    const char* const runEnd = lineFeed == nullptr ? end : lineFeed;
    if (!FeedRun(*this, from, runEnd)) return Fail(*this, bytes, from);
    const char* const content = WithoutReturns(from, runEnd);
    if (content != from) contentEnd = content;
    if (lineFeed == nullptr) break;
    ++lineFeeds;
    atLineStart = true;
    foldSeen = false;
    returnSeen = false;
    from = lineFeed + 1;
  }
  if (final) {
    endsInGroup = state == ParserState::StateValue &&
                  encoding == TransferEncoding::EncodingBase64 && groupCount > 0;
    FeedLineFeed(*this);
  }
  return true;
}

}  // namespace pim
