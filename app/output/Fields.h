// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/output/LocalTimes.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"

namespace pim::app {

// For a table a text is visible on a terminal and in one line; else it is as the record has it.
enum class CellForm : std::uint8_t { Table, Whole };

std::string CellText(WideStringView text, CellForm form);

// One field of records as lists show it: in one cell, the entries of a list joined with ", ".
template <class Record>
struct FieldRow {
  std::string_view name;  // as --fields takes it; its title is the label FIELD_name
  bool isText;            // whether words are looked for in it
  std::string (*cell)(const Record& record, const LocalTimes& times, CellForm form);
};

// All fields, and those that a list shows unless others are chosen.
std::span<const FieldRow<CContact>> FieldsOf(const CContact*);
std::span<const FieldRow<CCalendar>> FieldsOf(const CCalendar*);
std::span<const std::string_view> UsualContactFields();
std::span<const std::string_view> UsualItemFields(CalendarType kind);

// The field of a contact's day of that type: "birthday", "anniversary" or "event-day".
std::string_view FieldOfDay(std::uint32_t type);

// How a contact is called: its formatted name, else given and family name.
WideString DisplayName(const CContact& contact);

}  // namespace pim::app
