// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/PictureTable.h"

#include <algorithm>

#include "store/Digest.h"
#include "store/SqlText.h"
#include "store/StoredForms.h"
#include "support/CallerIdPictures.h"

namespace pim {
namespace {

// What SQLite takes as one value, with room for the row, and what a server's dump can hold, where
// each byte is two; a larger one stays a file alone.
constexpr std::size_t kLargestInFile = 900'000'000;
constexpr std::size_t kLargestInServer = 500'000'000;

}  // namespace

PictureTable::PictureTable(Database& db)
    : db_(db),
      findContent_(db, "SELECT picture_id, content = ?2 FROM Pictures WHERE sha256 = ?1" +
                           std::string(db.HoldingSql())),
      healContent_(db, "UPDATE Pictures SET content = ?2 WHERE picture_id = ?1"),
      insertContent_(db, "INSERT INTO Pictures (picture_id, sha256, content) VALUES (" +
                             db.NextNumberSql("Pictures", {"Pictures", "PictureNames"}) +
                             ", ?, ?) ON CONFLICT DO NOTHING RETURNING picture_id"),
      claimContent_(db, "SELECT picture_id FROM Pictures WHERE picture_id = ?" +
                            std::string(db.ClaimingSql())),
      dropContent_(db,
                   "DELETE FROM Pictures WHERE picture_id = ?1 AND NOT EXISTS "
                   "(SELECT 1 FROM PictureNames WHERE picture_id = ?1)"),
      findName_(db, "SELECT picture_name_id, picture_id FROM PictureNames WHERE name = ?"),
      insertName_(db, "INSERT INTO PictureNames (name, picture_id) VALUES (?, ?)"),
      updateName_(db,
                  "UPDATE PictureNames SET picture_id = ?2, left_sha256 = NULL WHERE "
                  "picture_name_id = ?1"),
      leaveName_(db,
                 "UPDATE PictureNames SET picture_id = NULL, left_sha256 = (SELECT sha256 FROM "
                 "Pictures WHERE picture_id = ?2) WHERE picture_name_id = ?1"),
      read_(db,
            "SELECT sha256, content FROM PictureNames JOIN Pictures USING (picture_id) "
            "WHERE name = ?"),
      isNamed_(db, "SELECT contact_id FROM Contacts WHERE photo = ?"),
      ofContacts_(db,
                  "SELECT photo FROM Contacts WHERE contact_id BETWEEN ? AND ? "
                  "AND photo IS NOT NULL ORDER BY contact_id"),
      left_(db, "SELECT name, left_sha256 FROM PictureNames WHERE picture_id IS NULL ORDER BY 1"),
      forgetLeft_(db, "DELETE FROM PictureNames WHERE name = ? AND picture_id IS NULL"),
      allNames_(db, "SELECT DISTINCT photo FROM Contacts WHERE photo IS NOT NULL") {}

WideString PictureTable::NameIn(Statement& row, int column) {
  WideText name;
  fields_.Read(row.row(), column, PictureName{&name});
  return name.str();
}

void PictureTable::BindName(Statement& statement, WideStringView name) {
  AppendStoredText(name, statement.Buffer(1));
  statement.BindBuffer(1);
}

std::optional<std::int64_t> PictureTable::FindContent(const Sha256& digest,
                                                      NarrowStringView bytes) {
  findContent_.BindBytes(1, BytesOf(digest));
  findContent_.BindBytes(2, bytes);
  std::optional<std::int64_t> damaged;
  for (Rows rows(findContent_); rows.Next() && !damaged;) {
    if (findContent_.Integer(1) != 0) return findContent_.Integer(0);
    damaged = findContent_.Integer(0);
  }
  if (damaged) {
    healContent_.Bind(1, *damaged);
    healContent_.BindBytes(2, bytes);
    healContent_.Run();
  }
  return damaged;
}

std::int64_t PictureTable::ContentIdOf(const Sha256& digest, NarrowStringView bytes) {
  if (const auto content = FindContent(digest, bytes)) return *content;
  insertContent_.BindBytes(1, BytesOf(digest));
  insertContent_.BindBytes(2, bytes);
  for (Rows rows(insertContent_); rows.Next();) return insertContent_.Integer(0);
  // Another program has brought the same in between.
  if (const auto content = FindContent(digest, bytes)) return *content;
  db_.Fail("a picture can't be stored");
}

std::optional<Sha256> PictureTable::Put(WideStringView name, NarrowStringView bytes) {
  if (bytes.size() > (db_.IsShared() ? kLargestInServer : kLargestInFile)) return std::nullopt;
  const Sha256 digest = DigestOf(bytes);
  const std::int64_t content = ContentIdOf(digest, bytes);
  if (const auto row = Find(name); !row) {
    BindName(insertName_, name);
    insertName_.Bind(2, content);
    insertName_.Run();
  } else if (row->content != content) {
    SetContent(row->key, content);
    DropUnnamed(row->content);
  }
  return digest;
}

std::optional<PictureTable::NameRow> PictureTable::Find(WideStringView name) {
  BindName(findName_, name);
  Rows rows(findName_);
  if (!rows.Next()) return std::nullopt;
  return NameRow{findName_.Integer(0), findName_.Integer(1)};
}

void PictureTable::SetContent(std::int64_t row, std::int64_t content) {
  updateName_.Bind(1, row);
  updateName_.Bind(2, content);
  updateName_.Run();
}

// Another program that stores a contact with the same picture meanwhile is waited for; its name for
// it is seen by the next statement alone.
void PictureTable::DropUnnamed(std::int64_t content) {
  if (db_.IsShared()) {
    claimContent_.Bind(1, content);
    claimContent_.Run();
  }
  dropContent_.Bind(1, content);
  dropContent_.Run();
}

std::optional<NarrowString> PictureTable::Read(WideStringView name) {
  BindName(read_, name);
  Rows rows(read_);
  if (!rows.Next()) return std::nullopt;
  const Sha256 digest = DigestFrom(read_.Bytes(0));
  NarrowString bytes(read_.Bytes(1));
  if (DigestOf(bytes) != digest) db_.Fail("a picture in it is damaged");
  return bytes;
}

std::optional<Sha256> PictureTable::DigestUnder(WideStringView name) {
  BindName(read_, name);
  Rows rows(read_);
  if (!rows.Next()) return std::nullopt;
  return DigestFrom(read_.Bytes(0));
}

bool PictureTable::IsNamed(WideStringView name) {
  BindName(isNamed_, name);
  Rows rows(isNamed_);
  return rows.Next();
}

std::int32_t PictureTable::CountNaming(WideStringView name,
                                       const std::function<bool(std::int32_t)>& counts) {
  std::int32_t count = 0;
  BindName(isNamed_, name);
  for (Rows rows(isNamed_); rows.Next();)
    count += counts(KeyFromStored(isNamed_.Integer(0))) ? 1 : 0;
  return count;
}

void PictureTable::AddNames(std::int32_t first, std::int32_t last, std::vector<WideString>& names) {
  ofContacts_.Bind(1, std::int64_t{first});
  ofContacts_.Bind(2, std::int64_t{last});
  for (Rows rows(ofContacts_); rows.Next();)
    if (WideString name = NameIn(ofContacts_, 0); !name.empty()) names.push_back(std::move(name));
}

WideString PictureTable::NameOf(std::int32_t contact) {
  std::vector<WideString> names;
  AddNames(contact, contact, names);
  return names.empty() ? WideString() : std::move(names.front());
}

std::vector<WideString> PictureTable::Leave(std::vector<WideString> names) {
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  std::erase_if(names, [this](const WideString& name) { return name.empty() || IsNamed(name); });
  for (const WideString& name : names) {
    const auto row = Find(name);
    if (!row || row->content == 0) continue;  // the file is none of the store's
    leaveName_.Bind(1, row->key);
    leaveName_.Bind(2, row->content);
    leaveName_.Run();
    DropUnnamed(row->content);
  }
  return names;
}

std::vector<PictureTable::LeftFile> PictureTable::Left() {
  std::vector<LeftFile> files;
  for (Rows rows(left_); rows.Next();) {
    files.push_back(
        {left_.IsNull(0) ? WideString() : NameIn(left_, 0), DigestFrom(left_.Bytes(1))});
  }
  return files;
}

void PictureTable::ForgetLeft(WideStringView name) {
  BindName(forgetLeft_, name);
  forgetLeft_.Run();
}

void PictureTable::TakeOver() {
  std::vector<WideString> names;
  for (Rows rows(allNames_); rows.Next();) names.push_back(NameIn(allNames_, 0));
  for (const WideString& name : names) {
    if (name.empty()) continue;
    if (const NarrowString bytes = ReadCallerIdPicture(name); !bytes.empty()) Put(name, bytes);
  }
}

}  // namespace pim
