// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "pim/platform/Host.h"
#include "pim/support/ParseFailure.h"
#include "vcard/VCardReader.h"

namespace pim {

// Reads a text as an import does, but keeps no picture and shows no message.
inline CContacts ReadCardsQuietly(std::string_view text) {
  static const bool quiet = [] {
    SetAppDataFolder("/nonexistent");
    SetMessageSink([](std::u16string_view) {});
    return true;
  }();
  static_cast<void>(quiet);
  CContacts contacts;
  VObjectBuffer data;
  data.bytes.Assign(text.data(), text.size());
  try {
    ParseVCard(contacts, data);
  } catch (ParseFailure) {
    return contacts;  // what was read until then counts
  }
  return contacts;
}

}  // namespace pim
