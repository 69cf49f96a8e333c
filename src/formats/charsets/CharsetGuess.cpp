// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/charsets/CharsetGuess.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "pim/platform/Encoding.h"

namespace pim {
namespace {

enum class Script : std::uint8_t {
  None,  // digits, blanks and the punctuation of ASCII
  Ascii,
  Latin,
  Cyrillic,
  Kana,
  HalfKana,
  Hanzi,
  Hangul,
  Sign,     // what few people write
  Garbage,  // control characters, private use
};

struct ScriptRow {
  char16_t first;
  char16_t last;
  Script script;
  bool isLarge;  // letters of the upper case
};

constexpr ScriptRow kScripts[] = {
    {0x00, 0x08, Script::Garbage, false},     {0x09, 0x0D, Script::None, false},
    {0x0E, 0x1F, Script::Garbage, false},     {' ', '@', Script::None, false},
    {'A', 'Z', Script::Ascii, true},          {'[', '`', Script::None, false},
    {'a', 'z', Script::Ascii, false},         {'{', '~', Script::None, false},
    {0x7F, 0x9F, Script::Garbage, false},     {0xA0, 0xA0, Script::None, false},
    {0xA1, 0xBF, Script::Sign, false},        {0xC0, 0xD6, Script::Latin, true},
    {0xD7, 0xD7, Script::Sign, false},        {0xD8, 0xDE, Script::Latin, true},
    {0xDF, 0xF6, Script::Latin, false},       {0xF7, 0xF7, Script::Sign, false},
    {0xF8, 0xFF, Script::Latin, false},       {0x100, 0x24F, Script::Latin, false},
    {0x250, 0x3FF, Script::Sign, false},      {0x400, 0x42F, Script::Cyrillic, true},
    {0x430, 0x45F, Script::Cyrillic, false},  {0x460, 0x200F, Script::Sign, false},
    {0x2010, 0x2026, Script::None, false},    {0x2027, 0x2FFF, Script::Sign, false},
    {0x3000, 0x3002, Script::None, false},    {0x3003, 0x3040, Script::Sign, false},
    {0x3041, 0x30FF, Script::Kana, false},    {0x3100, 0x33FF, Script::Sign, false},
    {0x3400, 0x9FFF, Script::Hanzi, false},   {0xAC00, 0xD7A3, Script::Hangul, false},
    {0xE000, 0xF8FF, Script::Garbage, false}, {0xFF01, 0xFF0F, Script::None, false},
    {0xFF10, 0xFF5A, Script::Sign, false},    {0xFF66, 0xFF9F, Script::HalfKana, false},
};

const ScriptRow& RowOfUnit(char16_t unit) {
  static constexpr ScriptRow kOther = {0, 0, Script::Sign, false};
  const auto* const next =
      std::upper_bound(std::begin(kScripts), std::end(kScripts), unit,
                       [](char16_t value, const ScriptRow& row) { return value < row.first; });
  return next == std::begin(kScripts) || unit > std::prev(next)->last ? kOther : *std::prev(next);
}

// Letters that stand often in each language: what isn't one of them is likely another charset's.
constexpr std::u16string_view kCommon =
    u"äöüßéèêàâçñóíáúåøæãõôœÄÖÜÉÅØÁÓ"
    u"ąćęłńśźżáčďéěíňóřšťúůýžőűŁŚŻČŘŠŽ"
    u"оеаинтсрвлкмдпуяыьгзбчйхжшюцщэф"
    u"的一是不了人我在有他这中大来上国个到说们为子和你地出道也时年得就那要下以生会自着去之过家学对"
    u"可"
    u"李王张張刘劉陈陳杨楊赵趙黄黃周吴吳徐孙孫胡朱高林何郭马馬罗羅梁宋郑鄭谢謝韩韓唐冯馮于董萧蕭程"
    u"曹"
    u"北京上海广廣东東州电電话話手机機公司部长長先生小明文"
    u"日本田中山川木村井佐藤鈴高橋渡辺伊加野原池松石崎小大";

bool IsCommon(char16_t unit) { return kCommon.find(unit) != std::u16string_view::npos; }

// What a script weighs by itself.
std::int64_t WeightOf(Script script, bool isCommon) {
  switch (script) {
    case Script::None:
    case Script::Ascii:
      return 0;
    case Script::Latin:
    case Script::Cyrillic:
      return isCommon ? 3 : 1;
    case Script::Kana:
    case Script::Hangul:
      return 4;
    case Script::Hanzi:
      return isCommon ? 4 : 1;
    case Script::HalfKana:
      return -2;
    case Script::Sign:
      return -3;
    case Script::Garbage:
      return -10;
  }
  return 0;
}

// What two neighbours weigh.
std::int64_t WeightOfPair(const ScriptRow& one, const ScriptRow& next) {
  const bool areLetters = one.script != Script::None && next.script != Script::None;
  if (!areLetters) return 0;
  const auto isLatin = [](Script script) {
    return script == Script::Ascii || script == Script::Latin;
  };
  const auto isEastern = [](Script script) {
    return script == Script::Kana || script == Script::Hanzi;
  };
  const bool areTogether = one.script == next.script ||
                           (isLatin(one.script) && isLatin(next.script)) ||
                           (isEastern(one.script) && isEastern(next.script));
  if (!areTogether) return -3;
  if (one.script == Script::Ascii && next.script == Script::Ascii) return 0;
  // "шНПИ": a large letter behind a small one. In Latin letters beyond Latin-1 cases alternate.
  const bool isTurned = !one.isLarge && next.isLarge &&
                        (one.script == Script::Cyrillic || one.script == Script::Latin ||
                         one.script == Script::Ascii);
  return isTurned ? -3 : 1;
}

std::int64_t WeightOfText(std::u16string_view text) {
  std::int64_t weight = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const ScriptRow& row = RowOfUnit(text[i]);
    weight += WeightOf(row.script, row.script > Script::Ascii && IsCommon(text[i]));
    if (i > 0) weight += WeightOfPair(RowOfUnit(text[i - 1]), row);
  }
  return weight;
}

std::optional<std::string> Read(Iconv& converter, std::string_view bytes) {
  constexpr std::size_t kLongest = 4;  // bytes in UTF-8 for one of any of the charsets
  std::string text(bytes.size() * kLongest + kLongest, '\0');
  converter.Reset();
  const char* from = bytes.data();
  std::size_t fromSize = bytes.size();
  char* to = text.data();
  std::size_t room = text.size();
  if (converter.Convert(from, fromSize, to, room) != Iconv::Outcome::Done ||
      converter.Finish(to, room) != Iconv::Outcome::Done)
    return std::nullopt;
  text.resize(text.size() - room);
  return text;
}

}  // namespace

CharsetGuess::CharsetGuess() {
  converters_.reserve(kLikelyCount);
  for (const char* name : kLikelyCharsets) converters_.emplace_back("UTF-8", name);
}

CharsetGuess::Readings CharsetGuess::Take(std::string_view bytes, bool counts) {
  Readings readings;
  for (std::size_t i = 0; i < kLikelyCount; ++i) {
    if (converters_[i]) readings[i] = Read(converters_[i], bytes);
    if (!counts) continue;
    if (readings[i]) {
      weights_[i] += WeightOfText(WideFromUtf8(*readings[i]));
    } else {
      ++failed_[i];
    }
  }
  return readings;
}

std::vector<std::size_t> CharsetGuess::Ranks() const {
  std::vector<std::size_t> ranks(kLikelyCount);
  std::iota(ranks.begin(), ranks.end(), std::size_t{0});
  std::ranges::stable_sort(ranks, [this](std::size_t one, std::size_t other) {
    return std::pair(failed_[one], -weights_[one]) < std::pair(failed_[other], -weights_[other]);
  });
  return ranks;
}

}  // namespace pim
