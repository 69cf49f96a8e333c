// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/JsonWriter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/CodePages.h"
#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace pim::app {
namespace {

// How each ASCII character stands in a text: 0 as itself, u by its number, else behind a backslash.
constexpr std::array<char, 128> MakeEscapes(JsonPlace place) {
  std::array<char, 128> escapes{};
  std::fill_n(escapes.begin(), 32, 'u');
  for (const auto& [character, letter] : {std::pair{'\b', 'b'},
                                          {'\f', 'f'},
                                          {'\n', 'n'},
                                          {'\r', 'r'},
                                          {'\t', 't'},
                                          {'"', '"'},
                                          {'\\', '\\'}})
    escapes[static_cast<unsigned char>(character)] = letter;
  if (place == JsonPlace::Page) escapes['<'] = 'u';
  return escapes;
}
template <JsonPlace Place>
constexpr std::array<char, 128> kEscapes = MakeEscapes(Place);
constexpr std::size_t kLongestUnit = 6;  // "\u001f"

char* Escape(char16_t unit, char letter, char* to) {
  static constexpr char kDigits[] = "0123456789abcdef";
  *to++ = '\\';
  *to++ = letter;
  if (letter != 'u') return to;
  for (int shift = 12; shift >= 0; shift -= 4) *to++ = kDigits[unit >> shift & 15];
  return to;
}

template <JsonPlace Place>
char* EscapeText(WideStringView text, char* to) {
  for (std::size_t at = 0; at < text.size();) {
    const char16_t unit = text[at];
    if (unit < kEscapes<Place>.size()) {
      const char letter = kEscapes<Place>[unit];
      if (letter == 0) {
        *to++ = static_cast<char>(unit);
      } else {
        to = Escape(unit, letter, to);
      }
      ++at;
    } else {
      const std::size_t units = IsPairAt(text, at) ? 2 : 1;
      if (Place == JsonPlace::Page && units == 1 && IsSurrogate(unit)) {
        to = Escape(unit, 'u', to);
      } else {
        to += EncodeUtf8(text.substr(at, units), to);
      }
      at += units;
    }
  }
  return to;
}

}  // namespace

void JsonWriter::Ascii(std::string_view text) {
  Prefix(rapidjson::kStringType);
  char* const to = buffer_.Push(text.size() + 2);
  to[0] = '"';
  std::copy(text.begin(), text.end(), to + 1);
  to[text.size() + 1] = '"';
}

void JsonWriter::Key(std::string_view key) { Ascii(key); }

void JsonWriter::Value(WideStringView text) {
  Prefix(rapidjson::kStringType);
  const std::size_t room = text.size() * kLongestUnit + 2;
  char* const start = buffer_.Push(room);
  *start = '"';
  char* end = place_ == JsonPlace::Page ? EscapeText<JsonPlace::Page>(text, start + 1)
                                        : EscapeText<JsonPlace::Text>(text, start + 1);
  *end++ = '"';
  buffer_.Pop(room - static_cast<std::size_t>(end - start));
}

void JsonWriter::Value(const COleDateTime& date) {
  if (date.status == StatusNull) return Null();
  const auto fields = date.GetFields();
  if (!fields) return Ascii("invalid");
  std::array<char, 20> text{};
  const auto put = [&text](std::size_t at, std::int32_t number, std::size_t width) {
    for (; width-- > 0; number /= 10) text[at + width] = static_cast<char>('0' + number % 10);
  };
  std::copy_n("    -  -  T  :  :  ", 19, text.begin());
  put(0, fields->year, 4);
  put(5, fields->month, 2);
  put(8, fields->day, 2);
  put(11, fields->hour, 2);
  put(14, fields->minute, 2);
  put(17, fields->second, 2);
  Ascii({text.data(), 19});
}

void JsonWriter::Value(const COleDateTimeSpan& span) {
  if (span.status != StatusValid) return Ascii("invalid");
  Int64(std::llround(span.value * 86400));
}

void JsonWriter::Utf8(std::string_view text) { Value(WideStringView(WideFromUtf8(text))); }

std::string JsonText(std::string_view text) {
  JsonWriter json;
  json.Utf8(text);
  return std::string(json.text());
}

}  // namespace pim::app
