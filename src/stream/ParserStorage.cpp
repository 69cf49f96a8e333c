#include "stream/ParserStorage.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace pim {
namespace {

constexpr std::int64_t kBufferStep = 128;
constexpr std::int32_t kKeptCapacity = 1024;

// Resizes an owned block; on failure it stays as it was.
template <class T>
bool Resize(std::unique_ptr<T[], FreeMemory>& block, std::size_t count) {
  void* moved = std::realloc(block.get(), count * sizeof(T));
  if (moved == nullptr) return false;
  static_cast<void>(block.release());  // realloc has freed or moved it
  block.reset(static_cast<T*>(moved));
  return true;
}

}  // namespace

bool ReserveBytes(VObjectParser& parser, std::size_t count) {
  const std::int64_t missing =
      std::int64_t{parser.length} + static_cast<std::int64_t>(count) - parser.capacity;
  if (missing <= 0) return true;
  const std::int64_t capacity =
      parser.capacity + (missing + kBufferStep - 1) / kBufferStep * kBufferStep;
  const auto wanted = static_cast<std::size_t>(capacity);
  const std::size_t allocated = std::max(wanted, 2 * parser.bufferAllocated);
  if (capacity > std::numeric_limits<std::int32_t>::max() ||
      (wanted > parser.bufferAllocated && !Resize(parser.buffer, allocated))) {
    parser.capacity = 0;
    parser.length = 0;
    return false;
  }
  if (wanted > parser.bufferAllocated) parser.bufferAllocated = allocated;
  parser.capacity = static_cast<std::int32_t>(capacity);
  return true;
}

bool AppendRun(VObjectParser& parser, const char* bytes, std::size_t count) {
  if (count == 0) return true;
  if (!ReserveBytes(parser, count)) return false;
  std::memcpy(parser.buffer.get() + parser.length, bytes, count);
  parser.length += static_cast<std::int32_t>(count);
  return true;
}

bool AppendByte(VObjectParser& parser, char byte) {
  if (parser.length == parser.capacity && !ReserveBytes(parser, 1)) return false;
  parser.buffer[static_cast<std::size_t>(parser.length++)] = byte;
  return true;
}

bool AddParam(VObjectParser& parser, std::size_t offset) {
  const auto count = static_cast<std::size_t>(parser.paramCount);
  if (count == parser.paramsAllocated) {
    const std::size_t allocated = std::max<std::size_t>(8, 2 * count);
    if (!Resize(parser.params, allocated)) return false;
    parser.paramsAllocated = allocated;
  }
  parser.params[count].name.offset = offset;
  parser.params[count].value.offset = 0;
  ++parser.paramCount;
  return true;
}

bool SetParamValue(VObjectParser& parser, std::size_t offset) {
  if (parser.params == nullptr) return false;
  parser.params[static_cast<std::size_t>(parser.paramCount) - 1].value.offset = offset;
  return true;
}

void Reset(VObjectParser& parser) {
  parser.state = ParserState::StateName;
  parser.length = 0;
  if (parser.capacity > kKeptCapacity) {
    parser.buffer.reset();
    parser.bufferAllocated = 0;
    parser.capacity = 0;
  }
  parser.skipBlanks = 1;
  parser.paramCount = 0;
  parser.escaped = 0;
  parser.encoding = TransferEncoding::EncodingNone;
  parser.softBreak = 0;
  parser.groupCount = 0;
  std::memset(parser.group, 0, sizeof parser.group);
}

}  // namespace pim
