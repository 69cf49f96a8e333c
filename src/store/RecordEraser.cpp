#include "store/RecordEraser.h"

#include <algorithm>
#include <unordered_set>

#include "pim/records/Contact.h"
#include "records/StoreLayout.h"
#include "store/SqlText.h"

namespace pim {

RecordEraser::RecordEraser(Database& db, const RecordMap& map)
    : record_(db, DeleteSql(map.table, KeyOf(StoreTable(map.table)))) {
  for (const TableLayout& table : StoreTables()) {
    for (const Column& column : table.Columns()) {
      if (column.key == KeyMark::Reference && OwnerOf(column) == map.table)
        references_.emplace_back(db, DeleteSql(table.name, column.name));
    }
  }
}

bool RecordEraser::Erase(std::int32_t key) {
  record_.Bind(1, std::int64_t{key});
  if (record_.RunChanging() == 0) return false;
  for (Statement& rows : references_) {
    rows.Bind(1, std::int64_t{key});
    rows.Run();
  }
  return true;
}

PictureNames::PictureNames(Database& db)
    : PictureNames(db, ContactMap(), KeyOf(StoreTable(ContactMap().table))) {}

PictureNames::PictureNames(Database& db, const RecordMap& map, std::string_view key)
    : field_(*std::ranges::find(map.fields, std::string_view("photo"), &FieldMap::column)),
      ofKey_(db, SelectByKeySql(map.table, key, {&field_, 1})),
      all_(db, SelectSql(map.table, key, {&field_, 1})) {}

WideString PictureNames::NameIn(Statement& row) {
  CContact contact;
  if (!row.IsNull(1)) fields_.Read(row, 1, field_.field(&contact));
  return contact.photo.str();
}

std::vector<WideString> PictureNames::Of(std::span<const std::int32_t> keys) {
  std::unordered_set<WideString> names;
  for (const std::int32_t key : keys) {
    ofKey_.Bind(1, std::int64_t{key});
    for (Rows rows(ofKey_); rows.Next();)
      if (WideString name = NameIn(ofKey_); !name.empty()) names.insert(std::move(name));
  }
  return {names.begin(), names.end()};
}

std::vector<WideString> PictureNames::WithoutStored(const std::vector<WideString>& names) {
  std::unordered_set<WideString> left(names.begin(), names.end());
  if (left.empty()) return {};
  for (Rows rows(all_); rows.Next();)
    if (!all_.IsNull(1)) left.erase(NameIn(all_));
  return {left.begin(), left.end()};
}

}  // namespace pim
