// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <limits>
#include <vector>

#include "bench/FirstTime.h"
#include "pim/platform/Host.h"

// Benchmarks run in alternating rounds and report medians, so that what the machine does meanwhile
// falls on all alike. Flags given on the command line stand behind these and win.
int main(int argc, char** argv) {
  const int status = pim::bench::RunFirstTime(argc, argv);
  if (status >= 0) return status;
  // Freed memory stays here, so that rounds behind the first are warm.
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
  pim::SetAppDataFolder("/nonexistent");  // pictures go to memory alone
  char interleave[] = "--benchmark_enable_random_interleaving=true";
  char repetitions[] = "--benchmark_repetitions=5";
  char medians[] = "--benchmark_report_aggregates_only=true";
  std::vector<char*> arguments = {argv[0], interleave, repetitions, medians};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
