// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/Strings.h"
#include "platform/LetterCase.h"

namespace pim {

// Two groups are the same when their names give the same key: letter case doesn't count.
inline WideString GroupKey(WideStringView name) { return FoldLetterCase(name); }

}  // namespace pim
