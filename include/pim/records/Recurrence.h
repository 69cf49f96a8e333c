// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "pim/Export.h"
#include "pim/records/TypeCodes.h"
#include "pim/support/DateTime.h"
#include "pim/support/RecordMemory.h"

namespace pim {

// Repeat rules, one class for each kind. A rule is a value that its item owns: threads may read one
// together, or one thread alone may change it. Making and copying rules and lists throws
// std::bad_alloc.

class RecurrenceData;

// Frees a rule, whatever its class, in the library that made it.
struct DeleteRule {
  // Frees the rule, in any thread.
  void operator()(RecurrenceData* rule) const noexcept;
};
// Owns a rule.
using RecurrencePointer = std::unique_ptr<RecurrenceData, DeleteRule>;

// A new rule record of the kind, with empty lists, or null for a number that is no RecurrenceType.
PIM_EXPORT RecurrencePointer MakeRecurrenceData(std::int32_t type);

// A repeat rule in vCalendar 1.0's basic grammar, of whatever kind. It is made by
// MakeRecurrenceData alone, and its `type` tells the class to cast it to.
class PIM_EXPORT RecurrenceData {
 public:
  // By all members, those of the kind too.
  virtual bool operator==(const RecurrenceData& other) const;
  virtual bool operator!=(const RecurrenceData& other) const { return !(*this == other); }
  RecurrenceData(const RecurrenceData&) = default;
  RecurrenceData& operator=(const RecurrenceData&) = default;

  // Rules lie in record memory (pim/support/RecordMemory.h).
  static void* operator new(std::size_t size) { return AllocateRecordMemory(size); }
  static void operator delete(void* rule) noexcept { FreeRecordMemory(rule); }

  std::int32_t type;          // RecurrenceType; not to be changed
  std::int32_t interval = 0;  // in days, weeks, months or years; at least 1 when read from text
  std::int32_t count = 0;     // number of occurrences; 0 when the rule gives none
  COleDateTimeNull endDate;   // UTC; null when the rule gives none

 protected:
  // A rule of that RecurrenceType.
  explicit RecurrenceData(std::int32_t kind) : type(kind) {}
  virtual ~RecurrenceData() = default;
  // Frees the rule as what it is.
  virtual void DeleteThis() = 0;

  friend struct DeleteRule;
};

inline void DeleteRule::operator()(RecurrenceData* rule) const noexcept { rule->DeleteThis(); }

// The lists stand in ascending order of their values read as unsigned numbers, so that negative
// ones, which count from the end, stand behind all positive ones; none holds a value twice.
using RecurrenceList = std::vector<std::int32_t>;

// D: every `interval` days.
class PIM_EXPORT DailyData : public RecurrenceData {
 private:
  DailyData() : RecurrenceData(RECUR_DAILY) {}
  ~DailyData() override = default;
  void DeleteThis() override { delete this; }
  friend struct RuleMaker;
};

// MP: every `interval` months, on weekdays of some of its weeks.
class PIM_EXPORT MonthlyByPosData : public RecurrenceData {
 public:
  bool operator==(const RecurrenceData& other) const override;

  RecurrenceList positions;  // weeks of the month: 1 to 5, or -1 to -5 from the end
  RecurrenceList weekdays;   // 0 Sunday to 6 Saturday

 private:
  MonthlyByPosData() : RecurrenceData(RECUR_MONTHLY_BY_POS) {}
  ~MonthlyByPosData() override = default;
  void DeleteThis() override { delete this; }
  friend struct RuleMaker;
};

// What the four rules with one list share.
class PIM_EXPORT DaysData : public RecurrenceData {
 public:
  bool operator==(const RecurrenceData& other) const override;

  RecurrenceList days;  // what the number means, each kind tells

 protected:
  using RecurrenceData::RecurrenceData;
  ~DaysData() override = default;
};

// W: every `interval` weeks. Days are weekdays, 0 Sunday to 6 Saturday.
class PIM_EXPORT WeeklyData : public DaysData {
 private:
  WeeklyData() : DaysData(RECUR_WEEKLY) {}
  ~WeeklyData() override = default;
  void DeleteThis() override { delete this; }
  friend struct RuleMaker;
};

// MD: every `interval` months. Days are days of the month, 1 to 31, or -1 to -31 from its end.
class PIM_EXPORT MonthlyByDayData : public DaysData {
 private:
  MonthlyByDayData() : DaysData(RECUR_MONTHLY_BY_DAY) {}
  ~MonthlyByDayData() override = default;
  void DeleteThis() override { delete this; }
  friend struct RuleMaker;
};

// YM: every `interval` years. Days are months, 1 to 12.
class PIM_EXPORT YearlyByMonthData : public DaysData {
 private:
  YearlyByMonthData() : DaysData(RECUR_YEARLY_BY_MONTH) {}
  ~YearlyByMonthData() override = default;
  void DeleteThis() override { delete this; }
  friend struct RuleMaker;
};

// YD: every `interval` years. Days are days of the year, 1 to 366.
class PIM_EXPORT YearlyByDayData : public DaysData {
 private:
  YearlyByDayData() : DaysData(RECUR_YEARLY_BY_DAY) {}
  ~YearlyByDayData() override = default;
  void DeleteThis() override { delete this; }
  friend struct RuleMaker;
};

// Holds and owns an item's rule, or none.
class CRecurrence {
 public:
  // The rule, or null; it stays this object's.
  const RecurrenceData* GetRecurrenceData() const { return data.get(); }
  // Frees the rule.
  void ResetRecurrenceData() { data.reset(); }

  RecurrencePointer data;  // null without a rule
};

}  // namespace pim
