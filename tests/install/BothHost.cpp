// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// A host of both stores: what it takes into a file, it copies into a server. Each library has code
// of its own for what the two share.
#include <cstdio>

#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Encoding.h"
#include "pim/store/PostgresStore.h"
#include "pim/store/SqliteStore.h"

namespace {

int Count(pim::DatabaseStore& store) {
  const int count = store.CountContacts();
  std::printf("%s: %d contacts\n", store.Name().c_str(), count);
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  pim::SqliteStore file(argv[1]);
  {
    const pim::StoreBinding binding(file);
    pim::VObjectMgr().Import_Contact(binding.db(), pim::WideFromUtf8(argv[2]), -1, true);
  }
  pim::PostgresStore server(argv[3]);
  if (server.CopyFrom(file) < 0) {
    std::printf("%s\n", server.LastError().c_str());
    return 1;
  }
  return Count(file) == 3 && Count(server) == 3 ? 0 : 1;
}
