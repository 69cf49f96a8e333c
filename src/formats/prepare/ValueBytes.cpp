// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/ValueBytes.h"

#include "support/Ascii.h"

namespace pim {
namespace {

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

// In the letter case of the digit that stood there.
char HexDigit(unsigned value, char before) {
  const char digit = "0123456789ABCDEF"[value];
  return before >= 'a' && before <= 'f' ? ToLower(digit) : digit;
}

}  // namespace

ValueBytes::ValueBytes(std::string_view value, bool isQuotedPrintable) : value_(value) {
  bytes.reserve(value.size());
  places_.reserve(value.size());
  for (std::size_t at = 0; at < value.size();) {
    const char c = value[at];
    if (c == '\r' || c == '\n') {
      at = PastLineEnd(at);
    } else if (isQuotedPrintable && c == '=') {
      at = PastEscape(at);
    } else {
      Add(at, c, false);
      ++at;
    }
  }
}

std::string ValueBytes::Text() const {
  std::string text(value_);
  for (std::size_t i = 0; i < places_.size(); ++i) {
    const auto [at, isEscape] = places_[i];
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (isEscape) {
      text[at + 1] = HexDigit(byte >> 4, value_[at + 1]);
      text[at + 2] = HexDigit(byte & 15, value_[at + 2]);
    } else {
      text[at] = bytes[i];
    }
  }
  return text;
}

void ValueBytes::Add(std::size_t at, char byte, bool isEscape) {
  places_.push_back({at, isEscape});
  bytes += byte;
}

// A fold's first blank goes with its line end.
std::size_t ValueBytes::PastLineEnd(std::size_t at) const {
  const bool isFeed = value_[at] == '\n';
  ++at;
  return isFeed && at < value_.size() && (value_[at] == ' ' || value_[at] == '\t') ? at + 1 : at;
}

// An escape, a soft break, or two characters that the readers take for an escape.
std::size_t ValueBytes::PastEscape(std::size_t at) {
  const std::string_view rest = value_.substr(at + 1);
  if (rest.empty() || rest.front() == '\n' || rest.starts_with("\r\n")) return at + 1;
  if (rest.size() >= 2) {
    const int high = HexValue(rest[0]);
    const int low = HexValue(rest[1]);
    if (high >= 0 && low >= 0) {
      Add(at, static_cast<char>(high * 16 + low), true);
      return at + 3;
    }
  }
  isDamaged_ = true;
  const bool isLineEnd = rest.front() == '\r' || (rest.size() > 1 && IsBlank(rest[1]));
  return isLineEnd ? at + 1 : at + 1 + (rest.size() < 2 ? rest.size() : 2);
}

}  // namespace pim
