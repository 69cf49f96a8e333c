// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "pim/manager/ContactImport.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Host.h"
#include "pim/records/MemoryStore.h"
#include "platform/CodePages.h"
#include "tests/records/FailingStore.h"

namespace pim {
namespace {

namespace fs = std::filesystem;

class ContactFlows : public ::testing::Test {
 protected:
  ContactFlows() {
    std::string path = ::testing::TempDir() + "flows-XXXXXX";
    folder_ = mkdtemp(path.data());
    SetMessageSink([this](std::u16string_view text) { messages_.emplace_back(text); });
  }
  ~ContactFlows() override {
    SetMessageSink({});
    fs::remove_all(folder_);
  }

  WideString Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ + "/" + name, std::ios::binary) << text;
    return Wide(name);
  }
  WideString Wide(const std::string& name) const { return WideFromUtf8(folder_ + "/" + name); }
  // The names of the files in the folder.
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_))
      names.insert(entry.path().filename().string());
    return names;
  }
  std::int32_t StoredContacts() {
    CContacts contacts;
    return contacts.OpenFromDB(db_, 0);
  }
  // "group: contact_id ..." of each stored group, in order.
  std::string Links() {
    CContactGroups groups;
    EXPECT_GE(groups.OpenFromDB(db_), 0);
    CContactGroupPairs pairs;
    EXPECT_GE(pairs.OpenFromDB(), 0);
    std::string text;
    for (std::int32_t g = 0; g < groups.GetCount(); ++g) {
      text += Utf8FromWide(groups[g].group_name) + ":";
      for (std::int32_t p = 0; p < pairs.GetCount(); ++p)
        if (pairs[p].group_id == groups[g].group_id)
          text += " " + std::to_string(pairs[p].contact_id);
      text += "\n";
    }
    return text;
  }

  std::string folder_;
  std::vector<std::u16string> messages_;
  MemoryStore store_;
  StoreBinding binding_{store_};
  std::int32_t db_ = binding_.db();
  VObjectMgr manager_;
};

constexpr const char* kTwoCards =
    "BEGIN:VCARD\nN:Doe;John\nX-GROUP:Friends\nX-GROUP:work\nEND:VCARD\n"
    "BEGIN:VCARD\nN:Roe;Jane\nX-GROUP:FRIENDS\nX-GROUP:Friends\nEND:VCARD\n";

TEST_F(ContactFlows, ImportLinksGroups) {
  CContactGroups groups;
  groups.AddNew().group_name = u"Work";
  EXPECT_GE(groups.SaveToDB(db_, true), 0);
  EXPECT_EQ(manager_.Import_Contact(db_, Write("a.vcf", kTwoCards), -1, true), 2);
  EXPECT_EQ(Links(), "Work: 1\nFriends: 1 2 2\n");
  // What is there already isn't stored or linked again, and 0 links nothing.
  EXPECT_EQ(manager_.Import_Contact(db_, Wide("a.vcf"), -1, false), 0);
  EXPECT_EQ(manager_.Import_Contact(db_, Wide("a.vcf"), 0, true), 2);
  EXPECT_EQ(Links(), "Work: 1\nFriends: 1 2 2\n");
}

// However the equal ones among the contacts are left out, each is linked once.
TEST_F(ContactFlows, EqualContactsShareTheirLinks) {
  const std::string card = "BEGIN:VCARD\nN:Doe\nX-GROUP:A\n";
  const WideString path = Write("c.vcf", card + card + "X-GROUP:B\n" + card);
  VObjectMgr manager;
  EXPECT_EQ(manager.Import_Contact(db_, path, -1, false), 1);
  EXPECT_EQ(Links(), "A: 1\nB: 1\n");
  EXPECT_EQ(manager.Import_Contact(db_, path, -1, false), 0);
  EXPECT_EQ(Links(), "A: 1\nB: 1\n");
}

TEST_F(ContactFlows, ImportResults) {
  EXPECT_EQ(manager_.Import_Contact(db_, u"", -1, true), 0);
  EXPECT_EQ(manager_.Import_Contact(db_, Wide("missing.vcf"), -1, true), 0);
  EXPECT_EQ(manager_.Import_Contact(db_, Wide(""), -1, true), 0);
  EXPECT_EQ(manager_.Import_Contact(db_, Write("empty.vcf", ""), -1, true), 0);
  EXPECT_EQ(manager_.Import_Contact(db_ + 99, Write("a.vcf", kTwoCards), 0, true), -1);
  EXPECT_TRUE(messages_.empty());
  const std::string mark = "\xEF\xBB\xBF";
  EXPECT_EQ(manager_.Import_Contact(db_, Write("mark.vcf", mark + kTwoCards), 0, true), 2);
  EXPECT_EQ(manager_.Import_Contact(db_, Write("three.vcf", mark), 0, true), 0);
  const WideString bad = Write("bad.vcf", std::string(kTwoCards) + "TEL;:1\n");
  EXPECT_THROW(static_cast<void>(manager_.Import_Contact(db_, bad, -1, true)), unsigned short);
  EXPECT_EQ(messages_, std::vector<std::u16string>{u"Error parsing vCard"});
  EXPECT_EQ(StoredContacts(), 2);
  EXPECT_EQ(Links(), "");
}

// A text of many batches goes in as one of few does; a fault in the last takes all of it back.
TEST_F(ContactFlows, ImportInBatches) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "BEGIN:VCARD\nFN:Number " + std::to_string(i) + "\nX-GROUP:g\nEND:VCARD\n";
  ContactImportCounts counts;
  EXPECT_THROW(static_cast<void>(ImportContactText(db_, text + "X;:", -1, true, counts)),
               ParseFailure);
  EXPECT_EQ(counts.inText, 20000);
  EXPECT_EQ(StoredContacts(), 0);
  EXPECT_EQ(ImportContactText(db_, text, -1, true, counts), 20000);
  CContacts contacts;
  EXPECT_GE(contacts.OpenFromDB(db_, 0), 0);
  EXPECT_EQ(contacts[19999].formatted_name, u"Number 19999");
  struct Stop {};
  EXPECT_THROW(static_cast<void>(ImportContactText(db_, text, 0, true, counts,
                                                   [](const auto&) { throw Stop(); })),
               Stop);
  EXPECT_EQ(StoredContacts(), 20000);
}

// Wherever the store fails, from the transaction's beginning to its commit, nothing is kept.
TEST_F(ContactFlows, FailedImportsKeepNothing) {
  std::string text;
  for (int i = 0; i < 12000; ++i) text += "BEGIN:VCARD\nFN:Number " + std::to_string(i) + "\n";
  testing::FailingStore failing(store_);
  const StoreBinding binding(failing);
  ContactImportCounts counts;
  for (int i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    failing.FailAfter(i / 2, i % 2 == 0);
    EXPECT_EQ(ImportContactText(binding.db(), text, 0, true, counts), -1);
    EXPECT_EQ(counts.stored, 0);
    EXPECT_EQ(StoredContacts(), 0);
  }
}

TEST_F(ContactFlows, ImportIntoCollections) {
  CContacts contacts;
  contacts.AddNew().NewGroup(u"old");
  CContactGroups groups;
  groups.AddNew().group_name = u"WORK";
  CContactGroupPairs pairs;
  pairs.AddNew();
  const WideString path = Write("a.vcf", kTwoCards);
  EXPECT_EQ(manager_.ImportToPC_Contact(0, path, 0, &contacts, &groups, &pairs), 3);
  EXPECT_EQ(pairs.GetCount(), 1);
  EXPECT_EQ(manager_.ImportToPC_Contact(0, path, -1, &contacts, &groups, &pairs), 5);
  ASSERT_EQ(groups.GetCount(), 3);
  EXPECT_EQ(groups[1].group_name, u"old");
  EXPECT_EQ(groups[2].group_name, u"Friends");
  ASSERT_EQ(pairs.GetCount(), 9);
  EXPECT_EQ(pairs[2].group_id, groups[0].group_id);
  EXPECT_EQ(pairs[8].group_id, groups[2].group_id);
  EXPECT_NE(groups[1].group_id, groups[2].group_id);
  EXPECT_EQ(contacts[0].tag, 65535);
  EXPECT_EQ(manager_.ImportToPC_Contact(0, u"", -1, &contacts, &groups, &pairs), 0);
}

TEST_F(ContactFlows, ExportNamesFiles) {
  CContacts contacts;
  for (const WideStringView given : {u"John", u"John", u"", u"?*", u"J/o\\hn"})
    contacts.AddNew().name.given_name = given;
  contacts[0].formatted_name = u"not used";
  contacts.AddNew().name.family_name = WideString(300, u'\u3042');
  contacts.AddNew().name.family_name = WideString(300, u'\u3042');
  contacts.AddNew().name.given_name = u"..";
  EXPECT_GE(contacts.SaveToDB(db_, 0, true), 0);
  Write("John.vcf", "taken");
  EXPECT_EQ(manager_.Export_Contact(db_, Wide("")), 8);
  const std::set<std::string> files = Files();
  EXPECT_EQ(files.size(), 9U);
  for (const char* name :
       {"John(2).vcf", "John(3).vcf", "John(4).vcf", "NoName.vcf", "NoName(2).vcf", "...vcf"})
    EXPECT_TRUE(files.contains(name)) << name;
  EXPECT_EQ(fs::file_size(folder_ + "/John.vcf"), 5U);
  EXPECT_EQ(manager_.Export_Contact(db_, u""), -1);
  EXPECT_EQ(manager_.Export_Contact(db_, Wide("missing/")), -1);
  MemoryStore empty;
  const StoreBinding binding(empty);
  EXPECT_EQ(manager_.Export_Contact(binding.db(), Wide("")), 0);
  EXPECT_EQ(manager_.Export_Contact(binding.db() + 99, Wide("")), -1);
}

TEST_F(ContactFlows, ExportAttachesGroups) {
  CContacts contacts;
  for (const std::int32_t tag : {5, 5, 6}) contacts.AddNew().tag = tag;
  contacts[0].NewGroup(u"own");
  contacts[0].name.given_name = u"first";
  CContactGroups groups;
  for (const WideStringView name : {u"A", u"B", u"C"}) groups.AddNew().group_name = name;
  for (std::int32_t i = 0; i < 3; ++i) groups[i].group_id = i == 2 ? 1 : i + 1;  // C is shadowed
  CContactGroupPairs pairs;
  for (const auto& [contact, group] : {std::pair{5, 2}, {6, 1}, {5, 1}, {5, 77}, {9, 1}}) {
    CContactGroupPair& pair = pairs.AddNew();
    pair.contact_id = contact;
    pair.group_id = group;
  }
  EXPECT_EQ(manager_.ExportFromPC_Contact(0, u"", &contacts, &groups, &pairs), -1);
  EXPECT_EQ(manager_.ExportFromPC_Contact(0, Wide("none/"), &contacts, &groups, &pairs), -1);
  EXPECT_EQ(contacts.GetCount(), 3);
  EXPECT_TRUE(
      std::ranges::equal(contacts[0].groups(), std::vector<WideText>{u"own", u"B", u"A", u""}));
  EXPECT_EQ(contacts[1].GetGroupCount(), 0);
  EXPECT_TRUE(std::ranges::equal(contacts[2].groups(), std::vector<WideText>{u"A"}));
  EXPECT_EQ(manager_.ExportFromPC_Contact(0, Wide(""), &contacts, &groups, &pairs), 3);
  EXPECT_EQ(contacts.GetCount(), 0);
  std::ifstream file(folder_ + "/first.vcf", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  // The names of the attempt that failed stand in the contact too.
  EXPECT_TRUE(
      text.ends_with("X-GROUP:own\r\nX-GROUP:B\r\nX-GROUP:A\r\nX-GROUP:B\r\nX-GROUP:A\r\n"
                     "END:VCARD"));
}

}  // namespace
}  // namespace pim
