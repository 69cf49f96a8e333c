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

// One extension item of a record. No reader fills it: it is the application's own.
class CXItem {
 public:
  WideString GetName() const { return name.str(); }
  WideString GetValue() const { return value.str(); }
  void SetName(const char16_t* text) { name = text; }
  void SetValue(const char16_t* text) { value = text; }
  std::uint32_t GetParams() const { return params; }
  void SetParams(std::uint32_t bits) { params = bits; }

  std::uint32_t params = 0;
  WideText value;
  WideText name;
};

// What a parse leaves in `tag` until the store gives the record its key.
inline constexpr std::int32_t kUnsavedTag = 0xFFFF;

// What contacts and calendar items have in common.
class CVObject {
 public:
  std::int32_t tag = 0;  // the record's key in the store: contact_id or calendar_id
  COleDateTimeNull created_time;
  COleDateTimeNull modified_time;
  COleDateTimeNull xmodified_time;
  std::vector<CXItem> xitems;

  std::int32_t GetXItemCount() const { return static_cast<std::int32_t>(xitems.size()); }

  static void* operator new(std::size_t size) { return AllocateRecordMemory(size); }
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* record) noexcept { FreeRecordMemory(record); }
};

}  // namespace pim
