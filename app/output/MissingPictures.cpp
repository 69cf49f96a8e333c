// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/MissingPictures.h"

#include <string>

#include "app/output/Fields.h"
#include "support/CallerIdPictures.h"

namespace pim::app {

void MissingPictures::Look(const CContact& contact) {
  if (!contact.photo.empty() && !HasCallerIdPicture(contact.photo)) Tell(contact, contact.tag);
}

void MissingPictures::Tell(const CContact& contact, std::int64_t number) {
  found_ = true;
  TellOfPicture(contact, number, "is missing");
}

void TellOfPicture(const CContact& contact, std::int64_t number, std::string_view why) {
  Complain("contact " + std::to_string(number) + " (" + Shown(DisplayName(contact)) +
           "): its picture " + Shown(contact.photo) + " " + std::string(why) + "; it goes without");
}

}  // namespace pim::app
