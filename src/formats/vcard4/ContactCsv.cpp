// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/ContactForms.h"

namespace pim {

std::unique_ptr<ContactForm> MakeCsvForm(std::string_view) { return MakeJCardForm(false); }

}  // namespace pim
