// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcard/PhotoMedia.h"

#include "support/Base64.h"
#include "support/CallerIdPictures.h"
#include "support/FileNames.h"
#include "support/TextCodec.h"
#include "vcard/VCardWords.h"

namespace pim {

void SavePhoto(const char* bytes, std::int32_t length, std::int32_t mediaType, WideString& photo) {
  const NarrowStringView extension =
      TextOf(kMediaExtensions, static_cast<std::uint32_t>(mediaType));
  const WideString name =
      u"zevo" + NewGuidText() + u"." + WideString(extension.begin(), extension.end());
  const bool created =
      WriteCallerIdPicture(name, NarrowStringView(bytes, static_cast<std::size_t>(length)));
  photo = created ? name : WideString();
}

void AppendPhoto(NarrowString& text, WideStringView photo) {
  if (photo.empty()) return;
  const NarrowString picture = ReadCallerIdPicture(photo);
  if (picture.empty()) return;
  const NarrowString folded =
      FoldBase64(Base64Encode(picture.data(), picture.size()), kBase64LineWidth);
  AppendProperty(text, TextOf(kVCardProperties, VCARD_PHOTO), PhotoParameters(photo), folded);
}

NarrowString PhotoParameters(WideStringView name) {
  const std::size_t dot = name.rfind(u'.');
  const WideStringView extension = dot == WideStringView::npos ? name : name.substr(dot + 1);
  NarrowString ascii;
  for (const char16_t unit : extension) ascii += unit < 0x80 ? static_cast<char>(unit) : '?';
  const auto code = CodeOf(kMediaExtensions, ascii);
  const NarrowStringView word = code ? TextOf(kMediaWords, *code) : "UNKNOWN";
  NarrowString parameters;
  AppendParameter(parameters, kTypeName, word);
  AppendParameter(parameters, kEncodingName, kBase64Word.text);
  return parameters;
}

}  // namespace pim
