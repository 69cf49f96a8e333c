// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "pim/stream/TextWatch.h"
#include "pim/support/Loss.h"

namespace pim {

// What came of a value besides what the record holds.
struct ValueOutcome {
  LossMask losses = 0;
  std::optional<TextEvent> event = {};  // a date or rule that isn't understood
};

constexpr ValueOutcome OutcomeOfDate(bool isUnderstood) {
  if (isUnderstood) return {};
  return {LOSS_BAD_VALUE, TextEvent::DateNotUnderstood};
}

}  // namespace pim
