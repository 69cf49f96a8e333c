// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemLines.h"

#include <algorithm>
#include <string>

#include "formats/icalendar/OwnWords.h"
#include "support/Ascii.h"

namespace pim {
namespace {

// By their numbers.
constexpr std::array<std::string_view, ITEM_PROPERTIES> kItemProperties = {
    "SUMMARY",    "DESCRIPTION", "LOCATION",    "CREATED",     "LAST-MODIFIED", kOwnModified,
    "DTSTART",    "DTEND",       "DUE",         "DURATION",    "COMPLETED",     "RRULE",
    "CLASS",      "STATUS",      "PRIORITY",    "COLOR",       kOwnColor,       kOwnHoliday,
    kOwnStart,    kOwnEnd,       kOwnDue,       kOwnCompleted, kOwnLocation,    kOwnPriority,
    kOwnStatus,   kOwnRule,      kOwnException, kOwnAlarm,     kOwnAlarmFormat, kOwnOffset,
    kOwnDaylight,
};

// What says nothing of the item itself, or only what holds without it.
struct SilentRow {
  std::string_view name;
  std::string_view value;  // empty for any
};
constexpr SilentRow kSilent[] = {
    {"BEGIN", ""}, {"END", ""},       {"DTSTAMP", ""},
    {"UID", ""},   {"SEQUENCE", "0"}, {"TRANSP", "OPAQUE"},
};

bool IsSilent(const ContentLine& line) {
  return std::ranges::any_of(kSilent, [&line](const SilentRow& row) {
    return EqualsIgnoringCase(row.name, line.Name()) &&
           (row.value.empty() || EqualsIgnoringCase(row.value, Trim(line.Value())));
  });
}

std::size_t NumberOf(std::string_view name) {
  const auto* const known = std::ranges::find_if(
      kItemProperties, [name](std::string_view word) { return EqualsIgnoringCase(word, name); });
  return static_cast<std::size_t>(known - kItemProperties.begin());
}

}  // namespace

ItemLines::ItemLines(const std::vector<ContentLine>& lines, const TellFormatLoss& tell) {
  constexpr std::size_t kInside = 2;
  const bool isJournal = !lines.empty() && EqualsIgnoringCase(lines[0].Value(), "VJOURNAL");
  bool isAlarm = false;
  for (const ContentLine& line : lines) {
    const std::string_view name = line.Name();
    const auto drop = [&](std::string_view field, FormatReason reason) {
      tell({std::string(field), FormatVerdict::Dropped, reason, line.line});
    };
    if (line.hasNul)
      tell({std::string(name), FormatVerdict::Changed, FormatReason::BadCharacter, line.line});
    if (line.depth >= kInside) {
      if (line.depth == kInside && EqualsIgnoringCase(name, "BEGIN")) {
        isAlarm = EqualsIgnoringCase(Trim(line.Value()), "VALARM");
        if (isAlarm) alarms.emplace_back();
        if (!isAlarm) drop(Trim(line.Value()), FormatReason::NoProperty);
      }
      if (isAlarm && line.depth == kInside) alarms.back().push_back(&line);
      continue;
    }
    if (EqualsIgnoringCase(name, "CATEGORIES")) {
      categories.push_back(&line);
      continue;
    }
    if (EqualsIgnoringCase(name, "EXDATE")) {
      exceptions.push_back(&line);
      continue;
    }
    const std::size_t number = NumberOf(name);
    if (number == ITEM_PROPERTIES) {
      if (!IsSilent(line)) drop(name, FormatReason::NoProperty);
      continue;
    }
    // An empty one says nothing.
    if (Trim(line.Value()).empty()) continue;
    if (number == ITEM_DESCRIPTION && (isJournal || descriptions.empty())) {
      descriptions.push_back(&line);
    } else if (single[number] == nullptr && number != ITEM_DESCRIPTION) {
      single[number] = &line;
    } else {
      drop(name, FormatReason::Replaced);
    }
  }
}

}  // namespace pim
