// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

namespace pim {

// What a form can't hold of a record, or of a text in another form, and why: what an account tells
// of a conversion. Codes that accounts of lines have too are spelt as there (pim/support/Loss.h).

enum class FormatVerdict : std::uint8_t {
  Changed,  // a part of it is there, or something else than it says
  Dropped,  // nothing of it is there
};

enum class FormatReason : std::uint8_t {
  NoProperty,
  TypeIgnored,
  BadValue,
  ExtraParts,
  OtherParts,
  TimeDropped,
  SecondsDropped,
  Replaced,
  UnknownZone,
  RuleTooRich,
  NoPicture,
  BadBase64,
  BadCharacter,
  LineEnd,
  NoYear,
  DatesCut,
};

struct FormatReasonRow {
  FormatReason code;
  std::string_view name;  // in accounts for programs
  std::string_view text;  // in accounts for people
};

// By the numbers of their codes.
inline constexpr FormatReasonRow kFormatReasons[] = {
    {FormatReason::NoProperty, "no-property", "the form has no place for it"},
    {FormatReason::TypeIgnored, "type-ignored", "the form has no word for its type"},
    {FormatReason::BadValue, "bad-value", "a date, number or word that isn't understood"},
    {FormatReason::ExtraParts, "extra-parts", "more parts than the form has places for"},
    {FormatReason::OtherParts, "other-parts", "only what the form knows of the list is kept"},
    {FormatReason::TimeDropped, "time-dropped", "its time of day isn't kept"},
    {FormatReason::SecondsDropped, "seconds-dropped", "its seconds aren't kept"},
    {FormatReason::Replaced, "replaced",
     "the form has one place for it, and another value is there"},
    {FormatReason::UnknownZone, "unknown-zone", "its time zone isn't known; read as local time"},
    {FormatReason::RuleTooRich, "rule-too-rich", "a repeat that the form's rules can't say"},
    {FormatReason::NoPicture, "no-picture", "the picture isn't there"},
    {FormatReason::BadBase64, "bad-base64", "its base64 is cut, or holds other bytes"},
    {FormatReason::BadCharacter, "bad-character", "characters that the form can't hold"},
    {FormatReason::LineEnd, "line-end", "the form knows one kind of line end, and it is another"},
    {FormatReason::NoYear, "no-year", "a day without its year; 1604 stands for it"},
    {FormatReason::DatesCut, "dates-cut",
     "dates without end, of which those of some years are kept"},
};

static_assert([] {
  for (std::size_t i = 0; i < std::size(kFormatReasons); ++i)
    if (kFormatReasons[i].code != static_cast<FormatReason>(i)) return false;
  return true;
}());

inline const FormatReasonRow& RowOf(FormatReason reason) {
  return kFormatReasons[static_cast<std::size_t>(reason)];
}

struct FormatLoss {
  // Of a record as record dumps call it ("telephones[1].number_type"), of a text the property's
  // name. In UTF-8.
  std::string field;
  FormatVerdict verdict = FormatVerdict::Dropped;
  FormatReason reason = FormatReason::NoProperty;
  // Of a text: the property's first physical line, from 0 at the text's own beginning.
  std::size_t line = 0;
};

// Is told of each loss as it happens, in order.
using TellFormatLoss = std::function<void(const FormatLoss& loss)>;

}  // namespace pim
