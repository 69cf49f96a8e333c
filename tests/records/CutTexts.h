// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "records/Fingerprint.h"
#include "records/RecordMap.h"

namespace pim {

// What each record holds that a reader makes of a text in two pieces, the first of `cut` bytes.
template <class Reader, class Records>
std::vector<Fingerprint> PrintsOf(std::string_view text, std::size_t cut, const RecordMap& map) {
  Records records;
  Reader reader(records);
  EXPECT_TRUE(reader.Read(text.substr(0, cut), false));
  EXPECT_TRUE(reader.Read(text.substr(cut), true));
  std::vector<Fingerprint> prints;
  for (std::int32_t i = 0; i < records.GetCount(); ++i)
    prints.push_back(FingerprintOf(map, &records[i], {}));
  return prints;
}

// The same records wherever the text is cut.
template <class Reader, class Records>
void ExpectSameRecordsWhereverCut(const std::string& text, const RecordMap& map) {
  const auto whole = PrintsOf<Reader, Records>(text, text.size(), map);
  EXPECT_FALSE(whole.empty());
  for (std::size_t cut = 0; cut < text.size(); ++cut) {
    const auto cutRecords = PrintsOf<Reader, Records>(text, cut, map);
    ASSERT_EQ(cutRecords, whole) << "cut at " << cut;
  }
}

}  // namespace pim
