// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

// Tells this process from every other one that has run or will run, on this machine and others.
std::string ProcessMark();

// Whether the process of that mark runs now, on this machine and within reach.
bool IsRunning(std::string_view mark);

}  // namespace pim
