// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "support/Base64.h"
#include "tests/vcard/VCards.h"
#include "vcard/PhotoMedia.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

TEST(PhotoMedia, Base64) {
  EXPECT_EQ(Base64Encode("", 0), "");
  EXPECT_EQ(Base64Encode("\0", 1), "AA==");
  EXPECT_EQ(Base64Encode("\xFF\xEF", 2), "/+8=");
  EXPECT_EQ(Base64Encode("ABCD", 4), "QUJDRA==");
  const NarrowString line(72, 'x');
  EXPECT_EQ(FoldBase64(line, 72), line + "\r\n");
  EXPECT_EQ(FoldBase64(line + "y", 72), "\r\n " + line + "\r\n y\r\n");
  EXPECT_EQ(FoldBase64(line, 0), line + "\r\n");
}

TEST(PhotoMedia, ParametersByExtension) {
  static constexpr struct {
    WideStringView name;
    const char* word;
  } kRows[] = {{u"PHOTO.JPEG", "JPEG"},
               {u"a.b.Jpg", "JPEG"},
               {u"x.png", "PNG"},
               {u"bin", "BIN"},
               {u"x.gif", "GIF"},
               {u"x.bmp", "BMP"},
               {u"photo.tiff", "UNKNOWN"},
               {u"zevo1.", "UNKNOWN"},
               {u"", "UNKNOWN"}};
  for (const auto& row : kRows)
    EXPECT_EQ(PhotoParameters(row.name), std::string(";TYPE=") + row.word + ";ENCODING=BASE64");
}

// A picture becomes a file of its own, goes out from there and comes back byte for byte.
TEST(PhotoMedia, RoundTrip) {
  const PicturesFolder folder;
  for (const std::size_t size : {1U, 2U, 3U, 54U, 55U, 60U, 20000U}) {
    SCOPED_TRACE(size);
    NarrowString bytes;
    for (std::size_t i = 0; i < size; ++i) bytes.push_back(static_cast<char>(i * 7));
    WideString photo;
    SavePhoto(bytes.data(), static_cast<std::int32_t>(size), MEDIA_PNG, photo);
    EXPECT_TRUE(photo.starts_with(u"zevo") && photo.ends_with(u".png"));
    EXPECT_EQ(photo.size(), 4U + 36 + 4);
    NarrowString text;
    AppendPhoto(text, photo);
    const CContact contact = ReadCard(text + "TITLE:t");
    EXPECT_NE(contact.photo, photo);
    EXPECT_EQ(contact.org_title, u"t");
    EXPECT_EQ(FileBytes(folder.path() + "/" + NativePath(contact.photo)), bytes);
  }
}

TEST(PhotoMedia, WithoutPicture) {
  NarrowString text = "kept";
  {
    const PicturesFolder folder;
    WideString photo = u"old";
    SavePhoto("", 0, MEDIA_OTHER, photo);
    EXPECT_TRUE(photo.ends_with(u"."));
    AppendPhoto(text, photo);       // empty
    AppendPhoto(text, u"missing");  // gone
    AppendPhoto(text, u"");
    EXPECT_EQ(text, "kept");
  }
  SetAppDataFolder("/nonexistent");
  WideString photo = u"old";
  SavePhoto("x", 1, MEDIA_NONE, photo);
  EXPECT_EQ(photo, u"");
  SetAppDataFolder({});
}

}  // namespace
}  // namespace pim
