// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/OriginalTable.h"

#include <algorithm>
#include <new>

#include "store/Digest.h"
#include "store/HistoryRules.h"
#include "store/SqlText.h"

namespace pim {
namespace {

// Large enough to be compressed as well as the whole, small enough that a few lines are had without
// unpacking much.
constexpr std::size_t kPartBytes = std::size_t{4} << 20;

// Of the files of import ?1, or of all where it is NULL.
constexpr const char* kOriginalsOfImport =
    "(SELECT original_id FROM ImportFiles WHERE CAST(?1 AS BIGINT) IS NULL OR import_id = ?1)";

class DamagedOriginal final : public StoreError {
 public:
  using StoreError::StoreError;
};

}  // namespace

OriginalTable::OriginalTable(Database& db)
    : db_(db),
      find_(db, "SELECT original_id, is_kept FROM Originals WHERE sha256 = ?"),
      insert_(db, "INSERT INTO Originals (original_id, sha256, bytes, is_kept, content) VALUES (" +
                      db.NextNumberSql("Originals", {"Originals", "ImportFiles", "OriginalParts"}) +
                      ", ?, ?, ?, ?) ON CONFLICT DO NOTHING RETURNING original_id"),
      insertPart_(db, "INSERT INTO OriginalParts (original_id, content) VALUES (?, ?)"),
      keep_(db, "UPDATE Originals SET is_kept = 1, content = ?2 WHERE original_id = ?1"),
      info_(db, "SELECT is_kept, bytes, sha256, content FROM Originals WHERE original_id = ?"),
      parts_(db,
             "SELECT content FROM OriginalParts WHERE original_id = ? ORDER BY original_part_id"),
      keptFiles_(db,
                 "SELECT count(*) FROM ImportFiles JOIN Originals USING (original_id) WHERE "
                 "is_kept = 1 AND original_id IN " +
                     std::string(kOriginalsOfImport)),
      dropParts_(
          db, "DELETE FROM OriginalParts WHERE original_id IN " + std::string(kOriginalsOfImport)),
      dropPartsOf_(db, "DELETE FROM OriginalParts WHERE original_id = ?"),
      drop_(
          db,
          "UPDATE Originals SET is_kept = 0, content = NULL WHERE is_kept = 1 AND original_id IN " +
              std::string(kOriginalsOfImport)) {}

std::int64_t OriginalTable::Add(NarrowStringView bytes, bool keeps) {
  const Sha256 digest = DigestOf(bytes);
  std::optional<Known> known = Find(digest);
  if (!known) {
    if (const auto inserted = Insert(digest, bytes, keeps)) return *inserted;
    known = Find(digest);  // which another program has brought in between
    if (!known) db_.Fail("a file's content can't be stored");
  }
  if (!keeps || (known->isKept && !IsDamaged(known->original))) return known->original;
  dropPartsOf_.Bind(1, known->original);
  dropPartsOf_.Run();
  keep_.Bind(1, known->original);
  BindFirst(keep_, 2, bytes, true);
  keep_.Run();
  KeepRest(known->original, bytes);
  return known->original;
}

std::optional<OriginalTable::Known> OriginalTable::Find(const Sha256& digest) {
  std::optional<Known> known;
  find_.BindBytes(1, BytesOf(digest));
  for (Rows rows(find_); rows.Next();) known = {find_.Integer(0), find_.Integer(1) != 0};
  return known;
}

std::optional<std::int64_t> OriginalTable::Insert(const Sha256& digest, NarrowStringView bytes,
                                                  bool keeps) {
  std::optional<std::int64_t> original;
  insert_.BindBytes(1, BytesOf(digest));
  insert_.Bind(2, static_cast<std::int64_t>(bytes.size()));
  insert_.Bind(3, std::int64_t{keeps ? 1 : 0});
  BindFirst(insert_, 4, bytes, keeps);
  for (Rows rows(insert_); rows.Next();) original = insert_.Integer(0);
  if (original && keeps) KeepRest(*original, bytes);
  return original;
}

// The same bytes are at hand again, and heal it.
bool OriginalTable::IsDamaged(std::int64_t original) {
  try {
    Read(original, [](NarrowStringView) { return true; });
    return false;
  } catch (const DamagedOriginal&) {
    return true;
  }
}

void OriginalTable::BindFirst(Statement& statement, int index, NarrowStringView bytes, bool keeps) {
  if (!keeps) return statement.BindNull(index);
  statement.BindBytes(index, Compressed(bytes.substr(0, kPartBytes)));
}

void OriginalTable::KeepRest(std::int64_t original, NarrowStringView bytes) {
  for (bytes.remove_prefix(std::min(kPartBytes, bytes.size())); !bytes.empty();
       bytes.remove_prefix(std::min(kPartBytes, bytes.size()))) {
    insertPart_.Bind(1, original);
    insertPart_.BindBytes(2, Compressed(bytes.substr(0, kPartBytes)));
    insertPart_.Run();
  }
}

NarrowStringView OriginalTable::Compressed(NarrowStringView part) {
  if (compression_ == nullptr) {
    compression_.reset(ZSTD_createCCtx());
    if (compression_ == nullptr) throw std::bad_alloc();
    ZSTD_CCtx_setParameter(compression_.get(), ZSTD_c_checksumFlag, 1);
  }
  packed_.resize(std::max(packed_.size(), ZSTD_compressBound(part.size())));
  const std::size_t size =
      ZSTD_compress2(compression_.get(), packed_.data(), packed_.size(), part.data(), part.size());
  if (ZSTD_isError(size) != 0) db_.Fail(std::string("compression: ") + ZSTD_getErrorName(size));
  return NarrowStringView(packed_).substr(0, size);
}

NarrowStringView OriginalTable::Unpacked(NarrowStringView content) {
  if (unpacking_ == nullptr) {
    unpacking_.reset(ZSTD_createDCtx());
    if (unpacking_ == nullptr) throw std::bad_alloc();
    unpacked_.resize(kPartBytes);
  }
  const std::size_t size = ZSTD_decompressDCtx(unpacking_.get(), unpacked_.data(), unpacked_.size(),
                                               content.data(), content.size());
  if (ZSTD_isError(size) != 0) FailAsDamaged();
  return NarrowStringView(unpacked_).substr(0, size);
}

void OriginalTable::Read(std::int64_t original, const std::function<bool(NarrowStringView)>& take) {
  info_.Bind(1, original);
  Rows info(info_);
  if (!info.Next() || info_.Integer(0) == 0) db_.Fail(kBytesAreNotKept);
  const std::int64_t bytes = info_.Integer(1);
  const Sha256 wanted = DigestFrom(info_.Bytes(2));
  Digest digest;
  std::int64_t read = 0;
  const auto give = [&](NarrowStringView content) {
    const NarrowStringView part = Unpacked(content);
    read += static_cast<std::int64_t>(part.size());
    if (read > bytes) FailAsDamaged();
    digest.Take(part);
    return take(part);
  };
  if (!give(info_.Bytes(3))) return;
  parts_.Bind(1, original);
  for (Rows rows(parts_); rows.Next();)
    if (!give(parts_.Bytes(0))) return;
  if (read != bytes || digest.Finish() != wanted) FailAsDamaged();
}

std::int32_t OriginalTable::Drop(std::optional<std::int32_t> import) {
  const auto run = [&](Statement& statement) -> Statement& {
    statement.Bind(1, import ? std::optional<std::int64_t>(*import) : std::nullopt);
    return statement;
  };
  std::int32_t files = 0;
  for (Rows rows(run(keptFiles_)); rows.Next();)
    files = static_cast<std::int32_t>(keptFiles_.Integer(0));
  run(dropParts_).Run();
  run(drop_).Run();
  return files;
}

void OriginalTable::FailAsDamaged() {
  throw DamagedOriginal(db_.name(), "the file's kept bytes are damaged");
}

}  // namespace pim
