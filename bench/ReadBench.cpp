// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <iterator>

#include "bench/Floors.h"
#include "bench/Texts.h"
#include "vcard/VCardReader.h"

namespace pim::bench {
namespace {

void TellRate(benchmark::State& state, const std::string& text) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * std::ssize(text));
  state.SetComplexityN(state.range(0));
}

void LinesAndColons(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(FindLinesAndColons(text));
  TellRate(state, text);
}
BENCHMARK(LinesAndColons)->Arg(10000);

// Runs the tokeniser alone, with handlers that look at nothing.
void Tokenise(const std::string& text) {
  const auto parser = VObjectParser::Create();
  parser->SetPropertyHandler(
      [](void*, const char* name, const ParserParam*) { benchmark::DoNotOptimize(name); });
  parser->SetDataHandler(
      [](void*, const char* bytes, std::int32_t) { benchmark::DoNotOptimize(bytes); });
  benchmark::DoNotOptimize(
      parser->Parse(text.data(), static_cast<std::int32_t>(text.size()), true));
}

void TokeniseCards(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) Tokenise(text);
  TellRate(state, text);
}
BENCHMARK(TokeniseCards)->Arg(1000)->Arg(10000)->Arg(100000);

void Base64Floor(benchmark::State& state) {
  const std::string text = MakeCardsWithPictures(state.range(0));
  std::string out;
  for (auto _ : state) benchmark::DoNotOptimize(DecodeBase64(text, out));
  TellRate(state, text);
}
BENCHMARK(Base64Floor)->Arg(1000);

void TokenisePictures(benchmark::State& state) {
  const std::string text = MakeCardsWithPictures(state.range(0));
  for (auto _ : state) Tokenise(text);
  TellRate(state, text);
}
BENCHMARK(TokenisePictures)->Arg(1000);

void Strings(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(MakeStrings(text));
  TellRate(state, text);
}
BENCHMARK(Strings)->Arg(1000);

// What the records of a text take from the allocator, for each byte of it.
double MemoryOf(const std::string& text) {
  const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  CContacts contacts;
  benchmark::DoNotOptimize(VCardReader(contacts).Read(text, true));
  const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
  return static_cast<double>(after - before) / static_cast<double>(text.size());
}

void ReadCards(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  state.counters["memory_per_byte"] = MemoryOf(text);
  state.counters["text_per_record"] =
      static_cast<double>(text.size()) / static_cast<double>(state.range(0));
  for (auto _ : state) {
    CContacts contacts;
    benchmark::DoNotOptimize(VCardReader(contacts).Read(text, true));
    benchmark::DoNotOptimize(contacts.GetCount());
  }
  TellRate(state, text);
}
BENCHMARK(ReadCards)->Arg(1000)->Arg(10000)->Arg(100000);

}  // namespace
}  // namespace pim::bench
