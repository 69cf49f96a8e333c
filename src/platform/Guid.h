// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace pim {

struct GUID {
  std::array<std::uint8_t, 16> bytes{};
};

// A new random GUID (version 4). False, with `guid` unchanged, when the system has no randomness.
[[nodiscard]] bool CoCreateGuid(GUID& guid);

// The 38 characters of the registry format: {8-4-4-4-12} upper-case hexadecimal digits.
std::u16string StringFromGUID2(const GUID& guid);

}  // namespace pim
