// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "pim/support/DateTime.h"
#include "pim/support/Strings.h"
#include "pim/support/WideText.h"

namespace pim::app {

// Where JSON stands: in an HTML page it may hold no "<" as such, which could end the element around
// it.
enum class JsonPlace : bool { Text, Page };

// Writes JSON piece by piece into one buffer that is used again. Texts go from UTF-16 to escaped
// UTF-8 in one pass; a lone surrogate becomes U+FFFD, and in a page, whose script has such texts
// too, the escape of itself. Escapes have small digits ("\u001f").
class JsonWriter : private rapidjson::Writer<rapidjson::StringBuffer> {
  using Base = rapidjson::Writer<rapidjson::StringBuffer>;

 public:
  explicit JsonWriter(JsonPlace place = JsonPlace::Text) : Base(buffer_), place_(place) {}

  using Base::EndArray;
  using Base::EndObject;
  using Base::StartArray;
  using Base::StartObject;

  // `key` is plain ASCII without quotes and backslashes.
  void Key(std::string_view key);

  void Value(std::int32_t number) { Int(number); }
  void Value(std::uint32_t number) { Uint(number); }
  void Value(std::int64_t number) { Int64(number); }
  void Value(std::uint8_t number) { Uint(number); }
  void Value(bool value) { Bool(value); }
  void Value(WideStringView text);
  void Value(const WideText& text) { Value(text.view()); }
  // "YYYY-MM-DDTHH:MM:SS", null or "invalid".
  void Value(const COleDateTime& date);
  // Whole seconds, or "invalid".
  void Value(const COleDateTimeSpan& span);
  void Null() { Base::Null(); }
  // A text in UTF-8; what is no UTF-8 becomes U+FFFD.
  void Utf8(std::string_view text);

  template <class T>
  void Field(std::string_view key, const T& value) {
    Key(key);
    Value(value);
  }
  void Utf8Field(std::string_view key, std::string_view text) {
    Key(key);
    Utf8(text);
  }
  // An array; write(entry) writes each of its values.
  template <class List, class Write>
  void Array(std::string_view key, const List& list, Write write) {
    Key(key);
    StartArray();
    for (const auto& entry : list) write(entry);
    EndArray();
  }
  template <class List>
  void Values(std::string_view key, const List& list) {
    Array(key, list, [this](const auto& entry) { this->Value(entry); });
  }

  // What has been written since the last Clear. A new value may be begun behind that.
  std::string_view text() const { return {buffer_.GetString(), buffer_.GetSize()}; }
  void Clear() {
    buffer_.Clear();
    Reset(buffer_);
  }
  // Forgets the text in the midst of a value, which goes on: for one that is printed piece by
  // piece.
  void ClearText() { buffer_.Clear(); }

 private:
  void Ascii(std::string_view text);

  rapidjson::StringBuffer buffer_;
  const JsonPlace place_;
};

// A text in UTF-8 as a JSON string; what is no UTF-8 becomes U+FFFD.
std::string JsonText(std::string_view text);

}  // namespace pim::app
