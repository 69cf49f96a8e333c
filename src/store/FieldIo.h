// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "records/RecordMap.h"
#include "store/Prepared.h"

namespace pim {

// A field's way into a parameter. What a record holds nothing of becomes NULL: an empty text or
// list, a null time. A time or span that is invalid is positive infinity, a null span negative
// infinity, since no number of days is.
void BindField(Parameters& row, int index, const FieldRef& field);
// A key and the fields behind it, from the parameter `index` on.
void BindRow(Parameters& row, int index, std::int64_t key, std::span<const FieldMap> fields,
             void* entry);

// A column's way into a field, for any value but NULL, which leaves a field as it is. A number
// beyond the field's range reads as the nearest that is in it; a name that could lead out of its
// folder as none.
class FieldReader {
 public:
  void Read(PreparedStatement& row, int column, const FieldRef& field);

 private:
  WideString work_;
};

}  // namespace pim
