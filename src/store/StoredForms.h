// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pim/records/Recurrence.h"
#include "pim/support/DateTime.h"
#include "pim/support/WideText.h"

namespace pim {

// The forms in which columns hold what isn't a plain number.

// Texts are UTF-8, a lone surrogate being the three bytes of its number, so that every text comes
// back as it was. Appends to `bytes`.
void AppendStoredText(WideStringView text, std::string& bytes);
// Replaces `text`; what is no such form becomes U+FFFD.
void ReadStoredText(std::string_view bytes, WideString& text);

// A list of texts as one: a semicolon ends each, a backslash stands before those that are text.
WideString StoredList(const std::vector<WideText>& texts);
std::vector<WideText> ListFromStored(WideStringView stored);

// Numbers with commas between. What isn't a number of 32 bits reads as the nearest one.
void AppendStoredNumbers(const RecurrenceList& numbers, std::string& bytes);
RecurrenceList NumbersFromStored(std::string_view stored);

// Seconds since 1970, when the time is valid and comes back from them in every bit.
std::optional<std::int64_t> WholeSecondsOf(const COleDateTime& time);
COleDateTime TimeFromSeconds(std::int64_t seconds);

// A key that no record can bear, beyond 32 bits, reads as 0: not as another record's.
std::int32_t KeyFromStored(std::int64_t key);

// A file name with a separator, a NUL or only dots could lead out of its folder.
bool IsPlainFileName(WideStringView name);

}  // namespace pim
