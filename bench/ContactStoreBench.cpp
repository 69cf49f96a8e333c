#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "bench/Texts.h"
#include "pim/manager/ContactImport.h"
#include "pim/records/Contacts.h"
#include "pim/store/SqliteStore.h"

namespace pim::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPath = "pim_bench.db";

void RemoveStore() {
  for (const char* tail : {"", "-wal", "-shm"}) fs::remove(std::string(kPath) + tail);
}

std::int32_t Import(const std::string& text) {
  SqliteStore store(kPath);
  const StoreBinding binding(store);
  ContactImportCounts counts;
  return ImportContactText(binding.db(), text, 0, true, counts);
}

struct Value {
  bool isNull = false;
  bool isNumber = false;
  std::int64_t number = 0;
  std::string text;
};

// All rows of a table, and the statement that stores them.
struct TableRows {
  std::string insert;
  std::vector<std::vector<Value>> rows;
};

Value ValueOf(sqlite3_stmt* statement, int column) {
  Value value;
  value.isNull = sqlite3_column_type(statement, column) == SQLITE_NULL;
  value.isNumber = sqlite3_column_type(statement, column) == SQLITE_INTEGER;
  if (value.isNumber) value.number = sqlite3_column_int64(statement, column);
  if (!value.isNull && !value.isNumber)
    value.text.assign(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                      static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
  return value;
}

TableRows RowsOf(sqlite3* db, const std::string& table) {
  TableRows rows;
  sqlite3_stmt* select = nullptr;
  sqlite3_prepare_v2(db, ("SELECT * FROM \"" + table + "\"").c_str(), -1, &select, nullptr);
  const int columns = sqlite3_column_count(select);
  std::vector<bool> used(static_cast<std::size_t>(columns));
  std::vector<std::vector<Value>> all;
  while (sqlite3_step(select) == SQLITE_ROW) {
    auto& row = all.emplace_back();
    for (int i = 0; i < columns; ++i) {
      row.push_back(ValueOf(select, i));
      if (!row.back().isNull) used[static_cast<std::size_t>(i)] = true;
    }
  }
  // Only columns that hold something anywhere: the least that a store could write.
  std::string names;
  std::string marks;
  for (int i = 0; i < columns; ++i) {
    if (!used[static_cast<std::size_t>(i)]) continue;
    names.append(names.empty() ? "\"" : ", \"").append(sqlite3_column_name(select, i)).append("\"");
    marks.append(marks.empty() ? "?" : ", ?");
  }
  sqlite3_finalize(select);
  for (auto& row : all) {
    auto& kept = rows.rows.emplace_back();
    for (std::size_t i = 0; i < row.size(); ++i)
      if (used[i]) kept.push_back(std::move(row[i]));
  }
  rows.insert = "INSERT INTO \"" + table + "\" (" + names + ") VALUES (" + marks + ")";
  return rows;
}

std::vector<TableRows> StoredRows() {
  sqlite3* db = nullptr;
  sqlite3_open(kPath, &db);
  std::vector<std::string> tables;
  sqlite3_stmt* list = nullptr;
  sqlite3_prepare_v2(db, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY rowid", -1,
                     &list, nullptr);
  while (sqlite3_step(list) == SQLITE_ROW)
    tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
  sqlite3_finalize(list);
  std::vector<TableRows> rows;
  for (const std::string& table : tables) {
    TableRows of = RowsOf(db, table);
    if (!of.rows.empty()) rows.push_back(std::move(of));
  }
  sqlite3_close(db);
  return rows;
}

void StoreBare(const std::vector<TableRows>& tables) {
  sqlite3* db = nullptr;
  sqlite3_open(kPath, &db);
  for (const char* sql :
       {"PRAGMA synchronous = FULL", "PRAGMA foreign_keys = ON", "BEGIN IMMEDIATE"})
    sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
  for (const TableRows& table : tables) {
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, table.insert.c_str(), -1, &insert, nullptr);
    for (const auto& row : table.rows) {
      for (int i = 0; i < static_cast<int>(row.size()); ++i) {
        const Value& value = row[static_cast<std::size_t>(i)];
        if (value.isNull) {
          sqlite3_bind_null(insert, i + 1);
        } else if (value.isNumber) {
          sqlite3_bind_int64(insert, i + 1, value.number);
        } else {
          sqlite3_bind_text(insert, i + 1, value.text.data(), static_cast<int>(value.text.size()),
                            SQLITE_STATIC);
        }
      }
      sqlite3_step(insert);
      sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
  }
  sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(db);
}

void BareStatements(benchmark::State& state) {
  RemoveStore();
  Import(MakeCards(state.range(0)));
  const std::vector<TableRows> rows = StoredRows();
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore();
    { const SqliteStore made(kPath); }
    state.ResumeTiming();
    StoreBare(rows);
  }
  RemoveStore();
}

void ImportCards(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    RemoveStore();
    { const SqliteStore made(kPath); }
    state.ResumeTiming();
    if (Import(text) != state.range(0)) state.SkipWithError("not all were stored");
  }
  RemoveStore();
}

void LoadCards(benchmark::State& state) {
  RemoveStore();
  Import(MakeCards(state.range(0)));
  SqliteStore store(kPath);
  for (auto _ : state) {
    CContacts contacts;
    if (store.LoadContacts(contacts) != state.range(0)) state.SkipWithError("not all came back");
  }
  RemoveStore();
}

void BareSelects(benchmark::State& state) {
  RemoveStore();
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
  RemoveStore();
}

BENCHMARK(BareStatements)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportCards)->Arg(1000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BareSelects)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadCards)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace pim::bench
