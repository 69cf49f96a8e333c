// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "pim/Export.h"
#include "pim/store/DatabaseStore.h"

namespace pim {

// The store in an SQLite file. Stores on one thread each may work at once, on one file too: they
// wait for each other as programs do.

// Records in one SQLite file. Several programs may have it open: who writes makes the others wait,
// who reads sees one state of it.
//
// One object is used by one thread at a time, which may change between calls: SQLite is used
// without locks of its own.
class PIM_STORE_EXPORT SqliteStore final : public DatabaseStore {
 public:
  // Opens the store at `path` (the operating system's own form), or makes one where there is no
  // file or an empty one; its folder must exist. A file that isn't a store of this program, or that
  // a newer version has written, is left as it is. `lockWait` is how long all waiting for other
  // programs may take between two successes; it ends early once `givesUp`, asked a hundred times a
  // second or more, gives true, and so does what the store is working on. Throws StoreError.
  explicit SqliteStore(const std::string& path,
                       std::chrono::milliseconds lockWait = std::chrono::seconds(30),
                       std::function<bool()> givesUp = {});
  // The same for another access than Create. Throws NoStoreError where it must be there and isn't.
  SqliteStore(const std::string& path, StoreAccess access,
              std::chrono::milliseconds lockWait = std::chrono::seconds(30),
              std::function<bool()> givesUp = {});
  ~SqliteStore() override;
};

}  // namespace pim
