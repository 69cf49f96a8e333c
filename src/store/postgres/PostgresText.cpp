// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresText.h"

#include <algorithm>
#include <cstddef>

#include "platform/AsciiRuns.h"
#include "support/Ascii.h"

namespace pim {
namespace {

constexpr std::string_view kEscape = "\xEF\xBF\xBE";  // U+FFFE
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool IsContinuation(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

// The length of the UTF-8 character (RFC 3629) at the place, or 0 for what is none, a NUL or the
// escape.
std::size_t PlainLength(std::string_view text, std::size_t at) {
  const auto first = static_cast<unsigned char>(text[at]);
  if (first < 0x80) return first == 0 ? 0 : 1;
  const auto second = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : '\0');
  if (!IsContinuation(text, at + 1)) return 0;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (!IsContinuation(text, at + 2)) return 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool isTooLong = first == 0xE0 && second < 0xA0;
    const bool isSurrogate = first == 0xED && second > 0x9F;
    return isTooLong || isSurrogate || text.substr(at, kEscape.size()) == kEscape ? 0 : 3;
  }
  if (first < 0xF0 || first > 0xF4 || !IsContinuation(text, at + 3)) return 0;
  return (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F) ? 0 : 4;
}

// Where the first byte stands that isn't kept as it is.
std::size_t FindOdd(std::string_view text, std::size_t at) {
  while (at < text.size()) {
    const std::size_t length = PlainLength(text, at);
    if (length == 0) break;
    at += length;
  }
  return at;
}

int HexDigit(char c) {
  const std::size_t digit = kHexDigits.find(c);
  return digit == std::string_view::npos ? -1 : static_cast<int>(digit);
}

}  // namespace

bool IsPlainText(std::string_view text) {
  if (IsAsciiText(text)) return text.find('\0') == std::string_view::npos;
  return FindOdd(text, 0) == text.size();
}

void AppendKeptText(std::string_view text, std::string& kept) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t odd = FindOdd(text, at);
    kept.append(text.substr(at, odd - at));
    at = odd;
    if (at == text.size()) return;
    const auto byte = static_cast<unsigned char>(text[at]);
    kept.append(kEscape);
    kept += kHexDigits[byte >> 4];
    kept += kHexDigits[byte & 0xF];
  }
}

bool IsEscaped(std::string_view kept) { return kept.find(kEscape) != std::string_view::npos; }

void ReadKeptText(std::string_view kept, std::string& text) {
  text.clear();
  for (std::size_t at = 0; at < kept.size();) {
    const std::size_t escape = std::min(kept.find(kEscape, at), kept.size());
    text.append(kept.substr(at, escape - at));
    at = escape;
    if (at == kept.size()) return;
    const std::size_t digits = at + kEscape.size();
    const int high = digits + 1 < kept.size() ? HexDigit(kept[digits]) : -1;
    const int low = high >= 0 ? HexDigit(kept[digits + 1]) : -1;
    if (low < 0) {
      text.append(kEscape);
      at = digits;
    } else {
      text += static_cast<char>(high << 4 | low);
      at = digits + 2;
    }
  }
}

std::string PostgresName(std::string_view name) {
  std::string small(name);
  std::ranges::transform(small, small.begin(), ToLower);
  return small;
}

std::string PostgresSql(std::string_view sql) {
  std::string text;
  text.reserve(sql.size() + 16);
  int parameter = 0;
  bool inName = false;
  bool inText = false;
  for (std::size_t at = 0; at < sql.size(); ++at) {
    const char c = sql[at];
    if (c == '\'' && !inName) inText = !inText;
    if (c == '"' && !inText) inName = !inName;
    if (c == '?' && !inName && !inText) {
      text += '$';
      const bool isNumbered = at + 1 < sql.size() && IsDigit(sql[at + 1]);
      if (!isNumbered) text += std::to_string(++parameter);
    } else {
      text += inName ? ToLower(c) : c;
    }
  }
  return text;
}

}  // namespace pim
