// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// A host of the core alone: reads a card, keeps it in memory, writes it again.
#include <cstdio>
#include <string_view>

#include "pim/Version.h"
#include "pim/manager/TextReading.h"
#include "pim/manager/TextWriting.h"
#include "pim/records/MemoryStore.h"

int main() {
  pim::CContacts contacts;
  const pim::TextResult read = pim::ReadContacts(
      "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Martin;Alice;;;\r\nEND:VCARD\r\n", contacts);
  pim::MemoryStore store;
  if (read.outcome != pim::TextOutcome::Read || store.SaveContacts(contacts, 0, false) != 1)
    return 1;
  if (pim::WriteContact(contacts[0]).find("N:Martin;Alice;;;\r\n") == std::string::npos) return 1;
  std::printf("%s\n", pim::Version());
  return pim::Version() == std::string_view(PIM_VERSION) ? 0 : 1;
}
