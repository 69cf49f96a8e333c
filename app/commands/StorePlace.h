// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "app/commands/Options.h"
#include "pim/store/DatabaseStore.h"

namespace pim::app {

// Where a store is: in a file, or in a server's database.
class StorePlace {
 public:
  // The path or the server's URL, as it was typed.
  explicit StorePlace(std::string text) : text_(std::move(text)) {}
  // That of --store, else of the environment, else the user's own, whose folder is made where the
  // store may be. Throws Failure.
  static StorePlace Chosen(const Options& options, StoreAccess access);

  // `lockWait` is how long it waits for other programs. Throws StoreError, or Failure where this
  // program knows no servers.
  std::unique_ptr<DatabaseStore> Open(
      StoreAccess access, std::chrono::milliseconds lockWait = std::chrono::seconds(30)) const;
  // Whether that file is the store's, or will be.
  bool IsFile(const std::string& path) const;
  // Whether it is the same as another one, as far as their names tell.
  bool IsSameAs(const StorePlace& other) const;

 private:
  std::string text_;
};

// The statements that make a store's tables in a server. Throws Failure where this program knows no
// servers.
std::string ServerSchema();

}  // namespace pim::app
