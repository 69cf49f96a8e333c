// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "pim/records/Recurrence.h"
#include "pim/records/TypeCodes.h"
#include "pim/support/DateTime.h"
#include "pim/support/WideText.h"

namespace pim {

// Which columns a record's fields go to, as rows. Each row is a column's name and a function that
// finds the field in a record: what it gives is a pointer of one of the few kinds that FieldRef
// lists. A database is written over these kinds and knows no record (a statement is made from the
// names, its parameters are bound and its columns read through the pointers); a record knows no
// database. The entries of a record's lists are reached by functions as well, so that vectors, the
// one reminder and the rules of six types all look like rows of a table.
//
// A further field of a record is one more row in RecordMapContacts.cpp or RecordMapCalendars.cpp,
// and one in StoreLayout.cpp where its column is new: storing, reading, copying and comparing
// records all follow from the map.

// A text that names a file of the caller-ID folder, or nothing.
struct PictureName {
  WideText* name;
};

// A time in a column of integers: seconds since 1970, null when the time is null or isn't a whole
// second in its one exact form. The column behind it then holds the day number.
struct WholeSeconds {
  COleDateTimeNull* time;
};
struct ExactDay {
  COleDateTimeNull* time;
};

// Something that follows from other fields: written for other programs, never read back.
struct DerivedNumber {
  std::optional<std::int32_t> value;
};

using FieldRef =
    std::variant<WideText*, std::int32_t*, std::uint32_t*, std::uint8_t*, DESKMATE_IDS::Alarm*,
                 COleDateTimeNull*, COleDateTimeSpan*, std::vector<WideText>*, RecurrenceList*,
                 PictureName, WholeSeconds, ExactDay, DerivedNumber>;

// A stamp tells when a record was worked on; two records with different stamps may be equal.
enum class FieldRole : std::uint8_t { Content, Stamp };

struct FieldMap {
  std::string_view column;
  FieldRef (*field)(void* entry);
  FieldRole role = FieldRole::Content;
};

// A repeat rule of any type as one row.
struct RuleRow {
  std::int32_t type = 0;
  std::int32_t interval = 0;
  std::int32_t count = 0;
  COleDateTimeNull endDate;
  RecurrenceList days;
  RecurrenceList positions;
};

// A table whose rows are entries of a record's list. `entry` stays good until the next call with
// the same work row.
struct ListMap {
  std::string_view table;
  std::span<const FieldMap> fields;
  std::size_t (*count)(void* record);
  void* (*at)(void* record, std::size_t index, RuleRow& work);
  void* (*add)(void* record, RuleRow& work);    // null when the record has no room for another
  void (*finish)(void* record, RuleRow& work);  // behind the fields of a new entry; may be null
};

// A record is handed over as the address of its most derived class.
struct RecordMap {
  std::string_view table;
  std::span<const FieldMap> fields;
  std::span<const ListMap> lists;
};

// The columns of a group and of a link; a group's second column holds its name in one letter case.
struct GroupRow {
  WideText name;
  WideText foldedName;
};
struct LinkRow {
  std::int32_t contactId = 0;
  std::int32_t groupId = 0;
};
inline constexpr std::string_view kGroupTable = "ContactGroups";
inline constexpr std::string_view kLinkTable = "Contacts_ContactGroups";
std::span<const FieldMap> GroupFields();
std::span<const FieldMap> LinkFields();

const RecordMap& ContactMap();
const RecordMap& CalendarMap();

// The field of an entry at the end of a path of members.
template <class Entry, auto... Path>
FieldRef Field(void* entry) {
  return FieldRef(&(*static_cast<Entry*>(entry).*....*Path));
}

template <class Wrapper, class Entry, auto... Path>
FieldRef FieldAs(void* entry) {
  return FieldRef(Wrapper{&(*static_cast<Entry*>(entry).*....*Path)});
}

// The rows of a list that is a vector in the record.
template <class Record, auto Member>
constexpr ListMap VectorMap(std::string_view table, std::span<const FieldMap> fields) {
  return {table,
          fields,
          [](void* record) { return (static_cast<Record*>(record)->*Member).size(); },
          [](void* record, std::size_t index, RuleRow&) -> void* {
            return &(static_cast<Record*>(record)->*Member)[index];
          },
          [](void* record, RuleRow&) -> void* {
            return &(static_cast<Record*>(record)->*Member).emplace_back();
          },
          nullptr};
}

// Makes `to`, an empty record, hold what the map names of `from`. Both are of the map's class.
void CopyRecord(const RecordMap& map, void* from, void* to);

// The fields of an extension item, for the tables of both kinds of record.
std::span<const FieldMap> XItemFields();

}  // namespace pim
