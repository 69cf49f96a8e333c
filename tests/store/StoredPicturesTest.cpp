// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "pim/platform/Host.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/SqliteStore.h"
#include "pim/support/FileNames.h"
#include "platform/Files.h"
#include "tests/store/OtherProgram.h"
#include "tests/store/TemporaryFolder.h"

namespace pim {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using testing::BytesOf;
using testing::OtherProgram;

// A store with an application-data folder of its own.
class StoredPictures : public ::testing::Test {
 protected:
  StoredPictures() {
    SetAppDataFolder(folder_.path());
    pictures_ = NativePath(GetCallerIdPath());
    fs::create_directories(pictures_);
  }
  ~StoredPictures() override { SetAppDataFolder({}); }

  void WritePicture(const std::string& name, const std::string& bytes) {
    std::ofstream(PathOf(name), std::ios::binary) << bytes;
  }
  std::string PathOf(const std::string& name) const { return pictures_ + "/" + name; }
  // Gives the key of a new contact with that picture.
  static std::int32_t Save(SqliteStore& store, const char16_t* photo, std::int32_t key = 0) {
    CContacts contacts;
    CContact& contact = contacts.AddNew();
    contact.photo = photo;
    contact.tag = key;
    EXPECT_EQ(store.SaveContacts(contacts, 0, true), 1) << store.LastError();
    return contacts[0].tag;
  }
  static void Delete(SqliteStore& store, std::int32_t key) {
    std::vector<WideString> names;
    EXPECT_EQ(store.DeleteContacts({&key, 1}, names), 1);
  }
  // What the store keeps: the names with content, those without, and the contents.
  static std::string Kept(const std::string& path) {
    return OtherProgram(path).Ask(
        "SELECT count(picture_id) || ' ' || (count(*) - count(picture_id)) || ' ' || "
        "(SELECT count(*) FROM Pictures) FROM PictureNames");
  }
  // Makes a store of version 1 of one of this version.
  void MakeEarlier() {
    OtherProgram(path_).Run(
        "DROP TABLE Imports; DROP TABLE ImportFiles; DROP TABLE Originals; DROP TABLE "
        "OriginalParts; DROP TABLE ContactOrigins; DROP TABLE CalendarOrigins; DROP TABLE "
        "ImportedGroups; DROP TABLE ImportedLinks; DROP TABLE Pictures; DROP TABLE PictureNames;"
        "DROP TABLE StoreSettings; DROP INDEX Index_Contacts_photo; PRAGMA user_version=1");
  }

  testing::TemporaryFolder folder_;
  std::string path_ = folder_.File("pim.db");
  std::string pictures_;
};

TEST_F(StoredPictures, TravelWithTheStore) {
  const std::string bytes("GIF\0\xFF", 5);
  {
    SqliteStore store(path_);
    for (const char* name : {"zevoA.gif", "zevoB.png"}) WritePicture(name, bytes);
    Save(store, u"zevoA.gif");
    Save(store, u"zevoB.png");
    Save(store, u"zevoA.gif");
    Save(store, u"zevoNone.gif");
    EXPECT_EQ(Kept(path_), "2 0 1");  // the same bytes are there once
  }
  fs::remove_all(pictures_);
  SqliteStore store(path_, StoreAccess::ReadOnly);
  store.MakePictures(false);
  CContacts contacts;
  EXPECT_EQ(store.LoadContacts(contacts), 4);
  EXPECT_FALSE(fs::exists(pictures_));
  store.MakePictures(true);
  EXPECT_EQ(store.LoadContacts(contacts), 4);
  EXPECT_EQ(std::distance(fs::directory_iterator(pictures_), {}), 2);
  EXPECT_EQ(BytesOf(PathOf("zevoA.gif")), bytes);
  EXPECT_EQ(store.ReadPicture(u"zevoB.png"), bytes);
  EXPECT_EQ(store.NamesPicture(u"zevoNone.gif"), 1);
  EXPECT_EQ(store.NamesPicture(u"zevoX.gif"), 0);

  // A copy that was emptied is made again, a link isn't followed, one that can't be made is told.
  fs::resize_file(PathOf("zevoA.gif"), 0);
  fs::remove(PathOf("zevoB.png"));
  WritePicture("elsewhere", "untouched");
  fs::create_symlink(PathOf("elsewhere"), PathOf("zevoB.png"));
  EXPECT_EQ(store.LoadContacts(contacts), 4);
  EXPECT_EQ(BytesOf(PathOf("zevoA.gif")), bytes);
  EXPECT_EQ(BytesOf(PathOf("zevoB.png")), bytes);
  EXPECT_EQ(BytesOf(PathOf("elsewhere")), "untouched");
  EXPECT_EQ(store.PicturesNotMade(), 0);
  fs::remove_all(pictures_);
  std::ofstream(pictures_) << "no folder";
  EXPECT_EQ(store.LoadContacts(contacts), 4);
  EXPECT_EQ(store.PicturesNotMade(), 3);
  EXPECT_NE(store.PictureProblem().find("CallerId"), std::string::npos) << store.PictureProblem();
}

TEST_F(StoredPictures, FollowWhatHostsDo) {
  SqliteStore store(path_);
  WritePicture("zevoA.gif", "one");
  const std::int32_t key = Save(store, u"zevoA.gif");
  WritePicture("zevoA.gif", "two");  // a host's change counts when the record is saved
  EXPECT_EQ(store.ReadPicture(u"zevoA.gif"), "one");
  Save(store, u"zevoA.gif", key);
  EXPECT_EQ(store.ReadPicture(u"zevoA.gif"), "two");
  EXPECT_EQ(Kept(path_), "1 0 1");
  fs::remove(PathOf("zevoA.gif"));  // one that isn't there is none
  Save(store, u"zevoA.gif", key);
  EXPECT_EQ(store.ReadPicture(u"zevoA.gif"), "two");

  // What no contact names any more is left to be removed.
  WritePicture("zevoB.gif", "two");
  Save(store, u"zevoB.gif", key);
  EXPECT_EQ(Kept(path_), "1 1 1");
  const std::int32_t other = Save(store, u"zevoB.gif");
  Delete(store, key);
  EXPECT_EQ(Kept(path_), "1 1 1");
  Delete(store, other);
  EXPECT_EQ(Kept(path_), "0 2 0");
  EXPECT_TRUE(store.HasLeftPictures());
  Save(store, u"zevoA.gif");  // named again, though its bytes are gone
  WritePicture("zevoA.gif", "three");
  EXPECT_EQ(store.RemoveLeftPictures(), 1);
  EXPECT_FALSE(fs::exists(PathOf("zevoB.gif")));
  EXPECT_TRUE(fs::exists(PathOf("zevoA.gif")));
  EXPECT_EQ(Kept(path_), "0 0 0");
  EXPECT_FALSE(store.HasLeftPictures());
}

// Only files with the bytes that the store had are removed: others are their host's.
TEST_F(StoredPictures, FilesOfOthersStay) {
  SqliteStore store(path_);
  const std::int32_t without = Save(store, u"mine.jpg");
  WritePicture("mine.jpg", "mine");
  WritePicture("zevoA.gif", "kept");
  const std::int32_t changed = Save(store, u"zevoA.gif");
  WritePicture("zevoA.gif", "changed and not saved");
  WritePicture("zevoB.gif", "kept");
  const std::int32_t gone = Save(store, u"zevoB.gif");
  fs::remove(PathOf("zevoB.gif"));
  fs::create_directory(PathOf("zevoB.gif"));
  for (const std::int32_t key : {without, changed, gone}) Delete(store, key);
  EXPECT_EQ(Kept(path_), "0 2 0");
  EXPECT_EQ(store.RemoveLeftPictures(), 0);
  EXPECT_EQ(Kept(path_), "0 0 0");
  for (const char* name : {"mine.jpg", "zevoA.gif", "zevoB.gif"})
    EXPECT_TRUE(fs::exists(PathOf(name))) << name;
}

// A list that sees a state of the store which is gone leaves no copies of that state's pictures.
TEST_F(StoredPictures, CopiesGoWithTheirContacts) {
  SqliteStore store(path_);
  SqliteStore reader(path_);
  WritePicture("zevoA.gif", "one");
  const std::int32_t key = Save(store, u"zevoA.gif");
  {
    const StoreReading reading(reader);
    CContactGroups groups;
    EXPECT_EQ(reader.LoadContactGroups(groups), 0);  // from now on it sees this state
    Delete(store, key);
    EXPECT_EQ(store.RemoveLeftPictures(), 1);
    CContacts contacts;
    EXPECT_EQ(reader.LoadContacts(contacts), 1);
    EXPECT_TRUE(fs::exists(PathOf("zevoA.gif")));
  }
  EXPECT_FALSE(fs::exists(PathOf("zevoA.gif")));
}

// Damaged bytes are put right by the same ones, and keep nothing else from being compared.
TEST_F(StoredPictures, TheSameBytesHealDamagedOnes) {
  SqliteStore store(path_);
  for (const char* name : {"zevoA.gif", "zevoB.gif"}) WritePicture(name, "one");
  Save(store, u"zevoA.gif");
  OtherProgram(path_).Run("UPDATE Pictures SET content = 'x'");
  EXPECT_EQ(store.ReadPicture(u"zevoA.gif"), "");
  CContacts same;
  same.AddNew().photo = u"zevoB.gif";
  EXPECT_EQ(store.SaveContacts(same, 0, false), 0) << store.LastError();
  Save(store, u"zevoB.gif");
  EXPECT_EQ(store.ReadPicture(u"zevoA.gif"), "one");
}

TEST_F(StoredPictures, ComeOverFromTheFirstVersion) {
  {
    SqliteStore store(path_);
    for (const char16_t* name : {u"zevoA.gif", u"zevoA.gif", u"zevoGone.gif"}) Save(store, name);
  }
  MakeEarlier();
  WritePicture("zevoA.gif", "one");
  const std::string before = BytesOf(path_);
  {
    SqliteStore store(path_, StoreAccess::ReadOnly);
    CContacts contacts;
    EXPECT_EQ(store.LoadContacts(contacts), 3);
    UndoResult result;
    EXPECT_EQ(store.History()->VisitImports([](const ImportEntry&) { return true; }), 0);
    EXPECT_EQ(store.History()->Undo({{}, false, true}, result), -1);
    EXPECT_EQ(store.NamesPicture(u"zevoA.gif"), 1);
  }
  EXPECT_TRUE(BytesOf(path_) == before) << "reading changes it";
  SqliteStore store(path_);
  EXPECT_EQ(OtherProgram(path_).Ask("PRAGMA user_version"), "2");
  EXPECT_EQ(store.ReadPicture(u"zevoA.gif"), "one");
  EXPECT_EQ(Kept(path_), "1 0 1");
}

// What is damaged is told and spoils nothing else.
TEST_F(StoredPictures, DamagedBytesAreTold) {
  SqliteStore store(path_);
  ImportHistory& history = *store.History();
  ASSERT_EQ(history.BeginImport({"contacts import", {}}), 1);
  for (const char* bytes : {"first", "second", "third"}) {
    StoreTransaction transaction(store);
    ASSERT_TRUE(history.BeginFile("a.vcf", bytes) && history.EndFile({}, true));
    ASSERT_TRUE(transaction.Commit());
  }
  ASSERT_TRUE(history.EndImport());
  WritePicture("zevoA.gif", "one");
  Save(store, u"zevoA.gif");
  OtherProgram(path_).Run(
      "UPDATE Originals SET content = (SELECT content FROM Originals WHERE original_id = 3) WHERE "
      "original_id = 1; UPDATE Originals SET content = x'28B52FFD00' WHERE "
      "original_id = 2; UPDATE Pictures SET content = 'two'");
  const auto take = [](NarrowStringView) { return true; };
  for (const std::int64_t file : {1, 2}) {
    EXPECT_FALSE(history.ReadOriginal(file, take));
    EXPECT_NE(store.LastError().find("damaged"), std::string::npos) << store.LastError();
  }
  EXPECT_TRUE(history.ReadOriginal(3, take));
  // The same bytes, imported again, heal it.
  ASSERT_EQ(history.BeginImport({"contacts import", {}}), 2);
  {
    StoreTransaction transaction(store);
    ASSERT_TRUE(history.BeginFile("b.vcf", "second") && history.EndFile({}, true));
    ASSERT_TRUE(transaction.Commit());
  }
  ASSERT_TRUE(history.EndImport());
  EXPECT_TRUE(history.ReadOriginal(2, take));
  fs::remove(PathOf("zevoA.gif"));
  CContacts contacts;
  EXPECT_EQ(store.LoadContacts(contacts), 1);
  EXPECT_EQ(store.PicturesNotMade(), 1);
  EXPECT_NE(store.PictureProblem().find("damaged"), std::string::npos);
}

// A record that another program has deleted takes nothing along, not even its origin; the one that
// gets its key is no other's.
TEST_F(StoredPictures, KeysThatAreUsedAgainHaveNoOrigin) {
  {
    SqliteStore store(path_);
    ImportHistory& history = *store.History();
    ASSERT_EQ(history.BeginImport({"contacts import", {}}), 1);
    StoreTransaction transaction(store);
    ASSERT_TRUE(history.BeginFile("a.vcf", ""));
    Save(store, u"zevoA.gif");
    ASSERT_TRUE(history.EndFile({}, true) && transaction.Commit() && history.EndImport());
  }
  OtherProgram(path_).Run("DELETE FROM Contacts");
  SqliteStore store(path_);
  EXPECT_EQ(Save(store, u""), 1);
  RecordOrigin origin;
  EXPECT_EQ(store.History()->FindOrigin(StoredKind::Contact, 1, origin), 0);
  UndoResult result;
  EXPECT_EQ(store.History()->Undo({{}, true, false}, result), 0);
  EXPECT_EQ(result.contacts, 0);
  EXPECT_EQ(store.CountContacts(), 1);
}

// As on a full disk, where SQLite takes the whole transaction back by itself.
TEST_F(StoredPictures, FailedUndoLeavesAllAsItWas) {
  constexpr std::int32_t kContacts = 3000;
  SqliteStore store(path_);
  ImportHistory& history = *store.History();
  WritePicture("zevoA.gif", "one");
  ASSERT_EQ(history.BeginImport({"contacts import", {}}), 1);
  {
    StoreTransaction transaction(store);
    ASSERT_TRUE(history.BeginFile("a.vcf", "bytes"));
    CContacts contacts;
    for (std::int32_t i = 0; i < kContacts; ++i) contacts.AddNew().photo = u"zevoA.gif";
    ASSERT_EQ(store.SaveContacts(contacts, 0, true), kContacts);
    ASSERT_TRUE(history.EndFile({}, true));
    ASSERT_TRUE(transaction.Commit());
  }
  ASSERT_TRUE(history.EndImport());
  OtherProgram other(path_);
  other.Run(
      "CREATE TRIGGER t BEFORE UPDATE ON PictureNames BEGIN SELECT RAISE(ROLLBACK, 'full'); END");
  UndoResult result;
  EXPECT_EQ(history.Undo({}, result), -1);
  EXPECT_NE(store.LastError().find("full"), std::string::npos) << store.LastError();
  EXPECT_EQ(store.CountContacts(), kContacts);
  EXPECT_EQ(Kept(path_), "1 0 1");
  EXPECT_EQ(other.Ask("SELECT undone FROM Imports"), "NULL");
  other.Run("DROP TRIGGER t");
  {
    SqliteStore given(path_, milliseconds(1000), [] { return true; });  // up at once
    EXPECT_EQ(given.History()->Undo({}, result), -1);
    EXPECT_NE(given.LastError().find("given up"), std::string::npos) << given.LastError();
  }
  EXPECT_EQ(store.CountContacts(), kContacts);
  EXPECT_EQ(history.Undo({}, result), 0) << store.LastError();
  EXPECT_EQ(result.contacts, kContacts);
  EXPECT_EQ(result.pictures, 1);
  EXPECT_EQ(store.CountContacts(), 0);
}

}  // namespace
}  // namespace pim
