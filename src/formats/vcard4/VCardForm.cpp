// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/CardForm.h"
#include "formats/vcard4/CardLines.h"
#include "formats/vcard4/ContactForms.h"

namespace pim {

std::unique_ptr<ContactForm> MakeVCardForm(VCardVersion version, bool groups) {
  return std::make_unique<CardForm<CardLines>>(groups, version);
}

}  // namespace pim
