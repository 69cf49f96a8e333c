// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Imports a file of contacts into records of the application's own, and lists them. Importing it
// twice changes nothing. Usage: own_store FILE
#include "examples/OwnStore.h"

#include <cstdio>

#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Encoding.h"
#include "pim/records/Contacts.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  OwnStore store;
  const pim::StoreBinding binding(store);
  pim::VObjectMgr manager;
  for (int round = 0; round < 2; ++round) {
    // -1 links the groups that the file names; false leaves out what is there already.
    const std::int32_t stored =
        manager.Import_Contact(binding.db(), pim::WideFromUtf8(argv[1]), -1, false);
    std::printf("%d stored\n", stored);
  }
  pim::CContacts contacts;
  if (store.LoadContacts(contacts) < 0) return 1;
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
    std::printf("%d %s\n", contacts[i].tag, pim::Utf8FromWide(contacts[i].name.given_name).c_str());
  return 0;
}
