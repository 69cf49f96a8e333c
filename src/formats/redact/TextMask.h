// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace pim {

class CharsetSteps;

// Puts other letters and digits in the place of those of a text, of the same kind and length. With
// one key the same field gives the same, and different ones give different ones; without it nobody
// knows which it was.
class TextMask {
 public:
  explicit TextMask(std::uint64_t key);
  TextMask(const TextMask&) = delete;
  TextMask& operator=(const TextMask&) = delete;
  ~TextMask();

  // What the bytes of a text are in.
  struct Charset {
    std::string name = "UTF-8";  // as iconv calls it; empty where nobody knows
    bool isReadAsUtf8 = true;    // by the readers, whatever they are
  };

  // A text whose fields semicolons part; what stands behind a backslash stays. Bytes that are no
  // UTF-8 to the readers still are none. Gives whether some stayed that are no text at all.
  bool MaskFields(std::string& bytes, const Charset& charset) const;
  // Digits of base64 become other ones.
  void MaskBase64(std::string& text) const;
  // A date such as 19700131 or 1970-01-31 at the head of the text becomes another one, all by the
  // same number of days. False for what is none.
  bool MoveDate(std::string& text) const;

 private:
  bool MaskUtf8(std::string& bytes, bool masksDamage) const;
  bool MaskIn(std::string& bytes, const std::string& charset) const;

  std::uint64_t key_;
  // Of the charset that was last in use.
  mutable std::string stepsOf_;
  mutable std::unique_ptr<CharsetSteps> steps_;
};

}  // namespace pim
