#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "records/RecordMap.h"
#include "store/Statement.h"

namespace pim {

// Writes records of one map into their table and the tables of their lists. A record is the address
// of the map's record class. Runs inside the caller's transaction.
class RecordWriter {
 public:
  RecordWriter(Database& db, const RecordMap& map);

  bool Holds(std::int32_t key);
  // The highest key that fits a record, or 0.
  std::int32_t HighestKey();
  void Insert(std::int32_t key, void* record);
  // Columns that the map doesn't name stay, in the rows of lists too.
  void Update(std::int32_t key, void* record);

 private:
  RecordWriter(Database& db, const RecordMap& map, std::string_view key);

  struct ListWriter {
    ListWriter(Database& db, const ListMap& list, std::string_view key, std::string_view owner);

    void InsertEntries(std::int64_t owner, void* record, std::size_t first, RuleRow& work);
    void UpdateEntries(std::int64_t owner, void* record, RuleRow& work);

    const ListMap& map;
    Statement insert;
    Statement selectKeys;
    Statement update;
    Statement remove;
  };

  const RecordMap& map_;
  Statement holds_;
  Statement highest_;
  Statement insert_;
  Statement update_;
  std::deque<ListWriter> lists_;
  RuleRow work_;
};

}  // namespace pim
