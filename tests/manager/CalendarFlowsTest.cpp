// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "pim/manager/CalendarImport.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Host.h"
#include "pim/records/Calendar.h"
#include "pim/records/MemoryStore.h"
#include "platform/CodePages.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

constexpr const char* kAllKinds =
    "BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:e\nBEGIN:VTODO\nSUMMARY:t\nBEGIN:VMEMO\nSUMMARY:m\n"
    "END:VMEMO\nEND:VCALENDAR\n";

class CalendarFlows : public ::testing::Test {
 protected:
  WideString Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_.path() + "/" + name, std::ios::binary) << text;
    return Wide(name);
  }
  WideString Wide(const std::string& name) const {
    return WideFromUtf8(folder_.path() + "/" + name);
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(folder_.path() + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::int32_t Stored(CalendarType kind) {
    CCalendars items;
    return items.OpenFromDB(db_, kind, 0);
  }

  const test::TemporaryFolder folder_;
  MemoryStore store_;
  StoreBinding binding_{store_};
  std::int32_t db_ = binding_.db();
  VObjectMgr manager_;
};

TEST_F(CalendarFlows, ImportKeepsItsKinds) {
  const WideString path = Write("a.vcs", kAllKinds);
  EXPECT_EQ(manager_.Import_Memo(db_, path, true), 1);
  EXPECT_EQ(Stored(CalendarType::Memo), 1);
  EXPECT_EQ(manager_.Import_Calendar(db_, path, true), 2);
  EXPECT_EQ(manager_.Import_Todo(db_, path, true), 1);
  EXPECT_EQ(Stored(CalendarType::Event), 1);
  EXPECT_EQ(Stored(CalendarType::Todo), 2);
  EXPECT_EQ(Stored(CalendarType::Memo), 1);
  EXPECT_EQ(manager_.Import_Calendar(db_, path, false), 0);
  const WideString marked = Write("m.vcs", std::string("\xEF\xBB\xBF") + kAllKinds);
  EXPECT_EQ(manager_.Import_Calendar(db_, marked, true), 2);
  EXPECT_EQ(manager_.Import_Memo(db_, Write("none.vcs", ""), true), 0);
}

TEST_F(CalendarFlows, CountsAllKinds) {
  const WideString path = Write("a.vcs", kAllKinds);
  EXPECT_EQ(manager_.Count_Calendar(0, path), 3);
  EXPECT_EQ(manager_.Count_Todo(0, path), 3);
  EXPECT_EQ(manager_.Count_Memo(0, path), 3);
  EXPECT_EQ(manager_.Count_Memo(0, Write("none.vcs", "")), 0);
}

TEST_F(CalendarFlows, Failures) {
  for (const WideString& path : {WideString(), Wide("missing.vcs"), Wide("")}) {
    EXPECT_EQ(manager_.Import_Calendar(db_, path, true), -1);
    EXPECT_EQ(manager_.Count_Todo(db_, path), -1);
  }
  EXPECT_EQ(manager_.Export_Calendar(db_, u""), -1);
  EXPECT_EQ(manager_.Export_Calendar(db_ + 99, Wide("x.vcs")), -1);
  const WideString bad = Write("bad.vcs", std::string(kAllKinds) + "X;:1");
  SetMessageSink([](std::u16string_view) {});
  EXPECT_THROW(static_cast<void>(manager_.Import_Calendar(db_, bad, true)), ParseFailure);
  EXPECT_THROW(static_cast<void>(manager_.Count_Calendar(db_, bad)), ParseFailure);
  SetMessageSink({});
  EXPECT_EQ(Stored(CalendarType::Event), 0);
}

TEST_F(CalendarFlows, ExportReplacesTheFile) {
  const WideString path = Write("out.vcs", "earlier");
  EXPECT_EQ(manager_.Export_Memo(db_, path), 0);
  EXPECT_EQ(Read("out.vcs"), "earlier");
  EXPECT_GE(manager_.Import_Calendar(db_, Write("a.vcs", kAllKinds), true), 0);
  EXPECT_EQ(manager_.Export_Todo(db_, Wide("missing/out.vcs")), -1);
  EXPECT_EQ(manager_.Export_Todo(db_, path), 1);
  EXPECT_EQ(Read("out.vcs"),
            "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VTODO\r\nSUMMARY:t\r\nSTATUS:NEEDS ACTION\r\n"
            "END:VTODO\r\nEND:VCALENDAR");
}

// Items of many batches, the last of a batch becoming a memo only in the next.
TEST_F(CalendarFlows, ImportInBatches) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "BEGIN:VEVENT\nSUMMARY:number " + std::to_string(i) + "\n" +
            (i % 2 == 0 ? "" : "CATEGORIES:MEMO\n") + "END:VEVENT\n";
  CalendarImportCounts counts;
  EXPECT_EQ(ImportCalendarText(db_, CalendarType::Memo, text, true, counts), 10000);
  EXPECT_EQ(counts.inText, 20000);
  EXPECT_EQ(counts.kept, 10000);
  EXPECT_EQ(Stored(CalendarType::Memo), 10000);
}

}  // namespace
}  // namespace pim
