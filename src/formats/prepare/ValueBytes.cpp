// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/ValueBytes.h"

#include <algorithm>
#include <iterator>

#include "support/Ascii.h"

namespace pim {
namespace {

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

// What the tokeniser passes over ahead of each of the two digits.
constexpr std::string_view kPassedOver[] = {{"\r\0", 2}, "\r"};

// In the letter case of the digit that stood there.
char HexDigit(unsigned value, char before) {
  const char digit = "0123456789ABCDEF"[value];
  return before >= 'a' && before <= 'f' ? ToLower(digit) : digit;
}

}  // namespace

ValueBytes::ValueBytes(std::string_view value, bool isQuotedPrintable) : value_(value) {
  bytes.reserve(value.size());
  for (std::size_t at = 0; at < value.size();) {
    const char c = value[at];
    if (c == '\r' || c == '\n') {
      at = PastLineEnd(at);
    } else if (isQuotedPrintable && c == '=') {
      at = PastEscape(at);
    } else {
      const std::size_t begin = at;
      while (at < value.size() && value[at] != '\r' && value[at] != '\n' &&
             !(isQuotedPrintable && value[at] == '='))
        ++at;
      runs_.push_back({bytes.size(), begin, 0});
      bytes.append(value, begin, at - begin);
    }
  }
}

bool ValueBytes::IsEscape(std::size_t i) const {
  const auto next = std::ranges::upper_bound(runs_, i, {}, &Run::byte);
  return std::prev(next)->second != 0;
}

std::string ValueBytes::Text() const {
  std::string text(value_);
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    const auto [byte, first, second] = runs_[i];
    if (second != 0) {
      const auto value = static_cast<unsigned char>(bytes[byte]);
      text[first] = HexDigit(value >> 4, value_[first]);
      text[second] = HexDigit(value & 15, value_[second]);
    } else {
      const std::size_t end = i + 1 < runs_.size() ? runs_[i + 1].byte : bytes.size();
      text.replace(first, end - byte, bytes, byte, end - byte);
    }
  }
  return text;
}

// A fold's first blank goes with its line end.
std::size_t ValueBytes::PastLineEnd(std::size_t at) const {
  const bool isFeed = value_[at] == '\n';
  ++at;
  return isFeed && at < value_.size() && (value_[at] == ' ' || value_[at] == '\t') ? at + 1 : at;
}

// Two characters are an escape, or taken for one; at a line end there is a soft break, with one
// character ahead of it or none.
std::size_t ValueBytes::PastEscape(std::size_t at) {
  std::size_t digits[2] = {};
  for (std::size_t i = 0; i < 2; ++i) {
    at = value_.find_first_not_of(kPassedOver[i], at + 1);
    if (at >= value_.size()) return value_.size();
    if (value_[at] == '\n') return at;
    digits[i] = at;
  }
  const int high = HexValue(value_[digits[0]]);
  const int low = HexValue(value_[digits[1]]);
  if (high >= 0 && low >= 0) {
    runs_.push_back({bytes.size(), digits[0], digits[1]});
    bytes += static_cast<char>(high * 16 + low);
  } else {
    isDamaged_ = true;
  }
  return at + 1;
}

bool BreaksSoftly(std::string_view line) {
  for (std::size_t at = line.find('='); at < line.size(); at = line.find('=', at)) {
    for (const std::string_view passed : kPassedOver) {
      at = line.find_first_not_of(passed, at + 1);
      if (at >= line.size() || line[at] == '\n') return true;
    }
    ++at;
  }
  return false;
}

}  // namespace pim
