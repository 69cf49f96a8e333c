// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "pim/support/Strings.h"

namespace pim {

// What a line of a text may lose when it is read, as codes, and how they are told. Tables that
// never change: any thread may use them, and nothing here allocates or throws.

// What happened to a line of a text that the records don't hold, or not as it says: one bit each.
// Why a line lost it stands in its row of kLosses.
enum Loss : std::uint32_t {
  LOSS_NO_COLON = 1U << 0,          // a line without a colon, which is no property
  LOSS_BEFORE_FIRST = 1U << 1,      // ahead of the first BEGIN
  LOSS_UNKNOWN_PROPERTY = 1U << 2,  // no field of a record is for it
  LOSS_GROUP_PREFIX = 1U << 3,      // such as "A.TEL": known without its prefix
  LOSS_EMPTY = 1U << 4,             // no value
  LOSS_REPLACED = 1U << 5,          // a later line of the record gave the field another value
  LOSS_BAD_VALUE = 1U << 6,         // a date, number or word that isn't understood
  LOSS_TYPE_IGNORED = 1U << 7,      // a parameter without effect
  LOSS_UNKNOWN_CHARSET = 1U << 8,   // CHARSET= with another name than those known
  LOSS_INVALID_BYTES = 1U << 9,     // no text in the code page; became U+FFFD
  LOSS_BAD_ESCAPE = 1U << 10,       // an equals sign of quoted-printable without two hex digits
  LOSS_NUL = 1U << 11,              // the text ends at a NUL character
  LOSS_EXTRA_PARTS = 1U << 12,      // more parts between semicolons than there are fields
  LOSS_TIME_DROPPED = 1U << 13,     // a time of day where a day alone is kept
  LOSS_SECONDS_DROPPED = 1U << 14,  // seconds of a time, which become 0
  LOSS_OTHER_PARTS = 1U << 15,      // words of a list that no field holds
  LOSS_BAD_BASE64 = 1U << 16,       // cut, or with other bytes between
  LOSS_NO_PICTURE = 1U << 17,       // a picture's file can't be made
  LOSS_CUT = 1U << 18,              // the text ends inside the value
  LOSS_JOINED = 1U << 19,           // a BEGIN in the line of an END, which begins nothing
  LOSS_RETURN = 1U << 20,           // a carriage return inside the line
  // These two are no losses by themselves: they tell where the line stood.
  LOSS_BEHIND_END = 1U << 21,  // behind the END of its record
  LOSS_NESTED = 1U << 22,      // inside another record
};

// Any number of them, joined.
using LossMask = std::uint32_t;

// The loss alone where there is one, else none.
constexpr LossMask LossIf(bool isLost, Loss loss) { return isLost ? LossMask{loss} : 0; }

// How a loss is told, in English.
struct LossRow {
  Loss code;              // one bit
  NarrowStringView name;  // in accounts for programs
  NarrowStringView text;  // in accounts for people
  NarrowStringView one;   // counted: "1 unknown property"
  NarrowStringView many;  // of 0 or several: "3 unknown properties"
};

// All of them, in the order in which a line's codes are told. The first one of a line is what it
// counts as.
inline constexpr LossRow kLosses[] = {
    {LOSS_NO_COLON, "no-colon", "a line without a colon", "line without a colon",
     "lines without a colon"},
    {LOSS_BEFORE_FIRST, "before-first", "it stands ahead of the first record",
     "line ahead of the first record", "lines ahead of the first record"},
    {LOSS_UNKNOWN_PROPERTY, "unknown-property", "there is no field for it", "unknown property",
     "unknown properties"},
    {LOSS_GROUP_PREFIX, "group-prefix", "unknown with its prefix, and known without it",
     "name with a prefix", "names with a prefix"},
    {LOSS_EMPTY, "empty", "it has no value", "empty value", "empty values"},
    {LOSS_REPLACED, "replaced", "a later line gave the field another value", "replaced value",
     "replaced values"},
    {LOSS_BAD_VALUE, "bad-value", "a date, number or word that isn't understood",
     "value that isn't understood", "values that aren't understood"},
    {LOSS_TYPE_IGNORED, "type-ignored", "a type or other parameter without effect", "type ignored",
     "types ignored"},
    {LOSS_UNKNOWN_CHARSET, "unknown-charset", "its charset isn't known; read as any other text",
     "unknown charset", "unknown charsets"},
    {LOSS_INVALID_BYTES, "invalid-bytes", "bytes that are no text in the code page; U+FFFD instead",
     "value with bytes that are no text", "values with bytes that are no text"},
    {LOSS_BAD_ESCAPE, "bad-escape", "an equals sign that begins no escape; the text ends there",
     "bad escape", "bad escapes"},
    {LOSS_NUL, "nul", "a NUL character; the text ends there", "value cut by a NUL",
     "values cut by a NUL"},
    {LOSS_EXTRA_PARTS, "extra-parts", "more parts than there are fields for",
     "value with too many parts", "values with too many parts"},
    {LOSS_TIME_DROPPED, "time-dropped", "its time of day isn't kept", "time of day dropped",
     "times of day dropped"},
    {LOSS_SECONDS_DROPPED, "seconds-dropped", "its seconds aren't kept", "time without its seconds",
     "times without their seconds"},
    {LOSS_OTHER_PARTS, "other-parts", "only the known words of the list are kept",
     "list of which a part is kept", "lists of which a part is kept"},
    {LOSS_BAD_BASE64, "bad-base64", "its base64 is cut, or holds other bytes", "cut base64",
     "cut base64"},
    {LOSS_NO_PICTURE, "no-picture", "no file can be made for it", "picture without a file",
     "pictures without a file"},
    {LOSS_CUT, "cut", "the text ends inside its value", "value cut by the text's end",
     "values cut by the text's end"},
    {LOSS_JOINED, "joined", "a BEGIN in the line of an END begins nothing", "BEGIN behind an END",
     "BEGINs behind an END"},
    {LOSS_RETURN, "return", "a carriage return that ends no line; what follows it is joined on",
     "line with a carriage return inside", "lines with a carriage return inside"},
    {LOSS_BEHIND_END, "behind-end", "it stands behind the END of its record", "line behind an END",
     "lines behind an END"},
    {LOSS_NESTED, "nested", "a record begins inside another one", "record inside another one",
     "records inside other ones"},
};

// The rows stand by the numbers of their bits.
static_assert([] {
  for (std::size_t i = 0; i < std::size(kLosses); ++i)
    if (kLosses[i].code != 1U << i) return false;
  return true;
}());

// The row of the first of some losses; there must be one.
constexpr const LossRow& FirstOf(LossMask losses) {
  return kLosses[static_cast<std::size_t>(std::countr_zero(losses))];
}

}  // namespace pim
