// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "pim/support/Strings.h"

namespace pim {

// Files of the caller-ID folder, by their names alone.

// False where the system and the host name no application-data folder.
bool HasCallerIdFolder();

// False when the file can't be created; throws FileError when writing fails behind that.
[[nodiscard]] bool WriteCallerIdPicture(WideStringView name, NarrowStringView bytes);
// The whole picture, or nothing when it can't be read. A link could lead out of the folder and is
// not followed.
NarrowString ReadCallerIdPicture(WideStringView name);

// Makes the picture, and the folder where it is missing. It is there whole or not at all; what a
// program that ended in between leaves is a file whose name begins and looks like a picture's. Not
// waited for until it is on the medium. Throws FileError.
void MakeCallerIdPicture(WideStringView name, NarrowStringView bytes);

// False when there was none. Throws FileError when it can't be removed.
bool RemoveCallerIdPicture(WideStringView name);

// Whether there is one that can be read, with something in it.
bool HasCallerIdPicture(WideStringView name);

// The whole picture by the operating system's own path.
NarrowString ReadPictureFile(const std::string& path);

}  // namespace pim
