// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/Calendar.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/records/RecordStore.h"
#include "records/LastStore.h"

namespace pim {

namespace {
constexpr std::int32_t kFailure = -1;
}

std::int32_t CContacts::OpenFromDB(std::int32_t db, std::int32_t option) {
  RecordStore* store = UseStore(db);
  return store != nullptr && option == 0 ? store->LoadContacts(*this) : kFailure;
}

std::int32_t CContacts::SaveToDB(std::int32_t db, std::int32_t saveOption, bool saveFlag) {
  RecordStore* store = UseStore(db);
  return store != nullptr ? store->SaveContacts(*this, saveOption, saveFlag) : kFailure;
}

CContactGroup& CContactGroups::AddNew() {
  CContactGroup& group = Collection::AddNew();
  group.group_id = --lastProvisionalId_;
  return group;
}

std::int32_t CContactGroups::OpenFromDB(std::int32_t db) {
  RecordStore* store = UseStore(db);
  return store != nullptr ? store->LoadContactGroups(*this) : kFailure;
}

std::int32_t CContactGroups::SaveToDB(std::int32_t db, bool saveFlag) {
  RecordStore* store = UseStore(db);
  return store != nullptr ? store->SaveContactGroups(*this, saveFlag) : kFailure;
}

std::int32_t CContactGroupPairs::OpenFromDB() {
  RecordStore* store = LastStore();
  return store != nullptr ? store->LoadContactGroupPairs(*this) : kFailure;
}

std::int32_t CContactGroupPairs::SaveToDB() {
  RecordStore* store = LastStore();
  return store != nullptr ? store->SaveContactGroupPairs(*this) : kFailure;
}

std::int32_t CCalendars::OpenFromDB(std::int32_t db, CalendarType kind, std::int32_t option) {
  RecordStore* store = UseStore(db);
  return store != nullptr && option == 0 ? store->LoadCalendars(kind, *this) : kFailure;
}

std::int32_t CCalendars::SaveToDB(std::int32_t db, bool saveFlag) {
  RecordStore* store = UseStore(db);
  return store != nullptr ? store->SaveCalendars(*this, saveFlag) : kFailure;
}

}  // namespace pim
