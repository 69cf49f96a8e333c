// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/redact/TextMask.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <utility>

#include "formats/redact/LetterRanges.h"
#include "platform/CodePages.h"
#include "platform/Iconv.h"
#include "support/Ascii.h"
#include "support/Base64.h"

namespace pim {
namespace {

// A shift for each place that depends on all that stands ahead of it: so nothing is told by what
// letters have in common, and two fields that differ still do.
class Shifts {
 public:
  explicit Shifts(std::uint64_t key) : state_(key) {}

  std::uint32_t Of(std::uint32_t character, const LetterRange& range) {
    const std::uint32_t other = WithoutTaking(character, range);
    Take(character);
    return other;
  }
  std::uint32_t WithoutTaking(std::uint32_t character, const LetterRange& range) const {
    const auto shift = static_cast<std::uint32_t>(Next() % range.size());
    return range.first + (character - range.first + shift) % range.size();
  }
  void Take(std::uint32_t character) { state_ = (state_ ^ character) * 0x9E3779B97F4A7C15; }

 private:
  // The finish of SplitMix64.
  std::uint64_t Next() const {
    std::uint64_t word = state_ + 0x9E3779B97F4A7C15;
    word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9;
    word = (word ^ (word >> 27)) * 0x94D049BB133111EB;
    return word ^ (word >> 31);
  }

  std::uint64_t state_;
};

constexpr std::uint32_t ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// The size of the well-formed sequence of UTF-8 there; 0 where there is none.
std::size_t SequenceAt(std::string_view bytes, std::size_t at, std::uint32_t& character) {
  const std::uint32_t lead = ByteAt(bytes, at);
  const std::size_t size = lead < 0x80   ? 1
                           : lead < 0xC2 ? 0
                           : lead < 0xE0 ? 2
                           : lead < 0xF0 ? 3
                           : lead < 0xF5 ? 4
                                         : 0;
  if (size == 0 || bytes.size() - at < size) return 0;
  character = size == 1 ? lead : lead & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const std::uint32_t byte = ByteAt(bytes, at + i);
    if ((byte & 0xC0) != 0x80) return 0;
    character = character << 6 | (byte & 0x3F);
  }
  const bool isLong = size == 3 ? character < 0x800 : size == 4 && character < 0x10000;
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return isLong || isSurrogate || character > 0x10FFFF ? 0 : size;
}

void Encode(std::uint32_t character, std::size_t size, char* to) {
  for (std::size_t i = size; i-- > 1; character >>= 6)
    to[i] = static_cast<char>(0x80 | (character & 0x3F));
  constexpr std::uint32_t kLeads[] = {0, 0, 0xC0, 0xE0, 0xF0};
  *to = static_cast<char>(kLeads[size] | character);
}

// Bytes that mean the same to UTF-8, but for those that ask for a second byte of their own.
constexpr LetterRange kOtherBytes[] = {{0x80, 0x9F}, {0xA1, 0xBF}, {0xC2, 0xDF},
                                       {0xE1, 0xEC}, {0xEE, 0xEF}, {0xF1, 0xF3}};

constexpr bool Contains(const LetterRange& range, std::uint32_t value) {
  return value >= range.first && value <= range.last;
}

// Whether one may stand for the other: as long, and without bytes that mean something to the
// readers where the other hasn't got them.
bool MayReplace(std::string_view other, std::string_view bytes) {
  constexpr std::string_view kMeaning = "\\;=:\r\n";
  if (other.size() != bytes.size()) return false;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool hasMeaning = kMeaning.find(bytes[i]) != std::string_view::npos ||
                            kMeaning.find(other[i]) != std::string_view::npos;
    if (hasMeaning && bytes[i] != other[i]) return false;
  }
  return true;
}

}  // namespace

// Characters of a charset one by one, each as iconv has it.
class CharsetSteps {
 public:
  explicit CharsetSteps(const std::string& charset)
      : decoder_("UTF-32LE", charset.c_str()), encoder_(charset.c_str(), "UTF-32LE") {}
  explicit operator bool() const { return decoder_ && encoder_; }

  // The size of the character at the head of the bytes; 0 where there is none.
  std::size_t Decode(std::string_view bytes, std::uint32_t& character) {
    for (std::size_t size = 1; size <= std::min(bytes.size(), kLongest); ++size) {
      std::array<unsigned char, 16> units{};
      const char* from = bytes.data();
      std::size_t fromSize = size;
      char* to = reinterpret_cast<char*>(units.data());
      std::size_t room = units.size();
      decoder_.Reset();
      if (decoder_.Convert(from, fromSize, to, room) != Iconv::Outcome::Done ||
          decoder_.Finish(to, room) != Iconv::Outcome::Done)
        continue;
      if (units.size() - room != 4) return 0;  // a state, or a mark that stands by itself
      character = 0;
      for (std::size_t i = 0; i < 4; ++i) character |= std::uint32_t{units[i]} << (8 * i);
      return size;
    }
    return 0;
  }
  // The bytes of a character; empty for one that the charset hasn't.
  std::string Encode(std::uint32_t character) {
    const char unit[4] = {static_cast<char>(character), static_cast<char>(character >> 8),
                          static_cast<char>(character >> 16), 0};
    std::array<char, 16> bytes{};
    const char* from = unit;
    std::size_t fromSize = sizeof unit;
    char* to = bytes.data();
    std::size_t room = bytes.size();
    encoder_.Reset();
    if (encoder_.Convert(from, fromSize, to, room) != Iconv::Outcome::Done ||
        encoder_.Finish(to, room) != Iconv::Outcome::Done)
      return {};
    return {bytes.data(), bytes.size() - room};
  }

 private:
  static constexpr std::size_t kLongest = 4;

  Iconv decoder_;
  Iconv encoder_;
};

TextMask::TextMask(std::uint64_t key) : key_(key) {}
TextMask::~TextMask() = default;

bool TextMask::MaskFields(std::string& bytes, const Charset& charset) const {
  const bool isUtf8 = EqualsIgnoringCase(charset.name, "UTF-8");
  const bool isAscii =
      std::ranges::none_of(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
  if (isUtf8 || isAscii) return MaskUtf8(bytes, false);
  std::string masked = bytes;
  std::u16string work;
  if (MaskIn(masked, charset.name) &&
      (!charset.isReadAsUtf8 || MultiByteToWide(kCodePageUtf8, bytes, work) ==
                                    MultiByteToWide(kCodePageUtf8, masked, work))) {
    bytes = std::move(masked);
    return false;
  }
  MaskUtf8(bytes, charset.isReadAsUtf8);
  return !charset.isReadAsUtf8;
}

// False where the charset isn't known, or has states.
bool TextMask::MaskIn(std::string& bytes, const std::string& charset) const {
  constexpr std::uint32_t kTries = 300;  // of characters that the charset may have
  if (charset.empty() || charset.find('\0') != std::string::npos) return false;
  if (steps_ == nullptr || stepsOf_ != charset) {
    steps_ = std::make_unique<CharsetSteps>(charset);
    stepsOf_ = charset;
  }
  CharsetSteps& steps = *steps_;
  if (!steps) return false;
  Shifts shifts(key_);
  for (std::size_t at = 0; at < bytes.size();) {
    std::uint32_t character = 0;
    const std::size_t size = steps.Decode(std::string_view(bytes).substr(at), character);
    if (size == 0) {
      ++at;
      continue;
    }
    if (character == '\\') {
      std::uint32_t escaped = 0;
      at += size;
      at += std::max<std::size_t>(steps.Decode(std::string_view(bytes).substr(at), escaped), 1);
      continue;
    }
    const LetterRange* const range = RangeOf(character);
    if (character == ';') {
      shifts = Shifts(key_);
    } else if (range == nullptr) {
      shifts.Take(character);
    } else {
      std::uint32_t other = shifts.Of(character, *range);
      for (std::uint32_t i = 0; i < std::min(kTries, range->size()); ++i) {
        const std::string encoded = steps.Encode(other);
        if (MayReplace(encoded, std::string_view(bytes).substr(at, size))) {
          bytes.replace(at, size, encoded);
          break;
        }
        other = other == range->last ? range->first : other + 1;
      }
    }
    at += size;
  }
  return true;
}

// What is no UTF-8 stays, or becomes other bytes that are as little.
bool TextMask::MaskUtf8(std::string& bytes, bool masksDamage) const {
  Shifts shifts(key_);
  bool hasDamage = false;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::uint32_t byte = ByteAt(bytes, at);
    if (byte == '\\') {
      at += 2;
      continue;
    }
    if (byte == ';') shifts = Shifts(key_);
    std::uint32_t character = 0;
    const std::size_t size = SequenceAt(bytes, at, character);
    if (size != 0) {
      const LetterRange* const range = RangeOf(character);
      if (range != nullptr) Encode(shifts.Of(character, *range), size, bytes.data() + at);
      if (range == nullptr && byte != ';') shifts.Take(character);
      at += size;
      continue;
    }
    // To the readers, all damaged bytes are one character.
    hasDamage = true;
    for (const LetterRange& range : kOtherBytes) {
      if (masksDamage && Contains(range, byte))
        bytes[at] = static_cast<char>(shifts.WithoutTaking(byte, range));
    }
    ++at;
  }
  return hasDamage && !masksDamage;
}

void TextMask::MaskBase64(std::string& text) const {
  static constexpr LetterRange kDigits = {0, 63};
  Shifts shifts(key_);
  for (char& c : text) {
    const std::size_t value = kBase64Alphabet.find(c);
    if (value == NarrowStringView::npos) continue;
    c = kBase64Alphabet[shifts.Of(static_cast<std::uint32_t>(value), kDigits)];
  }
}

bool TextMask::MoveDate(std::string& text) const {
  using std::chrono::year_month_day;
  const bool hasHyphens = text.size() >= 10 && text[4] == '-' && text[7] == '-';
  const std::size_t size = hasHyphens ? 10 : 8;
  if (text.size() < size || (text.size() > size && IsDigit(text[size]))) return false;
  std::string digits = text.substr(0, size);
  std::erase(digits, '-');
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || digits.size() != 8 ||
      !IsDigit(digits.front()))
    return false;
  const year_month_day date{std::chrono::year(number / 10000),
                            std::chrono::month(static_cast<unsigned>(number / 100 % 100)),
                            std::chrono::day(static_cast<unsigned>(number % 100))};
  if (!date.ok()) return false;
  constexpr std::uint64_t kMostDays = 3000;
  const auto days = std::chrono::days(1 + key_ % kMostDays);
  const year_month_day moved(std::chrono::sys_days(date) - days);
  const int year = static_cast<int>(moved.year());
  if (year < 100 || number / 10000 < 100) return false;
  char written[16];
  std::snprintf(written, sizeof written, hasHyphens ? "%04d-%02u-%02u" : "%04d%02u%02u", year,
                static_cast<unsigned>(moved.month()), static_cast<unsigned>(moved.day()));
  text.replace(0, size, written);
  return true;
}

}  // namespace pim
