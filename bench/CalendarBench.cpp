// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <iterator>
#include <string>

#include "bench/BareStore.h"
#include "bench/Floors.h"
#include "bench/Texts.h"
#include "pim/manager/CalendarImport.h"
#include "pim/records/Calendar.h"
#include "pim/store/SqliteStore.h"
#include "vcalendar/VCalendarReader.h"
#include "vcalendar/VCalendarWriter.h"

namespace pim::bench {
namespace {

void EventStrings(benchmark::State& state) {
  const std::string text = MakeEvents(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(MakeStrings(text));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * std::ssize(text));
}
BENCHMARK(EventStrings)->Arg(1000);

void ReadEvents(benchmark::State& state) {
  const std::string text = MakeEvents(state.range(0));
  for (auto _ : state) {
    CCalendars items;
    benchmark::DoNotOptimize(VCalendarReader(items).Read(text, true));
    benchmark::DoNotOptimize(items.GetCount());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * std::ssize(text));
}
BENCHMARK(ReadEvents)->Arg(1000)->Arg(10000)->Arg(100000);

// The texts of events; their times have no strings, so it tells less than the contacts' floor.
void CopyEventsFloor(benchmark::State& state) {
  CCalendars items;
  benchmark::DoNotOptimize(VCalendarReader(items).Read(MakeEvents(state.range(0)), true));
  std::string out(static_cast<std::size_t>(state.range(0)) * kCopyRoom, ' ');
  std::int64_t bytes = 0;
  for (auto _ : state) {
    char* to = out.data();
    for (std::int32_t i = 0; i < items.GetCount(); ++i) to += CopyStrings(items[i], to);
    bytes += to - out.data();
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(CopyEventsFloor)->Arg(10000);

void WriteEvents(benchmark::State& state) {
  CCalendars items;
  benchmark::DoNotOptimize(VCalendarReader(items).Read(MakeEvents(state.range(0)), true));
  VObjectBuffer data;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    WriteVCalendar(items, data);
    bytes += data.bytes.length();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(WriteEvents)->Arg(1000)->Arg(10000);

constexpr const char* kPath = "pim_bench_events.db";

std::int32_t Import(const std::string& text) {
  SqliteStore store(kPath);
  const StoreBinding binding(store);
  CalendarImportCounts counts;
  return ImportCalendarText(binding.db(), CalendarType::Event, text, true, counts);
}

// Runs `work` on stores that have their tables and nothing else.
template <class Work>
void OnNewStores(benchmark::State& state, Work work) {
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore(kPath);
    { const SqliteStore made(kPath); }
    state.ResumeTiming();
    work();
  }
  RemoveStore(kPath);
}

void BareEventStatements(benchmark::State& state) {
  RemoveStore(kPath);
  Import(MakeEvents(state.range(0)));
  const std::vector<TableRows> rows = StoredRows(kPath);
  OnNewStores(state, [&] { StoreBare(kPath, rows); });
}

void ImportEvents(benchmark::State& state) {
  const std::string text = MakeEvents(state.range(0));
  OnNewStores(state, [&] {
    if (Import(text) != state.range(0)) state.SkipWithError("not all were stored");
  });
}

BENCHMARK(BareEventStatements)
    ->Arg(1000)
    ->Arg(100000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ImportEvents)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
