// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string_view>

#include "formats/prepare/PrepareSteps.h"
#include "formats/vcard4/GroupBook.h"

namespace pim {

// Gives a text piece by piece, all of it at each call.
using ReadPieces = std::function<void(const std::function<void(std::string_view piece)>& take)>;

// The groups that cards of the text tell, as its preparing in these steps meets them. Reads it once
// where nothing looks like a group's card, else three times.
GroupBook GroupsOfText(const ReadPieces& read, PrepareStepMask steps);

}  // namespace pim
