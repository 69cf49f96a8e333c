// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "formats/FormatLoss.h"
#include "pim/support/Strings.h"

namespace pim {

// A record's text in UTF-8 as RFC 5545 allows it: a carriage return is a line feed, other control
// characters than that and tabs are U+FFFD, as half surrogate pairs are. A text of blanks alone is
// empty: readers take a property with such a value for none.
struct ItemText {
  explicit ItemText(WideStringView wide);

  std::string text;
  std::optional<FormatReason> loss;
};

}  // namespace pim
