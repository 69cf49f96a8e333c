// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <string>

#include "bench/Texts.h"
#include "pim/manager/TextReading.h"
#include "pim/platform/Host.h"

namespace pim::bench {
namespace {

// What the account adds to a reading, for plain texts and for those that are made to cost it most.
// Each pair is one text, read without the account and with it.

std::string Repeated(std::string_view head, std::string_view part, std::int64_t bytes,
                     std::string_view tail) {
  std::string text(head);
  while (text.size() < static_cast<std::size_t>(bytes)) text += part;
  return text.append(tail);
}

enum class Kind {
  Cards,
  Events,
  SmallLines,
  UnknownLines,
  Replaced,
  Folds,
  Parameters,
  OneLine,
  Blanks
};

std::string TextOf(Kind kind) {
  constexpr std::int64_t kBytes = std::int64_t{8} << 20;
  const std::string card = "BEGIN:VCARD\n";
  switch (kind) {
    case Kind::Cards:
      return MakeCards(20000);
    case Kind::Events:
      return MakeEvents(20000);
    case Kind::SmallLines:
      return Repeated(card, "a\n", kBytes, "");
    case Kind::UnknownLines:
      return Repeated(card, "a:b\n", kBytes, "");
    case Kind::Replaced:
      return Repeated(card, "N:a;b;c;d;e\nTITLE:a\nN:b\nTITLE:b\n", kBytes, "");
    case Kind::Folds:
      return Repeated(card + "NOTE:", "\n a", kBytes, "\n");
    case Kind::Parameters:
      return Repeated(card + "TEL", ";X=Y", kBytes, ":1\n");
    case Kind::OneLine:
      return Repeated(card + "NOTE:", "a text that goes on ", kBytes, "\n");
    case Kind::Blanks:
      return Repeated(card, "\r\n", kBytes, "");
  }
  return {};
}

void Read(benchmark::State& state, Kind kind, bool withAccount) {
  SetAppDataFolder("/nonexistent");
  const std::string text = TextOf(kind);
  AccountTotals totals;
  TextObserver observer;
  if (withAccount) observer.entry = [&totals](const AccountEntry& entry) { totals.Add(entry); };
  for (auto _ : state) {
    if (kind == Kind::Events) {
      benchmark::DoNotOptimize(ReadCalendars(
          text, [](CCalendar&) { return true; }, observer));
    } else {
      benchmark::DoNotOptimize(ReadContacts(
          text, [](CContact&) { return true; }, observer));
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

#define PIM_ACCOUNT_PAIR(kind)                      \
  BENCHMARK_CAPTURE(Read, kind, Kind::kind, false); \
  BENCHMARK_CAPTURE(Read, kind##WithAccount, Kind::kind, true)

PIM_ACCOUNT_PAIR(Cards);
PIM_ACCOUNT_PAIR(Events);
PIM_ACCOUNT_PAIR(SmallLines);
PIM_ACCOUNT_PAIR(UnknownLines);
PIM_ACCOUNT_PAIR(Replaced);
PIM_ACCOUNT_PAIR(Folds);
PIM_ACCOUNT_PAIR(Parameters);
PIM_ACCOUNT_PAIR(OneLine);
PIM_ACCOUNT_PAIR(Blanks);

}  // namespace
}  // namespace pim::bench
