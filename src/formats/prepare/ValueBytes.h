// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pim {

// The bytes that a value means, unfolded and without the escapes and soft breaks of
// quoted-printable, each with its place. Other bytes may be put in theirs.
class ValueBytes {
 public:
  // The value must outlive this.
  ValueBytes(std::string_view value, bool isQuotedPrintable);

  std::string bytes;

  // Of a byte.
  bool IsEscape(std::size_t i) const;
  // Whether an equals sign begins no escape; it and two characters behind it, which readers may
  // take for one, are no bytes of the value.
  bool isDamaged() const { return isDamaged_; }
  // The value with `bytes`, which must be as many as before, in the same form.
  std::string Text() const;

 private:
  // Bytes that stand together, or one that two digits say.
  struct Run {
    std::size_t byte;    // its first one
    std::size_t first;   // its place in the value, or that of the first digit
    std::size_t second;  // 0 without digits
  };

  std::size_t PastLineEnd(std::size_t at) const;
  std::size_t PastEscape(std::size_t at);

  std::string_view value_;
  std::vector<Run> runs_;
  bool isDamaged_ = false;
};

// Whether a line of a value in quoted-printable ends in a soft break, so that the value goes on in
// the next one.
bool BreaksSoftly(std::string_view line);

}  // namespace pim
