#include "pim/manager/CalendarImport.h"

#include <algorithm>
#include <optional>

#include "pim/records/RecordStore.h"
#include "vcalendar/VCalendarReader.h"

namespace pim {
namespace {

// As for contacts: worth a save's statements, and small enough to stay in the cache.
constexpr std::size_t kBatchBytes = std::size_t{256} * 1024;

// Events come in with the to-dos of their file; the other two imports are for one kind alone.
bool IsKept(CalendarType flow, const CCalendar& item) {
  const auto type = static_cast<CalendarType>(item.calendar_type);
  return flow == CalendarType::Event ? type != CalendarType::Memo : type == flow;
}

// The items of one text on their way into the store.
class CalendarBatches {
 public:
  CalendarBatches(std::int32_t db, CalendarType flow, bool saveFlag, CalendarImportCounts& counts)
      : db_(db), flow_(flow), saveFlag_(saveFlag), counts_(counts) {}

  CCalendars& items() { return items_; }

  // Stores the items read so far; the last one stays open for the text that follows, which may
  // make a memo of it.
  void StoreFinished() {
    if (items_.GetCount() < 2) return;
    auto open = items_.TakeLast();
    Store();
    items_.Add(std::move(open));
  }
  void StoreRest() { Store(); }

  bool failed() const { return failed_; }

 private:
  void Store() {
    items_.DeleteIf([this](const CCalendar& item) { return !IsKept(flow_, item); });
    for (std::int32_t i = 0; i < items_.GetCount(); ++i) items_[i].tag = kUnsavedTag;
    counts_.kept += items_.GetCount();
    const std::int32_t stored = items_.SaveToDB(db_, saveFlag_);
    failed_ = failed_ || stored < 0;
    counts_.stored += std::max(stored, 0);
    items_.DeleteAll();
  }

  std::int32_t db_;
  CalendarType flow_;
  bool saveFlag_;
  CalendarImportCounts& counts_;
  CCalendars items_;
  bool failed_ = false;
};

}  // namespace

std::int32_t ImportCalendarText(std::int32_t db, CalendarType flow, NarrowStringView text,
                                bool saveFlag, CalendarImportCounts& counts,
                                const std::function<void(const CalendarImportCounts&)>& progress) {
  counts = {};
  RecordStore* const store = StoreForHandle(db);
  std::optional<StoreTransaction> transaction;
  if (store != nullptr) transaction.emplace(*store);

  CalendarBatches batches(db, flow, saveFlag, counts);
  VCalendarReader reader(batches.items());
  bool accepted = true;
  do {
    const std::size_t size = std::min(text.size(), kBatchBytes);
    const std::int32_t before = batches.items().GetCount();
    accepted = reader.Read(text.substr(0, size), size == text.size());
    text.remove_prefix(size);
    counts.inText += batches.items().GetCount() - before;
    if (!accepted) break;
    batches.StoreFinished();
    if (progress) progress(counts);
  } while (!text.empty());
  if (!accepted) {
    transaction.reset();
    counts.stored = 0;
    RaiseVCalendarFailure();
  }
  batches.StoreRest();
  if (batches.failed() || !transaction || !transaction->Commit()) {
    counts.stored = 0;
    return -1;
  }
  return static_cast<std::int32_t>(counts.stored);
}

}  // namespace pim
