// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

#include "bench/BareStore.h"
#include "bench/Texts.h"
#include "pim/manager/ContactImport.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/SqliteStore.h"

namespace pim::bench {
namespace {

constexpr const char* kPath = "pim_bench_history.db";

// How an import is remembered. Plain: not at all, as an earlier version did.
enum Remembered { kPlain, kWithoutOriginals, kWithOriginals };

// The texts as files of one import, in one transaction; each with its lines, as the program tells
// them. False when the store fails.
bool Import(SqliteStore& store, const std::vector<std::string>& texts, int remembered) {
  const StoreBinding binding(store);
  ImportHistory& history = *store.History();
  const bool remembers = remembered != kPlain;
  StoreTransaction all(store);
  if (remembers && history.BeginImport({"contacts import", {}}) < 0) return false;
  std::vector<RecordLines> lines;
  const TextObserver observer{{}, {}, [&](std::span<const SavedRecord> records) {
                                lines.clear();
                                for (const auto& [record, key] : records)
                                  lines.push_back({key, record * 10 + 1, record * 10 + 10});
                                static_cast<void>(history.AddLines(lines));
                              }};
  for (const std::string& text : texts) {
    StoreTransaction one(store);
    ContactImportCounts counts;
    if (remembers && !history.BeginFile("backup.vcf", text)) return false;
    if (ImportContactText(binding.db(), text, -1, false, counts, {},
                          remembers ? observer : TextObserver()) < 0)
      return false;
    if (remembers && !history.EndFile({}, remembered == kWithOriginals)) return false;
    if (!one.Commit()) return false;
  }
  return (!remembers || history.EndImport()) && all.Commit();
}

// The store's file as it is once its log is in it.
double BytesOfStore() {
  std::error_code error;
  return static_cast<double>(std::filesystem::file_size(kPath, error));
}

void ImportFiles(benchmark::State& state, const std::vector<std::string>& texts, int remembered) {
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore(kPath);
    auto store = std::make_unique<SqliteStore>(kPath);
    state.ResumeTiming();
    if (!Import(*store, texts, remembered)) state.SkipWithError("the store fails");
    store.reset();
  }
  state.counters["store_bytes"] = BytesOfStore();
  RemoveStore(kPath);
}

void ImportOneFile(benchmark::State& state) {
  ImportFiles(state, {MakeCards(100000)}, static_cast<int>(state.range(0)));
}

void ImportManyFiles(benchmark::State& state) {
  const std::string text = MakeCards(100000);
  std::vector<std::string> cards;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find("END:VCARD\r\n", at) + 11;
    cards.push_back(text.substr(at, end - at));
    at = end;
  }
  ImportFiles(state, cards, static_cast<int>(state.range(0)));
}

// What SQLite takes for the rows alone, the originals' included.
void BareRows(benchmark::State& state) {
  std::vector<TableRows> rows;
  {
    RemoveStore(kPath);
    SqliteStore store(kPath);
    if (!Import(store, {MakeCards(100000)}, static_cast<int>(state.range(0))))
      state.SkipWithError("the store fails");
    rows = StoredRows(kPath);
  }
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore(kPath);
    { const SqliteStore made(kPath); }
    state.ResumeTiming();
    StoreBare(kPath, rows);
  }
  RemoveStore(kPath);
}

void UndoOneFile(benchmark::State& state) {
  const std::vector<std::string> texts{MakeCards(100000)};
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore(kPath);
    auto store = std::make_unique<SqliteStore>(kPath);
    if (!Import(*store, texts, kWithOriginals)) state.SkipWithError("the store fails");
    store = std::make_unique<SqliteStore>(kPath);
    state.ResumeTiming();
    UndoResult result;
    if (store->History()->Undo({}, result) != 0) state.SkipWithError("nothing is undone");
    store.reset();
  }
  RemoveStore(kPath);
}

BENCHMARK(BareRows)->Arg(kPlain)->Arg(kWithOriginals)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportOneFile)
    ->DenseRange(kPlain, kWithOriginals)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ImportManyFiles)
    ->DenseRange(kPlain, kWithOriginals)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(UndoOneFile)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
