// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/Utf8.h"

#include <array>
#include <cstddef>

#include "platform/AsciiRuns.h"
#include "platform/CodePages.h"
#include "platform/Utf16.h"

namespace pim {
namespace {

struct Decoded {
  char32_t character;
  std::size_t length;  // bytes taken, at least one
};

// How a sequence with a given lead byte goes on. The narrowed range of the second byte is what
// keeps out overlong forms, surrogates and numbers beyond U+10FFFF.
struct Lead {
  std::size_t length = 1;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
};

constexpr Lead LeadOf(unsigned char byte) noexcept {
  if (byte < 0xC2 || byte > 0xF4) return {};
  if (byte < 0xE0) return {2};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte < 0xF0) return {3};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {4};
}

// Decodes the sequence at the start of `bytes`, which starts with no ASCII character.
Decoded DecodeSequence(std::string_view bytes) noexcept {
  const auto byte_at = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const Lead lead = LeadOf(byte_at(0));
  if (lead.length == 1 || bytes.size() < 2 || byte_at(1) < lead.low || byte_at(1) > lead.high)
    return {kReplacementCharacter, 1};
  char32_t character = (byte_at(0) & (0x7FU >> lead.length)) << 6 | (byte_at(1) & 0x3FU);
  for (std::size_t i = 2; i < lead.length; ++i) {
    if (i == bytes.size() || (byte_at(i) & 0xC0) != 0x80) return {kReplacementCharacter, i};
    character = character << 6 | (byte_at(i) & 0x3FU);
  }
  return {character, lead.length};
}

// Writes a character and gives the number of its bytes.
std::size_t EncodeCharacter(char32_t character, char* to) noexcept {
  const auto tail = [character](unsigned shift) {
    return static_cast<char>(0x80 | (character >> shift & 0x3F));
  };
  if (character < 0x80) {
    to[0] = static_cast<char>(character);
    return 1;
  }
  if (character < 0x800) {
    to[0] = static_cast<char>(0xC0 | character >> 6);
    to[1] = tail(0);
    return 2;
  }
  if (character < 0x10000) {
    to[0] = static_cast<char>(0xE0 | character >> 12);
    to[1] = tail(6);
    to[2] = tail(0);
    return 3;
  }
  to[0] = static_cast<char>(0xF0 | character >> 18);
  to[1] = tail(12);
  to[2] = tail(6);
  to[3] = tail(0);
  return 4;
}

}  // namespace

bool Utf8ToWide(std::string_view bytes, std::u16string& wide) {
  wide.resize(bytes.size());  // no sequence gives more units than it has bytes
  char16_t* to = wide.data();
  bool isValid = true;
  while (!bytes.empty()) {
    if (static_cast<unsigned char>(bytes.front()) < 0x80) {
      const std::size_t run = WidenAscii(bytes, to);
      to += run;
      bytes.remove_prefix(run);
      continue;
    }
    const auto [character, length] = DecodeSequence(bytes);
    // The character itself takes three bytes and starts as no part of a sequence of three does.
    if (character == kReplacementCharacter)
      isValid = isValid && length == 3 && static_cast<unsigned char>(bytes.front()) == 0xEF;
    bytes.remove_prefix(length);
    if (character < 0x10000) {
      *to++ = static_cast<char16_t>(character);
    } else {
      *to++ = HighOf(character);
      *to++ = LowOf(character);
    }
  }
  wide.resize(static_cast<std::size_t>(to - wide.data()));
  return isValid;
}

std::size_t EncodeUtf8(std::u16string_view units, char* to) noexcept {
  if (IsPairAt(units, 0)) return EncodeCharacter(JoinPair(units[0], units[1]), to);
  return EncodeCharacter(IsSurrogate(units[0]) ? kReplacementCharacter : units[0], to);
}

std::size_t Utf8Size(std::u16string_view wide) noexcept {
  std::size_t size = 0;
  for (std::size_t at = 0; at < wide.size(); ++at) {
    if (IsPairAt(wide, at)) {
      size += 4;
      ++at;
    } else {
      size += wide[at] < 0x80 ? 1 : wide[at] < 0x800 ? 2 : 3;
    }
  }
  return size;
}

void AppendUtf8(std::u16string_view wide, std::string& bytes) {
  std::array<char, 1024> block;  // filled and appended in turn: `bytes` then grows by what it needs
  std::size_t used = 0;
  for (std::size_t at = 0; at < wide.size();) {
    if (block.size() - used < kLongestUtf8) {
      bytes.append(block.data(), used);
      used = 0;
    }
    if (wide[at] < 0x80) {
      const std::size_t run =
          NarrowAscii(wide.substr(at, block.size() - used), block.data() + used);
      at += run;
      used += run;
      continue;
    }
    const std::size_t units = IsPairAt(wide, at) ? 2 : 1;
    used += EncodeUtf8(wide.substr(at, units), block.data() + used);
    at += units;
  }
  bytes.append(block.data(), used);
}

}  // namespace pim
