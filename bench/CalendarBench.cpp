#include <benchmark/benchmark.h>

#include <filesystem>
#include <iterator>
#include <string>

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
    VCalendarReader(items).Read(text, true);
    benchmark::DoNotOptimize(items.GetCount());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * std::ssize(text));
}
BENCHMARK(ReadEvents)->Arg(1000)->Arg(100000);

void WriteEvents(benchmark::State& state) {
  CCalendars items;
  VCalendarReader(items).Read(MakeEvents(state.range(0)), true);
  VObjectBuffer data;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    WriteVCalendar(items, data);
    bytes += data.bytes.length();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(WriteEvents)->Arg(1000)->Arg(10000);

void ImportEvents(benchmark::State& state) {
  constexpr const char* kPath = "pim_bench_events.db";
  const std::string text = MakeEvents(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    for (const char* tail : {"", "-wal", "-shm"})
      std::filesystem::remove(std::string(kPath) + tail);
    SqliteStore store(kPath);
    const StoreBinding binding(store);
    state.ResumeTiming();
    CalendarImportCounts counts;
    if (ImportCalendarText(binding.db(), CalendarType::Event, text, true, counts) != state.range(0))
      state.SkipWithError("not all were stored");
  }
  for (const char* tail : {"", "-wal", "-shm"}) std::filesystem::remove(std::string(kPath) + tail);
}
BENCHMARK(ImportEvents)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
