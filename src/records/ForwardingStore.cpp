// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/ForwardingStore.h"

namespace pim {

std::int32_t ForwardingStore::LoadContacts(CContacts& contacts) {
  return store_.LoadContacts(contacts);
}

std::int32_t ForwardingStore::LoadContactGroups(CContactGroups& groups) {
  return store_.LoadContactGroups(groups);
}

std::int32_t ForwardingStore::LoadContactGroupPairs(CContactGroupPairs& pairs) {
  return store_.LoadContactGroupPairs(pairs);
}

std::int32_t ForwardingStore::LoadCalendars(CalendarType kind, CCalendars& items) {
  return store_.LoadCalendars(kind, items);
}

std::int32_t ForwardingStore::VisitContacts(const std::function<bool(CContact&)>& visitor) {
  return store_.VisitContacts(visitor);
}

std::int32_t ForwardingStore::VisitCalendars(CalendarType kind,
                                             const std::function<bool(CCalendar&)>& visitor) {
  return store_.VisitCalendars(kind, visitor);
}

std::int32_t ForwardingStore::VisitContacts(std::span<const std::int32_t> keys,
                                            const std::function<bool(CContact&)>& visitor) {
  return store_.VisitContacts(keys, visitor);
}

std::int32_t ForwardingStore::VisitCalendars(std::span<const std::int32_t> keys,
                                             const std::function<bool(CCalendar&)>& visitor) {
  return store_.VisitCalendars(keys, visitor);
}

std::int32_t ForwardingStore::DeleteContacts(std::span<const std::int32_t> keys,
                                             std::vector<WideString>& pictures) {
  return store_.DeleteContacts(keys, pictures);
}

std::int32_t ForwardingStore::DeleteCalendars(std::span<const std::int32_t> keys) {
  return store_.DeleteCalendars(keys);
}

std::int32_t ForwardingStore::SaveContacts(CContacts& contacts, std::int32_t saveOption,
                                           bool saveFlag) {
  return store_.SaveContacts(contacts, saveOption, saveFlag);
}

std::int32_t ForwardingStore::SaveContactGroups(CContactGroups& groups, bool saveFlag) {
  return store_.SaveContactGroups(groups, saveFlag);
}

std::int32_t ForwardingStore::SaveContactGroupPairs(CContactGroupPairs& pairs) {
  return store_.SaveContactGroupPairs(pairs);
}

std::int32_t ForwardingStore::SaveCalendars(CCalendars& items, bool saveFlag) {
  return store_.SaveCalendars(items, saveFlag);
}

bool ForwardingStore::Begin() { return store_.Begin(); }

bool ForwardingStore::Commit() { return store_.Commit(); }

bool ForwardingStore::Rollback() noexcept { return store_.Rollback(); }

bool ForwardingStore::BeginReading() { return store_.BeginReading(); }

void ForwardingStore::EndReading() noexcept { store_.EndReading(); }

ImportHistory* ForwardingStore::History() noexcept { return store_.History(); }

std::string ForwardingStore::LastError() const { return store_.LastError(); }

std::size_t ForwardingStore::TextAtOnce() const noexcept { return store_.TextAtOnce(); }

}  // namespace pim
