// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/QuotedPrintable.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/Utf16.h"
#include "platform/Utf8.h"
#include "support/Ascii.h"
#include "support/PlainText.h"

namespace pim {
namespace {

constexpr std::size_t kSoftBreakColumn = 68;  // a line of at least so many columns is broken
constexpr std::size_t kBlankColumns = 64;     // from here on a blank is escaped

// Takes text run by run. The output is put together in a block and appended when that is full, so
// that it grows by what it needs.
class Encoder {
 public:
  Encoder(NarrowString& out, HeadBlank blank) : out_(out), blank_(blank) {}

  void Encode(NarrowStringView bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
      StartLine();
      const std::size_t run = CopyRun(bytes.substr(at));
      at += run;
      if (run == 0) Escape(bytes[at++]);
    }
    Flush();
  }

  void Encode(WideStringView text) {
    for (std::size_t at = 0; at < text.size();) {
      StartLine();
      const std::size_t run = CopyRun(text.substr(at));
      at += run;
      if (run != 0) continue;
      std::array<char, kLongestUtf8> bytes;
      const std::size_t units = IsPairAt(text, at) ? 2 : 1;
      const std::size_t count = EncodeUtf8(text.substr(at, units), bytes.data());
      for (std::size_t i = 0; i < count; ++i) {
        StartLine();
        Escape(bytes[i]);
      }
      at += units;
    }
    Flush();
  }

 private:
  // Ahead of each character: a break and a line of output fit then.
  void StartLine() {
    if (column_ >= kSoftBreakColumn) {
      to_ = std::copy_n("=\r\n", 3, to_);
      column_ = 0;
    }
    if (block_.data() + block_.size() - to_ < kRoom) Flush();
  }

  // The characters that stand for themselves, up to the column where blanks no longer do, or the
  // line's end.
  std::size_t CopyRun(WideStringView text) {
    if (column_ >= kBlankColumns || EscapesBlank(text.front())) return CopyLiterals(text);
    const std::size_t run = NarrowPlain(text.substr(0, kBlankColumns - column_), to_);
    return Advance(run);
  }
  std::size_t CopyRun(NarrowStringView text) {
    if (column_ >= kBlankColumns || EscapesBlank(text.front())) return CopyLiterals(text);
    const NarrowStringView line = text.substr(0, kBlankColumns - column_);
    const auto end = std::ranges::find_if_not(line, IsPlain<char>);
    to_ = std::copy(line.begin(), end, to_);
    const auto run = static_cast<std::size_t>(end - line.begin());
    column_ += run;
    return run;
  }
  template <class View>
  std::size_t CopyLiterals(View text) {
    std::size_t run = 0;
    for (; run < text.size() && column_ + run < kSoftBreakColumn && IsLiteral(text[run]); ++run)
      to_[run] = static_cast<char>(text[run]);
    return Advance(run);
  }
  template <class Unit>
  bool EscapesBlank(Unit first) const {
    return blank_ == HeadBlank::Escaped && column_ == 0 && (first == ' ' || first == '\t');
  }
  std::size_t Advance(std::size_t run) {
    to_ += run;
    column_ += run;
    return run;
  }

  void Escape(char c) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    to_[0] = '=';
    to_[1] = kDigits[byte >> 4];
    to_[2] = kDigits[byte & 15];
    to_ += 3;
    column_ += 3;
  }

  void Flush() {
    out_.append(block_.data(), static_cast<std::size_t>(to_ - block_.data()));
    to_ = block_.data();
  }

  static constexpr std::ptrdiff_t kRoom = 80;  // a line's characters and its break

  NarrowString& out_;
  HeadBlank blank_;
  std::size_t column_ = 0;
  std::array<char, 1024> block_;
  char* to_ = block_.data();
};

constexpr int kNotHex = -1;

constexpr int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : kNotHex;
}

// Reads up to the first character that is no hexadecimal digit; no digit at all gives 0.
constexpr char HexPair(int first, int second) {
  if (first == kNotHex) return 0;
  return static_cast<char>(second == kNotHex ? first : first * 16 + second);
}

// Throws SizeOverflow for a text whose UTF-8 is too long to encode.
void CheckSize(WideStringView text) {
  constexpr std::size_t kSurelyFits = std::size_t{1} << 27;
  if (text.size() <= kSurelyFits) return;
  const std::size_t length = Utf8Size(text);
  if (length > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    throw SizeOverflow();
  QuotedPrintableEncodedSize(static_cast<std::int32_t>(length));
}

}  // namespace

std::int32_t QuotedPrintableEncodedSize(std::int32_t length) {
  const std::int64_t tripled = std::int64_t{3} * length;
  const std::int64_t size = tripled + 3 * (tripled / std::int64_t{kSoftBreakColumn}) + 3;
  if (size > std::numeric_limits<std::int32_t>::max()) throw SizeOverflow();
  return static_cast<std::int32_t>(size);
}

void QuotedPrintableEncode(const char* bytes, std::int32_t length, NarrowString& out) {
  QuotedPrintableEncodedSize(length);
  out.clear();
  Encoder(out, HeadBlank::Bare).Encode(NarrowStringView(bytes, static_cast<std::size_t>(length)));
}

void EncodeText(WideStringView text, NarrowString& encoded, HeadBlank blank) {
  CheckSize(text);
  encoded.clear();
  Encoder(encoded, blank).Encode(text);
}

bool QuotedPrintableDecode(const char* bytes, std::int32_t length, char* out, std::int32_t& written,
                           bool* isExact) {
  const char* from = bytes;
  const char* const end = bytes + length;
  char* to = out;
  bool whole = true;
  bool exact = true;
  while (from != end) {
    const char c = *from++;
    if (c != '=') {
      if (c != '\r' && c != '\n') *to++ = c;
    } else if (from != end && (IsDigit(*from) || IsLetter(*from))) {
      if (end - from < 2) {  // a pair cut short by the end gives no byte
        exact = false;
        break;
      }
      const int high = HexValue(from[0]);
      const int low = HexValue(from[1]);
      exact = exact && high != kNotHex && low != kNotHex;
      *to++ = HexPair(high, low);
      from += 2;
    } else if (end - from >= 2 && from[0] == '\r' && from[1] == '\n') {
      from += 2;
    } else {
      whole = false;
      break;
    }
  }
  written = static_cast<std::int32_t>(to - out);
  if (isExact != nullptr) *isExact = exact && whole;
  return whole;
}

}  // namespace pim
