// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/platform/FileError.h"

namespace pim {

FileError::~FileError() = default;

}  // namespace pim
