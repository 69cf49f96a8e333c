// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "app/labels/Labels.h"
#include "pim/stream/TextAccount.h"
#include "pim/support/Strings.h"

namespace pim::app {

// Why lines aren't kept as they stand, in the language of a page: the labels REASON_...
class ReasonWords {
 public:
  explicit ReasonWords(const LabelFile& file);

  // One reason ("picture-missing"). Every language has all of them.
  const WideString& Of(std::string_view reason) const;
  // All those of an entry; empty where nothing is lost. A parameter without effect is named, as far
  // as `longest` bytes of it.
  WideString Of(const AccountEntry& entry, std::size_t longest) const;
  // "12 more that aren't kept as they stand".
  WideString More(std::int64_t count) const;

 private:
  std::map<std::string, WideString, std::less<>> byReason_;
};

// The label of a fault ("no-base64"); empty for None.
std::string_view ReasonOf(TextFault fault);

// A text as a reading decodes it, as far as so many bytes, with an ellipsis where there are more.
WideString DecodedHead(NarrowStringView bytes, std::size_t longest);

}  // namespace pim::app
