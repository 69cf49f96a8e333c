// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/ShowParseFailure.h"

#include "platform/MessageBox.h"

namespace pim {

void ShowParseFailure(WideStringView message) { AfxMessageBox(message); }

}  // namespace pim
