// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace pim {

// Puts other letters and digits in the place of those of a text, of the same kind and length. With
// one key the same field gives the same, and different ones give different ones; without it nobody
// knows which it was.
class TextMask {
 public:
  explicit TextMask(std::uint64_t key) : key_(key) {}

  // How the bytes of a text are to be taken.
  enum class Charset : std::uint8_t {
    Utf8,      // what is no UTF-8 stays
    ShiftJis,  // CP932
    Other,     // bytes that are no UTF-8 become others that aren't, either
  };

  // A text whose fields semicolons part; what stands behind a backslash stays.
  void MaskFields(std::string& bytes, Charset charset) const;
  // Digits of base64 become other ones.
  void MaskBase64(std::string& text) const;
  // A date such as 19700131 or 1970-01-31 at the head of the text becomes another one, all by the
  // same number of days. False for what is none.
  bool MoveDate(std::string& text) const;

 private:
  void MaskField(std::string& bytes, std::size_t begin, std::size_t end, Charset charset) const;

  std::uint64_t key_;
};

}  // namespace pim
