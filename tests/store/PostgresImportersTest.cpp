// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <string>

#include "pim/store/ImportHistory.h"
#include "tests/store/PostgresFixture.h"

namespace pim {
namespace {

using testing::AtOnce;

// Several that work on one store at once.
using PostgresImporters = testing::PostgresFixture;

// In whatever order importers name them: one of two that wait for each other begins anew.
TEST_F(PostgresImporters, ManyMakeGroupsAndContactsOnce) {
  { const PostgresStore made(schema_.Url()); }
  std::atomic<int> stored = 0;
  AtOnce(4, [&](int thread) {
    PostgresStore store(schema_.Url());
    for (int round = 0; round < 5; ++round) {
      for (int tries = 0;; ++tries) {
        ASSERT_LT(tries, 50);
        StoreTransaction transaction(store);
        bool isDone = transaction.IsOpen();
        for (int i = 0; isDone && i < 4; ++i) {
          const int name = thread % 2 == 0 ? i : 3 - i;
          const auto letter = static_cast<char16_t>(u'a' + round * 4 + name);
          isDone = SaveGroup(store, WideString(1, letter)) > 0;
        }
        const std::int32_t saved =
            isDone ? Save(store, WideString(1, static_cast<char16_t>(u'A' + round)), false) : -1;
        if (saved >= 0 && transaction.Commit()) {
          stored += saved;
          break;
        }
        ASSERT_TRUE(store.MayTryAgain()) << store.LastError();
      }
    }
  });
  EXPECT_EQ(stored, 5);
  EXPECT_EQ(other_.Ask("SELECT count(*) FROM contacts"), "5");
  EXPECT_EQ(other_.Ask("SELECT count(*), count(DISTINCT group_name_folded) FROM contactgroups"),
            "2020");
}

// Groups that two bring at once under one name are one, behind the commits; nobody waits before.
TEST_F(PostgresImporters, GroupsOfOneNameBecomeOne) {
  PostgresStore first(schema_.Url());
  PostgresStore second(schema_.Url());
  std::int32_t keys[2] = {};
  {
    StoreTransaction one(first);
    StoreTransaction two(second);
    DatabaseStore* const stores[] = {&first, &second};
    for (int i = 0; i < 2; ++i) {
      ASSERT_EQ(stores[i]->History()->BeginImport({"contacts import", {}}), i + 1);
      ASSERT_GT(keys[i] = SaveGroup(*stores[i], i == 0 ? u"Friends" : u"FRIENDS"), 0);
      EXPECT_EQ(SaveGroup(*stores[i], u"friends"), keys[i]) << "its own";
      EXPECT_GT(SaveGroup(*stores[i], i == 0 ? u"own 1" : u"own 2"), 0);
      {
        const StoreTransaction undone(*stores[i]);
        SaveGroup(*stores[i], u"undone");
      }
      CContacts contacts;
      contacts.AddNew();
      ASSERT_EQ(stores[i]->SaveContacts(contacts, keys[i], true), 1);
    }
    EXPECT_NE(keys[0], keys[1]);
    EXPECT_TRUE(one.Commit() && two.Commit()) << second.LastError();
  }
  EXPECT_EQ(other_.Ask("SELECT string_agg(group_name, ' ' ORDER BY group_id) FROM contactgroups"),
            "Friends own 1 own 2");
  const std::string members = "SELECT count(*) FROM contacts_contactgroups WHERE group_id = ";
  EXPECT_EQ(other_.Ask(members + std::to_string(keys[0])), "2");
  // The key that it had is still good for who has it, and the name for all.
  CContacts contacts;
  contacts.AddNew();
  EXPECT_EQ(second.SaveContacts(contacts, keys[1], true), 1) << second.LastError();
  EXPECT_EQ(other_.Ask(members + std::to_string(keys[0])), "3");
  EXPECT_EQ(SaveGroup(second, u"friends"), keys[0]);
  ASSERT_TRUE(first.History()->EndImport() && second.History()->EndImport());
  UndoResult result;
  EXPECT_EQ(second.History()->Undo({.import = 2}, result), 0);
  EXPECT_EQ(result.groups, 1) << "the other one's stays";
}

// What is taken back of a new group leaves it with the name that it had, which the commit claims.
TEST_F(PostgresImporters, NewGroupsKeepTheirNamesOverRollbacks) {
  PostgresStore store(schema_.Url());
  {
    StoreTransaction outer(store);
    CContactGroups groups;
    for (const char16_t* name : {u"A", u"B"}) groups.AddNew().group_name = name;
    ASSERT_EQ(store.SaveContactGroups(groups, true), 2);
    {
      const StoreTransaction undone(store);
      groups[0].group_name = u"renamed";
      ASSERT_EQ(store.SaveContactGroups(groups, true), 2);
      EXPECT_EQ(SaveGroup(store, u"RENAMED"), groups[0].group_id);
      EXPECT_NE(SaveGroup(store, u"a"), groups[0].group_id);
    }
    EXPECT_EQ(SaveGroup(store, u"a"), groups[0].group_id);
    groups[1].group_name = u"kept";
    ASSERT_EQ(store.SaveContactGroups(groups, true), 2);  // and the first one is renamed after all
    EXPECT_TRUE(outer.Commit()) << store.LastError();
  }
  EXPECT_EQ(other_.Ask("SELECT string_agg(group_name_folded, ' ' ORDER BY 1) FROM contactgroups"),
            "kept renamed");
  EXPECT_EQ(SaveGroup(store, u"Kept"), 2);
}

}  // namespace
}  // namespace pim
