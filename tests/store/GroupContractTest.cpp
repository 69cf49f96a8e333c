// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/store/StoreFixture.h"

namespace pim {
namespace {

// What every store promises of groups and their members, whichever it is.
class GroupContract : public testing::StoreFixture {};

INSTANTIATE_TEST_SUITE_P(Stores, GroupContract, testing::AllStores(), testing::NameOfStore);

TEST_P(GroupContract, GroupNamesAreUnique) {
  CContactGroups groups;
  for (const char16_t* name : {u"M\u00FCller", u"M\u00DCLLER", u"", u"", u"Work"})
    groups.AddNew().group_name = name;
  EXPECT_EQ(store->SaveContactGroups(groups, true), 3);
  EXPECT_EQ(groups[1].group_id, groups[0].group_id);
  EXPECT_EQ(groups[3].group_id, groups[2].group_id);
  CContactGroups renamed;
  renamed.AddNew().group_name = u"WORK";  // a stored group may change its spelling
  renamed[0].group_id = groups[4].group_id;
  EXPECT_EQ(store->SaveContactGroups(renamed, true), 1);
  renamed[0].group_name = u"m\u00FCller";  // but take no other's name
  EXPECT_EQ(store->SaveContactGroups(renamed, true), 0);
  EXPECT_EQ(renamed[0].group_id, groups[0].group_id);
  CContactGroups read;
  ASSERT_EQ(store->LoadContactGroups(read), 3);
  EXPECT_EQ(read[0].group_name, u"M\u00FCller");
  EXPECT_EQ(read[2].group_name, u"WORK");
}

TEST_P(GroupContract, LinksKeepTheirNumber) {
  CContacts contacts;
  contacts.AddNew();
  const std::int32_t group = SaveGroup(u"A");
  ASSERT_EQ(store->SaveContacts(contacts, group, true), 1);  // links it
  EXPECT_EQ(store->SaveContacts(contacts, group, true), 1);  // once
  EXPECT_EQ(CountLinks(), 1);
  CContactGroupPairs pairs;
  Link(pairs, 1, group);
  Link(pairs, 1, group);
  EXPECT_EQ(store->SaveContactGroupPairs(pairs), 1);
  EXPECT_EQ(store->SaveContactGroupPairs(pairs), 0);
  EXPECT_EQ(CountLinks(), 2);
  Link(pairs, 1, group);
  Link(pairs, 1, 99);
  EXPECT_EQ(store->SaveContactGroupPairs(pairs), -1);
  EXPECT_NE(store->LastError().find("99"), std::string::npos) << store->LastError();
  EXPECT_EQ(CountLinks(), 2);

  contacts.AddNew().tag = -3;
  EXPECT_EQ(store->SaveContacts(contacts, 77, true), -1);
  EXPECT_EQ(contacts[1].tag, -3);
  EXPECT_EQ(CountContacts(), 1);
}

TEST_P(GroupContract, LinksKeepTheirOrder) {
  constexpr std::int32_t kLinks = 100;
  CContacts contacts;
  for (std::int32_t i = 0; i < kLinks; ++i) contacts.AddNew();
  ASSERT_EQ(store->SaveContacts(contacts, 0, true), kLinks);
  const std::int32_t groups[] = {SaveGroup(u"A"), SaveGroup(u"B")};
  CContactGroupPairs pairs;
  for (std::int32_t i = 0; i < kLinks; ++i) Link(pairs, kLinks - i, groups[i % 2]);
  Link(pairs, 999, groups[0]);  // which isn't stored
  EXPECT_EQ(store->SaveContactGroupPairs(pairs), -1);
  EXPECT_NE(store->LastError().find("contact 999"), std::string::npos) << store->LastError();
  EXPECT_EQ(CountLinks(), 0);
  pairs.Delete(kLinks);
  EXPECT_EQ(store->SaveContactGroupPairs(pairs), kLinks);
  CContactGroupPairs read;
  ASSERT_EQ(store->LoadContactGroupPairs(read), kLinks);
  for (std::int32_t i = 0; i < kLinks; ++i) {
    EXPECT_EQ(read[i].contact_id, pairs[i].contact_id);
    EXPECT_EQ(read[i].group_id, pairs[i].group_id);
  }
}

}  // namespace
}  // namespace pim
