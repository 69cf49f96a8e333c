#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <string_view>
#include <vector>

#include "pim/support/Strings.h"
#include "records/RecordMap.h"
#include "store/FieldIo.h"
#include "store/Statement.h"

namespace pim {

// Deletes records of one map with the rows of every table that refers to them. Runs inside the
// caller's transaction.
class RecordEraser {
 public:
  RecordEraser(Database& db, const RecordMap& map);

  // False when there is no record of that key.
  bool Erase(std::int32_t key);

 private:
  std::deque<Statement> references_;
  Statement record_;
};

// The names of contacts' pictures.
class PictureNames {
 public:
  explicit PictureNames(Database& db);

  // Those that the contacts of these keys have, each once.
  std::vector<WideString> Of(std::span<const std::int32_t> keys);
  // Those of `names` that no stored contact has. Goes through all contacts, unless there are none.
  std::vector<WideString> WithoutStored(const std::vector<WideString>& names);

 private:
  PictureNames(Database& db, const RecordMap& map, std::string_view key);

  WideString NameIn(Statement& row);

  const FieldMap& field_;
  Statement ofKey_;
  Statement all_;
  FieldReader fields_;
};

}  // namespace pim
