// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "stream/AccountKeeper.h"
#include "vcalendar/VCalendarFields.h"

namespace pim {

// The account of calendar items. Whether an item is all-day follows from two dates together.
class VCalendarAccount final : public AccountKeeper {
 public:
  VCalendarAccount(TakeEntry take, VObjectParser& parser, NameOfRecord nameOfLast)
      : AccountKeeper(std::move(take), parser, kItemPlaces, std::move(nameOfLast)) {}

  // What the dates of an item's span have said so far.
  struct Span {
    std::int32_t allday = 0;
    bool isPending = false;  // the one ahead had the all-day form
    friend bool operator==(const Span&, const Span&) = default;

    void Take(bool hasForm) {
      if (!hasForm) {
        allday = 0;
      } else if (isPending) {
        allday = 1;
      }
      isPending = hasForm;
    }
  };
  void TakeSpan(const Span& before, const Span& now, bool hasForm) {
    spans_.Take(Current(), before, now, [hasForm](Span& other) { other.Take(hasForm); });
  }
  // A date with hour 24, which is the end of a day for an all-day item, and its start for others.
  void TakeDayEnd() { dayEnds_.push_back(Current()); }

 private:
  void CompleteRecord() override {
    if (spans_.now().allday == 0)
      for (const std::uint32_t entry : dayEnds_) TellOf(entry, LOSS_TIME_DROPPED);
    dayEnds_.clear();
    spans_.Complete([this](std::uint32_t entry) { NeedsEntry(entry, FIELD_ALLDAY); },
                    [](const Span& other, const Span& now) { return other.allday != now.allday; });
  }

  std::vector<std::uint32_t> dayEnds_;
  OtherStates<Span> spans_;
};

}  // namespace pim
