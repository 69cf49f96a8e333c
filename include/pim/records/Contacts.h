// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/Export.h"
#include "pim/records/Collection.h"
#include "pim/records/Contact.h"

namespace pim {

// The contacts that one operation works on. One thread at a time uses a collection and the store
// behind `db`. What a store fails with, memory too, comes as -1.
class PIM_EXPORT CContacts : public Collection<CContact> {
 public:
  // Appends all stored contacts by ascending contact_id, without their group names. Gives their
  // number, or -1 when there is no store behind `db` or it fails. `option` must be 0.
  [[nodiscard]] std::int32_t OpenFromDB(std::int32_t db, std::int32_t option);
  // Stores the contacts in one transaction and gives each its final contact_id in `tag`.
  // `saveOption` above 0 links each to the group of that group_id. `saveFlag` false leaves out a
  // new contact that equals a stored one, gives it the stored one's key and takes the name of its
  // own picture away. Gives the number newly stored or updated, or -1, after which store and
  // collection are as before.
  [[nodiscard]] std::int32_t SaveToDB(std::int32_t db, std::int32_t saveOption, bool saveFlag);
};

}  // namespace pim
