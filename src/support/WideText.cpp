#include "pim/support/WideText.h"

#include <limits>
#include <stdexcept>

namespace pim {

void WideText::Assign(WideStringView text) {
  if (text.size() > std::numeric_limits<std::uint32_t>::max())
    throw std::length_error("text too long for a record");
  if (text.size() <= kInside) {
    char16_t kept[kInside] = {};  // `text` may lie in the block that is about to go
    if (!text.empty()) std::memcpy(kept, text.data(), text.size() * sizeof(char16_t));
    Free();
    std::memcpy(inside_, kept, sizeof inside_);
  } else {
    char16_t* block = new char16_t[text.size()];
    std::memcpy(block, text.data(), text.size() * sizeof(char16_t));
    Free();
    std::memcpy(inside_ + 2, &block, sizeof block);
  }
  size_ = static_cast<std::uint32_t>(text.size());
}

}  // namespace pim
