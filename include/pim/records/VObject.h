// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pim/support/DateTime.h"
#include "pim/support/RecordMemory.h"
#include "pim/support/WideText.h"

namespace pim {

// What all records are made of. A record is a value like a standard container: threads may read one
// together, or one thread alone may change it, and any thread may free it. What adds or copies
// texts and entries throws std::bad_alloc.

// One extension item of a record, kept by stores. No reader fills it and no writer writes it: it is
// the application's own.
class CXItem {
 public:
  // Give or replace the members; texts that are taken are zero-terminated, and copied.
  WideString GetName() const { return name.str(); }
  WideString GetValue() const { return value.str(); }
  void SetName(const char16_t* text) { name = text; }
  void SetValue(const char16_t* text) { value = text; }
  std::uint32_t GetParams() const { return params; }
  void SetParams(std::uint32_t bits) { params = bits; }

  std::uint32_t params = 0;  // whatever the application means by it
  WideText value;            // any text
  WideText name;             // any text; several items may share one
};

// What a parse leaves in `tag` until the store gives the record its key.
inline constexpr std::int32_t kUnsavedTag = 0xFFFF;

// What contacts and calendar items have in common.
class CVObject {
 public:
  std::int32_t tag = 0;  // the record's key in the store: contact_id or calendar_id
  // UTC; of an item read from text, of a contact the application's. None of them counts when a
  // store looks for an equal record.
  COleDateTimeNull created_time;    // DTCREATE, written DCREATED
  COleDateTimeNull modified_time;   // LAST-MODIFIED
  COleDateTimeNull xmodified_time;  // X-MODIFIED

  std::vector<CXItem> xitems;  // in the order in which they were made

  // The number of extension items.
  std::int32_t GetXItemCount() const { return static_cast<std::int32_t>(xitems.size()); }

  // Records lie in record memory (pim/support/RecordMemory.h).
  static void* operator new(std::size_t size) { return AllocateRecordMemory(size); }
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* record) noexcept { FreeRecordMemory(record); }
};

}  // namespace pim
