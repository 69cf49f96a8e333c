// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pim::app {

// One of the files that a page is put together of ("album.css"), as it stands in this folder.
std::string_view PageFileText(std::string_view name);

}  // namespace pim::app
