// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/store/HistoryFixture.h"

namespace pim {
namespace {

// What every store promises of an import that is under way while transactions are rolled back.
class RecorderContract : public testing::HistoryFixture {
 protected:
  // The first line of a contact; -1 where no import brought it.
  std::int64_t LineOf(std::int32_t key) {
    RecordOrigin origin;
    return history().FindOrigin(StoredKind::Contact, key, origin) == 1 ? origin.firstLine : -1;
  }
};

INSTANTIATE_TEST_SUITE_P(Stores, RecorderContract, testing::StoresWithHistory(),
                         testing::NameOfStore);

// A record that was rolled back inside a file leaves no origin for the next one of its key.
TEST_P(RecorderContract, ForgetsRecordsThatAreRolledBack) {
  Import("", [&] {
    {
      const StoreTransaction undone(*store);
      Save({u"a"});
    }
    CContacts fails;
    fails.AddNew().formatted_name = u"b";
    fails.AddNew().photo = u"c";
    picturesBreak = true;
    EXPECT_THROW(static_cast<void>(store->SaveContacts(fails, 0, true)), int);
    picturesBreak = false;
    const RecordLines lines{Save({u"d"})[0].tag, 4, 6};
    EXPECT_EQ(lines.key, 4);
    EXPECT_TRUE(history().AddLines({&lines, 1}));
  });
  EXPECT_EQ(LineOf(4), 4);
  for (const std::int32_t key : {1, 2, 3}) EXPECT_EQ(LineOf(key), -1) << key;
  const std::int32_t last = 4;
  std::vector<WideString> pictures;
  ASSERT_EQ(store->DeleteContacts({&last, 1}, pictures), 1);
  Open();  // a file gives the keys again
  Save({u"x", u"y", u"z"});
  EXPECT_EQ(Undo({{}, true, false}).contacts, 0);
  EXPECT_EQ(CountContacts(), 3);
}

// Lines that were rolled back are told no more, and the records are the import's all the same.
TEST_P(RecorderContract, ForgetsLinesThatAreRolledBack) {
  constexpr std::int32_t kContacts = 40;
  Import("", [&] {
    CContacts contacts;
    for (std::int32_t i = 0; i < kContacts; ++i) contacts.AddNew();
    EXPECT_EQ(store->SaveContacts(contacts, 0, true), kContacts);
    const StoreTransaction undone(*store);
    std::vector<RecordLines> lines(kContacts, {0, 1, 2});
    for (std::int32_t i = 0; i < kContacts; ++i)
      lines[static_cast<std::size_t>(i)].key = contacts[i].tag;
    EXPECT_TRUE(history().AddLines(lines));
  });
  for (std::int32_t key = 1; key <= kContacts; ++key) EXPECT_EQ(LineOf(key), 0) << key;
  EXPECT_EQ(Undo().contacts, kContacts);
}

// Lines are told of what was saved since the last call: nothing before it is waited for.
TEST_P(RecorderContract, UntoldLinesStayUntold) {
  Import("", [&] {
    Save({u"a"});
    EXPECT_TRUE(history().AddLines({}));
    const RecordLines lines{Save({u"b"})[0].tag, 4, 6};
    EXPECT_TRUE(history().AddLines({&lines, 1}));
  });
  EXPECT_EQ(LineOf(1), 0);
  EXPECT_EQ(LineOf(2), 4);
}

TEST_P(RecorderContract, AnEndThatIsRolledBackIsNone) {
  ASSERT_EQ(history().BeginImport({}), 1);
  {
    const StoreTransaction undone(*store);
    ASSERT_TRUE(history().EndImport());
  }
  EXPECT_EQ(Entry(1).state, ImportState::Running);
  {
    const StoreTransaction undone(*store);
    ASSERT_TRUE(history().EndImport());
    ASSERT_EQ(history().BeginImport({}), 2);
  }
  EXPECT_EQ(history().BeginImport({}), -1);
  EXPECT_TRUE(history().EndImport());
  EXPECT_EQ(Entry(1).state, ImportState::Done);
}

TEST_P(RecorderContract, ClosingTheStoreInterrupts) {
  if (!IsKept()) return;  // one in memory is gone then
  for (const bool inTransaction : {false, true}) {
    const std::int32_t import = history().BeginImport({});
    ASSERT_TRUE(!inTransaction || store->Begin());
    Open();
    EXPECT_EQ(Entry(import).state, ImportState::Interrupted) << inTransaction;
  }
}

// A group that was taken back gives its key to none that comes later: a collection may hold it.
TEST_P(RecorderContract, KeysOfGroupsAreGivenOnce) {
  std::int32_t group = 0;
  Import("", [&] { group = SaveGroup(u"Made"); });
  Open();
  EXPECT_EQ(Undo().groups, 1);
  EXPECT_GT(SaveGroup(u"another"), group);
}

// A contact that another program saves under the key of one that was rolled back was there before.
TEST_P(RecorderContract, LinksContactsOfOthers) {
  if (!IsFile()) return;  // a server gives no key twice
  const std::int32_t group = SaveGroup(u"g");
  ASSERT_EQ(history().BeginImport({}), 1);
  {
    const StoreTransaction undone(*store);
    ASSERT_TRUE(history().BeginFile("", ""));
    Save({u"a"});
  }
  SqliteStore other(StorePath());
  CContacts contacts;
  contacts.AddNew();
  ASSERT_EQ(other.SaveContacts(contacts, 0, true), 1);
  CContactGroupPairs pairs;
  Link(pairs, contacts[0].tag, group);
  ASSERT_EQ(store->SaveContactGroupPairs(pairs), 1);
  ASSERT_TRUE(history().EndImport());
  EXPECT_EQ(Undo().links, 1);
}

TEST_P(RecorderContract, AFileEndsInItsTransaction) {
  ASSERT_EQ(history().BeginImport({}), 1);
  {
    StoreTransaction transaction(*store);
    ASSERT_TRUE(history().BeginFile("", ""));
    Save({u"a"});
    EXPECT_FALSE(transaction.Commit());
  }
  EXPECT_EQ(CountContacts(), 0);
  EXPECT_TRUE(history().EndImport());
}

// A record that is changed or deleted while its file is read, or would have been.
TEST_P(RecorderContract, FollowsRecordsOfItsFile) {
  Import("", [&] {
    CContacts saved = Save({u"a", u"b"});
    {
      const StoreTransaction undone(*store);
      saved[0].hobby = u"chess";
      EXPECT_EQ(store->SaveContacts(saved, 0, true), 2);
      EXPECT_FALSE(history().EndFile({}, true));  // it ends where it began
    }
    std::vector<WideString> pictures;
    const std::int32_t second = saved[1].tag;
    EXPECT_EQ(store->DeleteContacts({&second, 1}, pictures), 1);
    const RecordLines lines[] = {{saved[0].tag, 1, 3}, {second, 4, 6}};
    EXPECT_TRUE(history().AddLines(lines));
  });
  EXPECT_EQ(LineOf(1), 1);
  EXPECT_EQ(LineOf(2), -1);
  EXPECT_EQ(Undo().contacts, 1);
}

// What an import changes of its own records is what it brought.
TEST_P(RecorderContract, ItsOwnChangesAreNoneSince) {
  ASSERT_EQ(history().BeginImport({}), 1);
  CContacts saved;
  for (const char* name : {"a.vcf", "b.vcf"}) {
    StoreTransaction transaction(*store);
    ASSERT_TRUE(history().BeginFile(name, name));
    if (saved.GetCount() == 0) saved = Save({u"a", u"b"});
    for (const char16_t* hobby : {u"chess", u"tennis"}) {
      saved[0].hobby = hobby;
      ASSERT_EQ(store->SaveContacts(saved, 0, true), 2);
    }
    saved[0].photo = u"z";
    ASSERT_TRUE(history().EndFile({}, true) && transaction.Commit());
  }
  ASSERT_TRUE(history().EndImport());
  EXPECT_EQ(Undo().contacts, 2);
}

// What a store doesn't keep is no change.
TEST_P(RecorderContract, NamesThatAreNoPicturesAreNoChange) {
  for (const char16_t* name : {u"a/b", u".."}) {
    ImportNames({name});
    EXPECT_EQ(Undo().contacts, 1);
  }
}

}  // namespace
}  // namespace pim
