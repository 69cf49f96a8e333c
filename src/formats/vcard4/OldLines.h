// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "pim/support/Strings.h"

namespace pim {

// Writes properties of vCard 2.1 whose values are UTF-8, in the form that reads back whatever the
// process's writing form is. Parameters have their own leading semicolons. Each operation but
// Append gives whether all of the value stands there: else it held NUL, which would end the value,
// or bytes that are no UTF-8, which become U+FFFD.
class OldLines {
 public:
  explicit OldLines(NarrowString& out) : out_(out) {}

  // The parameters for other characters than plain ones follow the others.
  bool AppendText(NarrowStringView name, NarrowStringView parameters, NarrowStringView text);
  bool AppendComponents(NarrowStringView name, NarrowStringView parameters,
                        std::span<const NarrowString> components);
  // A telephone number, for which devices take no parameters: its line ends become blanks.
  bool AppendNumber(NarrowStringView parameters, NarrowStringView number);
  void Append(NarrowStringView name, NarrowStringView parameters, NarrowStringView value);

 private:
  bool Encode(NarrowStringView text);

  NarrowString& out_;
  NarrowString work_;
  NarrowString encoded_;
  NarrowString value_;
  NarrowString parameters_;
  WideString wide_;
};

}  // namespace pim
