// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "pim/records/Contact.h"
#include "pim/support/Strings.h"

namespace pim {

// A contact's fields by the names of record dumps, each as a text in UTF-8.

enum class MemberKind : bool { Value, Type };

struct CsvMember {
  NarrowStringView name;  // empty for the one member of a plain text
  // Appends the member of an entry; false when halves of surrogate pairs became U+FFFD.
  bool (*append)(const CContact& contact, std::size_t index, NarrowString& out);
  MemberKind kind = MemberKind::Value;
};

// A list, or a field of the contact itself, which counts as a list of one.
struct CsvList {
  NarrowStringView name;
  std::size_t (*count)(const CContact& contact);  // null for a field
  std::span<const CsvMember> members;
  // Whether an entry's type has the word; null where entries have no type.
  bool (*hasType)(const CContact& contact, std::size_t index, NarrowStringView word);
};

// In the order of record dumps.
std::span<const CsvList> CsvLists();

}  // namespace pim
