// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace pim::app {

// The choice that was most likely meant by a mistyped word: the one with the fewest letters added,
// left out, exchanged or swapped with their neighbour. Empty when none is near.
std::string_view Nearest(std::string_view word, std::span<const std::string_view> choices);

// "; did you mean 'list'?", or nothing when none is near.
std::string Suggestion(std::string_view word, std::span<const std::string_view> choices);

}  // namespace pim::app
