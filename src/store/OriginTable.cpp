// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/OriginTable.h"

#include <cstring>

#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {
namespace {

constexpr std::size_t kOriginsAtOnce = 32;

std::string InsertRows(const std::string& table, const std::string& key, std::size_t rows) {
  std::string sql = "INSERT INTO " + table + " (" + key +
                    ", import_file_id, first_line, last_line, fingerprint) VALUES ";
  for (std::size_t i = 0; i < rows; ++i) sql += i == 0 ? "(?, ?, ?, ?, ?)" : ", (?, ?, ?, ?, ?)";
  return sql;
}

NarrowStringView BytesOf(const Fingerprint& print) {
  return {reinterpret_cast<const char*>(&print), sizeof print};
}

}  // namespace

OriginTable::OriginTable(Database& db, StoredKind kind)
    : OriginTable(db, kind == StoredKind::Contact
                          ? Names{"ContactOrigins", "Contacts", "contact_id"}
                          : Names{"CalendarOrigins", "Calendars", "calendar_id"}) {}

OriginTable::OriginTable(Database& db, const Names& names)
    : one_(db, InsertRows(names.table, names.key, 1)),
      many_(db, InsertRows(names.table, names.key, kOriginsAtOnce)),
      change_(db, "UPDATE " + names.table + " SET fingerprint = ?4 WHERE " + names.key +
                      " = ?1 AND (import_file_id = ?3 OR import_file_id IN (SELECT import_file_id "
                      "FROM ImportFiles WHERE import_id = ?2))"),
      forget_(db, DeleteRangeSql(names.table, names.key)),
      holdsRecord_(db, SelectKeysSql(names.records, names.key, names.key)),
      find_(db, "SELECT import_id, import_file_id, first_line, last_line FROM " + names.table +
                    " JOIN ImportFiles USING (import_file_id) WHERE " + names.key + " = ?"),
      ofImport_(db, "SELECT " + names.key + ", fingerprint FROM " + names.table +
                        " JOIN ImportFiles USING (import_file_id) JOIN " + names.records +
                        " USING (" + names.key + ") WHERE import_id = ? ORDER BY 1") {
  rows_.reserve(kOriginsAtOnce);
}

void OriginTable::Add(const Row& row) {
  rows_.push_back(row);
  if (rows_.size() < kOriginsAtOnce) return;
  Run(many_, 0);
  rows_.clear();
}

void OriginTable::Flush() {
  for (std::size_t i = 0; i < rows_.size(); ++i) Run(one_, i);
  rows_.clear();
}

// From the row `at` on, as many as the statement takes.
void OriginTable::Run(Statement& statement, std::size_t at) {
  const std::size_t rows = &statement == &many_ ? kOriginsAtOnce : 1;
  int index = 0;
  for (std::size_t i = at; i < at + rows; ++i) {
    const Row& row = rows_[i];
    statement.Bind(++index, std::int64_t{row.key});
    statement.Bind(++index, row.file);
    for (const std::int64_t line : {row.firstLine, row.lastLine})
      statement.Bind(++index, line == 0 ? std::nullopt : std::optional(line));
    statement.BindBytes(++index, BytesOf(row.print));
  }
  statement.Run();
}

void OriginTable::Change(std::int32_t key, std::int32_t import, std::int64_t file,
                         const Fingerprint& print) {
  change_.Bind(1, std::int64_t{key});
  change_.Bind(2, std::int64_t{import});
  change_.Bind(3, file);
  change_.BindBytes(4, BytesOf(print));
  change_.Run();
}

void OriginTable::ForgetKeys(std::int32_t first, std::int32_t last) {
  forget_.Bind(1, std::int64_t{first});
  forget_.Bind(2, std::int64_t{last});
  forget_.Run();
}

bool OriginTable::HoldsRecord(std::int32_t key) {
  holdsRecord_.Bind(1, std::int64_t{key});
  Rows rows(holdsRecord_);
  return rows.Next();
}

bool OriginTable::Find(std::int32_t key, RecordOrigin& origin) {
  find_.Bind(1, std::int64_t{key});
  Rows rows(find_);
  if (!rows.Next()) return false;
  origin.import = static_cast<std::int32_t>(find_.Integer(0));
  origin.file = find_.Integer(1);
  origin.firstLine = find_.Integer(2);
  origin.lastLine = find_.Integer(3);
  return true;
}

void OriginTable::VisitOfImport(std::int32_t import,
                                const std::function<void(const KeyedPrint&)>& visitor) {
  ofImport_.Bind(1, std::int64_t{import});
  for (Rows rows(ofImport_); rows.Next();) {
    KeyedPrint row{KeyFromStored(ofImport_.Integer(0)), {}};
    const NarrowStringView bytes = ofImport_.Bytes(1);
    if (bytes.size() == sizeof row.print) std::memcpy(&row.print, bytes.data(), bytes.size());
    if (row.key > 0) visitor(row);
  }
}

}  // namespace pim
