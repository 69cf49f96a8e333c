// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string>

#include "store/StoredForms.h"

namespace {

// A number of eight of the input's bytes.
std::int64_t NumberOf(std::string_view bytes) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < 8 && i < bytes.size(); ++i)
    number = number << 8 | static_cast<unsigned char>(bytes[i]);
  return static_cast<std::int64_t>(number);
}

}  // namespace

// Columns may hold what another program put there. Whatever they read as is stored and comes back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);

  pim::WideString text;
  pim::ReadStoredText(bytes, text);
  std::string stored;
  pim::AppendStoredText(text, stored);
  pim::WideString again;
  pim::ReadStoredText(stored, again);
  if (again != text) std::abort();

  const auto list = pim::ListFromStored(text);
  if (pim::ListFromStored(pim::StoredList(list)) != list) std::abort();

  const pim::RecurrenceList numbers = pim::NumbersFromStored(bytes);
  std::string storedNumbers;
  pim::AppendStoredNumbers(numbers, storedNumbers);
  if (pim::NumbersFromStored(storedNumbers) != numbers) std::abort();

  const std::int64_t number = NumberOf(bytes);
  const pim::COleDateTime time = pim::TimeFromSeconds(number);
  const auto seconds = pim::WholeSecondsOf(time);
  if (seconds && pim::TimeFromSeconds(*seconds).value != time.value) std::abort();
  const std::int32_t key = pim::KeyFromStored(number);
  if (key != 0 && key != number) std::abort();
  if (pim::IsPlainFileName(text) && text.find_first_of(u"/\\") != pim::WideString::npos)
    std::abort();
  return 0;
}
