// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <string>
#include <vector>

#include "bench/BareStore.h"
#include "bench/Texts.h"
#include "pim/manager/ContactImport.h"
#include "pim/records/Contacts.h"
#include "pim/store/SqliteStore.h"

namespace pim::bench {
namespace {

constexpr const char* kPath = "pim_bench.db";
constexpr const char* kSource = "pim_bench_source.db";

// With the groups that the cards name, as the program imports them.
std::int32_t Import(const std::string& path, const std::string& text) {
  SqliteStore store(path);
  const StoreBinding binding(store);
  ContactImportCounts counts;
  return ImportContactText(binding.db(), text, -1, true, counts);
}

// Times `work` on stores that have their tables and nothing else.
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

void BareMove(benchmark::State& state) {
  RemoveStore(kSource);
  Import(kSource, MakeCards(state.range(0)));
  OnNewStores(state, [&] {
    if (!MoveRows(kSource, kPath)) state.SkipWithError("SQLite fails");
  });
  RemoveStore(kSource);
}

void BareStatements(benchmark::State& state) {
  RemoveStore(kPath);
  Import(kPath, MakeCards(state.range(0)));
  const std::vector<TableRows> rows = StoredRows(kPath);
  OnNewStores(state, [&] { StoreBare(kPath, rows); });
}

void ImportCards(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  OnNewStores(state, [&] {
    if (Import(kPath, text) != state.range(0)) state.SkipWithError("not all were stored");
  });
}

void LoadCards(benchmark::State& state) {
  RemoveStore(kPath);
  Import(kPath, MakeCards(state.range(0)));
  SqliteStore store(kPath);
  for (auto _ : state) {
    CContacts contacts;
    if (store.LoadContacts(contacts) != state.range(0)) state.SkipWithError("not all came back");
  }
  RemoveStore(kPath);
}

void BareSelects(benchmark::State& state) {
  RemoveStore(kPath);
  Import(kPath, MakeCards(state.range(0)));
  for (auto _ : state) {
    sqlite3* db = nullptr;
    sqlite3_open(kPath, &db);
    for (const char* table :
         {"Contacts", "ContactNumbers", "ContactEmails", "ContactUrls", "ContactAddresses",
          "ContactOrganizations", "ContactEvents", "ContactComments"}) {
      sqlite3_stmt* select = nullptr;
      sqlite3_prepare_v2(db, (std::string("SELECT * FROM ") + table + " ORDER BY 1").c_str(), -1,
                         &select, nullptr);
      const int columns = sqlite3_column_count(select);
      while (sqlite3_step(select) == SQLITE_ROW)
        for (int i = 0; i < columns; ++i) benchmark::DoNotOptimize(sqlite3_column_text(select, i));
      sqlite3_finalize(select);
    }
    sqlite3_close(db);
  }
  RemoveStore(kPath);
}

BENCHMARK(BareMove)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BareStatements)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportCards)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BareSelects)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadCards)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
