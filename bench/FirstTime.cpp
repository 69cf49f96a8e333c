#include "bench/FirstTime.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "bench/Floors.h"
#include "bench/Texts.h"
#include "vcard/VCardReader.h"

namespace pim::bench {
namespace {

double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double FirstRecords(const std::string& text) {
  CContacts contacts;
  return SecondsOf([&] { VCardReader(contacts).Read(text, true); });
}

double FirstStrings(const std::string& text) {
  std::vector<std::u16string> strings;
  return SecondsOf([&] { strings = MakeStrings(text); });
}

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

BENCHMARK_CAPTURE(FirstTime, Strings, "strings")->Arg(20000)->UseManualTime()->Iterations(3);
BENCHMARK_CAPTURE(FirstTime, Records, "records")->Arg(20000)->UseManualTime()->Iterations(3);

}  // namespace

int RunFirstTime(int argc, char** argv) {
  if (argc != 4 || std::string_view(argv[1]) != "--first") return -1;
  const std::string text = MakeCards(std::atoll(argv[3]));
  const bool records = std::string_view(argv[2]) == "records";
  std::printf("%.9f %zu\n", records ? FirstRecords(text) : FirstStrings(text), text.size());
  return 0;
}

}  // namespace pim::bench
