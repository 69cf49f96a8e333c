#pragma once

#include <string>
#include <string_view>

namespace pim {

// Replaces `wide` by `bytes`, with U+FFFD for each maximal part of an invalid sequence. `wide`
// keeps its memory.
void Utf8ToWide(std::string_view bytes, std::u16string& wide);

}  // namespace pim
