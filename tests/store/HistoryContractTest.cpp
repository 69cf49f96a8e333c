// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "tests/store/HistoryFixture.h"

namespace pim {
namespace {

// What every store's history promises of imports and their files, whichever it is.
class HistoryContract : public testing::HistoryFixture {
 protected:
  ImportedFile File(std::int64_t number) {
    ImportedFile file;
    EXPECT_GE(history().VisitFiles({},
                                   [&](const ImportedFile& each) {
                                     file = each;
                                     return each.number != number;
                                   }),
              0);
    EXPECT_EQ(file.number, number);
    return file;
  }
  // Empty as well for a file whose bytes aren't kept.
  NarrowString OriginalOf(std::int64_t file) {
    NarrowString bytes;
    const bool isRead = history().ReadOriginal(file, [&](NarrowStringView piece) {
      bytes += piece;
      return true;
    });
    EXPECT_EQ(isRead, File(file).isKept) << store->LastError();
    return bytes;
  }
};

INSTANTIATE_TEST_SUITE_P(Stores, HistoryContract, testing::StoresWithHistory(),
                         testing::NameOfStore);

TEST_P(HistoryContract, EntriesTellTheirFiles) {
  const ImportStart start{"calendars import", {"--group", "a\nb\\n", ""}};
  const ImportCounts counts[] = {{10, 5, 1, 2, 70, 3}, {4, 0, 4, 0, 9, 9}};
  ASSERT_EQ(history().BeginImport(start), 1);
  {
    StoreTransaction transaction(*store);
    ASSERT_TRUE(history().BeginFile("a\xFF\n.vcs", "abc"));
    ASSERT_TRUE(history().EndFile(counts[0], true));
    ASSERT_TRUE(transaction.Commit());
  }
  ASSERT_TRUE(history().AddRefusedFile("b", "de", counts[1]));
  EXPECT_EQ(Entry(1).state, ImportState::Running);
  ASSERT_TRUE(history().EndImport());
  ImportNames({});
  EXPECT_EQ(history().VisitImports([](const ImportEntry&) { return false; }), 1);

  const ImportEntry entry = Entry(1);
  ImportCounts sum = counts[0];
  sum += counts[1];
  EXPECT_EQ(entry.number, 1);
  EXPECT_EQ(entry.start.command, start.command);
  EXPECT_EQ(entry.start.options, start.options);
  EXPECT_EQ(entry.state, ImportState::Done);
  EXPECT_GT(entry.began, 1'700'000'000);
  EXPECT_EQ(entry.undone, 0);
  EXPECT_EQ(entry.files, 2);
  EXPECT_EQ(entry.counts, sum);
  EXPECT_EQ(sum.AlreadyThere(), 2);

  EXPECT_EQ(history().VisitFiles(1, [](const ImportedFile&) { return true; }), 2);
  EXPECT_EQ(history().VisitFiles({}, [](const ImportedFile&) { return true; }), 3);
  EXPECT_EQ(File(1).name, "a\xFF\n.vcs");
  EXPECT_EQ(File(1).bytes, 3);
  EXPECT_TRUE(File(1).isKept);
  EXPECT_EQ(File(1).counts, counts[0]);
  EXPECT_EQ(File(1).sha256 == Sha256{}, !IsKept());
  EXPECT_EQ(File(2).bytes, 2);
  EXPECT_FALSE(File(2).isKept);
  EXPECT_EQ(File(2).counts, counts[1]);
  EXPECT_EQ(File(3).import, 2);
}

TEST_P(HistoryContract, RefusesWhatIsOutOfOrder) {
  UndoResult result;
  const auto refuses = [&](bool isDone, const std::string& problem) {
    EXPECT_FALSE(isDone) << problem;
    EXPECT_TRUE(store->LastError().ends_with(problem)) << store->LastError();
  };
  const auto visit = [](const auto&) { return true; };
  refuses(history().Undo({}, result) == 0, "no import is left to be undone");
  refuses(history().Undo({{}, false, true}, result) == 0, "no import is left to be undone");
  refuses(history().EndImport(), "no import is under way");
  refuses(history().AddRefusedFile("", "", {}), "no import is under way");
  refuses(history().BeginFile("", ""), "no import is under way");
  ASSERT_EQ(history().BeginImport({}), 1);
  refuses(history().BeginImport({}) > 0, "an import is under way already");
  refuses(history().BeginFile("", ""), "a file is imported in a transaction");
  refuses(history().AddLines({}), "no file of an import is being read");
  refuses(history().EndFile({}, true), "no file of an import is being read");
  refuses(history().Undo({}, result) == 0, "import 1 is under way");
  {
    StoreTransaction transaction(*store);
    ASSERT_TRUE(history().BeginFile("", "unread"));
    refuses(history().BeginFile("", ""), "a file of the import is being read already");
    refuses(history().EndImport(), "a file of the import is being read still");
  }
  ASSERT_TRUE(history().EndImport());
  {
    const StoreReading reading(*store);
    refuses(history().BeginImport({}) > 0, "is being read, so that nothing can be written");
    refuses(history().Undo({}, result) == 0, "is being read, so that nothing can be written");
  }
  refuses(history().Undo({2, true, false}, result) == 0, "there is no import 2");
  refuses(history().VisitFiles(2, visit) >= 0, "there is no import 2");
  refuses(history().DropOriginals(2) >= 0, "there is no import 2");
  refuses(history().ReadOriginal(1, visit), "there is no imported file 1");
  EXPECT_TRUE(Undo().IsWhole());
  refuses(history().Undo({1, false, false}, result) == 0, "import 1 is undone already");
  refuses(history().Undo({}, result) == 0, "no import is left to be undone");
  ASSERT_EQ(history().BeginImport({}), 2);  // the number isn't given again
}

TEST_P(HistoryContract, OriginsTellLines) {
  Save({u"stored"});
  CCalendars items;
  items.AddNew().summary = u"item";
  const std::int32_t import = Import("", [&] {
    const CContacts contacts = Save({u"a", u"stored", u"b", u"a", u"c"});
    RecordLines lines[5];
    for (std::int32_t i = 0; i < 5; ++i) lines[i] = {contacts[i].tag, 3 * i + 1, 3 * i + 3};
    EXPECT_TRUE(history().AddLines(lines)) << store->LastError();
    EXPECT_EQ(store->SaveCalendars(items, true), 1);
    const RecordLines line{items[0].tag, 20, 22};
    EXPECT_TRUE(history().AddLines({&line, 1}));
    Save({u"untold"});
  });
  Save({u"behind"});
  const struct {
    std::int32_t key;
    std::int64_t lines[2];
  } rows[] = {{2, {1, 3}}, {3, {7, 9}}, {4, {13, 15}}, {5, {0, 0}}};
  RecordOrigin origin;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.key);
    EXPECT_EQ(history().FindOrigin(StoredKind::Contact, row.key, origin), 1);
    EXPECT_EQ(origin.import, import);
    EXPECT_EQ(origin.file, 1);
    EXPECT_EQ(origin.firstLine, row.lines[0]);
    EXPECT_EQ(origin.lastLine, row.lines[1]);
  }
  EXPECT_EQ(history().FindOrigin(StoredKind::Item, items[0].tag, origin), 1);
  EXPECT_EQ(origin.lastLine, 22);
  for (const std::int32_t key : {1, 6, 99})
    EXPECT_EQ(history().FindOrigin(StoredKind::Contact, key, origin), 0);
  const std::int32_t deleted = 2;
  std::vector<WideString> pictures;
  EXPECT_EQ(store->DeleteContacts({&deleted, 1}, pictures), 1);
  EXPECT_EQ(history().FindOrigin(StoredKind::Contact, deleted, origin), 0);
}

TEST_P(HistoryContract, OriginalsComeBackInEveryByte) {
  NarrowString large(std::size_t{10} << 20, '\0');
  std::uint32_t random = 1;
  for (char& byte : large) byte = static_cast<char>((random = random * 1664525 + 1013904223) >> 24);
  const NarrowStringView small("a\0\r\n\xFF", 5);
  const auto nothing = [] {};
  const NarrowStringView contents[] = {"", small, large, small, "own"};
  for (const NarrowStringView bytes : contents) Import(bytes, nothing);
  for (std::int64_t file = 1; file <= 5; ++file) {
    EXPECT_TRUE(OriginalOf(file) == contents[file - 1]) << file;
    EXPECT_TRUE(File(file).isKept) << file;
  }
  std::size_t taken = 0;
  EXPECT_TRUE(history().ReadOriginal(3, [&](NarrowStringView piece) {
    taken += piece.size();
    return false;
  }));
  EXPECT_GT(taken, 0U);

  EXPECT_EQ(history().DropOriginals(2), 2);  // which import 4 has read, too
  EXPECT_EQ(history().DropOriginals(4), 0);
  EXPECT_EQ(OriginalOf(2) + OriginalOf(4) + OriginalOf(5), "own");
  EXPECT_EQ(File(4).bytes, 5);
  Import(small, nothing);  // kept anew
  EXPECT_EQ(OriginalOf(2), small);
  EXPECT_EQ(history().DropOriginals({}), 6);
  for (std::int64_t file = 1; file <= 6; ++file) EXPECT_EQ(OriginalOf(file), "");

  EXPECT_TRUE(history().KeepsOriginals());
  EXPECT_TRUE(history().SetKeepsOriginals(false));
  Open();
  EXPECT_FALSE(history().KeepsOriginals());
}

TEST_P(HistoryContract, OriginalsGoBackWithTheirTransaction) {
  const auto nothing = [] {};
  {
    const StoreTransaction undone(*store);
    Import("bytes", nothing);
  }
  ASSERT_GE(history().BeginImport({}), 1);  // a server gives no number twice
  ASSERT_TRUE(history().AddRefusedFile("", "bytes", {}));
  ASSERT_TRUE(history().EndImport());
  std::int64_t file = 0;
  ASSERT_EQ(history().VisitFiles({},
                                 [&file](const ImportedFile& each) {
                                   file = each.number;
                                   return true;
                                 }),
            1);
  EXPECT_EQ(OriginalOf(file), "");
  {
    const StoreTransaction undone(*store);
    Import("bytes", nothing);
    EXPECT_EQ(OriginalOf(file), "bytes");
  }
  EXPECT_EQ(OriginalOf(file), "");
  Import("bytes", nothing);
  {
    const StoreTransaction undone(*store);
    EXPECT_EQ(history().DropOriginals({}), 2);
    EXPECT_EQ(OriginalOf(file), "");
  }
  EXPECT_EQ(OriginalOf(file), "bytes");
}

}  // namespace
}  // namespace pim
