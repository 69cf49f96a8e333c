// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "formats/prepare/PropertyStream.h"

namespace pim {

// A property whose bytes are no text in the charset that it is read in.
struct DamagedLine {
  std::int64_t first = 0;  // physical lines, from 1
  std::int64_t last = 0;
  std::string name;
  std::string bytes;     // the value, unfolded and decoded
  bool isFixed = false;  // its own CHARSET says what it is read in
};

// Finds them in a text of either form, which comes in pieces of any size. What is in base64 isn't
// looked at. One property is kept at a time; linear in the text.
class CharsetLines {
 public:
  using Take = std::function<void(const DamagedLine& line)>;

  explicit CharsetLines(Take take)
      : take_(std::move(take)),
        properties_([this](std::string_view property, std::int64_t first, std::int64_t last) {
          TakeProperty(property, first, last);
        }) {}
  CharsetLines(const CharsetLines&) = delete;
  CharsetLines& operator=(const CharsetLines&) = delete;

  void Append(std::string_view piece) { properties_.Append(piece); }
  void Finish() { properties_.Finish(); }

 private:
  void TakeProperty(std::string_view property, std::int64_t first, std::int64_t last);

  Take take_;
  PropertyStream properties_;
};

}  // namespace pim
