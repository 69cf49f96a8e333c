// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/CalendarImport.h"

#include <algorithm>

#include "manager/BatchImport.h"
#include "vcalendar/VCalendarReader.h"

namespace pim {
namespace {

// Events come in with the to-dos of their file; the other two imports are for one kind alone.
bool IsKept(CalendarType flow, const CCalendar& item) {
  const auto type = static_cast<CalendarType>(item.calendar_type);
  return flow == CalendarType::Event ? type != CalendarType::Memo : type == flow;
}

// The items of one text on their way into the store.
class CalendarBatches {
 public:
  using Reader = VCalendarReader;

  CalendarBatches(std::int32_t db, CalendarType flow, bool saveFlag, CalendarImportCounts& counts)
      : db_(db), flow_(flow), saveFlag_(saveFlag), counts_(counts) {}

  CCalendars& records() { return items_; }
  bool failed() const { return failed_; }
  [[noreturn]] void RaiseFailure() const { RaiseVCalendarFailure(); }
  void Store(std::vector<SavedRecord>& saved) {
    items_.DeleteIf([&](const CCalendar& item) {
      const std::int64_t index = next_++;
      if (!IsKept(flow_, item)) return true;
      saved.push_back({index, 0});
      return false;
    });
    for (std::int32_t i = 0; i < items_.GetCount(); ++i) items_[i].tag = kUnsavedTag;
    counts_.kept += items_.GetCount();
    const std::int32_t stored = items_.SaveToDB(db_, saveFlag_);
    failed_ = failed_ || stored < 0;
    counts_.stored += std::max(stored, 0);
    for (std::size_t i = 0; i < saved.size(); ++i)
      saved[i].key = items_[static_cast<std::int32_t>(i)].tag;
    items_.DeleteAll();
  }

 private:
  std::int32_t db_;
  CalendarType flow_;
  bool saveFlag_;
  CalendarImportCounts& counts_;
  CCalendars items_;
  std::int64_t next_ = 0;  // the index of the first of them in the text
  bool failed_ = false;
};

}  // namespace

std::int32_t ImportCalendarText(std::int32_t db, CalendarType flow, NarrowStringView text,
                                bool saveFlag, CalendarImportCounts& counts,
                                const std::function<void(const CalendarImportCounts&)>& progress,
                                const TextObserver& observer) {
  counts = {};
  CalendarBatches batches(db, flow, saveFlag, counts);
  return ImportInBatches(db, text, batches, counts, progress, observer);
}

}  // namespace pim
