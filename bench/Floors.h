// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"

namespace pim::bench {

// What the work costs at the very least, to hold the product's own figures against.

// Finds each line's end and its first colon; gives the number of colons.
std::size_t FindLinesAndColons(std::string_view text);

// Makes one std::u16string of each line's value, byte by byte.
std::vector<std::u16string> MakeStrings(std::string_view text);

// Decodes base64 lines by tables, four characters a step; gives the number of bytes.
std::size_t DecodeBase64(std::string_view text, std::string& out);

// Copies all strings of a record as lines, narrowed by vectors, to `out`, which is large enough
// (kCopyRoom); gives the number of bytes. What the strings hold is not looked at.
inline constexpr std::size_t kCopyRoom = 4096;
std::size_t CopyStrings(const CContact& contact, char* out);
std::size_t CopyStrings(const CCalendar& item, char* out);

}  // namespace pim::bench
