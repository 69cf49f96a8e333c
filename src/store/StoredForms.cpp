// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/StoredForms.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/AsciiRuns.h"
#include "platform/CodePages.h"
#include "platform/DayNumbers.h"
#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace pim {

namespace {

constexpr double kSecondsPerDay = 86400.0;
constexpr std::int64_t kSecondsTo1970 = std::int64_t{25569} * 86400;  // from day 0
constexpr std::int64_t kFarthest = std::int64_t{1} << 40;             // beyond all dates

bool IsLoneAt(WideStringView text, std::size_t at) {
  return IsSurrogate(text[at]) && !IsPairAt(text, at) &&
         !(at > 0 && IsLowSurrogate(text[at]) && IsHighSurrogate(text[at - 1]));
}

void AppendSurrogate(char16_t unit, std::string& bytes) {
  bytes.push_back(static_cast<char>(0xE0 | unit >> 12));
  bytes.push_back(static_cast<char>(0x80 | (unit >> 6 & 0x3F)));
  bytes.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
}

// Where the three bytes of a surrogate begin, or npos.
std::size_t FindSurrogate(std::string_view bytes, std::size_t from) {
  const auto isTail = [&](std::size_t at, unsigned low) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    return byte >= low && byte <= 0xBF;
  };
  for (std::size_t at = bytes.find('\xED', from); at != std::string_view::npos;
       at = bytes.find('\xED', at + 1))
    if (at + 2 < bytes.size() && isTail(at + 1, 0xA0) && isTail(at + 2, 0x80)) return at;
  return std::string_view::npos;
}

}  // namespace

void AppendStoredText(WideStringView text, std::string& bytes) {
  std::size_t start = 0;
  const auto isSurrogate = [](char16_t unit) { return IsSurrogate(unit); };
  if (std::ranges::any_of(text, isSurrogate)) {
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (!IsLoneAt(text, at)) continue;
      AppendUtf8(text.substr(start, at - start), bytes);
      AppendSurrogate(text[at], bytes);
      start = at + 1;
    }
  }
  AppendUtf8(text.substr(start), bytes);
}

void ReadStoredText(std::string_view bytes, WideString& text) {
  text.resize(bytes.size());
  if (WidenAscii(bytes, text.data()) == bytes.size()) return;
  std::size_t surrogate = FindSurrogate(bytes, 0);
  if (surrogate == std::string_view::npos) {
    Utf8ToWide(bytes, text);
    return;
  }
  text.clear();
  WideString part;
  std::size_t start = 0;
  for (; surrogate != std::string_view::npos; surrogate = FindSurrogate(bytes, start)) {
    Utf8ToWide(bytes.substr(start, surrogate - start), part);
    text += part;
    text.push_back(static_cast<char16_t>(
        0xD000 | (static_cast<unsigned char>(bytes[surrogate + 1]) & 0x3F) << 6 |
        (static_cast<unsigned char>(bytes[surrogate + 2]) & 0x3F)));
    start = surrogate + 3;
  }
  Utf8ToWide(bytes.substr(start), part);
  text += part;
}

WideString StoredList(const std::vector<WideText>& texts) {
  WideString stored;
  for (const WideText& text : texts) {
    for (const char16_t unit : text.view()) {
      if (unit == u';' || unit == u'\\') stored.push_back(u'\\');
      stored.push_back(unit);
    }
    stored.push_back(u';');
  }
  return stored;
}

std::vector<WideText> ListFromStored(WideStringView stored) {
  std::vector<WideText> texts;
  WideString text;
  for (std::size_t at = 0; at < stored.size(); ++at) {
    if (stored[at] == u';') {
      texts.emplace_back(text);
      text.clear();
      continue;
    }
    if (stored[at] == u'\\' && at + 1 < stored.size()) ++at;
    text.push_back(stored[at]);
  }
  if (!text.empty()) texts.emplace_back(text);  // another program's list, not ended
  return texts;
}

void AppendStoredNumbers(const RecurrenceList& numbers, std::string& bytes) {
  for (const std::int32_t number : numbers) {
    if (!bytes.empty()) bytes.push_back(',');
    bytes += std::to_string(number);
  }
}

RecurrenceList NumbersFromStored(std::string_view stored) {
  RecurrenceList numbers;
  while (!stored.empty()) {
    const std::string_view text = stored.substr(0, stored.find(','));
    stored.remove_prefix(std::min(text.size() + 1, stored.size()));
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    using Limits = std::numeric_limits<std::int32_t>;
    if (result.ec == std::errc::result_out_of_range)
      number = text.front() == '-' ? Limits::min() : Limits::max();
    numbers.push_back(number);
  }
  return numbers;
}

std::optional<std::int64_t> WholeSecondsOf(const COleDateTime& time) {
  const double fromDay0 = LinearFromStored(time.value) * kSecondsPerDay;
  if (time.status != StatusValid || !(std::fabs(fromDay0) < static_cast<double>(kFarthest)))
    return std::nullopt;
  const std::int64_t seconds = std::llround(fromDay0) - kSecondsTo1970;
  if (TimeFromSeconds(seconds).value != time.value) return std::nullopt;
  return seconds;
}

COleDateTime TimeFromSeconds(std::int64_t seconds) {
  const std::int64_t fromDay0 = std::clamp(seconds, -kFarthest, kFarthest) + kSecondsTo1970;
  COleDateTime time;
  time.value = StoredFromLinear(static_cast<double>(fromDay0) / kSecondsPerDay);
  return time;
}

std::int32_t KeyFromStored(std::int64_t key) {
  return std::in_range<std::int32_t>(key) ? static_cast<std::int32_t>(key) : 0;
}

bool IsPlainFileName(WideStringView name) {
  constexpr WideStringView kForbidden{u"/\\\0", 3};
  return name != u"." && name != u".." && name.find_first_of(kForbidden) == WideStringView::npos;
}

}  // namespace pim
