// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/input/ByteSource.h"
#include "support/TextFiles.h"

namespace pim::app {

// The files that a PATH stands for: itself, or what a folder holds, subfolders included, with one
// of the extensions in any letter case, in order of name. Throws Failure for a folder that can't be
// read or has none.
std::vector<std::string> FilesOf(const std::string& path,
                                 const std::vector<std::string_view>& extensions);

// Whether two paths lead to one file, whether it is there or not.
bool AreOneFile(const std::string& one, const std::string& other);

// Replaces `text` by the whole of a file, or of standard input for "-". A FIFO that nobody begins
// to write to within a second is empty. Throws Failure.
void ReadInput(const std::string& path, ByteOrderMark mark, ByteBuffer& text);

}  // namespace pim::app
