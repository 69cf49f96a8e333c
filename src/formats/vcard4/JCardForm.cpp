// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <rapidjson/writer.h>

#include <array>

#include "formats/vcard4/CardForm.h"
#include "formats/vcard4/ContactForms.h"
#include "formats/vcard4/UriText.h"
#include "platform/CodePages.h"
#include "stream/ObjectWords.h"

namespace pim {
namespace {

// Where RapidJSON writes to.
class StringStream {
 public:
  using Ch = char;
  void To(NarrowString& out) { out_ = &out; }
  void Put(char c) { out_->push_back(c); }
  void Flush() {}

 private:
  NarrowString* out_ = nullptr;
};

// Replaces `bytes` by the text in UTF-8 with the form's line ends.
TextLosses MakeText(WideStringView text, NarrowString& bytes) {
  TextLosses losses;
  bytes.clear();
  for (;;) {
    const std::size_t end = text.find_first_of(u"\r\n");
    AppendUtf8(text.substr(0, end), bytes);
    losses.characters = losses.characters || HasLoneSurrogate(text.substr(0, end));
    if (end == WideStringView::npos) return losses;
    text.remove_prefix(end);
    const bool isUsual = text.starts_with(u"\r\n");
    losses.lineEnds = losses.lineEnds || !isUsual;
    bytes += '\n';
    text.remove_prefix(isUsual ? 2 : 1);
  }
}

// Writes the properties of vCard 4.0 as jCard's arrays: the name in small letters, the parameters,
// the type of the value, and the value. The operations are those of CardLines.
class CardArrays {
 public:
  void StartText(NarrowString& out) { out += '['; }
  void EndText(NarrowString& out) { out += "\n]\n"; }

  void StartCard(NarrowString& out) {
    out.append(isFirst_ ? "\n" : ",\n");
    isFirst_ = false;
    stream_.To(out);
    json_.Reset(stream_);
    json_.StartArray();
    String("vcard");
    json_.StartArray();
    json_.StartArray();
    String("version");
    json_.StartObject();
    json_.EndObject();
    String("text");
    String("4.0");
    json_.EndArray();
  }
  void EndCard() {
    json_.EndArray();
    json_.EndArray();
  }

  void Start(CardProperty property) {
    row_ = &RowOf(property);
    types_ = 0;
    json_.StartArray();
    Name(row_->v4);
    json_.StartObject();
  }
  bool HasExtendedDates() const { return true; }
  void Preferred() { Parameter("PREF", "1"); }
  void Type(const TypeRow& row) {
    if (!row.v4.empty() && types_ < type_.size()) type_[types_++] = row.v4;
  }
  void Service(NarrowStringView word) { Parameter(kServiceParameter, word); }
  void Derived() { Parameter(kDerivedParameter, kDerivedWord); }

  // A structure of one part is that part.
  void StartValue(ValueShape shape, std::size_t parts) {
    EndParameters();
    isStructure_ = shape == ValueShape::Structured && parts > 1;
    if (isStructure_) json_.StartArray();
  }
  TextLosses Part(WideStringView text) {
    const TextLosses losses = MakeText(text, text_);
    String(text_);
    return losses;
  }
  void EndValue() {
    if (isStructure_) json_.EndArray();
    json_.EndArray();
  }
  void Ascii(NarrowStringView value) { Ascii(value, {}); }
  void Ascii(NarrowStringView start, NarrowStringView value) {
    EndParameters();
    text_.assign(start).append(value);
    String(text_);
    json_.EndArray();
  }
  void Picture(const MediaRow& media, NarrowStringView base64) {
    NarrowString start(kDataScheme);
    Ascii(start.append(media.media).append(";base64,"), base64);
  }

 private:
  void String(NarrowStringView text) {
    json_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  }
  void Name(NarrowStringView name) {
    text_.clear();
    for (const char c : name) text_ += ToLower(c);
    String(text_);
  }
  void Parameter(NarrowStringView name, NarrowStringView value) {
    Name(name);
    String(value);
  }
  // Several types are an array, one isn't.
  void EndParameters() {
    if (types_ != 0) {
      String("type");
      if (types_ > 1) json_.StartArray();
      for (std::size_t i = 0; i < types_; ++i) String(type_[i]);
      if (types_ > 1) json_.EndArray();
    }
    json_.EndObject();
    String(row_->valueType);
  }

  StringStream stream_;
  rapidjson::Writer<StringStream> json_;
  const PropertyRow* row_ = nullptr;
  NarrowString text_;
  std::array<NarrowStringView, std::size(kTelephoneRows)> type_;
  std::size_t types_ = 0;
  bool isFirst_ = true;
  bool isStructure_ = false;
};

}  // namespace

std::unique_ptr<ContactForm> MakeJCardForm(bool groups) {
  return std::make_unique<CardForm<CardArrays>>(groups);
}

}  // namespace pim
