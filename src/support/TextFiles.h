// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/Strings.h"
#include "platform/Files.h"
#include "support/ByteBuffer.h"
#include "support/ByteOrderMark.h"

namespace pim {

// Replaces `text` by the whole of an open file. A UTF-8 byte order mark is skipped where told,
// unless the file holds nothing else. Throws FileError.
void ReadTextFile(InputFile& file, ByteOrderMark mark, ByteBuffer& text);

// The same by path; false when it can't be opened.
[[nodiscard]] bool ReadTextFile(WideStringView path, ByteOrderMark mark, ByteBuffer& text);

}  // namespace pim
