// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/support/Strings.h"

namespace pim {

// A contact's picture is a file of the caller-ID folder; its record holds the file's name alone.

// Writes the bytes into a new file of that folder and sets `photo` to its name, which is made up so
// that no two pictures meet under one. `photo` becomes empty when the file can't be created. Throws
// FileError when writing fails behind that.
void SavePhoto(const char* bytes, std::int32_t length, std::int32_t mediaType, WideString& photo);

// Appends the picture as a whole PHOTO property, or nothing when `photo` is empty or its file is
// missing, empty or can't be read.
void AppendPhoto(NarrowString& text, WideStringView photo);

// The parameters of a PHOTO property for a file of that name: its media follows from what stands
// behind the last dot.
NarrowString PhotoParameters(WideStringView name);

}  // namespace pim
