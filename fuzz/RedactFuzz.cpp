// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "formats/redact/Redactor.h"
#include "pim/manager/TextReading.h"
#include "pim/platform/Host.h"

namespace {

std::string Redacted(std::string_view text, std::size_t cut) {
  std::string redacted;
  pim::Redactor redactor(17, [&redacted](std::string_view piece) { redacted += piece; });
  redactor.Append(text.substr(0, cut));
  redactor.Append(text.substr(cut));
  redactor.Finish();
  return redacted;
}

constexpr pim::LossMask kCuts = pim::LOSS_BAD_ESCAPE | pim::LOSS_NUL;

// What became of each line, but for whether another one says the same: of damaged values that
// depends on what they are damaged by.
template <class Read>
std::vector<std::uint64_t> AccountOf(Read read, std::string_view text) {
  std::vector<std::uint64_t> account;
  const pim::TextObserver observer{
      {}, [&account](const pim::AccountEntry& entry) {
        account.push_back(static_cast<std::uint64_t>(entry.last));
        const bool isCut = (entry.why & kCuts) != 0;
        account.push_back(isCut ? kCuts : entry.why & ~pim::LOSS_REPLACED);
      }};
  static_cast<void>(read(
      text, [](auto&) { return true; }, observer));
  return account;
}

}  // namespace

// A text without what is private in it is as long, has its lines where they were, and is read with
// the same losses.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool isQuiet = [] {
    pim::SetMessageSink([](std::u16string_view) {});
    pim::SetAppDataFolder("/nonexistent");
    return true;
  }();
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string redacted = Redacted(text, size);
  if (redacted.size() != size || Redacted(text, size == 0 ? 0 : data[0] % size) != redacted)
    std::abort();
  for (std::size_t i = 0; i < size; ++i)
    if ((text[i] == '\n' || text[i] == ':') != (redacted[i] == '\n' || redacted[i] == ':'))
      std::abort();
  const auto cards = [](std::string_view bytes, const pim::TakeContact& take,
                        const pim::TextObserver& observer) {
    return pim::ReadContacts(bytes, take, observer);
  };
  const auto items = [](std::string_view bytes, const pim::TakeCalendar& take,
                        const pim::TextObserver& observer) {
    return pim::ReadCalendars(bytes, take, observer);
  };
  // Where carriage returns end the lines, the readers see other ones.
  const std::size_t end = text.find_first_of("\r\n");
  const std::size_t next = text.find_first_not_of('\r', end);
  if (next < size && text[next] != '\n') return 0;
  if (AccountOf(cards, text) != AccountOf(cards, redacted)) std::abort();
  if (AccountOf(items, text) != AccountOf(items, redacted)) std::abort();
  return isQuiet ? 0 : 1;
}
