// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "examples/OwnStore.h"
#include "pim/records/Contacts.h"
#include "pim/records/TableStore.h"

namespace pim {
namespace {

// What the host's tables are to fail at, once.
enum class Fault { None, Find, Next, Put, Erase, Begin, Commit, View };

Fault fault = Fault::None;

void FailAt(Fault place) {
  if (fault == place) throw std::runtime_error("the disk is full");
}

template <class Row>
class FailingTable final : public RowTable<Row> {
 public:
  explicit FailingTable(RowTable<Row>& table) : table_(table) {}

  std::shared_ptr<const Row> Find(std::int32_t key) override {
    EXPECT_TRUE(key > 0 && key != 65535) << key;
    FailAt(Fault::Find);
    return table_.Find(key);
  }
  std::shared_ptr<const Row> Next(std::int32_t& key) override {
    // Behind the first row, so that something has been read by then.
    if (key > 0) FailAt(Fault::Next);
    ++steps;
    return table_.Next(key);
  }
  std::int32_t HighestKey() override { return table_.HighestKey(); }
  void Put(std::int32_t key, std::shared_ptr<const Row> row) override {
    if (key == 2) FailAt(Fault::Put);
    table_.Put(key, std::move(row));
    if (whenPut) whenPut();
  }
  void Erase(std::int32_t key) override {
    FailAt(Fault::Erase);
    table_.Erase(key);
  }

  int steps = 0;  // that were made through the rows
  std::function<void()> whenPut;

 private:
  RowTable<Row>& table_;
};

struct FailingStore final : OwnStore {
  RowTable<CContact>& Contacts() override { return contacts; }
  RowTable<CContactGroup>& Groups() override { return groups; }
  RowTable<CContactGroupPair>& Links() override { return links; }
  void BeginChanges() override {
    FailAt(Fault::Begin);
    OwnStore::BeginChanges();
    ++changes;
  }
  void CommitChanges() override {
    FailAt(Fault::Commit);
    OwnStore::CommitChanges();
    --changes;
  }
  void RollBackChanges() noexcept override {
    OwnStore::RollBackChanges();
    --changes;
  }
  void BeginView() override {
    FailAt(Fault::View);
    EXPECT_EQ(changes, 0);
    ++views;
    ++viewsBegun;
  }
  void EndView() noexcept override { --views; }
  using TableStore::TablesChanged;

  FailingTable<CContact> contacts{OwnStore::Contacts()};
  FailingTable<CContactGroup> groups{OwnStore::Groups()};
  FailingTable<CContactGroupPair> links{OwnStore::Links()};
  int changes = 0;  // transactions that are open
  int views = 0;
  int viewsBegun = 0;
};

class FailingTables : public ::testing::Test {
 protected:
  FailingTables() { fault = Fault::None; }
  ~FailingTables() override { fault = Fault::None; }

  std::int32_t Save(std::int32_t count) {
    saved.DeleteAll();
    constexpr const char16_t* kHobbies[] = {u"chess", u"knitting", u"sailing"};
    for (std::int32_t i = 0; i < count; ++i) saved.AddNew().hobby = kHobbies[i];
    return store.SaveContacts(saved, 0, false);
  }

  FailingStore store;
  CContacts saved;
};

TEST_F(FailingTables, LeaveStoreAndCollectionAsTheyWere) {
  for (const Fault place : {Fault::Put, Fault::Begin, Fault::Commit}) {
    fault = place;
    EXPECT_EQ(Save(3), -1) << static_cast<int>(place);
    EXPECT_EQ(saved[0].tag, 0);
    EXPECT_EQ(store.LastError(), "the disk is full");
    EXPECT_EQ(store.changes, 0);
    fault = Fault::None;
    CContacts read;
    EXPECT_EQ(store.LoadContacts(read), 0);
  }
  ASSERT_EQ(Save(3), 3);
  // Keys of what was rolled back aren't given again.
  EXPECT_EQ(saved[0].tag, 5);
  const std::int32_t keys[] = {saved[0].tag, saved[1].tag};
  std::vector<WideString> pictures;
  for (const Fault place : {Fault::Find, Fault::Erase}) {
    fault = place;
    EXPECT_EQ(store.DeleteContacts(keys, pictures), -1) << static_cast<int>(place);
  }
  fault = Fault::None;
  EXPECT_EQ(store.DeleteContacts(keys, pictures), 2);
}

TEST_F(FailingTables, GiveNothingOfALoadingThatFails) {
  ASSERT_EQ(Save(3), 3);
  fault = Fault::Next;
  CContacts read;
  read.AddNew();
  EXPECT_EQ(store.LoadContacts(read), -1);
  EXPECT_EQ(read.GetCount(), 1);
  fault = Fault::Find;
  const std::int32_t keys[] = {1};
  EXPECT_EQ(store.VisitContacts(keys, [](CContact&) { return true; }), -1);
  fault = Fault::View;
  EXPECT_FALSE(store.BeginReading());
  fault = Fault::None;
  ASSERT_TRUE(store.BeginReading());
  ASSERT_TRUE(store.BeginReading());
  store.EndReading();
  EXPECT_EQ(store.views, 1);
  EXPECT_EQ(Save(1), -1);
  store.EndReading();
  EXPECT_EQ(store.views, 0);
}

TEST_F(FailingTables, CanBeRolledBackWhenTheyCanNotBeCommitted) {
  {
    StoreTransaction transaction(store);
    ASSERT_EQ(Save(2), 2);
    fault = Fault::Commit;
    EXPECT_FALSE(transaction.Commit());
  }
  fault = Fault::None;
  EXPECT_EQ(store.changes, 0);
  // What was rolled back is no duplicate.
  EXPECT_EQ(Save(2), 2);
  EXPECT_EQ(Save(2), 0);
}

TEST_F(FailingTables, AreReadAnewWhenTheHostSaysSo) {
  ASSERT_EQ(Save(1), 1);
  store.contacts.Erase(saved[0].tag);
  EXPECT_EQ(Save(1), 0);
  store.TablesChanged();
  EXPECT_EQ(Save(1), 1);
  // Even while the store is at work on them.
  store.contacts.whenPut = [this] { store.TablesChanged(); };
  EXPECT_EQ(Save(3), 2);
  EXPECT_EQ(Save(3), 0);
}

TEST_F(FailingTables, ShowOneStateToEachReading) {
  ASSERT_EQ(Save(1), 1);
  const std::int32_t keys[] = {1};
  const auto read = [&] {
    CContacts contacts;
    EXPECT_EQ(store.LoadContacts(contacts), 1);
    EXPECT_EQ(store.VisitContacts(keys, [](CContact&) { return true; }), 1);
  };
  read();
  EXPECT_EQ(store.viewsBegun, 2);
  EXPECT_THROW(static_cast<void>(store.VisitContacts([](CContact&) -> bool { throw 7; })), int);
  EXPECT_EQ(store.views, 0);
  store.viewsBegun = 0;
  {
    const StoreReading reading(store);
    read();
  }
  EXPECT_EQ(store.viewsBegun, 1);
  const StoreTransaction transaction(store);  // which shows one by itself
  const StoreReading reading(store);
  read();
  EXPECT_EQ(store.viewsBegun, 1);
  EXPECT_EQ(store.views, 0);
}

TEST_F(FailingTables, AreAskedForKeysOfRowsAlone) {
  ASSERT_EQ(Save(3), 3);
  const std::int32_t keys[] = {-1, 0, 65535, 2};
  EXPECT_EQ(store.VisitContacts(keys, [](CContact&) { return true; }), 1);
  std::vector<WideString> pictures;
  EXPECT_EQ(store.DeleteContacts(keys, pictures), 1);
  EXPECT_EQ(store.SaveContacts(saved, 65535, true), -1);
  store.contacts.Put(65535, std::make_shared<CContact>());
  CContacts read;
  EXPECT_EQ(store.LoadContacts(read), -1);
  EXPECT_NE(store.LastError().find("65535"), std::string::npos) << store.LastError();
  EXPECT_EQ(read.GetCount(), 0);
}

// Near the last key of all, each new record still gets one of its own.
TEST_F(FailingTables, MayHoldTheLastKeys) {
  ASSERT_EQ(Save(1), 1);
  store.contacts.Put(2147483646, std::make_shared<CContact>());
  saved[0].tag = 2147483646;
  ASSERT_EQ(store.SaveContacts(saved, 0, true), 1);
  EXPECT_EQ(Save(3), 2) << store.LastError();
  CContacts read;
  EXPECT_EQ(store.LoadContacts(read), 4);
}

// A delete looks at no other rows than the first one did, and what it leaves is still known.
TEST_F(FailingTables, AreNotReadThroughByEachDelete) {
  CContactGroups groups;
  groups.AddNew().group_name = u"Family";
  ASSERT_EQ(store.SaveContactGroups(groups, true), 1);
  for (const char16_t* photo : {u"a", u"a", u"b", u"a", u""}) {
    saved.AddNew().photo = photo;
    saved[saved.GetCount() - 1].hobby =
        WideString(static_cast<std::size_t>(saved.GetCount()), u'x');
  }
  ASSERT_EQ(store.SaveContacts(saved, groups[0].group_id, true), 5);
  EXPECT_EQ(store.SaveContacts(saved, 0, false), 5);
  const auto left = [this](std::initializer_list<std::int32_t> keys) {
    std::vector<WideString> pictures;
    EXPECT_EQ(store.DeleteContacts({keys.begin(), keys.size()}, pictures), std::ssize(keys));
    return pictures;
  };
  EXPECT_EQ(left({1}), std::vector<WideString>{});
  store.contacts.steps = store.links.steps = store.groups.steps = 0;
  EXPECT_EQ(left({3}), std::vector<WideString>{u"b"});
  saved[1].photo = u"c";                              // of the contact that has it
  EXPECT_EQ(store.SaveContacts(saved, 0, false), 5);  // 1 and 3 are new again
  EXPECT_EQ(saved[2].tag, 7);
  EXPECT_EQ(left({6, 4}), std::vector<WideString>{u"a"});
  EXPECT_EQ(store.contacts.steps + store.links.steps + store.groups.steps, 0);
  CContactGroupPairs pairs;
  ASSERT_EQ(store.LoadContactGroupPairs(pairs), 2);
  EXPECT_EQ(pairs[0].contact_id, 2);
  EXPECT_EQ(pairs[1].contact_id, 5);
  // Nor is the key of a host's own row given again.
  store.contacts.Put(20, std::make_shared<CContact>());
  left({20});
  EXPECT_EQ(Save(1), 1);
  EXPECT_EQ(saved[0].tag, 21);
}

TEST_F(FailingTables, MayHoldTwoGroupsOfOneName) {
  for (const std::int32_t key : {1, 2, 3}) {
    auto group = std::make_shared<CContactGroup>();
    group->group_name = key == 2 ? u"FAM" : u"Fam";
    store.groups.Put(key, group);
  }
  CContactGroups renamed;
  renamed.AddNew().group_name = u"Friends";
  for (const std::int32_t key : {3, 1}) {
    renamed[0].group_id = key;
    renamed[0].group_name = key == 3 ? u"Friends" : u"Work";
    EXPECT_EQ(store.SaveContactGroups(renamed, true), 1);
    CContactGroups found;
    found.AddNew().group_name = u"fam";
    EXPECT_EQ(store.SaveContactGroups(found, true), 0);
    EXPECT_EQ(found[0].group_id, key == 3 ? 1 : 2);
  }
}

}  // namespace
}  // namespace pim
