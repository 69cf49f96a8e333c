// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The store in a PostgreSQL server, beside bare libpq doing the same rows. PIM_TEST_POSTGRES names
// the server, whose database must let tables be made; without it nothing here runs.
#include <benchmark/benchmark.h>
#include <libpq-fe.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/Texts.h"
#include "pim/manager/ContactImport.h"
#include "pim/records/Contacts.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/PostgresStore.h"

namespace pim::bench {
namespace {

struct ClosePostgres {
  void operator()(PGconn* connection) const { PQfinish(connection); }
  void operator()(PGresult* result) const { PQclear(result); }
};
using ServerConnection = std::unique_ptr<PGconn, ClosePostgres>;
using ServerResult = std::unique_ptr<PGresult, ClosePostgres>;

const char* ServerUrl() { return std::getenv("PIM_TEST_POSTGRES"); }
std::string UrlOf(const std::string& schema) {
  return std::string(ServerUrl()) + "&options=-csearch_path%3D" + schema;
}

ServerConnection Connected(const std::string& url) {
  ServerConnection connection(PQconnectdb(url.c_str()));
  PQsetNoticeProcessor(
      connection.get(), [](void*, const char*) {}, nullptr);
  return connection;
}
bool RunOn(const ServerConnection& connection, const std::string& sql) {
  const ServerResult result(PQexec(connection.get(), sql.c_str()));
  const ExecStatusType status = PQresultStatus(result.get());
  return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

constexpr const char* kSchema = "pim_bench";
constexpr const char* kSourceSchema = "pim_bench_source";

void MakeSchema(const char* schema) {
  RunOn(Connected(ServerUrl()),
        std::string("DROP SCHEMA IF EXISTS ") + schema + " CASCADE; CREATE SCHEMA " + schema);
  const PostgresStore made(UrlOf(schema));
}
void DropSchema(const char* schema) {
  RunOn(Connected(ServerUrl()), std::string("DROP SCHEMA ") + schema + " CASCADE");
}

// As the program imports a file: in one transaction, with its history.
std::int32_t ImportToServer(const char* schema, const std::string& text, bool keepDuplicates) {
  PostgresStore store(UrlOf(schema));
  const StoreBinding binding(store);
  StoreTransaction transaction(store);
  ImportHistory& history = *store.History();
  if (history.BeginImport({"contacts import", {}}) < 0) return -1;
  if (!history.BeginFile("bench.vcf", text)) return -1;
  ContactImportCounts counts;
  const std::int32_t stored = ImportContactText(binding.db(), text, -1, keepDuplicates, counts);
  if (!history.EndFile({}, true) || !history.EndImport() || !transaction.Commit()) return -1;
  return stored;
}

struct CopiedTable {
  std::string name;
  std::vector<std::string> chunks;
};

std::vector<std::string> CopyOut(const ServerConnection& connection, const std::string& name) {
  std::vector<std::string> chunks;
  RunOn(connection, "SELECT 1");
  const ServerResult started(
      PQexec(connection.get(), ("COPY " + name + " TO STDOUT (FORMAT binary)").c_str()));
  char* row = nullptr;
  for (int size = PQgetCopyData(connection.get(), &row, 0); size > 0;
       size = PQgetCopyData(connection.get(), &row, 0)) {
    chunks.emplace_back(row, static_cast<std::size_t>(size));
    PQfreemem(row);
  }
  while (const ServerResult rest{PQgetResult(connection.get())}) {
  }
  return chunks;
}

const char* const kFilledTables[] = {"imports",          "originals",
                                     "importfiles",      "contacts",
                                     "contactgroups",    "contactnumbers",
                                     "contactemails",    "contacturls",
                                     "contactaddresses", "contactorganizations",
                                     "contactevents",    "contactcomments",
                                     "contactnicknames", "contacts_contactgroups",
                                     "contactcontents",  "contactorigins"};

bool CopyIn(const ServerConnection& connection, const std::vector<CopiedTable>& tables) {
  if (!RunOn(connection, "BEGIN")) return false;
  for (const CopiedTable& table : tables) {
    const ServerResult started(
        PQexec(connection.get(), ("COPY " + table.name + " FROM STDIN (FORMAT binary)").c_str()));
    for (const std::string& chunk : table.chunks)
      PQputCopyData(connection.get(), chunk.data(), static_cast<int>(chunk.size()));
    PQputCopyEnd(connection.get(), nullptr);
    while (const ServerResult result{PQgetResult(connection.get())})
      if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) return false;
  }
  return RunOn(connection, "COMMIT");
}

void ServerBareCopy(benchmark::State& state) {
  MakeSchema(kSourceSchema);
  ImportToServer(kSourceSchema, MakeCards(state.range(0)), true);
  std::vector<CopiedTable> tables;
  const ServerConnection source = Connected(UrlOf(kSourceSchema));
  for (const char* name : kFilledTables) tables.push_back({name, CopyOut(source, name)});
  for (auto _ : state) {
    state.PauseTiming();
    MakeSchema(kSchema);
    const ServerConnection target = Connected(UrlOf(kSchema));
    RunOn(target, "SET pimvobj.store = 'on'");
    RunOn(target, "CHECKPOINT");  // where the role may
    state.ResumeTiming();
    if (!CopyIn(target, tables)) state.SkipWithError("COPY fails");
  }
  DropSchema(kSourceSchema);
  DropSchema(kSchema);
}

void ServerImport(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    MakeSchema(kSchema);
    RunOn(Connected(ServerUrl()), "CHECKPOINT");
    state.ResumeTiming();
    if (ImportToServer(kSchema, text, true) != state.range(0))
      state.SkipWithError("not all were stored");
  }
  DropSchema(kSchema);
}

void ServerImportAgain(benchmark::State& state) {
  const std::string text = MakeCards(state.range(0));
  MakeSchema(kSchema);
  ImportToServer(kSchema, text, true);
  for (auto _ : state)
    if (ImportToServer(kSchema, text, false) != 0) state.SkipWithError("some were stored again");
  DropSchema(kSchema);
}

void ServerBareCopyTo(benchmark::State& state) {
  MakeSchema(kSchema);
  ImportToServer(kSchema, MakeCards(state.range(0)), true);
  const ServerConnection source = Connected(UrlOf(kSchema));
  for (auto _ : state) {
    for (const char* name : kFilledTables) {
      const std::string table = name;
      if (table == "contactcontents" || table == "contactorigins" || table == "originals") continue;
      benchmark::DoNotOptimize(CopyOut(source, table));
    }
  }
  DropSchema(kSchema);
}

void ServerVisit(benchmark::State& state) {
  MakeSchema(kSchema);
  ImportToServer(kSchema, MakeCards(state.range(0)), true);
  PostgresStore store(UrlOf(kSchema), StoreAccess::ReadOnly);
  for (auto _ : state) {
    if (store.VisitContacts([](CContact&) { return true; }) != state.range(0))
      state.SkipWithError("not all came back");
  }
  DropSchema(kSchema);
}

const bool kIsRegistered = [] {
  if (ServerUrl() == nullptr) return false;
  const struct {
    const char* name;
    void (*run)(benchmark::State&);
  } kBenchmarks[] = {{"ServerBareCopy", ServerBareCopy},
                     {"ServerImport", ServerImport},
                     {"ServerImportAgain", ServerImportAgain},
                     {"ServerBareCopyTo", ServerBareCopyTo},
                     {"ServerVisit", ServerVisit}};
  for (const auto& [name, run] : kBenchmarks) {
    benchmark::RegisterBenchmark(name, run)->Arg(100000)->Iterations(1)->UseRealTime()->Unit(
        benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace pim::bench
