// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/Contact.h"
#include "pim/support/Strings.h"

namespace pim::app {

// How a contact is called in an album, with prefix and suffix: family name first where that is
// written in Chinese characters, kana or hangul, as its owner says it; else its formatted name.
WideString AlbumName(const CContact& contact);

// The given and the family name of it, in the same order.
WideString ShortAlbumName(const CContact& contact);

// The phonetic name, family name first.
WideString PhoneticAlbumName(const CContact& contact);

// By what it is sorted: by the phonetic name, else by family and given name, else by the other one.
WideString SortName(const CContact& contact);

}  // namespace pim::app
