// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/BareStore.h"

#include <sqlite3.h>

#include <filesystem>
#include <utility>

namespace pim::bench {
namespace {

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

// Owners before what refers to them.
std::vector<std::string> TablesOf(sqlite3* db) {
  std::vector<std::string> tables;
  sqlite3_stmt* list = nullptr;
  sqlite3_prepare_v2(db, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY rowid", -1,
                     &list, nullptr);
  while (sqlite3_step(list) == SQLITE_ROW)
    tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
  sqlite3_finalize(list);
  return tables;
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

}  // namespace

void RemoveStore(const std::string& path) {
  for (const char* tail : {"", "-wal", "-shm"}) std::filesystem::remove(path + tail);
}

std::vector<TableRows> StoredRows(const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  std::vector<TableRows> rows;
  for (const std::string& table : TablesOf(db)) {
    TableRows of = RowsOf(db, table);
    if (!of.rows.empty()) rows.push_back(std::move(of));
  }
  sqlite3_close(db);
  return rows;
}

void StoreBare(const std::string& path, const std::vector<TableRows>& tables) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
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

bool MoveRows(const std::string& from, const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  std::string sql = "PRAGMA synchronous = FULL; ATTACH '" + from + "' AS source; BEGIN IMMEDIATE; ";
  for (const std::string& table : TablesOf(db))
    sql.append("INSERT OR IGNORE INTO main.\"" + table + "\" SELECT * FROM source.\"" + table +
               "\"; ");
  const bool done =
      sqlite3_exec(db, (sql + "COMMIT").c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_close(db);
  return done;
}

}  // namespace pim::bench
