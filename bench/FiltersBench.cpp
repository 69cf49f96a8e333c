// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "bench/Texts.h"
#include "formats/prepare/Preparer.h"
#include "formats/redact/Redactor.h"

namespace pim::bench {
namespace {

// By the piece, as a file is read.
template <class Take>
void ForEachPiece(std::string_view text, Take take) {
  constexpr std::size_t kPiece = std::size_t{256} * 1024;
  for (std::size_t at = 0; at < text.size(); at += kPiece) take(text.substr(at, kPiece));
}

void PrepareText(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    std::size_t size = 0;
    Preparer preparer(kAllPrepareSteps, {},
                      [&size](const PreparedPiece& piece) { size += piece.text.size(); });
    ForEachPiece(text, [&preparer](std::string_view piece) {
      std::ranges::copy(piece, preparer.Room(piece.size()));
      preparer.Took(piece.size());
    });
    preparer.Finish();
    benchmark::DoNotOptimize(size);
  }
  state.SetBytesProcessed(state.iterations() * std::ssize(text));
}
void PrepareCards(benchmark::State& state) { PrepareText(state, MakeCards(state.range(0))); }
BENCHMARK(PrepareCards)->Arg(100000)->Unit(benchmark::kMillisecond);
void PrepareEvents(benchmark::State& state) { PrepareText(state, MakeEvents(state.range(0))); }
BENCHMARK(PrepareEvents)->Arg(100000)->Unit(benchmark::kMillisecond);

void RedactCards(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) {
    std::size_t size = 0;
    Redactor redactor(1, [&size](std::string_view piece) { size += piece.size(); });
    ForEachPiece(text, [&redactor](std::string_view piece) { redactor.Append(piece); });
    redactor.Finish();
    benchmark::DoNotOptimize(size);
  }
  state.SetBytesProcessed(state.iterations() * std::ssize(text));
}
BENCHMARK(RedactCards)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
