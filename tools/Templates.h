// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim::app {

// Puts a text into the place "{name}" of another one. Throws std::logic_error where there is none,
// so that nothing is made and then left out.
void FillPlace(std::string& text, std::string_view name, std::string_view by);

// The hand-written part of each file, with its places filled in.
std::string ManualPage(std::string text);
std::string BashCompletion(std::string text);
std::string ZshCompletion(std::string text);
std::string FishCompletion(std::string text);

}  // namespace pim::app
