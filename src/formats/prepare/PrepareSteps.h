// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace pim {

// What is done to a text so that the readers take it well, in this order. Each step stands by
// itself, and leaves alone what needs nothing.
enum class PrepareStep : std::uint8_t {
  Unicode,
  Nul,
  LineEnds,
  Joined,
  MissingEnd,
  Base64,
  Charsets,
  Prefixes,
  Types,
  VCard,
  ICalendar,
  Alarms,
  Times,
};

using PrepareStepMask = std::uint32_t;
constexpr PrepareStepMask BitOf(PrepareStep step) { return 1U << static_cast<unsigned>(step); }

struct PrepareStepRow {
  PrepareStep step;
  std::string_view name;  // as it is named in options and messages
  std::string_view help;  // what it does, in English
};

// In the order of their numbers.
inline constexpr PrepareStepRow kPrepareSteps[] = {
    {PrepareStep::Unicode, "unicode", "UTF-16 and UTF-32 become UTF-8"},
    {PrepareStep::Nul, "nul", "NUL characters go"},
    {PrepareStep::LineEnds, "line-ends", "Carriage returns that end a line alone become CR LF"},
    {PrepareStep::Joined, "joined", "A BEGIN in the line of an END gets a line of its own"},
    {PrepareStep::MissingEnd, "missing-end",
     "A record in which another of its kind begins gets its END"},
    {PrepareStep::Base64, "base64", "Lines of base64 without the blank at their head get it"},
    {PrepareStep::Charsets, "charsets",
     "Lines of a charset that the readers don't know, and iconv does, become UTF-8"},
    {PrepareStep::Prefixes, "prefixes",
     "Prefixes such as \"item1.\" go, and labels with them become types where they are known"},
    {PrepareStep::Types, "types",
     "Types in a list, such as TYPE=HOME,FAX, become words of their own"},
    {PrepareStep::VCard, "vcard", "vCard 3.0 and 4.0 become vCard 2.1"},
    {PrepareStep::ICalendar, "icalendar", "iCalendar 2.0 becomes vCalendar 1.0"},
    {PrepareStep::Alarms, "alarms", "A DALARM becomes the AALARM of an item that has none"},
    {PrepareStep::Times, "times", "Local times become UTC by the TZ and DAYLIGHT of the text"},
};
constexpr std::span<const PrepareStepRow> PrepareSteps() { return kPrepareSteps; }
constexpr const PrepareStepRow& RowOf(PrepareStep step) {
  return kPrepareSteps[static_cast<std::size_t>(step)];
}
inline constexpr PrepareStepMask kAllPrepareSteps = (1U << PrepareSteps().size()) - 1;

static_assert([] {
  for (std::size_t i = 0; i < PrepareSteps().size(); ++i)
    if (kPrepareSteps[i].step != static_cast<PrepareStep>(i)) return false;
  return true;
}());

}  // namespace pim
