// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/VCardDown.h"

namespace pim {

void VCardDown(std::string_view card, const TellFormatLoss&, std::string& out) { out = card; }

}  // namespace pim
