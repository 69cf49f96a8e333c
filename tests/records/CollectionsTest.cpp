// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <memory>

#include "pim/records/Calendar.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/records/MemoryStore.h"
#include "tests/records/FailingStore.h"

namespace pim {
namespace {

TEST(StoreBinding, OperationsWithoutHandleUseTheLastStore) {
  MemoryStore first;
  MemoryStore second;
  const StoreBinding firstBinding(first);
  auto secondBinding = std::make_unique<StoreBinding>(second);
  const std::int32_t secondDb = secondBinding->db();
  EXPECT_GE(firstBinding.db(), 1);
  EXPECT_NE(firstBinding.db(), secondDb);

  CContacts contacts;
  contacts.AddNew();
  CContactGroups groups;
  groups.AddNew().group_name = u"Friends";
  EXPECT_NE(groups.AddNew().group_id, groups[0].group_id);
  EXPECT_EQ(contacts.SaveToDB(firstBinding.db(), 0, true), 1);
  EXPECT_EQ(groups.SaveToDB(firstBinding.db(), true), 2);
  CContactGroupPairs pairs;
  pairs.AddNew();
  pairs[0].contact_id = contacts[0].tag;
  pairs[0].group_id = groups[0].group_id;

  CContacts read;
  EXPECT_EQ(read.OpenFromDB(secondDb, 0), 0);
  EXPECT_EQ(pairs.SaveToDB(), -1);  // the second store has no such contact
  EXPECT_EQ(read.OpenFromDB(firstBinding.db(), 0), 1);
  EXPECT_EQ(read.OpenFromDB(firstBinding.db(), 1), -1);
  EXPECT_EQ(pairs.SaveToDB(), 1);
  EXPECT_EQ(CContactGroupPairs().OpenFromDB(), 1);

  secondBinding.reset();
  for (const std::int32_t unbound : {0, -1, secondDb}) {
    SCOPED_TRACE(unbound);
    EXPECT_EQ(StoreForHandle(unbound), nullptr);
    EXPECT_EQ(contacts.SaveToDB(unbound, 0, true), -1);
    EXPECT_EQ(CCalendars().OpenFromDB(unbound, CalendarType::Event, 0), -1);
    EXPECT_EQ(pairs.SaveToDB(), -1);
  }
}

TEST(StoreTransaction, GivesUpWhenTheStoreFails) {
  MemoryStore memory;
  testing::FailingStore failing(memory);
  CCalendars items;
  items.AddNew().calendar_type = 1;
  for (int passing = 0; passing < 3; ++passing) {
    SCOPED_TRACE(passing);
    failing.FailAfter(passing);
    StoreTransaction outer(failing);
    EXPECT_EQ(outer.IsOpen(), passing > 0);
    EXPECT_EQ(failing.SaveCalendars(items, true), passing > 1 ? 1 : -1);
    EXPECT_FALSE(outer.Commit());
    EXPECT_EQ(memory.LoadCalendars(CalendarType::Event, items), 0);
    EXPECT_FALSE(memory.Rollback());  // nothing is left open
  }
}

}  // namespace
}  // namespace pim
