// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "formats/vcard4/ContactForms.h"
#include "formats/vcard4/VCardRows.h"
#include "pim/support/Strings.h"

namespace pim {

// What a text lost on its way into a form.
struct TextLosses {
  bool characters = false;  // control characters, and halves of surrogate pairs
  bool lineEnds = false;    // another one than CR LF
};

// How the parts of a value stand together.
enum class ValueShape : std::uint8_t {
  Text,        // one part
  Uri,         // one part, in which commas and semicolons divide nothing
  Structured,  // parts of a fixed meaning
  List,        // any number of the same kind
};

// Writes the properties of vCard 3.0 or 4.0 line by line: Start, parameters, then a value. Texts go
// from UTF-16 to escaped UTF-8 in one pass, by runs where they are plain ASCII; a line is put
// together in memory that is used again, and folded on its way out.
class CardLines {
 public:
  explicit CardLines(VCardVersion version) : isV4_(version == VCardVersion::V4) {}

  // What stands ahead of the first card and behind the last one.
  static void StartText(NarrowString&) {}
  static void EndText(NarrowString&) {}

  // A card goes behind `out`, which must live until it has ended.
  void StartCard(NarrowString& out);
  void EndCard();

  void Start(CardProperty property) {
    const PropertyRow& row = RowOf(property);
    size_ = 0;
    hasTypes_ = false;
    Copy(isV4_ ? row.v4 : row.v3);
  }
  // Whether dates have hyphens.
  bool HasExtendedDates() const { return !isV4_; }
  // Parameters: preferred ahead of the types, which follow one another.
  void Preferred();
  void Type(const TypeRow& row) {
    const NarrowStringView word = isV4_ ? row.v4 : row.v3;
    if (word.empty()) return;
    Copy(hasTypes_ ? "," : ";TYPE=");
    Copy(word);
    hasTypes_ = true;
  }
  void Service(NarrowStringView word);
  void Derived();

  // A value part by part, each of which tells what it lost.
  void StartValue(ValueShape shape, std::size_t) {
    shape_ = shape;
    isFirst_ = true;
    Copy(":");
  }
  TextLosses Part(WideStringView text);
  void EndValue() { EndLine(); }
  // Whole values.
  void Ascii(NarrowStringView value) { Ascii(value, {}); }
  void Ascii(NarrowStringView start, NarrowStringView value);
  void Picture(const MediaRow& media, NarrowStringView base64);

 private:
  static constexpr std::size_t kWidth = 75;  // of a line, in bytes without its end
  // A property's name and parameters take less.
  static constexpr std::size_t kHeaderRoom = 1024;

  void Reserve(std::size_t more) {
    if (line_.size() - size_ < more) Grow(more);
  }
  void Grow(std::size_t more);
  // Where there is room.
  void Copy(NarrowStringView text) {
    std::ranges::copy(text, line_.data() + size_);
    size_ += text.size();
  }
  void EndLine() {
    if (size_ > kWidth) return Fold();
    std::memcpy(line_.data() + size_, "\r\n", 2);
    out_->append(line_.data(), size_ + 2);
  }
  void Fold();

  NarrowString* out_ = nullptr;
  std::vector<char> line_ = std::vector<char>(kHeaderRoom);
  std::size_t size_ = 0;
  ValueShape shape_ = ValueShape::Text;
  bool isFirst_ = true;
  bool hasTypes_ = false;
  const bool isV4_;
};

}  // namespace pim
