// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "pim/records/ForwardingStore.h"

namespace pim::testing {

// A store that passes everything on until it is told to fail: then the operation that comes after
// `passing` more ones gives -1 or false, as do all behind it.
class FailingStore final : public ForwardingStore {
 public:
  explicit FailingStore(RecordStore& store) : ForwardingStore(store), store_(store) {}
  // Lets so many operations pass; from then on all fail, or the next one alone.
  void FailAfter(int passing, bool once = false) {
    passing_ = passing;
    once_ = once;
  }

  std::int32_t LoadContacts(CContacts& contacts) override {
    return Fails() ? -1 : store_.LoadContacts(contacts);
  }
  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    return Fails() ? -1 : store_.LoadContactGroups(groups);
  }
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override {
    return Fails() ? -1 : store_.LoadContactGroupPairs(pairs);
  }
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override {
    return Fails() ? -1 : store_.LoadCalendars(kind, items);
  }
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override {
    return Fails() ? -1 : store_.VisitContacts(visitor);
  }
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return Fails() ? -1 : store_.VisitCalendars(kind, visitor);
  }
  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return Fails() ? -1 : store_.SaveContacts(contacts, saveOption, saveFlag);
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) override {
    return Fails() ? -1 : store_.SaveContactGroups(groups, saveFlag);
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return Fails() ? -1 : store_.SaveContactGroupPairs(pairs);
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return Fails() ? -1 : store_.SaveCalendars(items, saveFlag);
  }
  bool Begin() override { return !Fails() && store_.Begin(); }
  bool Commit() override { return !Fails() && store_.Commit(); }
  bool Rollback() noexcept override { return store_.Rollback(); }
  bool BeginReading() override { return store_.BeginReading(); }
  void EndReading() noexcept override { store_.EndReading(); }
  std::string LastError() const override {
    return passing_ < 0 ? "the store was told to fail" : store_.LastError();
  }

 private:
  static constexpr int kForEver = 1 << 30;

  bool Fails() {
    if (passing_ != kForEver && passing_ >= 0) --passing_;
    const bool fails = passing_ < 0;
    if (fails && once_) passing_ = kForEver;
    return fails;
  }

  RecordStore& store_;
  int passing_ = kForEver;
  bool once_ = false;
};

}  // namespace pim::testing
