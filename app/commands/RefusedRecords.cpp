// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/RefusedRecords.h"

#include <algorithm>
#include <limits>

#include "app/commands/LineMap.h"
#include "app/commands/LinesOfRecords.h"
#include "app/input/Interrupt.h"
#include "app/output/Fields.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"
#include "pim/manager/TextReading.h"

namespace pim::app {
namespace {

WideString NameOf(const CContact& contact) { return DisplayName(contact); }
WideString NameOf(const CCalendar& item) { return ItemName(item); }

void ReadNames(NarrowStringView text, TextForm form, const std::function<void(WideString)>& take,
               const TextObserver& observer = {}) {
  const auto hand = [&take](const auto& record) {
    CheckInterrupt();
    take(NameOf(record));
    return true;
  };
  static_cast<void>(form == TextForm::VCard ? ReadContacts(text, hand, observer)
                                            : ReadCalendars(text, hand, observer));
}

// The name of the record that a part begins, as far as it can be read.
WideString NameIn(const RejectedPart& part, NarrowStringView text, TextForm form) {
  WideString last;
  ReadNames(text.substr(part.offset, part.lineOffset - part.offset), form,
            [&last](WideString name) { last = std::move(name); });
  return last;
}

}  // namespace

std::int64_t RecordsIn(const RejectedParts& rejected) {
  return std::ranges::count_if(rejected.parts,
                               [](const RejectedPart& part) { return part.object.has_value(); });
}

std::string OwnerOf(const RejectedPart& part, NarrowStringView text, TextForm form) {
  if (!part.object) return "outside all records";
  const std::string noun = form == TextForm::VCard
                               ? "card"
                               : std::string(NounOf(static_cast<CalendarType>(*part.object)));
  const WideString name = NameIn(part, text, form);
  if (name.empty())
    return "in the " + noun + " that begins in line " + std::to_string(part.firstLine);
  return "in the " + noun + " of " + ShownInOneLine(name);
}

void VisitRejected(NarrowStringView text, TextForm form, const std::vector<RejectedPart>& parts,
                   const TakeRefused& take) {
  for (const RejectedPart& part : parts)
    if (part.object) take(part.firstLine, part.lastLine, NameIn(part, text, form));
}

void VisitRefused(NarrowStringView text, TextForm form, const TakeRefused& take) {
  const RejectedParts rejected = RejectedPartsOf(text, form);
  const NarrowString rest = WithoutParts(text, rejected.parts);
  const LineMap map(rejected.parts);
  LinesOfRecords lines;
  std::vector<WideString> names;
  const TextObserver observer{{}, [&lines](const AccountEntry& entry) { lines.Take(entry); }};
  ReadNames(
      rest, form, [&names](WideString name) { names.push_back(std::move(name)); }, observer);

  auto part = rejected.parts.begin();
  const auto takeParts = [&](std::int64_t line) {
    for (; part != rejected.parts.end() && part->firstLine < line; ++part)
      if (part->object) take(part->firstLine, part->lastLine, NameIn(*part, text, form));
  };
  for (std::size_t i = 0; i < names.size(); ++i) {
    const LinesOfRecords::Lines of = lines.Of(static_cast<std::int64_t>(i));
    takeParts(map.Original(of.first));
    take(map.Original(of.first), map.OriginalLast(of.first, of.last), names[i]);
  }
  takeParts(std::numeric_limits<std::int64_t>::max());
}

}  // namespace pim::app
