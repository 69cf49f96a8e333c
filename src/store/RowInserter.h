#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "records/RecordMap.h"
#include "store/Statement.h"

namespace pim {

// Inserts rows of one table, several by each statement: to run one costs more than to bind a row.
class RowInserter {
 public:
  // A row is a `key`, of the record or of a list's owner, and the fields of an entry.
  RowInserter(Database& db, std::string_view table, std::string_view key,
              std::span<const FieldMap> fields);

  // So many calls of Add follow; the last one inserts what the others have left.
  void Start(std::size_t rows);
  void Add(std::int64_t key, void* entry);

 private:
  std::span<const FieldMap> fields_;
  Statement one_;
  Statement many_;
  std::size_t left_ = 0;   // rows to come
  std::size_t bound_ = 0;  // in `many_`, of those that it takes
};

}  // namespace pim
