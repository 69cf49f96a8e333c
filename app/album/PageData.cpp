// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/PageData.h"

#include "platform/CodePages.h"
#include "support/Base64.h"

namespace pim::app {
namespace {

constexpr std::string_view kEndOfScript = "</script>\n";

}  // namespace

std::string DataElement(std::string_view attribute, std::string_view json) {
  std::string element = "<script type=\"application/json\" ";
  return element.append(attribute).append(">").append(json).append(kEndOfScript);
}

std::string HeadElement(const PageHead& head, const LabelFile& labels) {
  static constexpr struct {
    std::string_view member;
    WideStringView prefix;  // of the labels' keys
  } kWords[] = {{"labels", u"ALBUM_"}, {"fields", u"FIELD_"}, {"types", u"TYPE_"}};
  JsonWriter json(JsonPlace::Page);
  json.StartObject();
  json.Utf8Field("kind", head.form == TextForm::VCard ? "contacts" : "calendar");
  json.Utf8Field("lang", labels.language);
  json.Utf8Field("source", head.isOfFiles ? "files" : "store");
  json.Field("madeAt", head.madeAt);
  json.Utf8Field("zone", head.zone);
  if (!head.from.empty()) json.Utf8Field("from", head.from);
  if (!head.to.empty()) json.Utf8Field("to", head.to);
  const auto words = ReadLabels(labels.text);
  for (const auto& row : kWords) {
    json.Key(row.member);
    json.StartObject();
    for (const auto& [key, text] : words) {
      if (!key.starts_with(row.prefix)) continue;
      const WideStringView word = WideStringView(key).substr(row.prefix.size());
      json.Field(Utf8FromWide(word), WideStringView(text));
    }
    json.EndObject();
  }
  json.EndObject();
  return DataElement("id=\"album\"", json.text());
}

JsonWriter& RecordStretches::Next() {
  if (json_.text().empty()) json_.StartArray();
  return json_;
}

void RecordStretches::AddPicture(std::string_view media, std::string_view bytes) {
  pictures_.append("<script type=\"text/plain\" class=\"picture\" data-record=\"")
      .append(std::to_string(count_))
      .append("\" data-type=\"")
      .append(media)
      .append("\">")
      .append(Base64Encode(bytes.data(), bytes.size()))
      .append(kEndOfScript);
}

void RecordStretches::EndRecord() {
  constexpr std::size_t kRecords = std::size_t{48} << 10;
  constexpr std::size_t kPictures = std::size_t{512} << 10;
  ++count_;
  if (json_.text().size() >= kRecords || pictures_.size() >= kPictures) End();
}

void RecordStretches::End() {
  if (json_.text().empty()) return;
  json_.EndArray();
  write_(DataElement("class=\"records\"", json_.text()));
  write_(pictures_);
  json_.Clear();
  pictures_.clear();
}

}  // namespace pim::app
