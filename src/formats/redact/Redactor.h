// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "formats/prepare/PropertyStream.h"
#include "formats/redact/TextMask.h"

namespace pim {

// Takes what is private out of a text of either form, any bytes at all: letters and digits of
// values become other ones, dates other dates, pictures noise. All else stays byte for byte, and
// each line its length, so that readers fail on it as they do on the text, and lose the same lines.
// The text comes in pieces of any size; one property is kept at a time. Linear in the text.
//
// One thread at a time. Throws std::bad_alloc, and what the call throws.
class Redactor {
 public:
  using Take = std::function<void(std::string_view text)>;

  struct Property {
    std::string name = {};
    TextMask::Charset charset = {};
    bool isQuotedPrintable = false;
    bool isBase64 = false;
  };

  // Equal texts become equal under one key; who has it can undo the work in part.
  Redactor(std::uint64_t key, Take take)
      : mask_(key),
        take_(std::move(take)),
        properties_([this](std::string_view property, std::int64_t first, std::int64_t) {
          TakeProperty(property, first);
        }) {}
  Redactor(const Redactor&) = delete;
  Redactor& operator=(const Redactor&) = delete;

  void Append(std::string_view piece) { properties_.Append(piece); }
  void Finish() { properties_.Finish(); }

  // In how many properties bytes stayed that are no text in their charset, and the line of the
  // first.
  std::int64_t damagedLines() const { return damagedLines_; }
  std::int64_t firstDamaged() const { return firstDamaged_; }

 private:
  void TakeProperty(std::string_view property, std::int64_t line);
  // False where bytes stayed that are no text.
  bool MaskValue(const Property& property, std::string_view value);
  void NoteDamage(std::int64_t line);

  TextMask mask_;
  Take take_;
  PropertyStream properties_;
  std::string out_;
  std::int64_t damagedLines_ = 0;
  std::int64_t firstDamaged_ = 0;
  bool isFirst_ = true;
};

}  // namespace pim
