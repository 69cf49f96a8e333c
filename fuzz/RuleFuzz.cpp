// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string>

#include "fuzz/ReadItems.h"
#include "vcalendar/RecurrenceReader.h"
#include "vcalendar/RecurrenceWriter.h"

// What is written of a rule that was read is read back equal.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  pim::ReadItemsQuietly({});  // no messages
  pim::CRecurrence rule;
  pim::ParseRecurrence(reinterpret_cast<const char*>(data), static_cast<std::int32_t>(size), rule);
  if (rule.data == nullptr) return 0;
  if (rule.data->endDate.status == pim::StatusInvalid) return 0;  // has no form in the text
  std::string text;
  if (!pim::FormatRule(*rule.data, text)) std::abort();
  pim::CRecurrence again;
  pim::ParseRecurrence(text.data(), static_cast<std::int32_t>(text.size()), again);
  if (again.data == nullptr || *again.data != *rule.data) std::abort();
  return 0;
}
