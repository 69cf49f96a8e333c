// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/Fingerprint.h"
#include "store/Statement.h"

namespace pim {

// What a store remembers about itself. Runs inside the caller's transaction.
class StoreSettings {
 public:
  explicit StoreSettings(Database& db);

  bool KeepsOriginals();
  void SetKeepsOriginals(bool keeps);
  // The secret under which fingerprints are made; made at first use, where `mayMake` lets it, else
  // one for this process alone.
  FingerprintKey Key(bool mayMake);
  bool HasKey();

 private:
  std::optional<std::string> Get(std::string_view name);
  void Set(std::string_view name, std::string_view value);

  Statement get_;
  Statement insert_;
  Statement update_;
};

}  // namespace pim
