// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "pim/stream/TextAccount.h"

namespace pim::app {

// The account of one text as one JSON object in a line, put together entry by entry. Its form is
// that of docs/account.md.
class AccountJson {
 public:
  // What stands ahead of the entries. `file` is left out when it is empty.
  static std::string Head(std::string_view file, TextForm form, bool rejected);

  explicit AccountJson(TextForm form);
  // The next entry, good until the next call.
  std::string_view Text(const AccountEntry& entry);
  // What stands behind the entries, with its line end.
  static std::string Tail(const AccountTotals& totals);

 private:
  void AppendNumber(std::int64_t number);
  void AppendName(NarrowStringView name);

  std::span<const NarrowStringView> fields_;
  std::string text_;
  bool empty_ = true;
};

// "vcard" or "vcalendar", as options name it too.
std::string_view FormName(TextForm form);

// "a NUL character; the text ends there", for people; empty where nothing is lost.
std::string ReasonsOf(const AccountEntry& entry);

// "NOTE: changed: a NUL character; the text ends there", with the places of several lines ahead.
std::string AccountLine(std::string_view file, const AccountEntry& entry);

// "120 lines: 96 kept, 6 changed, 10 dropped, 8 frame".
std::string TotalsText(const AccountTotals& totals);

}  // namespace pim::app
