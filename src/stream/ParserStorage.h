// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstring>

#include "stream/VObjectParser.h"

namespace pim {

// Makes room for `count` more bytes, and moves `capacity` on. Each gives false when memory is out;
// the buffer's content is lost then.
[[nodiscard]] bool GrowBuffer(VObjectParser& parser, std::size_t count);
[[nodiscard]] bool GrowParams(VObjectParser& parser);

[[nodiscard]] inline bool ReserveBytes(VObjectParser& parser, std::size_t count) {
  return count <= static_cast<std::size_t>(parser.capacity - parser.length) ||
         GrowBuffer(parser, count);
}

inline bool AppendRun(VObjectParser& parser, const char* bytes, std::size_t count) {
  if (count == 0) return true;
  if (!ReserveBytes(parser, count)) return false;
  char* const to = parser.buffer.get() + parser.length;
  if (count <= 16) {  // most names; a call would take longer
    for (std::size_t i = 0; i < count; ++i) to[i] = bytes[i];
  } else {
    std::memcpy(to, bytes, count);
  }
  parser.length += static_cast<std::int32_t>(count);
  return true;
}

inline bool AppendByte(VObjectParser& parser, char byte) {
  if (!ReserveBytes(parser, 1)) return false;
  parser.buffer[static_cast<std::size_t>(parser.length++)] = byte;
  return true;
}

// A parameter whose name begins at `offset` of the buffer, and the value of the last one.
[[nodiscard]] inline bool AddParam(VObjectParser& parser, std::size_t offset) {
  const auto count = static_cast<std::size_t>(parser.paramCount);
  if (count == parser.paramsAllocated && !GrowParams(parser)) return false;
  parser.params[count].name.offset = offset;
  parser.params[count].value.offset = 0;
  ++parser.paramCount;
  return true;
}

[[nodiscard]] inline bool SetParamValue(VObjectParser& parser, std::size_t offset) {
  if (parser.params == nullptr) return false;
  parser.params[static_cast<std::size_t>(parser.paramCount) - 1].value.offset = offset;
  return true;
}

inline constexpr std::int32_t kKeptCapacity = 1024;
void FreeBuffer(VObjectParser& parser);

// Back to the rest state for the next property. A buffer that a long value made large is freed.
inline void Reset(VObjectParser& parser) {
  parser.state = ParserState::StateName;
  parser.length = 0;
  if (parser.capacity > kKeptCapacity) FreeBuffer(parser);
  parser.skipBlanks = true;
  parser.paramCount = 0;
  parser.escaped = false;
  parser.encoding = TransferEncoding::EncodingNone;
  parser.softBreak = false;
  parser.groupCount = 0;
  std::memset(parser.group, 0, sizeof parser.group);
}

}  // namespace pim
