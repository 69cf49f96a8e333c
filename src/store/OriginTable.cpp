// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/OriginTable.h"

#include <cstring>

#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {
namespace {

NarrowStringView BytesOf(const Fingerprint& print) {
  return {reinterpret_cast<const char*>(&print), sizeof print};
}

}  // namespace

OriginTable::OriginTable(Database& db, StoredKind kind)
    : OriginTable(db, kind == StoredKind::Contact
                          ? Names{"ContactOrigins", "Contacts", "contact_id"}
                          : Names{"CalendarOrigins", "Calendars", "calendar_id"}) {}

OriginTable::OriginTable(Database& db, const Names& names)
    : insert_(db, names.table,
              {names.key, "import_file_id", "first_line", "last_line", "fingerprint"}),
      change_(db, "UPDATE " + names.table + " SET fingerprint = ?4 WHERE " + names.key +
                      " = ?1 AND (import_file_id = ?3 OR import_file_id IN (SELECT import_file_id "
                      "FROM ImportFiles WHERE import_id = ?2))"),
      forget_(db, DeleteRangeSql(names.table, names.key)),
      holdsRecord_(db, SelectKeysSql(names.records, names.key, names.key)),
      find_(db, "SELECT import_id, import_file_id, first_line, last_line FROM " + names.table +
                    " JOIN ImportFiles USING (import_file_id) WHERE " + names.key + " = ?"),
      ofImport_(db, "SELECT " + names.key + ", fingerprint FROM " + names.table +
                        " JOIN ImportFiles USING (import_file_id) JOIN " + names.records +
                        " USING (" + names.key + ") WHERE import_id = ? ORDER BY 1") {}

void OriginTable::Flush() {
  insert_.Start(rows_.size());
  for (const Row& row : rows_) {
    insert_.AddRow([&row](Parameters& place, int index) {
      place.Bind(index, std::int64_t{row.key});
      place.Bind(++index, row.file);
      for (const std::int64_t line : {row.firstLine, row.lastLine}) {
        ++index;
        line == 0 ? place.BindNull(index) : place.Bind(index, line);
      }
      place.BindBytes(++index, BytesOf(row.print));
    });
  }
  rows_.clear();
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
