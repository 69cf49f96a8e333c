// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "support/TextCodec.h"

namespace pim {
namespace {

WideString Decoded(NarrowStringView bytes, std::int32_t charset, std::int32_t encoding) {
  WideString text = u"old";
  DecodeText(bytes.data(), static_cast<std::int32_t>(bytes.size()), charset, encoding, text);
  return text;
}

NarrowString Encoded(WideStringView text) {
  NarrowString encoded = "old";
  EncodeText(text, encoded);
  return encoded;
}

TEST(TextCodec, Decodes) {
  constexpr auto kQp = ENCODING_QUOTED_PRINTABLE;
  const struct {
    NarrowString bytes;
    std::int32_t charset;
    std::int32_t encoding;
    WideString text;
  } rows[] = {
      {"", CHARSET_SHIFT_JIS, kQp, u""},
      {"Anna Lee", CHARSET_NONE, ENCODING_NONE, u"Anna Lee"},
      {"=C3=BC=c3=bc", CHARSET_UTF8, kQp, u"\u00FC\u00FC"},
      {"=C3=BC", CHARSET_UTF8, ENCODING_BASE64, u"=C3=BC"},
      {"\xC3\xBC", 7, 9, u"\u00FC"},
      {"=88=C0=93=A1", CHARSET_SHIFT_JIS, kQp, u"\u5B89\u85E4"},
      {"\xB1\xDD\x5C~", CHARSET_SHIFT_JIS, ENCODING_NONE, u"\uFF71\uFF9D\\~"},
      {"ab=00cd", CHARSET_UTF8, kQp, u"ab"},
      {NarrowString("ab\0cd", 5), CHARSET_NONE, ENCODING_NONE, u"ab"},
      {"=4a=4A=1Z-", CHARSET_NONE, kQp, u"JJ\x01-"},
      {"a=ZZb", CHARSET_NONE, kQp, u"a"},  // a zero byte ends the field
      {"a=-b", CHARSET_NONE, kQp, u"a"},   // a bad equals sign does too
      {"a=", CHARSET_NONE, kQp, u"a"},
      {"a=4", CHARSET_NONE, kQp, u"a"},  // a pair cut short gives no byte
      {"a=\r\nb\rc\nd", CHARSET_NONE, kQp, u"abcd"},
      {"a=\nb", CHARSET_NONE, kQp, u"a"},
      {"=4\r\nx", CHARSET_NONE, kQp, u"\x04x"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.bytes);
    EXPECT_EQ(Decoded(row.bytes, row.charset, row.encoding), row.text);
  }
}

TEST(TextCodec, Encodes) {
  const NarrowString x63(63, 'x');
  const NarrowString x67(67, 'x');
  const NarrowString x68(68, 'x');
  const struct {
    WideString text;
    NarrowString encoded;
  } rows[] = {
      {u"", ""},
      {u"Anna\tLee ", "Anna\tLee "},
      {u"a=b", "a=3Db"},
      {u"\u00FC\r\n\x7F", "=C3=BC=0D=0A=7F"},
      {u"\xD800", "=EF=BF=BD"},
      {WideString(68, u'x'), x68},
      {WideString(70, u'x'), x68 + "=\r\nxx"},
      {WideString(63, u'x') + u"  y", x63 + " =20y"},
      {WideString(64, u'x') + u"\t", NarrowString(64, 'x') + "=09"},
      {WideString(67, u'x') + u"\u00FCy", x67 + "=C3=\r\n=BCy"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.encoded);
    EXPECT_EQ(Encoded(row.text), row.encoded);
    EXPECT_EQ(NeedsTextParameters(row.encoded), row.encoded.find('=') != NarrowString::npos);
    EXPECT_LE(row.encoded.size(),
              QuotedPrintableEncodedSize(static_cast<std::int32_t>(3 * row.text.size())));
  }
  EXPECT_EQ(QuotedPrintableEncodedSize(68), 3 * 68 + 9 + 3);
  EXPECT_THROW(QuotedPrintableEncodedSize(std::numeric_limits<std::int32_t>::max()), SizeOverflow);
}

TEST(TextCodec, EscapesAndSplits) {
  const struct {
    NarrowString plain;
    NarrowString escaped;
  } rows[] = {{"", ""}, {"a;b\\c", "a\\;b\\\\c"}, {";;", "\\;\\;"}, {"plain", "plain"}};
  for (const auto& row : rows) {
    NarrowString value = row.plain;
    EscapeValue(value);
    EXPECT_EQ(value, row.escaped);
    UnescapeValue(value);
    EXPECT_EQ(value, row.plain);
  }
  NarrowString odd = "\\n;\\:\\";
  UnescapeValue(odd);
  EXPECT_EQ(odd, "\\n;\\:\\");
  constexpr NarrowStringView kText = ";a\\;b\\\\;c\\\\\\;";
  NarrowString separators;
  for (std::size_t i = 0; i < kText.size(); ++i)
    separators += IsFieldSeparator(kText, i) ? '|' : '.';
  EXPECT_EQ(separators, "|......|.....");
}

}  // namespace
}  // namespace pim
