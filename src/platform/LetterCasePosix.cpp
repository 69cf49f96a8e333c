// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <locale.h>
#include <wctype.h>

#include "platform/LetterCase.h"
#include "platform/Utf16.h"

namespace pim {
namespace {

// Opened by name, since the process's own locale may be "C". It's kept to the end of the process.
locale_t Utf8Locale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
  return locale;
}

constexpr char32_t FoldAscii(char32_t character) {
  return character >= U'A' && character <= U'Z' ? character | 0x20 : character;
}

// Its upper case is the plain I, but it is another letter than i.
constexpr char32_t kDotlessI = 0x131;

// By way of the upper case, since several small letters may share one: both sigmas give the same.
char32_t Fold(char32_t character, locale_t locale) {
  if (character < 0x80 || locale == locale_t{}) return FoldAscii(character);
  if (character == kDotlessI) return character;
  const wint_t upper = towupper_l(static_cast<wint_t>(character), locale);
  return static_cast<char32_t>(towlower_l(upper, locale));
}

}  // namespace

std::u16string FoldLetterCase(std::u16string_view text) {
  const locale_t locale = Utf8Locale();
  std::u16string folded(text);
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!IsPairAt(text, at)) {
      const char32_t character = Fold(text[at], locale);
      if (character < 0x10000) folded[at] = static_cast<char16_t>(character);
    } else {
      const char32_t character = Fold(JoinPair(text[at], text[at + 1]), locale);
      if (character >= 0x10000) {
        folded[at] = HighOf(character);
        folded[at + 1] = LowOf(character);
      }
      ++at;
    }
  }
  return folded;
}

}  // namespace pim
