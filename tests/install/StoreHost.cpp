// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// A host of the store: what goes wrong in one library is caught from another, and what the store
// takes is there when it is opened again.
#include <cstdio>

#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Encoding.h"
#include "pim/platform/FileError.h"
#include "pim/store/SqliteStore.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  try {
    pim::SqliteStore("/nowhere/at/all.db");
    return 1;
  } catch (const pim::StoreError&) {
  }
  {
    pim::SqliteStore store(argv[1]);
    const pim::StoreBinding binding(store);
    if (pim::VObjectMgr().Import_Contact(binding.db(), pim::WideFromUtf8(argv[2]), -1, true) != 3)
      return 1;
  }
  pim::SqliteStore store(argv[1], pim::StoreAccess::ReadOnly);
  std::printf("%d contacts\n", store.CountContacts());
  return store.CountContacts() == 3 ? 0 : 1;
}
