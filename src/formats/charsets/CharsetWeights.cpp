// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/charsets/CharsetWeights.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "pim/support/Strings.h"

namespace pim {
namespace {

// ---- Charsets of two bytes a character: where in their tables it stands tells how common it is.

struct PairRow {
  std::uint8_t firstLead;
  std::uint8_t lastLead;
  std::uint8_t firstSecond;
  std::uint8_t lastSecond;
  std::int64_t weight;
};

// The first row that fits counts; what fits none is rare, or no character of names.
constexpr PairRow kShiftJisPairs[] = {
    {0x82, 0x82, 0x9F, 0xF1, 6},  // hiragana
    {0x83, 0x83, 0x40, 0x96, 5},  // katakana
    {0x88, 0x97, 0x40, 0xFC, 4},  // kanji of the first level
    {0x81, 0x82, 0x40, 0xFC, 0},  // punctuation, fullwidth letters
    {0x98, 0x9F, 0x40, 0xFC, 0},  // kanji of the second
    {0xE0, 0xEA, 0x40, 0xFC, 0},
};
constexpr PairRow kEucJpPairs[] = {
    {0xA4, 0xA4, 0xA1, 0xF3, 6}, {0xA5, 0xA5, 0xA1, 0xF6, 5}, {0xB0, 0xCF, 0xA1, 0xFE, 4},
    {0xA1, 0xA3, 0xA1, 0xFE, 0}, {0xD0, 0xF4, 0xA1, 0xFE, 0}, {0x8E, 0x8E, 0xA1, 0xDF, 1},
};
constexpr PairRow kEucKrPairs[] = {
    {0xB0, 0xC8, 0xA1, 0xFE, 6},  // hangul
    {0xA1, 0xA3, 0xA1, 0xFE, 0},
    {0xCA, 0xFD, 0xA1, 0xFE, 0},  // hanja
};
constexpr PairRow kGbPairs[] = {
    {0xB0, 0xD7, 0xA1, 0xFE, 5},  // the first level
    {0xD8, 0xF7, 0xA1, 0xFE, 1},  // the second
    {0xA1, 0xA3, 0xA1, 0xFE, 0},
};
constexpr PairRow kBig5Pairs[] = {
    {0xA4, 0xC6, 0x40, 0xFE, 5},  // the frequent ones
    {0xA1, 0xA3, 0x40, 0xFE, 0},
    {0xC9, 0xF9, 0x40, 0xFE, 0},
};
constexpr std::int64_t kRarePair = -3;

// Characters of names and addresses that stand often, beside those of any text.
constexpr std::u16string_view kHanzi =
    u"的一是不了人我在有他这中大来上国个到说们为子和你地出道也时年得就那要下以生会自着去之过家学对"
    u"可"
    u"李王张張刘劉陈陳杨楊赵趙黄黃周吴吳徐孙孫胡朱高林何郭马馬罗羅梁宋郑鄭谢謝韩韓唐冯馮于董萧蕭程"
    u"曹"
    u"袁邓鄧许許傅沈曾彭吕呂苏蘇卢盧蒋蔣蔡贾賈丁魏薛叶葉余潘杜戴夏钟鐘汪田任姜范方石姚谭譚邹鄒熊金"
    u"陆陸孔白"
    u"伟偉芳娜秀英敏静靜丽麗强強磊军軍洋勇艳豔杰傑娟涛濤明超兰蘭霞平刚剛桂文辉輝建华華红紅玲志小晓"
    u"曉雪梅春"
    u"北京上海广廣东東州深圳天津重庆慶南武汉漢成都西安台湾灣路街号號区區市省县縣镇鎮楼樓室电電话話"
    u"手机機公司部长長先"
    u"日本山川村井佐藤鈴木渡辺伊加野原池松崎斎口橋本前坂清水森阿部和美恵郎一二三男子雄幸太介健樹香";
constexpr std::u16string_view kHangul =
    u"김이박최정강조윤장임한오서신권황안송류전홍고문양손배백허유남심노하곽성차주우구민진지현영수미"
    u"은경희숙순자호준"
    u"철상기재동원용태혜연선아라나윤빈훈석규인대서울시구동로길전화번호회사부산광역도";
constexpr std::int64_t kCommonPair = 3;

template <std::size_t Count>
std::int64_t WeightOfPairs(std::string_view bytes, const PairRow (&rows)[Count],
                           std::u16string_view text, std::u16string_view common, bool hasHalfKana) {
  const auto at = [bytes](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  std::int64_t weight = 0;
  std::size_t kana = 0;  // in one byte each, one behind another
  for (std::size_t i = 0; i < bytes.size();) {
    const bool isKana = hasHalfKana && at(i) >= 0xA1 && at(i) <= 0xDF;
    kana = isKana ? kana + 1 : 0;
    if (isKana) {
      weight += kana > 2 ? 4 : 0;
      ++i;
    } else if (at(i) < 0x80 || i + 1 == bytes.size()) {
      ++i;
    } else {
      const std::uint8_t lead = at(i);
      const std::uint8_t second = at(i + 1);
      const auto* const row = std::ranges::find_if(rows, [lead, second](const PairRow& one) {
        return lead >= one.firstLead && lead <= one.lastLead && second >= one.firstSecond &&
               second <= one.lastSecond;
      });
      weight += row == std::end(rows) ? kRarePair : row->weight;
      i += 2;
    }
  }
  for (const char16_t unit : text)
    if (unit >= 0x3400 && common.find(unit) != std::u16string_view::npos) weight += kCommonPair;
  return weight;
}

// ---- Charsets of one byte a character: by the letters and what stands beside them.

// Letters by how often they stand in texts.
struct Letters {
  std::u16string_view common;
  std::u16string_view usual;
};
// The same letters in both code pages tell nothing, so each has its own besides them.
constexpr Letters kWestern = {u"äöüßéèàáíóúñçêâîôåøæã", u"ùûëïõìòœýÿðþ"};
constexpr Letters kCentral = {u"äöüßéáíóúçąćęłńśźżčďěňřšťůžőűâîăđý", u"ôëľĺŕţşșț"};
constexpr Letters kRussian = {u"оеаинтсрвлкм", u"дпуяыьгзбчйё"};

constexpr bool IsAsciiLetter(char16_t unit) {
  return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}
constexpr bool IsLatinLetter(char16_t unit) {
  return unit >= 0xC0 && unit < 0x250 && unit != 0xD7 && unit != 0xF7;
}
constexpr bool IsCyrillicLetter(char16_t unit) { return unit >= 0x400 && unit < 0x530; }

constexpr bool IsLarge(char16_t unit) {
  if (unit < 0x80) return unit >= 'A' && unit <= 'Z';
  if (unit < 0x100) return unit < 0xDF;
  const bool isOdd = unit % 2 != 0;
  const bool areOddLarge = (unit >= 0x139 && unit <= 0x148) || (unit >= 0x179 && unit <= 0x17E);
  if (unit < 0x250) return isOdd == areOddLarge;
  return unit < 0x430;
}
// Of the letters that stand in the lists above.
constexpr char16_t SmallLetter(char16_t unit) {
  if (!IsLarge(unit)) return unit;
  if (unit < 0x100) return static_cast<char16_t>(unit + 0x20);
  if (unit < 0x250) return static_cast<char16_t>(unit + 1);
  return static_cast<char16_t>(unit < 0x410 ? unit + 0x50 : unit + 0x20);
}

std::int64_t WeightOfLetter(char16_t unit, const Letters& letters) {
  const char16_t letter = SmallLetter(unit);
  if (letters.common.find(letter) != std::u16string_view::npos) return 3;
  return letters.usual.find(letter) != std::u16string_view::npos ? 1 : -1;
}

std::int64_t WeightOfSign(char16_t unit) {
  constexpr std::u16string_view kUsual =
      u"\u00A0\u2013\u2014\u2018\u2019\u201C\u201D\u201E\u2026«»№°§€·";
  if (unit < 0xA0 || (unit >= 0xE000 && unit < 0xF900)) return -10;
  return kUsual.find(unit) != std::u16string_view::npos ? 0 : -4;
}

// A letter that stands between small letters and is large was written in another charset.
std::int64_t WeightOfCase(char16_t before, char16_t unit, bool isBeforeLetter) {
  return isBeforeLetter && IsLarge(unit) && !IsLarge(before) ? -4 : 0;
}

// Accented letters stand among those of ASCII; of two side by side one is mostly another charset's.
std::int64_t WeightOfLatin(std::u16string_view text, const Letters& letters) {
  std::int64_t weight = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit < 0x80) continue;
    if (!IsLatinLetter(unit)) {
      weight += WeightOfSign(unit);
      continue;
    }
    const char16_t before = i == 0 ? u' ' : text[i - 1];
    const char16_t behind = i + 1 == text.size() ? u' ' : text[i + 1];
    weight += WeightOfLetter(unit, letters);
    if (IsLatinLetter(before)) weight -= 2;
    if (!IsAsciiLetter(before) && !IsAsciiLetter(behind)) weight -= 4;
    weight += WeightOfCase(before, unit, IsAsciiLetter(before) || IsLatinLetter(before));
  }
  return weight;
}

std::int64_t WeightOfCyrillic(std::u16string_view text, const Letters& letters) {
  std::int64_t weight = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit < 0x80) continue;
    if (!IsCyrillicLetter(unit)) {
      weight += WeightOfSign(unit);
      continue;
    }
    const char16_t before = i == 0 ? u' ' : text[i - 1];
    const char16_t behind = i + 1 == text.size() ? u' ' : text[i + 1];
    weight += WeightOfLetter(unit, letters);
    if (IsCyrillicLetter(before)) ++weight;
    if (IsAsciiLetter(before) || IsAsciiLetter(behind)) weight -= 4;
    weight += WeightOfCase(before, unit, IsCyrillicLetter(before));
  }
  return weight;
}

}  // namespace

std::int64_t WeightIn(std::size_t charset, std::string_view bytes, std::u16string_view text) {
  switch (charset) {
    case 0:
      return WeightOfLatin(text, kWestern);
    case 1:
      return WeightOfLatin(text, kCentral);
    case 2:
    case 3:
      return WeightOfCyrillic(text, kRussian);
    case 4:
      return WeightOfPairs(bytes, kShiftJisPairs, text, kHanzi, true);
    case 5:
      return WeightOfPairs(bytes, kEucJpPairs, text, kHanzi, false);
    case 6:
      return WeightOfPairs(bytes, kEucKrPairs, text, kHangul, false);
    case 7:
      return WeightOfPairs(bytes, kGbPairs, text, kHanzi, false);
    default:
      return WeightOfPairs(bytes, kBig5Pairs, text, kHanzi, false);
  }
}

}  // namespace pim
