// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "formats/redact/TextMask.h"

namespace pim {

// Masks the value of one property, by what kind it is of: what the readers understand of it they
// understand still, and what they don't, they don't.
class ValueMask {
 public:
  // Both must outlive this.
  ValueMask(const TextMask& mask, const TextMask::Charset& charset)
      : mask_(mask), charset_(charset) {}

  void Text(std::string& bytes);
  // The word of a BEGIN or END.
  void Frame(std::string& bytes);
  // Words and numbers of the formats.
  void Code(std::string& bytes);
  // A day; a time with all that stands behind it.
  void Day(std::string& bytes);
  void Time(std::string& bytes);
  // Times or words with semicolons or commas between, each by itself.
  void Times(std::string& bytes);
  void Words(std::string& bytes);
  // Base64 of a text, where it is whole.
  void Base64Text(std::string& base64);

  // Whether bytes stayed that are no text.
  bool hasStayed() const { return hasStayed_; }

 private:
  enum class PartKind : std::uint8_t { Word, Day, Time };

  static bool IsFormal(std::string_view part, PartKind kind);
  void NoDate(PartKind kind, std::string& part);
  void Parts(PartKind kind, std::string& bytes);

  const TextMask& mask_;
  const TextMask::Charset& charset_;
  bool hasStayed_ = false;
};

}  // namespace pim
