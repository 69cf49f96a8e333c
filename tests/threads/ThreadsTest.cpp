// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <thread>
#include <utility>
#include <vector>

#include "pim/manager/CalendarImport.h"
#include "pim/manager/ContactImport.h"
#include "pim/manager/TextReading.h"
#include "pim/manager/TextWriting.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Host.h"
#include "pim/records/MemoryStore.h"
#include "pim/records/PreviewStore.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/SqliteStore.h"
#include "pim/stream/TextRejects.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

using test::ContentOf;
using test::ScopedVariable;
using test::TemporaryFolder;

// The contents of all test texts with that extension, by their names.
std::map<std::string, std::string> TextsOf(const char* extension) {
  std::map<std::string, std::string> texts;
  for (const auto& file : std::filesystem::directory_iterator(PIM_TEST_DATA))
    if (file.path().extension() == extension)
      texts[file.path().filename()] = ContentOf(file.path());
  return texts;
}

WideString Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

// One thread's work with a store of its own. Whatever comes of it goes into one text, in which
// nothing is made up, so that it is the same for each thread.
class Work {
 public:
  Work(RecordStore& store, std::string folder) : store_(store), folder_(std::move(folder)) {}

  std::string Run() {
    for (const auto& [name, text] : TextsOf(".vcf")) {
      Tell(name);
      Import(text, [&](std::int32_t db, NarrowStringView bytes, const TextObserver& observer) {
        ContactImportCounts counts;
        return ImportContactText(db, bytes, -1, false, counts, {}, observer);
      });
      Tell(ReadContacts(text, [&](CContact& contact) {
             Tell(WriteContact(contact));
             return true;
           }).records);
      Tell(RejectedPartsOf(text, TextForm::VCard).records);
    }
    for (const auto& [name, text] : TextsOf(".vcs")) {
      Tell(name);
      Import(text, [&](std::int32_t db, NarrowStringView bytes, const TextObserver& observer) {
        CalendarImportCounts counts;
        return ImportCalendarText(db, CalendarType::Event, bytes, false, counts, {}, observer);
      });
      CCalendars items;
      Tell(ReadCalendars(text, items).records);
      Tell(WriteCalendars(items));
      Tell(static_cast<std::int64_t>(PartsOf(text).size()));
    }
    ShowAndExport();
    UndoLast();
    return std::move(told_);
  }

 private:
  void Tell(std::string_view what) { told_.append(what).append("\n"); }
  void Tell(std::int64_t number) { Tell(std::to_string(number)); }

  // As one import of the history, behind a preview of it, with a binding for each.
  template <class Importing>
  void Import(const std::string& text, Importing import) {
    {
      PreviewStore preview(store_);
      const StoreBinding binding(preview);
      Tell(import(binding.db(), text, {}));
    }
    AccountTotals totals;
    const TextObserver observer{
        .notice = [&](const TextNotice& notice) { Tell(notice.line); },
        .entry = [&](const AccountEntry& entry) { totals.Add(entry); },
        .saved =
            [&](std::span<const SavedRecord> saved) { Tell(saved.empty() ? 0 : saved[0].key); }};
    const StoreBinding binding(store_);
    ImportHistory& history = *store_.History();
    Tell(history.BeginImport({"import", {}}));
    StoreTransaction transaction(store_);
    EXPECT_TRUE(history.BeginFile("file", text));
    Tell(import(binding.db(), text, observer));
    EXPECT_TRUE(history.EndFile({}, true) && transaction.Commit() && history.EndImport())
        << store_.LastError();
    Tell(totals.kept);
  }

  void ShowAndExport() {
    const StoreBinding binding(store_);
    VObjectMgr manager;
    manager.MakeMapString(u"VCARD_Name", u"Name");
    Tell(static_cast<std::int64_t>(
        manager.VObjectToString(u"BEGIN:VCARD\nN:Berg;Ann\nTEL:1\nEND:VCARD").size()));
    const std::string events = folder_ + "/events.vcs";
    Tell(manager.Export_Calendar(binding.db(), Wide(events)));
    Tell(ContentOf(events));
    Tell(manager.Export_Contact(binding.db(), Wide(folder_ + "/")));
    const std::string bad = folder_ + "/bad.vcf";
    std::ofstream(bad) << "BEGIN:VCARD\nN;:x\n";
    EXPECT_THROW(static_cast<void>(manager.Import_Contact(binding.db(), Wide(bad), 0, true)),
                 ParseFailure);
  }

  void UndoLast() {
    UndoResult result;
    Tell(store_.History()->Undo({}, result));
    Tell(result.items);
    Tell(store_.History()->VisitFiles({}, [&](const ImportedFile& file) {
      Tell(file.bytes);
      return true;
    }));
    CContacts contacts;
    Tell(store_.LoadContacts(contacts));
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i) Tell(WriteContact(contacts[i]));
  }

  RecordStore& store_;
  std::string folder_;
  std::string told_;
};

std::string WorkOnFile(const std::string& folder) {
  std::filesystem::create_directories(folder);
  SqliteStore store(folder + "/store.db");
  return Work(store, folder).Run();
}
std::string WorkInMemory(const std::string& folder) {
  std::filesystem::create_directories(folder);
  MemoryStore store;
  return Work(store, folder).Run();
}

// Under ThreadSanitizer (scripts/threads.sh) this finds what threads share without knowing.
TEST(Threads, WorkOnStoresOfTheirOwnAtOnce) {
  const ScopedVariable zone("TZ", "Europe/Berlin");
  const TemporaryFolder folder;
  std::atomic<int> messages = 0;
  SetAppDataFolder(folder.path());
  SetMessageSink([&](WideStringView) { ++messages; });
  ASSERT_TRUE(SetDefaultCodePage("CP1252"));

  const std::string wantedOfFile = WorkOnFile(folder / "file");
  const std::string wantedOfMemory = WorkInMemory(folder / "memory");
  const int messagesOfTwo = messages.exchange(0);
  constexpr int kRounds = 3;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, i] {
      for (int round = 0; round < kRounds; ++round) {
        const std::string own = folder / (std::to_string(i) + "-" + std::to_string(round));
        if (i % 2 == 0) {
          EXPECT_EQ(WorkOnFile(own), wantedOfFile);
        } else {
          EXPECT_EQ(WorkInMemory(own), wantedOfMemory);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(messages, 2 * kRounds * messagesOfTwo);
  EXPECT_GT(messagesOfTwo, 0);

  EXPECT_TRUE(SetDefaultCodePage("UTF-8"));
  SetMessageSink({});
  SetAppDataFolder("");
}

// Each thread opens the file for itself, and they wait for each other as programs do.
TEST(Threads, ShareAFile) {
  const TemporaryFolder folder;
  constexpr int kThreads = 3;
  constexpr int kImports = 10;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([path = folder / "store.db", i] {
      for (int round = 0; round < kImports; ++round) {
        SqliteStore store(path);
        const StoreBinding binding(store);
        ContactImportCounts counts;
        const std::string name = std::to_string(i) + "-" + std::to_string(round);
        const std::string card = "BEGIN:VCARD\nFN:" + name + "\nX-GROUP:All\nEND:VCARD\n";
        EXPECT_EQ(ImportContactText(binding.db(), card, -1, false, counts), 1) << store.LastError();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  SqliteStore store(folder / "store.db");
  EXPECT_EQ(store.CountContacts(), kThreads * kImports);
  CContactGroups groups;
  EXPECT_EQ(store.LoadContactGroups(groups), 1);
}

// What one thread reads, another may keep, write and free.
TEST(Threads, PassRecordsOn) {
  const auto texts = TextsOf(".vcf");
  for (int round = 0; round < 20; ++round) {
    CContacts contacts;
    std::thread([&] {
      for (const auto& [name, text] : texts) static_cast<void>(ReadContacts(text, contacts));
    }).join();
    ASSERT_GT(contacts.GetCount(), 0);
    const NarrowString first = WriteContact(contacts[0]);
    NarrowString other;
    std::thread writer([&] { other = WriteContact(contacts[0]); });
    EXPECT_EQ(WriteContact(contacts[0]), first);
    writer.join();
    EXPECT_EQ(other, first);
    std::thread([gone = std::move(contacts)] {}).join();
  }
}

}  // namespace
}  // namespace pim
