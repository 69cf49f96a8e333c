// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/Export.h"
#include "pim/records/RecordStore.h"

namespace pim {

// A store that passes every operation on to another one, with its results. The stores of this
// library are made of it, so that their headers tell what is their own; a host derives from it to
// change or to watch some operations. It is used by one thread at a time, with the store behind it,
// and allocates nothing itself.
class PIM_EXPORT ForwardingStore : public RecordStore {
 public:
  ForwardingStore(const ForwardingStore&) = delete;
  ForwardingStore& operator=(const ForwardingStore&) = delete;
  [[nodiscard]] std::int32_t LoadContacts(CContacts& contacts) override;
  [[nodiscard]] std::int32_t LoadContactGroups(CContactGroups& groups) override;
  [[nodiscard]] std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override;
  [[nodiscard]] std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override;
  [[nodiscard]] std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override;
  [[nodiscard]] std::int32_t VisitCalendars(
      CalendarType kind, const std::function<bool(CCalendar&)>& visitor) override;
  [[nodiscard]] std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                                           const std::function<bool(CContact&)>& visitor) override;
  [[nodiscard]] std::int32_t VisitCalendars(
      std::span<const std::int32_t> keys, const std::function<bool(CCalendar&)>& visitor) override;
  [[nodiscard]] std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption,
                                          bool saveFlag) override;
  [[nodiscard]] std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) override;
  [[nodiscard]] std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override;
  [[nodiscard]] std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override;
  [[nodiscard]] std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                                            std::vector<WideString>& pictures) override;
  [[nodiscard]] std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) override;
  [[nodiscard]] bool Begin() override;
  [[nodiscard]] bool Commit() override;
  bool Rollback() noexcept override;
  [[nodiscard]] bool BeginReading() override;
  void EndReading() noexcept override;
  [[nodiscard]] ImportHistory* History() noexcept override;
  std::string LastError() const override;
  [[nodiscard]] std::size_t TextAtOnce() const noexcept override;

 protected:
  // `store` stays the caller's and must outlive every operation.
  explicit ForwardingStore(RecordStore& store) noexcept : store_(store) {}

 private:
  RecordStore& store_;
};

}  // namespace pim
