// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "bench/Texts.h"
#include "formats/vcard4/ContactForms.h"
#include "formats/vcard4/VCardDown.h"
#include "pim/manager/TextReading.h"
#include "pim/manager/TextWriting.h"
#include "pim/records/Contacts.h"

namespace pim::bench {
namespace {

CContacts ReadCards(std::int64_t count) {
  CContacts contacts;
  benchmark::DoNotOptimize(ReadContacts(MakeCards(count), contacts));
  return contacts;
}

void WriteVCard2(benchmark::State& state) {
  const CContacts contacts = ReadCards(state.range(0));
  std::int64_t bytes = 0;
  for (auto _ : state) {
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
      bytes += static_cast<std::int64_t>(WriteContact(contacts[i]).size());
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(WriteVCard2)->Arg(100000)->Unit(benchmark::kMillisecond);

void WriteForm(benchmark::State& state, std::unique_ptr<ContactForm> (*make)()) {
  const CContacts contacts = ReadCards(state.range(0));
  std::string text;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    const std::unique_ptr<ContactForm> form = make();
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
      text.clear();
      form->Append(contacts[i], {}, text);
      bytes += static_cast<std::int64_t>(text.size());
    }
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK_CAPTURE(WriteForm, VCard4, [] { return MakeVCardForm(VCardVersion::V4, false); })
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteForm, VCard3, [] { return MakeVCardForm(VCardVersion::V3, false); })
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteForm, JCard, [] { return MakeJCardForm(false); })
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteForm, Csv, [] { return MakeCsvForm({}); })
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

void VCardsDown(benchmark::State& state) {
  const CContacts contacts = ReadCards(state.range(0));
  std::vector<std::string> cards;
  cards.reserve(static_cast<std::size_t>(contacts.GetCount()));
  const auto form = MakeVCardForm(VCardVersion::V4, false);
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
    form->Append(contacts[i], {}, cards.emplace_back());
  std::string text;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    for (const std::string& card : cards) {
      VCardDown(card, {}, text);
      bytes += static_cast<std::int64_t>(text.size());
    }
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(VCardsDown)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
