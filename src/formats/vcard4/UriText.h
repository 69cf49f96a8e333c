// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "formats/vcard4/CardLines.h"
#include "pim/support/Strings.h"

namespace pim {

bool HasLoneSurrogate(WideStringView text);

// Replaces `part` by the text as what stands behind the scheme of a URI: what has a meaning there,
// or may not stand there, becomes %XX of its UTF-8.
TextLosses MakeUriPart(WideStringView text, NarrowString& part);

// The bytes behind the %XX of `part`; a percent sign without two digits stays.
NarrowString ReadUriPart(NarrowStringView part);

// The media of a picture's file: by its extension, or, where that is none of those known, by its
// bytes.
const MediaRow& MediaOf(WideStringView fileName, NarrowStringView bytes);

}  // namespace pim
