// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

// Writes the lines of vCalendar 1.0 of an item, as this library's reading takes them.
class DownLines {
 public:
  // `out` must outlive this.
  explicit DownLines(std::string& out) : out_(out) {}

  // A word, number or date, which stands as it is.
  void AppendWord(std::string_view name, std::string_view word);
  // A text in UTF-8, under quoted-printable where it needs that. False where its bytes are none.
  [[nodiscard]] bool AppendText(std::string_view name, std::string_view text);
  // What stands as it is, and a text that ends with the property, so that semicolons in it don't.
  [[nodiscard]] bool AppendWithText(std::string_view name, std::string_view parameters,
                                    std::string_view head, std::string_view text);

 private:
  std::string& out_;
  std::u16string wide_;
  std::string encoded_;
};

}  // namespace pim
