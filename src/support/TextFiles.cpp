// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/TextFiles.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace pim {

void ReadTextFile(InputFile& file, ByteOrderMark mark, ByteBuffer& text) {
  const auto length = static_cast<std::size_t>(file.Length());
  std::array<char, kUtf8Mark.size()> head{};
  const std::size_t headLength = file.Read(head.data(), std::min(head.size(), length));
  const bool skip = mark == ByteOrderMark::Skipped && length > head.size() &&
                    NarrowStringView(head.data(), headLength) == kUtf8Mark;
  const std::size_t kept = skip ? 0 : headLength;
  text.AssignUninitialised(length - (skip ? headLength : 0));
  if (text.length() == 0) return;
  std::memcpy(text.data(), head.data(), kept);
  const std::size_t wanted = text.length() - kept;
  const std::size_t read = file.Read(text.data() + kept, wanted);
  std::fill_n(text.data() + kept + read, wanted - read, '\0');  // the file has shrunk meanwhile
}

bool ReadTextFile(WideStringView path, ByteOrderMark mark, ByteBuffer& text) {
  InputFile file(NativePath(path));
  if (!file.IsOpen()) return false;
  ReadTextFile(file, mark, text);
  return true;
}

}  // namespace pim
