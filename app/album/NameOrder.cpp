// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/NameOrder.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <iterator>

#include "platform/Utf16.h"

namespace pim::app {
namespace {

enum class Script : std::uint8_t { Other, ChineseOrKana, Hangul };

// Those of the scripts in which the family name stands first.
constexpr struct {
  char32_t first;
  char32_t last;
  Script script;
} kScripts[] = {
    {0x1100, 0x11FF, Script::Hangul},         // jamo
    {0x2E80, 0x2FDF, Script::ChineseOrKana},  // radicals
    {0x3005, 0x3007, Script::ChineseOrKana},  // marks of repetition, zero
    {0x3040, 0x30FF, Script::ChineseOrKana},  // hiragana, katakana
    {0x3130, 0x318F, Script::Hangul},         // jamo that stand alone
    {0x31F0, 0x31FF, Script::ChineseOrKana},  // small katakana
    {0x3400, 0x4DBF, Script::ChineseOrKana},  // extension A
    {0x4E00, 0x9FFF, Script::ChineseOrKana},
    {0xA960, 0xA97F, Script::Hangul},  // jamo
    {0xAC00, 0xD7FF, Script::Hangul},
    {0xF900, 0xFAFF, Script::ChineseOrKana},    // compatibility
    {0xFF66, 0xFF9F, Script::ChineseOrKana},    // half width
    {0xFFA0, 0xFFDC, Script::Hangul},           // half width
    {0x1B000, 0x1B16F, Script::ChineseOrKana},  // old kana
    {0x20000, 0x3FFFF, Script::ChineseOrKana},  // further extensions
};

Script ScriptOf(WideStringView text) {
  if (text.empty()) return Script::Other;
  const char32_t character = IsPairAt(text, 0) ? JoinPair(text[0], text[1]) : text[0];
  const auto* const row = std::ranges::find_if(kScripts, [character](const auto& range) {
    return character >= range.first && character <= range.last;
  });
  return row == std::end(kScripts) ? Script::Other : row->script;
}

WideString InOrder(std::initializer_list<WideStringView> words) {
  WideString joined;
  for (const WideStringView word : words)
    if (!word.empty()) joined.append(joined.empty() ? u"" : u" ").append(word);
  return joined;
}

}  // namespace

WideString AlbumName(const CContact& contact) {
  const CName& name = contact.name;
  if (name.IsEmpty()) return contact.formatted_name.str();
  if (ScriptOf(name.family_name) == Script::Other) {
    return InOrder({name.prefix_name, name.given_name, name.additional_name, name.family_name,
                    name.suffix_name});
  }
  return InOrder(
      {name.prefix_name, ShortAlbumName(contact), name.additional_name, name.suffix_name});
}

WideString ShortAlbumName(const CContact& contact) {
  const CName& name = contact.name;
  const Script script = ScriptOf(name.family_name);
  if (script == Script::Other) return InOrder({name.given_name, name.family_name});
  const bool isOneWord = script == Script::Hangul && ScriptOf(name.given_name) == Script::Hangul;
  return isOneWord ? name.family_name.str().append(name.given_name.view())
                   : InOrder({name.family_name, name.given_name});
}

WideString PhoneticAlbumName(const CContact& contact) {
  const CName& name = contact.phonetic;
  return InOrder({name.family_name, name.given_name, name.additional_name});
}

WideString SortName(const CContact& contact) {
  WideString sort = PhoneticAlbumName(contact);
  if (sort.empty()) sort = InOrder({contact.name.family_name, contact.name.given_name});
  return sort.empty() ? AlbumName(contact) : sort;
}

}  // namespace pim::app
