// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "pim/stream/TextHead.h"
#include "pim/support/Strings.h"

namespace pim::app {

// What a text looks like in which no record of the form begins, as the end of a sentence:
// "it looks like a JPEG picture". Empty when there is nothing to say.
std::string LooksLike(NarrowStringView text, TextForm wanted);

// As what a text is read: as the form that was given, else as what begins first in it, else as
// contacts.
TextForm FormToRead(const std::optional<TextForm>& given, NarrowStringView text);

}  // namespace pim::app
