// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "pim/Export.h"
#include "pim/records/ForwardingStore.h"

namespace pim {

// Records in memory, for hosts without a file and for tests. They go with the object. One thread at
// a time uses it, and it shares nothing with other stores. Where memory is short, a save fails with
// -1, and a load or visit throws std::bad_alloc.
class PIM_EXPORT MemoryStore final : public ForwardingStore {
 public:
  // An empty store. Throws std::bad_alloc.
  MemoryStore();
  ~MemoryStore() override;

  // Replaces the way to a contact's picture; by default it lies in GetCallerIdPath().
  void SetPictureReader(PictureReader reader);

 private:
  class PIM_HIDDEN Impl;
  PIM_HIDDEN explicit MemoryStore(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
