// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// How a preparer passes over lines that need nothing, as most do.
#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>

#include "formats/prepare/Preparer.h"
#include "formats/prepare/ValueBytes.h"

namespace pim {
namespace {

// Letters, digits and hyphens: what names are made of, but for dots, which end prefixes.
constexpr std::array<bool, 256> kNameBytes = [] {
  std::array<bool, 256> bytes{};
  for (int c = 0; c < 128; ++c) {
    const char byte = static_cast<char>(c);
    bytes[static_cast<std::size_t>(c)] = IsLetter(byte) || IsDigit(byte) || byte == '-';
  }
  return bytes;
}();

// BreaksSoftly, of a line that ends at its line feed: mostly its last bytes tell. An equals sign of
// the last two leaves the line open, unless it is a digit of another one ahead of it.
bool EndsSoftly(const char* line, const char* feed) {
  constexpr std::size_t kEnd = 4;
  const std::string_view text = WithoutLineEnd({line, feed});
  if (text.size() < kEnd) return BreaksSoftly(text);
  const std::string_view end = text.substr(text.size() - kEnd);
  if (end.find('\r') != std::string_view::npos) return BreaksSoftly(text);
  if (end[2] != '=' && end[3] != '=') return false;
  const std::size_t first = end[2] == '=' ? 2 : 3;
  return (end[first - 1] != '=' && end[first - 2] != '=') || BreaksSoftly(text);
}

// "VERSION:2.1", as all cards have it.
bool IsOldVersion(std::string_view line) {
  constexpr std::string_view kVersion = "VERSION:2.1";
  return line.starts_with(kVersion) && WithoutLineEnd(line).size() == kVersion.size();
}

}  // namespace

// Names by their first letter and their length, in any letter case: few others have the same.
class Preparer::NameShapes {
 public:
  constexpr NameShapes(std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) sizes_[name.front() & 31] |= 1U << name.size();
  }
  bool Has(const char* begin, const char* end) const {
    return (sizes_[*begin & 31] >> std::min<std::ptrdiff_t>(end - begin, 31) & 1) != 0;
  }

 private:
  std::array<std::uint32_t, 32> sizes_{};
};

// Passes over lines that no step has to do with, as most are: as TakeLine does, but for what that
// would find out in vain.
void Preparer::PassPlainLines() {
  const NameShapes* const special = SpecialNames();
  if (special == nullptr || !joints_.IsAtEnd()) return;
  const char* const end = text_.get() + size_;
  const char* line = text_.get() + at_;
  const char* from = text_.get() + std::max(at_, searched_);
  LineJoints::Tail tail = joints_.tail();
  for (;;) {
    const auto* const feed =
        static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
    if (feed == nullptr) break;
    if (*line == ' ' || *line == '\t') {
      if (tail.isQuotedPrintable || feed - line < 2) break;
    } else if (tail.isSoftBreak) {
      if (feed - line < 2) break;
      tail.isSoftBreak = EndsSoftly(line, feed);
    } else {
      const char* name = line;
      while (kNameBytes[static_cast<unsigned char>(*name)]) ++name;
      if (name == line || (special->Has(line, name) && !IsOldVersion({line, feed}))) break;
      if (*name == ':') {
        tail = {};
      } else if (*name != ';' || !PassesByParameters(name, feed, tail)) {
        break;
      }
    }
    line = from = feed + 1;
    ++line_;
  }
  if (line == text_.get() + at_) return;
  joints_.Pass(tail);
  isBehindAgent_ = false;
  isFeedAlone_ = !std::string_view(text_.get() + at_, line).ends_with("\r\n");
  at_ = static_cast<std::size_t>(line - text_.get());
}

// Whether the parameters from the semicolon on ask for no more than to know the value's end.
bool Preparer::PassesByParameters(const char* params, const char* feed, LineJoints::Tail& tail) {
  const auto* const colon =
      static_cast<const char*>(std::memchr(params, ':', static_cast<std::size_t>(feed - params)));
  if (colon == nullptr) return false;
  const std::uint8_t traits = parameters_.Of({params, colon});
  if ((traits & ~ParameterCache::Coded) != 0) return false;
  tail.isQuotedPrintable = (traits & ParameterCache::Coded) != 0;
  tail.isSoftBreak = tail.isQuotedPrintable && EndsSoftly(colon + 1, feed);
  return true;
}

// Names that TakeProperty looks at where the text is; null for all.
const Preparer::NameShapes* Preparer::SpecialNames() const {
  static constexpr NameShapes kFrames({"BEGIN", "END"});
  static constexpr NameShapes kCards({"BEGIN", "END", "VERSION", "AGENT"});
  static constexpr NameShapes kItems({"BEGIN", "END", "DALARM", "AALARM"});
  switch (block_.kind) {
    case BlockKind::Card:
      return &kCards;
    case BlockKind::Component:
      return &kFrames;
    case BlockKind::Item:
      if (frame_.down) return &kFrames;
      return frame_.zone.isKnown() ? nullptr : &kItems;
    case BlockKind::None:
      break;
  }
  return isFrameOpen_ ? nullptr : &kFrames;
}

}  // namespace pim
