// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim::app {

// The UTF-8 text without regard to case and accents, so that texts which people take for the same
// word are equal: "Müller" and "MULLER", but also "ﬁ" and "fi" in two Unicode forms.
std::string Folded(std::string_view text);

}  // namespace pim::app
