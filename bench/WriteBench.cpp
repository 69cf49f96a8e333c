// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "bench/Floors.h"
#include "bench/Texts.h"
#include "pim/manager/ContactExport.h"
#include "vcard/VCardReader.h"
#include "vcard/VCardWriter.h"

namespace pim::bench {
namespace {

namespace fs = std::filesystem;

CContacts Read(std::int64_t count) {
  CContacts contacts;
  benchmark::DoNotOptimize(VCardReader(contacts).Read(MakeCards(count), true));
  return contacts;
}

void CopyFloor(benchmark::State& state) {
  const CContacts contacts = Read(state.range(0));
  std::string out(kCopyRoom, ' ');
  std::int64_t bytes = 0;
  for (auto _ : state) {
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
      bytes += static_cast<std::int64_t>(CopyStrings(contacts[i], out.data()));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(CopyFloor)->Arg(10000);

void WriteCards(benchmark::State& state) {
  const CContacts contacts = Read(state.range(0));
  VObjectBuffer data;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
      WriteVCard(contacts[i], data);
      bytes += data.bytes.length();
    }
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(WriteCards)->Arg(1000)->Arg(10000);

// Files go to memory: a disk's file system varies too much.
std::string FreshFolder() {
  const std::string folder = "/dev/shm/pim_bench";
  fs::remove_all(folder);
  fs::create_directories(folder);
  return folder + "/";
}

void FilesFloor(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    const std::string folder = FreshFolder();
    const std::string bytes(420, 'x');
    state.ResumeTiming();
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      std::FILE* file = std::fopen((folder + std::to_string(i) + ".vcf").c_str(), "wb");
      std::fwrite(bytes.data(), 1, bytes.size(), file);
      std::fclose(file);
    }
  }
  fs::remove_all("/dev/shm/pim_bench");
}
BENCHMARK(FilesFloor)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// `sameName` gives all contacts one name.
void ExportFiles(benchmark::State& state, bool sameName) {
  CContacts contacts = Read(state.range(0));
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
    const std::string number = sameName ? "0" : std::to_string(i);
    contacts[i].name.family_name = WideString(number.begin(), number.end());
  }
  for (auto _ : state) {
    state.PauseTiming();
    const std::string folder = FreshFolder();
    state.ResumeTiming();
    ContactExport files(WideString(folder.begin(), folder.end()), {}, {});
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
      if (!files.WriteContactFile(contacts[i])) state.SkipWithError("a file wasn't written");
  }
  fs::remove_all("/dev/shm/pim_bench");
}
BENCHMARK_CAPTURE(ExportFiles, OwnNames, false)
    ->Arg(1000)
    ->Arg(100000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ExportFiles, OneName, true)
    ->Arg(1000)
    ->Arg(20000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
