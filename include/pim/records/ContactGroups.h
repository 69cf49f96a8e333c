// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/Export.h"
#include "pim/records/Collection.h"
#include "pim/support/WideText.h"

namespace pim {

// Groups of contacts, and who belongs to them. Threads may read a collection together, or one
// thread alone may change it; saving and opening use the store of one handle, which one thread at a
// time may use.

// A group, such as "Family".
class CContactGroup {
 public:
  std::int32_t group_id = 0;  // negative: provisional, until the store gives the key
  WideText group_name;        // X-GROUP; unique in a store without regard to letter case
};

// The groups that one operation works on.
class PIM_EXPORT CContactGroups : public Collection<CContactGroup> {
 public:
  // A new group has a negative group_id of its own, so that links made before saving stay apart.
  CContactGroup& AddNew();
  // Appends all stored groups by ascending group_id. Gives their number, or -1.
  [[nodiscard]] std::int32_t OpenFromDB(std::int32_t db);
  // Stores the new groups and gives each its final group_id; a group whose name is stored already,
  // in any letter case, gets the stored one's. `saveFlag` changes nothing: names are unique. Gives
  // the number newly stored or updated, or -1.
  [[nodiscard]] std::int32_t SaveToDB(std::int32_t db, bool saveFlag);

 private:
  std::int32_t lastProvisionalId_ = 0;
};

// A root that applications derive command targets from; nothing of it is used here.
class CCmdTarget {
 public:
  virtual ~CCmdTarget() = default;
};

// One contact's membership of one group, a link.
class CContactGroupPair : public CCmdTarget {
 public:
  std::int32_t contact_id = 0;  // CContact's `tag`
  std::int32_t group_id = 0;    // CContactGroup's
};

// The links that one operation works on. Both operations use the store that the last operation with
// a handle used in this thread, each thread having its own; -1 where there was none.
class PIM_EXPORT CContactGroupPairs : public Collection<CContactGroupPair> {
 public:
  // Appends all links in the order in which they were stored. Gives their number, or -1.
  [[nodiscard]] std::int32_t OpenFromDB();
  // Stores the links. A link stands in the store at least as often as in the collection: what is
  // there already is not stored again, so saving twice changes nothing. Gives the number newly
  // stored, or -1: also when a link names a record that isn't stored.
  [[nodiscard]] std::int32_t SaveToDB();
};

}  // namespace pim
