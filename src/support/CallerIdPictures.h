#pragma once

#include <string>

#include "pim/support/Strings.h"

namespace pim {

// Files of the caller-ID folder, by their names alone.

// False when the file can't be created; throws FileError when writing fails behind that.
[[nodiscard]] bool WriteCallerIdPicture(WideStringView name, NarrowStringView bytes);
// The whole picture, or nothing when it can't be read. A link could lead out of the folder and is
// not followed.
NarrowString ReadCallerIdPicture(WideStringView name);

// Whether there is one that can be read, with something in it.
bool HasCallerIdPicture(WideStringView name);

// The whole picture by the operating system's own path.
NarrowString ReadPictureFile(const std::string& path);

}  // namespace pim
