// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/CommandTable.h"

namespace pim::app {

// One of the words that an option's value may be.
template <class Value>
struct ChoiceRow {
  std::string_view word;
  Value meaning;
};

inline constexpr ChoiceRow<TextForm> kFormChoices[] = {{"vcard", TextForm::VCard},
                                                       {"vcalendar", TextForm::VCalendar}};
inline constexpr ChoiceRow<ListOrder> kOrderChoices[] = {
    {"name", ListOrder::Name}, {"key", ListOrder::Key}, {"time", ListOrder::Time}};

// Those of contacts stand ahead of those of items, which have the last one.
inline constexpr ChoiceRow<TargetForm> kTargetChoices[] = {{"vcard4", TargetForm::VCard4},
                                                           {"vcard3", TargetForm::VCard3},
                                                           {"jcard", TargetForm::JCard},
                                                           {"csv", TargetForm::Csv},
                                                           {"icalendar", TargetForm::ICalendar}};

// What --fields takes instead of fields, to name them all.
inline constexpr std::string_view kFieldHelp = "help";

// The words that an option's value may be, of a command of that family; none where it may be
// anything. Of code pages these are the common ones: all that iconv knows are taken.
std::vector<std::string_view> ChoicesOf(Option option, Family family);

// "name, key or time".
std::string Listed(std::span<const std::string_view> words);

}  // namespace pim::app
