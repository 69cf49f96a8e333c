// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "pim/store/ImportHistory.h"
#include "store/FieldIo.h"
#include "store/Statement.h"

namespace pim {

// The bytes of contacts' pictures, each content once, and the names under which contacts have them.
// Runs inside the caller's transaction.
class PictureTable {
 public:
  explicit PictureTable(Database& db);

  // Keeps the bytes under the name, in place of those that it had. None, and what there was stays,
  // for more than a database can hold.
  std::optional<Sha256> Put(WideStringView name, NarrowStringView bytes);
  // None when the store keeps none under the name. Throws StoreError for damaged ones.
  std::optional<NarrowString> Read(WideStringView name);
  std::optional<Sha256> DigestUnder(WideStringView name);

  // Throws where a failure has ended the reading that goes on.
  void CheckReading() { db_.CheckReading(); }

  // Whether a contact has the name.
  bool IsNamed(WideStringView name);
  // The names that contacts from the first key to the last one have, in the order of their keys.
  void AddNames(std::int32_t first, std::int32_t last, std::vector<WideString>& names);
  std::int32_t CountNaming(WideStringView name, const std::function<bool(std::int32_t)>& counts);
  // The name that a contact has; empty for none.
  WideString NameOf(std::int32_t contact);

  // Lets go the bytes of those names that no contact has any more, and gives these names, each
  // once: their files are left to be removed, as long as they hold these bytes.
  std::vector<WideString> Leave(std::vector<WideString> names);
  struct LeftFile {
    WideString name;
    Sha256 digest;
  };
  std::vector<LeftFile> Left();
  // The file of a name that was left is gone.
  void ForgetLeft(WideStringView name);

  // Keeps the pictures of all contacts whose files are there.
  void TakeOver();

 private:
  WideString NameIn(Statement& row, int column);
  void BindName(Statement& statement, WideStringView name);
  std::optional<std::int64_t> FindContent(const Sha256& digest, NarrowStringView bytes);
  std::int64_t ContentIdOf(const Sha256& digest, NarrowStringView bytes);
  struct NameRow {
    std::int64_t key;
    std::int64_t content;  // 0: none
  };
  std::optional<NameRow> Find(WideStringView name);
  void SetContent(std::int64_t row, std::int64_t content);
  void DropUnnamed(std::int64_t content);

  Database& db_;
  FieldReader fields_;
  Statement findContent_;
  Statement healContent_;
  Statement insertContent_;
  Statement claimContent_;
  Statement dropContent_;
  Statement findName_;
  Statement insertName_;
  Statement updateName_;
  Statement leaveName_;
  Statement read_;
  Statement isNamed_;
  Statement ofContacts_;
  Statement left_;
  Statement forgetLeft_;
  Statement allNames_;
};

}  // namespace pim
