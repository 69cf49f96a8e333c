// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "app/output/Output.h"
#include "pim/records/Contact.h"

namespace pim::app {

// Tells of pictures that contacts name and that are nowhere.
class MissingPictures {
 public:
  // Looks for the contact's picture.
  void Look(const CContact& contact);
  // Tells that it isn't there. The contact is the one of that number.
  void Tell(const CContact& contact, std::int64_t number);
  // Takes note of one that is told in other words.
  void Note() { found_ = true; }
  int Status() const { return found_ ? kFailed : kDone; }

 private:
  bool found_ = false;
};

// Tells of a contact's picture that the contact goes without, and why: "is missing".
void TellOfPicture(const CContact& contact, std::int64_t number, std::string_view why);

}  // namespace pim::app
