// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

#include "pim/Export.h"
#include "pim/stream/TextHead.h"
#include "pim/support/Loss.h"
#include "pim/support/Strings.h"

namespace pim {

// The account of a text: what its reading made of each physical line. Reading gives the same
// records with and without it.
//
// What holds for it: without the lines of a dropped entry the text gives the same records. Without
// those of a kept or changed one it gives others, or the entry's `same` is true.
//
// Entries come in the thread that reads, and belong to its reading. The functions here may be
// called by any thread and allocate nothing; TakeEntry may throw, which ends the reading.

// What became of the lines of an entry.
enum class Verdict : std::uint8_t {
  Frame,     // BEGIN, END, VERSION and blank lines: nothing to keep
  Kept,      // the record holds all that it says
  Changed,   // the record holds a part of it, or something else than it says
  Dropped,   // the records are as they would be without it
  Rejected,  // the text is rejected in it
  Unread,    // all that stands behind that
};
// The name for programs: "frame" and so on, good for ever.
PIM_EXPORT NarrowStringView NameOf(Verdict verdict);

// Why the tokeniser rejects a text.
enum class TextFault : std::uint8_t {
  None,              // it isn't rejected
  NoParameter,       // a colon behind the semicolon that promised a parameter
  NoParameterValue,  // a colon or semicolon behind the equals sign that promised a value
  NoBase64,          // a byte inside a value that belongs to no base64
  NoMemory,          // the memory for a line or parameter can't be had
};
// The text for people, in English: "a byte that belongs to no base64". Empty for None; good for
// ever.
PIM_EXPORT NarrowStringView TextOf(TextFault fault);

// One property with its folds, soft breaks and continued header, or one line without a colon, or a
// run of blank lines. Entries stand in order, touch and cover the text.
struct AccountEntry {
  std::int64_t first = 0;    // physical lines, from 1; each line feed ends one
  std::int64_t last = 0;     // the same as the first for most
  std::int64_t record = -1;  // the index of the record begun last, its own for a BEGIN; -1 ahead
  NarrowStringView name;     // of the property, as it stands without its blanks; else empty
  Verdict verdict = Verdict::Frame;  // what became of all its lines together
  bool same = false;       // kept or changed, but the record would hold the same without it
  LossMask why = 0;        // Loss bits
  std::uint32_t into = 0;  // a bit for each field that holds it, by its number in RecordFields()
  TextFault fault = TextFault::None;  // of a rejected one
  NarrowStringView ignored = {};      // the first parameter without effect: "TYPE=CELL,VOICE"
  // What the record is called, as in TextNotice, from its first entry on that isn't kept; good for
  // the call.
  WideStringView title = {};
};

// Takes one entry, whose name is good for the call. An entry comes when its record is complete,
// since a later line may replace what it says.
using TakeEntry = std::function<void(const AccountEntry& entry)>;

// How many physical lines of one or more texts had each verdict.
struct AccountTotals {
  std::int64_t lines = 0;    // the sum of the others
  std::int64_t frame = 0;    // Verdict::Frame
  std::int64_t kept = 0;     // Verdict::Kept
  std::int64_t changed = 0;  // Verdict::Changed
  std::int64_t dropped = 0;  // Verdict::Dropped
  std::int64_t unread = 0;   // Verdict::Unread and Verdict::Rejected

  // Adds the lines of an entry.
  PIM_EXPORT void Add(const AccountEntry& entry);
  // Adds those of other texts.
  PIM_EXPORT AccountTotals& operator+=(const AccountTotals& other);
};

}  // namespace pim
