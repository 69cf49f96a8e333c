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
// where saves leave duplicates out.
class PIM_EXPORT PreviewStore final : public ForwardingStore {
 public:
  explicit PreviewStore(RecordStore& store);
  ~PreviewStore() override;

  // Replaces the way to a contact's picture; by default it lies in GetCallerIdPath().
  void SetPictureReader(PictureReader reader);

  // Told of each record that is saved, in the order of the collection, once the save is done: with
  // the key of the stored one that it equals, or as new.
  using TellContact = std::function<void(const CContact& contact, bool isNew)>;
  using TellCalendar = std::function<void(const CCalendar& item, bool isNew)>;
  void OnSaved(TellContact tellContact, TellCalendar tellCalendar);

 private:
  class PIM_HIDDEN Impl;
  PIM_HIDDEN explicit PreviewStore(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
