// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "formats/FormatLoss.h"
#include "formats/vcard4/CardLines.h"
#include "pim/support/DateTime.h"
#include "pim/support/Strings.h"

namespace pim {

// A field of a record, or of an entry of one of its lists, as record dumps call it.
struct FieldName {
  static constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);

  NarrowStringView list;  // or the field itself
  std::size_t index = kNoIndex;
  NarrowStringView member = {};

  std::string Text() const {
    std::string text(list);
    if (index != kNoIndex) text.append(1, '[').append(std::to_string(index)).append(1, ']');
    if (!member.empty()) text.append(1, '.').append(member);
    return text;
  }
};

// Tells what a record loses. Names are put together for what is told alone.
class RecordLosses {
 public:
  explicit RecordLosses(const TellFormatLoss& tell) : tell_(tell) {}

  void Tell(const FieldName& field, FormatVerdict verdict, FormatReason reason) const {
    if (tell_) tell_({field.Text(), verdict, reason, 0});
  }
  void Tell(const FieldName& field, TextLosses losses) const {
    if (losses.characters) Tell(field, FormatVerdict::Changed, FormatReason::BadCharacter);
    if (losses.lineEnds) Tell(field, FormatVerdict::Changed, FormatReason::LineEnd);
  }
  // Of a day: that it's none, or has a time.
  void TellDay(const FieldName& field, const std::optional<CalendarFields>& day) const {
    if (!day) return Tell(field, FormatVerdict::Dropped, FormatReason::BadValue);
    if (day->hour != 0 || day->minute != 0 || day->second != 0)
      Tell(field, FormatVerdict::Changed, FormatReason::TimeDropped);
  }

 private:
  const TellFormatLoss& tell_;
};

}  // namespace pim
