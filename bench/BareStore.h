// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pim::bench {

// What SQLite itself takes to store the rows of a store, to hold the store's own time against.

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

// Deletes a store's file and what SQLite keeps beside it.
void RemoveStore(const std::string& path);

// All rows of the store, without the columns that hold nothing anywhere.
std::vector<TableRows> StoredRows(const std::string& path);

// Stores them in a store that has its tables, in one transaction, each row by a statement.
void StoreBare(const std::string& path, const std::vector<TableRows>& tables);

// Has SQLite copy all rows of the store `from` into one that has its tables and indexes and nothing
// else: a floor, for no value passes through the program. False when it fails.
bool MoveRows(const std::string& from, const std::string& path);

}  // namespace pim::bench
