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

std::int32_t Import(const std::string& text) {
  SqliteStore store(kPath);
  const StoreBinding binding(store);
  ContactImportCounts counts;
  return ImportContactText(binding.db(), text, 0, true, counts);
}

void BareStatements(benchmark::State& state) {
  RemoveStore(kPath);
  Import(MakeCards(state.range(0)));
  const std::vector<TableRows> rows = StoredRows(kPath);
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore(kPath);
    { const SqliteStore made(kPath); }
    state.ResumeTiming();
    StoreBare(kPath, rows);
  }
  RemoveStore(kPath);
}

void ImportCards(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore(kPath);
    { const SqliteStore made(kPath); }
    state.ResumeTiming();
    if (Import(text) != state.range(0)) state.SkipWithError("not all were stored");
  }
  RemoveStore(kPath);
}

void LoadCards(benchmark::State& state) {
  RemoveStore(kPath);
  Import(MakeCards(state.range(0)));
  SqliteStore store(kPath);
  for (auto _ : state) {
    CContacts contacts;
    if (store.LoadContacts(contacts) != state.range(0)) state.SkipWithError("not all came back");
  }
  RemoveStore(kPath);
}

void BareSelects(benchmark::State& state) {
  RemoveStore(kPath);
  Import(MakeCards(state.range(0)));
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

BENCHMARK(BareStatements)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportCards)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BareSelects)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadCards)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
