// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pim {

// Shows a text to the user, through the host's sink (SetMessageSink) or on standard error.
void AfxMessageBox(std::u16string_view text);

}  // namespace pim
