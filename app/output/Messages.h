// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace pim::app {

// Collects, while it lives, the texts that the library shows to the user.
class Messages {
 public:
  Messages();
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  ~Messages();

  // Gives up what has come since the last call.
  std::vector<std::u16string> Take() { return std::exchange(texts_, {}); }

 private:
  std::vector<std::u16string> texts_;
};

}  // namespace pim::app
