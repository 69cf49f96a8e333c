// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/FirstTime.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>

#include "bench/Floors.h"
#include "bench/Texts.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim::bench {
namespace {

double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double SecondsOfStrings(const std::string& text) {
  std::vector<std::u16string> strings;
  return SecondsOf([&] { strings = MakeStrings(text); });
}

template <class Records, class Reader>
double SecondsOfRecords(const std::string& text) {
  Records records;
  return SecondsOf([&] { benchmark::DoNotOptimize(Reader(records).Read(text, true)); });
}

struct Work {
  std::string_view name;
  std::string (*make)(std::int64_t count);
  double (*seconds)(const std::string& text);
};
constexpr Work kWorks[] = {
    {"strings", MakeCards, SecondsOfStrings},
    {"records", MakeCards, SecondsOfRecords<CContacts, VCardReader>},
    {"event-strings", MakeEvents, SecondsOfStrings},
    {"event-records", MakeEvents, SecondsOfRecords<CCalendars, VCalendarReader>},
};

void FirstTime(benchmark::State& state, const char* work) {
  const std::string command = "/proc/" + std::to_string(getpid()) + "/exe --first " + work + " " +
                              std::to_string(state.range(0));
  for (auto _ : state) {
    std::FILE* pipe = popen(command.c_str(), "r");
    double seconds = 0;
    long long bytes = 0;
    if (pipe == nullptr || std::fscanf(pipe, "%lf %lld", &seconds, &bytes) != 2)
      state.SkipWithError("the process of its own failed");
    if (pipe != nullptr) pclose(pipe);
    state.SetIterationTime(seconds);
    state.SetBytesProcessed(state.bytes_processed() + bytes);
  }
}

[[maybe_unused]] const bool isRegistered = [] {
  for (const Work& work : kWorks) {
    const std::string name = "FirstTime/" + std::string(work.name);
    benchmark::RegisterBenchmark(name.c_str(), FirstTime, work.name.data())
        ->Arg(20000)
        ->UseManualTime()
        ->Iterations(3);
  }
  return true;
}();

}  // namespace

int RunFirstTime(int argc, char** argv) {
  if (argc != 4 || std::string_view(argv[1]) != "--first") return -1;
  const auto* work = std::ranges::find(kWorks, argv[2], &Work::name);
  if (work == std::end(kWorks)) return 2;
  const std::string text = work->make(std::atoll(argv[3]));
  std::printf("%.9f %zu\n", work->seconds(text), text.size());
  return 0;
}

}  // namespace pim::bench
