// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/ZoneFile.h"

#include <algorithm>
#include <optional>

#include "platform/ZoneRule.h"

namespace pim {
namespace {

constexpr std::size_t kTypeSize = 6;  // of a local time type: offset (4), daylight (1), name (1)

// A big-endian two's complement number over all of `bytes`, eight at most.
std::int64_t ReadNumber(std::string_view bytes) {
  std::uint64_t number = static_cast<unsigned char>(bytes.front()) < 0x80 ? 0 : ~std::uint64_t{0};
  for (const char c : bytes) number = number << 8 | static_cast<unsigned char>(c);
  return static_cast<std::int64_t>(number);
}

// One of a file's data blocks. From version 2 on there are two, the second with wider times.
struct Block {
  char version = 0;
  std::size_t time_size = 0;
  std::string_view times;       // of the changes, ascending
  std::string_view type_index;  // one byte for each of them
  std::string_view types;
};

// Takes a block from the front of `file`; nothing when `file` doesn't start with a whole one.
std::optional<Block> TakeBlock(std::string_view& file, std::size_t timeSize) {
  constexpr std::string_view kMagic = "TZif";
  constexpr std::size_t kCounts = 20;  // where the header's six counts start
  constexpr std::size_t kHeaderSize = 44;
  if (file.size() < kHeaderSize || !file.starts_with(kMagic)) return {};
  const std::string_view header = file.substr(0, kHeaderSize);
  const auto count = [header](std::size_t index) {
    return static_cast<std::uint64_t>(ReadNumber(header.substr(kCounts + 4 * index, 4))) &
           0xFFFFFFFFU;
  };
  const std::uint64_t utc_marks = count(0), standard_marks = count(1), leap_seconds = count(2);
  const std::uint64_t times = count(3), types = count(4), name_bytes = count(5);
  const std::uint64_t size = times * (timeSize + 1) + types * kTypeSize + name_bytes +
                             leap_seconds * (timeSize + 4) + standard_marks + utc_marks;
  file.remove_prefix(kHeaderSize);
  if (size > file.size()) return {};
  Block block{header[kMagic.size()], timeSize, {}, {}, {}};
  block.times = file.substr(0, times * timeSize);
  block.type_index = file.substr(times * timeSize, times);
  block.types = file.substr(times * (timeSize + 1), types * kTypeSize);
  file.remove_prefix(size);
  return block;
}

// Seconds east of UTC of the standard time in force at `now`: of the last change to one by then,
// else of the first one in the file.
std::optional<std::int64_t> StandardOffset(const Block& block, std::int64_t now) {
  const auto type_at = [&block](std::size_t i) {
    return block.types.substr(std::min(i * kTypeSize, block.types.size()), kTypeSize);
  };
  const auto is_standard = [](std::string_view type) {
    return type.size() == kTypeSize && type[4] == 0;
  };
  const auto offset = [](std::string_view type) { return ReadNumber(type.substr(0, 4)); };
  for (std::size_t i = block.type_index.size(); i-- > 0;) {
    if (ReadNumber(block.times.substr(i * block.time_size, block.time_size)) > now) continue;
    const std::string_view type = type_at(static_cast<unsigned char>(block.type_index[i]));
    if (is_standard(type)) return offset(type);
  }
  for (std::size_t i = 0; i * kTypeSize < block.types.size(); ++i)
    if (is_standard(type_at(i))) return offset(type_at(i));
  return {};
}

}  // namespace

bool ParseZoneFile(std::string_view file, std::int64_t now, TIME_ZONE_INFORMATION& zone) {
  auto block = TakeBlock(file, 4);
  if (!block) return false;
  if (block->version >= '2') {
    block = TakeBlock(file, 8);
    if (!block) return false;
    const std::size_t end = file.find('\n', 1);  // the rule stands between two line feeds
    if (file.starts_with('\n') && end != std::string_view::npos &&
        ParseZoneRule(file.substr(1, end - 1), zone))
      return true;
  }
  const auto offset = StandardOffset(*block, now);
  if (!offset) return false;
  zone = {};
  zone.Bias = static_cast<std::int32_t>(-*offset / 60);
  return true;
}

}  // namespace pim
