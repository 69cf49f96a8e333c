#include "store/RecordWriter.h"

#include <vector>

#include "records/StoreLayout.h"
#include "store/FieldIo.h"
#include "store/SqlText.h"

namespace pim {

namespace {

void BindRow(Statement& statement, std::int64_t key, std::span<const FieldMap> fields,
             void* entry) {
  statement.Bind(1, key);
  int index = 2;
  for (const FieldMap& field : fields) BindField(statement, index++, field.field(entry));
}

}  // namespace

RecordWriter::RecordWriter(Database& db, const RecordMap& map)
    : RecordWriter(db, map, KeyOf(StoreTable(map.table))) {}

RecordWriter::RecordWriter(Database& db, const RecordMap& map, std::string_view key)
    : map_(map),
      holds_(db, SelectKeysSql(map.table, key, key)),
      highest_(db, HighestKeySql(map.table, key)),
      insert_(db, InsertSql(map.table, key, map.fields)),
      update_(db, UpdateSql(map.table, key, map.fields)) {
  for (const ListMap& list : map.lists)
    lists_.emplace_back(db, list, KeyOf(StoreTable(list.table)), key);
}

bool RecordWriter::Holds(std::int32_t key) {
  holds_.Bind(1, std::int64_t{key});
  Rows rows(holds_);
  return rows.Next();
}

std::int32_t RecordWriter::HighestKey() {
  Rows rows(highest_);
  return rows.Next() ? static_cast<std::int32_t>(highest_.Integer(0)) : 0;
}

void RecordWriter::Insert(std::int32_t key, void* record) {
  BindRow(insert_, key, map_.fields, record);
  insert_.Run();
  for (ListWriter& list : lists_) list.InsertEntries(key, record, 0, work_);
}

void RecordWriter::Update(std::int32_t key, void* record) {
  BindRow(update_, key, map_.fields, record);
  update_.Run();
  for (ListWriter& list : lists_) list.UpdateEntries(key, record, work_);
}

RecordWriter::ListWriter::ListWriter(Database& db, const ListMap& list, std::string_view key,
                                     std::string_view owner)
    : map(list),
      insert(db, InsertSql(list.table, owner, list.fields)),
      selectKeys(db, SelectKeysSql(list.table, key, owner)),
      update(db, UpdateSql(list.table, key, list.fields)),
      remove(db, DeleteSql(list.table, key)) {}

void RecordWriter::ListWriter::InsertEntries(std::int64_t owner, void* record, std::size_t first,
                                             RuleRow& work) {
  const std::size_t count = map.count(record);
  for (std::size_t i = first; i < count; ++i) {
    BindRow(insert, owner, map.fields, map.at(record, i, work));
    insert.Run();
  }
}

// Row by row in their order, so that what another program keeps in further columns stays.
void RecordWriter::ListWriter::UpdateEntries(std::int64_t owner, void* record, RuleRow& work) {
  std::vector<std::int64_t> keys;
  selectKeys.Bind(1, owner);
  for (Rows rows(selectKeys); rows.Next();) keys.push_back(selectKeys.Integer(0));
  const std::size_t count = map.count(record);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i < count) {
      BindRow(update, keys[i], map.fields, map.at(record, i, work));
      update.Run();
    } else {
      remove.Bind(1, keys[i]);
      remove.Run();
    }
  }
  InsertEntries(owner, record, keys.size(), work);
}

}  // namespace pim
