// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

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
  std::shared_ptr<const Row> Find(std::int32_t key) override {
    FailAt(Fault::Find);
    return table_.Find(key);
  }
  std::shared_ptr<const Row> Next(std::int32_t& key) override {
    // Behind the first row, so that something has been read by then.
    if (key > 0) FailAt(Fault::Next);
    return table_.Next(key);
  }
  std::int32_t HighestKey() override { return table_.HighestKey(); }
  void Put(std::int32_t key, std::shared_ptr<const Row> row) override {
    if (key == 2) FailAt(Fault::Put);
    table_.Put(key, std::move(row));
  }
  void Erase(std::int32_t key) override {
    FailAt(Fault::Erase);
    table_.Erase(key);
  }

 private:
  MapTable<Row> table_;
};

struct FailingStore final : TableStore {
  struct Tables {
    FailingTable<CContact> contacts;
    FailingTable<CCalendar> items;
    FailingTable<CContactGroup> groups;
    FailingTable<CContactGroupPair> links;
  };

  RowTable<CContact>& Contacts() override { return tables.contacts; }
  RowTable<CCalendar>& Items() override { return tables.items; }
  RowTable<CContactGroup>& Groups() override { return tables.groups; }
  RowTable<CContactGroupPair>& Links() override { return tables.links; }
  void BeginChanges() override {
    FailAt(Fault::Begin);
    before.push_back(tables);
  }
  void CommitChanges() override {
    FailAt(Fault::Commit);
    before.pop_back();
  }
  void RollBackChanges() noexcept override {
    tables = before.back();
    before.pop_back();
  }
  void BeginView() override {
    FailAt(Fault::View);
    ++views;
  }
  void EndView() noexcept override { --views; }
  using TableStore::TablesChanged;

  Tables tables;
  std::vector<Tables> before;
  int views = 0;
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
    EXPECT_TRUE(store.before.empty());
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
  EXPECT_TRUE(store.before.empty());
  // What was rolled back is no duplicate.
  EXPECT_EQ(Save(2), 2);
  EXPECT_EQ(Save(2), 0);
}

TEST_F(FailingTables, AreReadAnewWhenTheHostSaysSo) {
  ASSERT_EQ(Save(1), 1);
  store.tables.contacts.Erase(saved[0].tag);
  EXPECT_EQ(Save(1), 0);
  store.TablesChanged();
  EXPECT_EQ(Save(1), 1);
}

}  // namespace
}  // namespace pim
