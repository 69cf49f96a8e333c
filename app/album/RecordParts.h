// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "app/album/AlbumRecords.h"
#include "support/Ascii.h"

namespace pim::app {

// What the objects of both kinds of records have in common.

// Words of types as labels have them, in small letters.
inline std::string InSmallLetters(std::string_view word) {
  std::string small(word);
  for (char& c : small) c = ToLower(c);
  return small;
}

// Rows of fields: a name, a text and words of types, with blanks between. Empty texts have none.
class FieldRows {
 public:
  explicit FieldRows(JsonWriter& json) : json_(json) {
    json_.Key("fields");
    json_.StartArray();
  }
  FieldRows(const FieldRows&) = delete;
  FieldRows& operator=(const FieldRows&) = delete;
  ~FieldRows() { json_.EndArray(); }

  void Add(std::string_view field, WideStringView text, std::string_view types = {}) {
    if (text.empty()) return;
    json_.StartArray();
    json_.Utf8(field);
    json_.Value(text);
    if (!types.empty()) AddTypes(types);
    json_.EndArray();
  }
  void AddAscii(std::string_view field, std::string_view text) {
    Add(field, WideString(text.begin(), text.end()));
  }

 private:
  void AddTypes(std::string_view types) {
    json_.StartArray();
    while (!types.empty()) {
      const std::string_view word = types.substr(0, types.find(' '));
      json_.Utf8(InSmallLetters(word));
      types.remove_prefix(std::min(word.size() + 1, types.size()));
    }
    json_.EndArray();
  }

  JsonWriter& json_;
};

inline void WritePlace(JsonWriter& json, const PlaceInFile* place) {
  if (place == nullptr) return;
  json.Utf8Field("file", place->file);
  json.Field("line", place->marks.line());
  if (place->marks.empty()) return;
  json.Key("marks");
  place->marks.Write(json);
}

}  // namespace pim::app
