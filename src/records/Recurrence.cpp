// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/Recurrence.h"

namespace pim {

// The one who may make rules.
struct RuleMaker {
  template <class Rule>
  static RecurrencePointer Make() {
    return RecurrencePointer(new Rule);
  }
};

RecurrencePointer MakeRecurrenceData(std::int32_t type) {
  switch (type) {
    case RECUR_DAILY:
      return RuleMaker::Make<DailyData>();
    case RECUR_WEEKLY:
      return RuleMaker::Make<WeeklyData>();
    case RECUR_MONTHLY_BY_POS:
      return RuleMaker::Make<MonthlyByPosData>();
    case RECUR_MONTHLY_BY_DAY:
      return RuleMaker::Make<MonthlyByDayData>();
    case RECUR_YEARLY_BY_MONTH:
      return RuleMaker::Make<YearlyByMonthData>();
    case RECUR_YEARLY_BY_DAY:
      return RuleMaker::Make<YearlyByDayData>();
    default:
      return nullptr;
  }
}

bool RecurrenceData::operator==(const RecurrenceData& other) const {
  return type == other.type && interval == other.interval && count == other.count &&
         endDate == other.endDate;
}

bool MonthlyByPosData::operator==(const RecurrenceData& other) const {
  if (!RecurrenceData::operator==(other)) return false;
  const auto* rule = dynamic_cast<const MonthlyByPosData*>(&other);
  return rule != nullptr && positions == rule->positions && weekdays == rule->weekdays;
}

bool DaysData::operator==(const RecurrenceData& other) const {
  if (!RecurrenceData::operator==(other)) return false;
  const auto* rule = dynamic_cast<const DaysData*>(&other);
  return rule != nullptr && days == rule->days;
}

}  // namespace pim
