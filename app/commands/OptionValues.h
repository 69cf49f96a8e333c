// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/commands/CommandTable.h"
#include "app/commands/Options.h"

namespace pim::app {

struct GivenOption {
  Option id;
  std::string value;
};

// Puts an option of the command line into `options`, or into force where it is the library's.
// Throws WrongUsage for a value that it can't have.
void SetOption(Options& options, const GivenOption& given);

// What --to names, which must be there. Throws WrongUsage for a form that the command doesn't
// write.
TargetForm TargetFormOf(const Options& options);

// A number of 1 or more that fits 32 bits and is all of the text, as keys and imports have it.
std::optional<std::int32_t> PositiveNumber(const std::string& text);

}  // namespace pim::app
