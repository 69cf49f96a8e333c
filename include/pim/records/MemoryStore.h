#pragma once

#include <memory>

#include "pim/Export.h"
#include "pim/records/RecordStore.h"

namespace pim {

// Records in memory, for hosts without a file and for tests. They go with the object.
class PIM_EXPORT MemoryStore final : public RecordStore {
 public:
  MemoryStore();
  ~MemoryStore() override;

  // Replaces the way to a contact's picture; by default it lies in GetCallerIdPath().
  void SetPictureReader(PictureReader reader);

  std::int32_t LoadContacts(CContacts& contacts) override;
  std::int32_t LoadContactGroups(CContactGroups& groups) override;
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override;
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override;
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override;
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override;
  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override;
  std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) override;
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override;
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override;
  bool Begin() override;
  bool Commit() override;
  bool Rollback() noexcept override;
  bool BeginReading() override;
  void EndReading() noexcept override;
  std::string LastError() const override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
