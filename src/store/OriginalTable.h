// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zstd.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "pim/store/ImportHistory.h"
#include "store/Statement.h"

namespace pim {

// The contents of imported files, each once: in parts of some megabytes, each a frame of Zstandard
// (RFC 8878) with its checksum. Runs inside the caller's transaction.
class OriginalTable {
 public:
  explicit OriginalTable(Database& db);

  // The key of that content, which is kept from now on where `keeps` says so.
  std::int64_t Add(NarrowStringView bytes, bool keeps);
  // Gives the content part by part until `take` gives false. Throws StoreError for what isn't kept
  // or is damaged.
  void Read(std::int64_t original, const std::function<bool(NarrowStringView)>& take);
  // Takes away the content of the files of an import, or of all; gives how many files had it.
  std::int32_t Drop(std::optional<std::int32_t> import);

 private:
  struct Free {
    void operator()(ZSTD_CCtx* context) const noexcept { ZSTD_freeCCtx(context); }
    void operator()(ZSTD_DCtx* context) const noexcept { ZSTD_freeDCtx(context); }
  };

  struct Known {
    std::int64_t original;
    bool isKept;
  };
  std::optional<Known> Find(const Sha256& digest);
  // None where another program has brought the same in between.
  std::optional<std::int64_t> Insert(const Sha256& digest, NarrowStringView bytes, bool keeps);
  bool IsDamaged(std::int64_t original);
  // The parts behind the first one.
  void KeepRest(std::int64_t original, NarrowStringView bytes);
  // Binds the first part, or NULL for one that isn't kept.
  void BindFirst(Statement& statement, int index, NarrowStringView bytes, bool keeps);
  NarrowStringView Compressed(NarrowStringView part);
  NarrowStringView Unpacked(NarrowStringView content);
  [[noreturn]] void FailAsDamaged();

  Database& db_;
  std::unique_ptr<ZSTD_CCtx, Free> compression_;
  std::unique_ptr<ZSTD_DCtx, Free> unpacking_;
  std::string packed_;    // one piece of memory for all parts
  std::string unpacked_;  // the same
  Statement find_;
  Statement insert_;
  Statement insertPart_;
  Statement keep_;
  Statement info_;
  Statement parts_;
  Statement keptFiles_;
  Statement dropParts_;
  Statement dropPartsOf_;
  Statement drop_;
};

}  // namespace pim
