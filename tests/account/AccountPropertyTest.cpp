// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "pim/stream/TextHead.h"
#include "pim/stream/TextRejects.h"
#include "pim/support/FileNames.h"
#include "platform/Files.h"
#include "tests/account/Accounts.h"
#include "tests/account/MadeLines.h"
#include "tests/store/TemporaryFolder.h"

namespace pim::testing {
namespace {

class Account : public ::testing::Test {
 protected:
  Account() {
    SetAppDataFolder(folder_.path());
    std::filesystem::create_directories(NativePath(GetCallerIdPath()));
    SetMessageSink([](std::u16string_view) {});
  }
  ~Account() override {
    SetAppDataFolder({});
    SetMessageSink({});
  }

  // Tries the text itself, in pieces too, and without each of its entries' lines.
  void Try(TextForm form, const std::string& text) {
    const Reading reading = Read(form, text);
    ASSERT_EQ(FaultOf(reading, text), "") << text;
    ASSERT_EQ(reading.records, Read(form, text, text.size(), false).records) << text;
    for (const std::size_t size : {std::size_t{1}, std::size_t{7}}) {
      const Reading inPieces = Read(form, text, size);
      for (std::size_t i = 0; i < reading.entries.size(); ++i)
        ASSERT_EQ(inPieces.entries.at(i).text, reading.entries[i].text) << text;
    }
    for (const KeptEntry& entry : reading.entries) {
      ASSERT_EQ(FaultOf(reading, entry, form, text), "") << text;
      for (const LossRow& loss : kLosses)
        if ((entry.why & loss.code) != 0) ++told_[loss.code];
    }
    ++texts_;
  }

  int texts_ = 0;
  std::map<Loss, int> told_;

 private:
  TemporaryFolder folder_;
};

std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// How many texts of each kind; more of them by hand.
std::uint32_t Seeds() {
  const char* given = std::getenv("PIM_ACCOUNT_SEEDS");
  return given == nullptr ? 1000 : static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
}

// A dropped line can be taken out and nothing changes; any other one can't, or it says so.
TEST_F(Account, HoldsForMadeTexts) {
  for (std::uint32_t seed = 0; seed < Seeds(); ++seed) {
    MadeLines lines(seed);
    ASSERT_NO_FATAL_FAILURE(Try(TextForm::VCard, lines.Cards())) << seed;
    ASSERT_NO_FATAL_FAILURE(Try(TextForm::VCalendar, lines.Items())) << seed;
  }
  EXPECT_GE(texts_, 2000);
  for (const LossRow& loss : kLosses) {
    if (loss.code == LOSS_NO_PICTURE) continue;  // no text makes a file impossible
    EXPECT_GE(told_[loss.code], 20) << loss.name;
  }
}

TEST_F(Account, HoldsForSamples) {
  std::vector<std::string> folders = {PIM_TEST_DATA, PIM_TEST_DATA "/../../samples"};
  if (const char* given = std::getenv("PIM_ACCOUNT_FOLDER")) folders.emplace_back(given);
  for (const std::string& folder : folders) {
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
      if (!file.is_regular_file() || file.path().extension() == ".db") continue;
      const std::string text = BytesOf(file.path());
      const auto head = TextHeadOf(text);
      ASSERT_NO_FATAL_FAILURE(Try(head ? FormOf(head->object) : TextForm::VCard, text))
          << file.path();
    }
  }
}

// The troubles that phones make: each loss is told with its line.
TEST_F(Account, TellsTheTroublesOfPhones) {
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(PIM_TEST_DATA "/../account/data")) {
    if (file.path().extension() == ".account") continue;
    const TextForm form = file.path().extension() == ".vcs" ? TextForm::VCalendar : TextForm::VCard;
    const std::string text = BytesOf(file.path());
    std::string account;
    for (const KeptEntry& entry : Read(form, text).entries)
      account += entry.text.substr(entry.text.find('{')) + "\n";
    EXPECT_EQ(account, BytesOf(file.path().string() + ".account")) << file.path();
    Try(form, text);
    ++files;
  }
  EXPECT_EQ(files, 6);
}

// What is left when the rejected parts are taken out is read to its end, and each part begins with
// the record that it costs.
TEST_F(Account, RejectsNoMoreThanItMust) {
  for (std::uint32_t seed = 0; seed < Seeds(); ++seed) {
    MadeLines lines(seed);
    const TextForm form = seed % 2 == 0 ? TextForm::VCard : TextForm::VCalendar;
    std::string text = form == TextForm::VCard ? lines.Cards() + lines.Cards() : lines.Items();
    static constexpr std::string_view kBad[] = {
        "TEL;:1\n", "X;P=;Q:1\n", "Y;BASE64:\n *AAA\n QUJD\n", "TEL\n;TYPE\n=:1\n x\n"};
    for (std::size_t times = lines.Number(4); times > 0; --times) {
      const std::size_t end = text.find('\n', lines.Number(text.size()));
      if (end != std::string::npos) text.insert(end + 1, kBad[lines.Number(std::size(kBad))]);
    }
    const RejectedParts rejected = RejectedPartsOf(text, form);
    const std::string rest = WithoutParts(text, rejected.parts);
    const Reading reading = Read(form, rest);
    EXPECT_EQ(reading.totals.unread, 0) << text;
    EXPECT_EQ(rejected.parts.empty(), Read(form, text).totals.unread == 0) << text;
    std::size_t records = reading.records.size();
    for (const RejectedPart& part : rejected.parts) {
      if (part.object) ++records;
      ASSERT_LE(part.offset + part.size, text.size());
      EXPECT_GT(Read(form, text.substr(part.offset, part.size)).totals.unread, 0) << text;
      EXPECT_EQ(Read(form, text.substr(part.offset, part.size)).records.size(),
                part.object ? 1 : 0);
      EXPECT_EQ(LinesOf(text.substr(0, part.offset)) + 1, part.firstLine);
      EXPECT_LE(LinesOf(text.substr(0, part.lineOffset)) + 1, part.line);
      EXPECT_LE(part.line, part.lastLine);
      EXPECT_EQ(LinesOf(text.substr(0, part.offset + part.size)), part.lastLine);
    }
    ASSERT_EQ(records, static_cast<std::size_t>(rejected.records)) << text;
    if (HasFailure()) return;
  }
}

// Any bytes in any place.
TEST_F(Account, HoldsForBrokenTexts) {
  static constexpr std::string_view kBytes = "\r\n\t :;=\\\"*\xFF";
  for (std::uint32_t seed = 0; seed < Seeds(); ++seed) {
    MadeLines lines(seed);
    const TextForm form = seed % 2 == 0 ? TextForm::VCard : TextForm::VCalendar;
    std::string text = form == TextForm::VCard ? lines.Cards() : lines.Items();
    for (int times = 0; times < 3; ++times) {
      text[lines.Number(text.size())] = kBytes[lines.Number(kBytes.size())];
      text.insert(lines.Number(text.size()), 1, kBytes[lines.Number(kBytes.size())]);
    }
    ASSERT_NO_FATAL_FAILURE(Try(form, text)) << seed;
  }
}

}  // namespace
}  // namespace pim::testing
