// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/Strings.h"

namespace pim {

// Shows the user what a rejected text's reader has to say. The codecs reach the platform's message
// box through here.
void ShowParseFailure(WideStringView message);

}  // namespace pim
