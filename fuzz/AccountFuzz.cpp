// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <cstdlib>

#include "tests/account/Accounts.h"

namespace {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

}  // namespace

// The account of any bytes covers all lines, its totals add up, it is the same wherever the text is
// cut, and reading gives the same records without it. The first byte chooses the form, and where
// the text is cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pim;
  using namespace pim::testing;
  if (size == 0) return 0;
  SetMessageSink([](std::u16string_view) {});
  SetAppDataFolder("/nonexistent");
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const TextForm form = data[0] % 2 == 0 ? TextForm::VCard : TextForm::VCalendar;
  const Reading whole = Read(form, text);
  const std::string fault = FaultOf(whole, text);
  Require(fault.empty(), fault.c_str());
  Require(whole.records == Read(form, text, text.size(), false).records, "other records");
  for (const std::size_t piece : {std::size_t{1}, std::size_t{data[0]} + 1}) {
    const Reading cut = Read(form, text, piece);
    Require(cut.entries.size() == whole.entries.size(), "other entries in pieces");
    for (std::size_t i = 0; i < cut.entries.size(); ++i)
      Require(cut.entries[i].text == whole.entries[i].text, cut.entries[i].text.c_str());
  }
  const RejectedParts rejected = RejectedPartsOf(text, form);
  const std::string rest = WithoutParts(text, rejected.parts);
  Require(Read(form, rest, rest.size() + 1).totals.unread == 0, "the rest is rejected");
  return 0;
}
