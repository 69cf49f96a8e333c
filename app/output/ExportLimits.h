// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "app/output/RecordDiff.h"
#include "pim/stream/TextHead.h"

namespace pim::app {

// What the text form can't carry, and so doesn't come back from an export. `check` gives these as
// reasons, and docs/mapping.md lists them.

// What the two values of such a field look like.
enum class LimitSign : std::uint8_t {
  Any,
  Gone,        // an entry of a list isn't there any more
  Null,        // a date isn't
  WasEmpty,    // a text wasn't there before
  Invalid,     // a date came back as one that doesn't exist
  WasInvalid,  // a date that doesn't exist
  Break,       // nothing but blanks and line breaks differ
  CutAtBreak,  // a text ends at its first line break
  CrLf,        // nothing but the CR of its CR LFs is gone
  Blanks,      // nothing but blanks differ
  Nul,         // a NUL character in a text
  Question,    // a question mark came into a text
  Seconds,     // nothing but the seconds differ
};

struct ExportLimit {
  std::string_view field;  // without the numbers of entries, and what is part of it; empty for all
  std::string_view text;
  TextForm form;
  LimitSign sign;
};

// The first row that fits a difference is its reason.
std::span<const ExportLimit> ExportLimits();

// The reason of a difference; empty for one that isn't known.
std::string_view ReasonOf(TextForm form, const Difference& difference);

}  // namespace pim::app
