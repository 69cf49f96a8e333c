// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "pim/stream/TextHead.h"

namespace pim::app {

// A page around its data.
struct PageFrame {
  std::string ahead;
  std::string behind;
};

// Fills in the page for contacts or for a calendar in a language, with a title in UTF-8, which may
// be any text. Its Content-Security-Policy lets nothing run but its own script, and nothing be
// fetched.
PageFrame FilledPage(TextForm form, std::string_view language, std::string_view title);

}  // namespace pim::app
