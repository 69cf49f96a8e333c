// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstring>
#include <span>

#include "pim/support/Strings.h"
#include "pim/support/WritingForm.h"
#include "support/TextCodec.h"
#include "support/WordTable.h"

namespace pim {

// Replaces `value` by components joined by semicolons, after encode(component) has given each of
// them encoded, whose own semicolons are escaped then. Gives whether it needs the text parameters.
template <class Components, class Encode>
bool JoinComponents(const Components& components, Encode encode, NarrowString& value) {
  bool needsParameters = false;
  value.clear();
  for (const auto& component : components) {
    NarrowString& encoded = encode(component);
    needsParameters = needsParameters || NeedsTextParameters(encoded);
    EscapeValue(encoded);
    if (&component != &components.front()) value.append(1, ';');
    value.append(encoded);
  }
  return needsParameters;
}

// Writes the property lines of a text. Most values are short and plain: they are narrowed where
// their line is put together, in one pass that also finds out whether they are. Any other one goes
// by way of EncodeText, EscapeValue and AppendProperty.
class PropertyLines {
 public:
  // `out` grows line by line and must outlive this. The writing form is that of the moment.
  explicit PropertyLines(NarrowString& out)
      : out_(out), readsBack_(GetWritingForm() == WritingForm::ReadsBack) {}
  PropertyLines(const PropertyLines&) = delete;
  PropertyLines& operator=(const PropertyLines&) = delete;

  // Parameters have their own leading semicolons. A text goes out without backslashes: a semicolon
  // in it divides nothing. The text parameters follow the others where it needs them.
  void AppendText(NarrowStringView name, NarrowStringView parameters, WideStringView text);
  // Components are joined by semicolons, after each has been encoded and its own semicolons
  // escaped. Empty ones stand too.
  void AppendComponents(NarrowStringView name, NarrowStringView parameters,
                        std::span<const WideStringView> components);
  // In the default code page, with no parameters for it. In a text that reads back line breaks are
  // blanks: they would end the property.
  void AppendRaw(NarrowStringView name, NarrowStringView parameters, WideStringView text);
  // A value that stands as it is.
  void Append(NarrowStringView name, NarrowStringView parameters, NarrowStringView value);

  NarrowString& text() { return out_; }

 private:
  bool AppendPlain(NarrowStringView name, NarrowStringView parameters, WideStringView text);
  bool AppendPlainComponents(NarrowStringView name, NarrowStringView parameters,
                             std::span<const WideStringView> components);
  bool IsShort(WideStringView text) const;
  char* StartLine(NarrowStringView name, NarrowStringView parameters);
  void EndLine(char* end);
  void Encode(WideStringView text);

  NarrowString& out_;
  bool readsBack_;
  NarrowString encoded_;
  NarrowString value_;
  NarrowString parameters_;
  std::array<char, 1024> line_;
};

// The parameters ";WORD" that codes are written as, made ready from a table of words.
template <std::size_t Count>
class WordParameters {
 public:
  constexpr explicit WordParameters(const Word (&table)[Count]) {
    for (std::size_t i = 0; i < Count; ++i) {
      Row& row = rows_[i];
      row.bytes[0] = ';';
      std::ranges::copy(table[i].text, row.bytes + 1);
      row.size = 1 + table[i].text.size();
      row.code = table[i].code;
    }
  }

  // Of a code; none for one without a row.
  constexpr NarrowStringView Of(std::uint32_t code) const {
    for (const Row& row : rows_)
      if (row.code == code) return {row.bytes, row.size};
    return {};
  }

  // Of all bits of a mask that have a row, in the table's order. Holds until the next call with the
  // same `work`.
  using Work = std::array<char, 16 * Count>;
  NarrowStringView OfMask(std::uint32_t mask, Work& work) const {
    std::size_t size = 0;
    for (const Row& row : rows_) {
      if ((mask & row.code) == 0) continue;
      std::memcpy(work.data() + size, row.bytes, sizeof row.bytes);
      size += row.size;
      if ((mask &= ~row.code) == 0) break;
    }
    return {work.data(), size};
  }

 private:
  struct Row {
    char bytes[16] = {};
    std::size_t size = 0;
    std::uint32_t code = 0;
  };
  std::array<Row, Count> rows_{};
};

}  // namespace pim
