// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Imports into a store that fails in passing, as a server does: what comes of them must be the
// same.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "app/commands/Import.h"
#include "app/output/RecordDump.h"
#include "pim/manager/ContactExport.h"
#include "pim/store/SqliteStore.h"
#include "platform/CodePages.h"
#include "tests/app/FailingStore.h"
#include "tests/platform/Scoped.h"

namespace pim::app {
namespace {

bool Never(int /*operation*/) { return false; }

using Rows = std::multiset<std::string>;

// All that an import leaves behind, but for keys and the names of pictures.
struct Result {
  int status = 0;
  int operations = 0;
  std::string output;
  std::string warnings;
  Rows contacts;  // with their groups and pictures
  Rows groups;
  Rows items;
  Rows history;
  Rows pictures;  // of the caller-ID folder
  std::string rejects;
  std::string report;

  auto All() const {
    return std::tie(status, output, warnings, contacts, groups, items, history, pictures, rejects,
                    report);
  }
  bool operator==(const Result& other) const { return All() == other.All(); }
};

void PrintTo(const Result& result, std::ostream* stream) {
  *stream << result.status << "\n" << result.output << result.warnings;
  for (const Rows* rows :
       {&result.contacts, &result.groups, &result.items, &result.history, &result.pictures}) {
    for (const std::string& row : *rows) *stream << row << "\n";
  }
  *stream << result.rejects << result.report;
}

std::string Card(const std::string& lines) {
  return "BEGIN:VCARD\r\nVERSION:2.1\r\n" + lines + "\r\nEND:VCARD\r\n";
}

class RetriesTest : public testing::Test {
 protected:
  RetriesTest() {
    Write("a.vcf", Card("N:Berg;Ann\r\nX-GROUP:Phone\r\nPHOTO;PNG;BASE64:QUJD\r\n") +
                       Card("N:Lee;Bo\r\nX-GROUP:Phone,Family\r\nBDAY:soon"));
    Write("b.vcf", Card("N:Good;One\r\nPHOTO;PNG;BASE64:QUJDRA==\r\n") + Card("N:Bad\r\nTEL;:1"));
    Write("c.vcf", "");
    Write("d.vcf",
          Card("N:Lee;Bo\r\nX-GROUP:Phone,Family\r\nBDAY:soon") + Card("N:New\r\nX-FOO:1"));
    Write("e.vcf", Card("VERSION:3.0\r\nN:Last\r\nX-GROUP:family"));
    Write("input", Card("N:Input\r\nX-GROUP:Friends"));
    Write("a.vcs", "BEGIN:VEVENT\nSUMMARY:A\nDTSTART:20100105T120000Z\nEND:VEVENT\n");
    Write("b.vcs", "BEGIN:VTODO\nSUMMARY:B\nEND:VTODO\nBEGIN:VEVENT\nRRULE:X\nEND:VEVENT\n");
    options_.action = Action::Import;
    options_.command = "contacts import";
    options_.quiet = true;
    Name({"gone.vcf", "a.vcf", "b.vcf", "c.vcf", "-", "d.vcf", "e.vcf"});
  }

  void Name(const std::vector<std::string>& files) {
    options_.operands.clear();
    for (const std::string& file : files)
      options_.operands.push_back(file == "-" ? file : folder_ / file);
  }
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  // What comes of an import into a new store, or, again, into the last one.
  Result Import(Trouble kind, Fails fails, bool again = false) {
    for (const char* left : {"data", "pim.db", "aside.vcf", "report.jsonl"})
      if (!again) std::filesystem::remove_all(folder_ / left);
    std::filesystem::create_directory(folder_ / "data");
    const int input = open((folder_ / "input").c_str(), O_RDONLY | O_CLOEXEC);
    dup2(input, STDIN_FILENO);
    close(input);
    Result result;
    SqliteStore store(folder_ / "pim.db");
    FailingStore failing(store, kind, std::move(fails));
    {
      Session session(store, failing, [&failing] { return failing.mayTryAgain(); });
      testing::internal::CaptureStdout();
      testing::internal::CaptureStderr();
      result.status = ImportInto(session, options_);
      result.output = testing::internal::GetCapturedStdout();
      result.warnings = testing::internal::GetCapturedStderr();
    }
    result.operations = failing.count();
    Look(store, result);
    return result;
  }
  void Look(SqliteStore& store, Result& result) const {
    LookAtContacts(store, result);
    RecordJson json;
    const std::int32_t items = store.VisitCalendars(CalendarType::Event, [&](CCalendar& item) {
      item.tag = 0;
      result.items.insert(std::string(json.Text(item)));
      return true;
    });
    EXPECT_GE(items, 0);
    LookAtHistory(*store.History(), result);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_ / "data"))
      if (entry.is_regular_file()) result.pictures.insert(test::ContentOf(entry.path()));
    result.rejects = test::ContentOf(folder_ / "aside.vcf");
    result.report = test::ContentOf(folder_ / "report.jsonl");
  }
  static void LookAtContacts(SqliteStore& store, Result& result) {
    const StoreBinding binding(store);
    CContactGroups groups;
    CContactGroupPairs pairs;
    EXPECT_GE(groups.OpenFromDB(binding.db()), 0);
    EXPECT_GE(pairs.OpenFromDB(), 0);
    ContactExport names({}, groups, pairs);
    RecordJson json;
    const std::int32_t contacts = store.VisitContacts([&](CContact& contact) {
      const std::string picture = store.ReadPicture(contact.photo);
      names.AttachGroupNames(contact);
      contact.tag = 0;
      contact.photo = {};
      result.contacts.insert(std::string(json.Text(contact)) + picture);
      return true;
    });
    EXPECT_GE(contacts, 0);
    for (std::int32_t i = 0; i < groups.GetCount(); ++i)
      result.groups.insert(Utf8FromWide(groups[i].group_name));
  }
  static void LookAtHistory(ImportHistory& history, Result& result) {
    const auto text = [](const ImportCounts& counts) {
      return " " + std::to_string(counts.inFile) + " " + std::to_string(counts.stored) + " " +
             std::to_string(counts.refused) + " " + std::to_string(counts.linesNotKept);
    };
    const std::int32_t imports = history.VisitImports([&](const ImportEntry& import) {
      result.history.insert(std::to_string(static_cast<int>(import.state)) + " " +
                            std::to_string(import.files) + text(import.counts));
      return true;
    });
    EXPECT_EQ(imports, static_cast<std::int32_t>(result.history.size()));
    const std::int32_t files = history.VisitFiles({}, [&](const ImportedFile& file) {
      result.history.insert(file.name + " " + std::to_string(file.bytes) + text(file.counts));
      return true;
    });
    EXPECT_GE(files, 0);
  }

  // One failure at each place, another one soon behind it, and many in a row.
  void FailEverywhere() {
    const Result wanted = Import(Trouble::Lost, Never);
    for (const Trouble kind : {Trouble::Lost, Trouble::Conflict}) {
      for (int at = 1; at <= wanted.operations; ++at) {
        SCOPED_TRACE("fails in operation " + std::to_string(at));
        ASSERT_EQ(Import(kind, [at](int now) { return now == at; }), wanted);
        if (at % 5 != 0) continue;
        const auto often = [at](int now) { return now == at || now == at + 1 || now == at + 20; };
        ASSERT_EQ(Import(kind, often), wanted);
      }
    }
  }

  test::TemporaryFolder folder_;
  test::ScopedVariable data_{"XDG_DATA_HOME", (folder_ / "data").c_str()};
  Options options_;
};

TEST_F(RetriesTest, AnImportGoesOn) { FailEverywhere(); }

TEST_F(RetriesTest, SoDoesOneWithRejectsAndReport) {
  Name({"gone.vcf", "-", "a.vcf", "b.vcf", "d.vcf"});
  options_.rejects = folder_ / "aside.vcf";
  options_.report = folder_ / "report.jsonl";
  options_.keepDuplicates = true;
  options_.group = "All";
  FailEverywhere();
}

TEST_F(RetriesTest, SoDoesOneOfACalendar) {
  options_.kind = RecordKind::Calendar;
  options_.command = "calendar import";
  Name({"a.vcs", "b.vcs", "a.vcs"});
  FailEverywhere();
}

// Each of the many files is a transaction of its own.
TEST_F(RetriesTest, ItMayFailNowAndThenForEver) {
  Name(std::vector<std::string>(40, "-"));
  const Result wanted = Import(Trouble::Lost, Never);
  EXPECT_EQ(Import(Trouble::Lost, [](int now) { return now % 20 == 0; }), wanted);
}

// What was committed is told and stays, and another import brings the rest.
TEST_F(RetriesTest, AStoreThatStaysAwayEndsTheImport) {
  options_.rejects = folder_ / "aside.vcf";
  const Result whole = Import(Trouble::Lost, Never);
  // Behind the commit of the four files ahead of standard input.
  const Result ended = Import(Trouble::Lost, [&](int now) { return now > whole.operations / 2; });
  EXPECT_EQ(ended.status, kFailed);
  EXPECT_NE(
      ended.warnings.find("pimvobj: pim.db: the server is gone; 3 of 7 files aren't imported, "
                          "from standard input on\n"),
      std::string::npos)
      << ended.warnings;
  EXPECT_EQ(ended.output.find("3 contacts imported: 4 in 3 files"), 0U) << ended.output;
  EXPECT_EQ(ended.contacts.size(), 3U);
  EXPECT_EQ(ended.rejects, whole.rejects);
  options_.rejects.reset();
  const Result rest = Import(Trouble::Lost, Never, true);
  EXPECT_EQ(rest.contacts, whole.contacts);
}

// Files are read again; what has changed meanwhile is stored as it is then, or told.
TEST_F(RetriesTest, FilesMayChangeBetweenTwoTries) {
  Name({"a.vcf", "e.vcf"});
  const Result result = Import(Trouble::Lost, [this](int now) {
    if (now != 14) return false;
    Write("a.vcf", Card("N:Changed"));
    std::filesystem::remove(folder_ / "e.vcf");
    return true;
  });
  EXPECT_EQ(result.status, kFailed);
  EXPECT_EQ(result.output.find("1 contact imported: 1 in 1 file, 1 new"), 0U) << result.output;
  EXPECT_NE(result.warnings.find("e.vcf: "), std::string::npos);
  EXPECT_EQ(result.warnings.find("BDAY"), std::string::npos) << result.warnings;
  EXPECT_EQ(result.contacts.size(), 1U);
}

}  // namespace
}  // namespace pim::app
