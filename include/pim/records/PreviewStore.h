// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "pim/Export.h"
#include "pim/records/ForwardingStore.h"

namespace pim {

// Shows what saving would do: new records and groups are taken, compared with those of another
// store and with one another, and given keys, but nothing is written and they are in no list of
// records. Groups are: a new one is listed behind those of the other store. Deleting fails. Links
// are taken for new ones.
//
// Reads through `store`, which stays the caller's and must outlive this, and once all its records
// where saves leave duplicates out. One thread at a time uses both. Keeps a fingerprint of each
// record in memory then, and none of the records; what fails for want of memory comes as -1.
class PIM_EXPORT PreviewStore final : public ForwardingStore {
 public:
  // Nothing of the store is read yet. Throws std::bad_alloc.
  explicit PreviewStore(RecordStore& store);
  ~PreviewStore() override;

  // Replaces the way to a contact's picture; by default it lies in GetCallerIdPath().
  void SetPictureReader(PictureReader reader);

  // Told of each record that is saved, in the order of the collection, once the save is done: with
  // the key of the stored one that it equals, or as new.
  using TellContact = std::function<void(const CContact& contact, bool isNew)>;
  using TellCalendar = std::function<void(const CCalendar& item, bool isNew)>;
  // Sets whom to tell; either may be empty. What it throws passes to who saves.
  void OnSaved(TellContact tellContact, TellCalendar tellCalendar);

 private:
  class PIM_HIDDEN Impl;
  PIM_HIDDEN explicit PreviewStore(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
