// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "pim/records/ForwardingStore.h"
#include "pim/store/ImportHistory.h"

namespace pim::app {

// What a server does to a program that imports.
enum class Trouble : std::uint8_t {
  Lost,      // all since the outermost transaction's beginning is undone, and the rest of it fails
  Conflict,  // the operation alone fails
};

using Fails = std::function<bool(int operation)>;

// Counts the operations of an import and fails in some of them.
class Troubles {
 public:
  // `fails` says by an operation's number, from 1, whether it does.
  Troubles(RecordStore& store, Trouble kind, Fails fails)
      : store_(store), kind_(kind), fails_(std::move(fails)) {}

  // Gives what the operation gives, or -1 or false where it fails.
  template <class Operation>
  auto Meet(Operation operation) -> decltype(operation()) {
    using Result = decltype(operation());
    const Result failed = std::is_same_v<Result, bool> ? Result(0) : Result(-1);
    if (!isLost_ && !fails_(++count_)) {
      const Result result = operation();
      if (result == failed) mayTryAgain_ = false;  // it has failed by itself
      return result;
    }
    mayTryAgain_ = true;
    if (!isLost_ && kind_ == Trouble::Lost && level_ > 0) {
      isLost_ = true;
      while (store_.Rollback()) {
      }
    }
    return failed;
  }
  bool Begin() {
    const bool begun = Meet([this] { return store_.Begin(); });
    level_ += begun ? 1 : 0;
    return begun;
  }
  bool Commit() {
    const bool committed = Meet([this] { return store_.Commit(); });
    level_ -= committed ? 1 : 0;
    return committed;
  }
  bool Rollback() noexcept {
    if (level_ == 0) return false;
    --level_;
    if (!isLost_) return store_.Rollback();
    isLost_ = level_ > 0;
    return true;
  }
  int count() const { return count_; }
  bool mayTryAgain() const { return mayTryAgain_; }

 private:
  RecordStore& store_;
  Trouble kind_;
  Fails fails_;
  int count_ = 0;
  int level_ = 0;
  bool mayTryAgain_ = false;
  bool isLost_ = false;  // until all transactions are rolled back
};

// The history of a store with troubles.
class FailingHistory final : public ImportHistory {
 public:
  FailingHistory(ImportHistory& history, Troubles& troubles)
      : history_(history), troubles_(troubles) {}

  std::int32_t BeginImport(const ImportStart& start) override {
    return troubles_.Meet([&] { return history_.BeginImport(start); });
  }
  bool BeginFile(std::string_view name, NarrowStringView bytes) override {
    return troubles_.Meet([&] { return history_.BeginFile(name, bytes); });
  }
  bool AddLines(std::span<const RecordLines> lines) override {
    return troubles_.Meet([&] { return history_.AddLines(lines); });
  }
  bool EndFile(const ImportCounts& counts, bool keepsBytes) override {
    return troubles_.Meet([&] { return history_.EndFile(counts, keepsBytes); });
  }
  bool AddRefusedFile(std::string_view name, NarrowStringView bytes,
                      const ImportCounts& counts) override {
    return troubles_.Meet([&] { return history_.AddRefusedFile(name, bytes, counts); });
  }
  bool EndImport() override {
    return troubles_.Meet([&] { return history_.EndImport(); });
  }
  bool KeepsOriginals() override { return history_.KeepsOriginals(); }
  bool SetKeepsOriginals(bool keeps) override { return history_.SetKeepsOriginals(keeps); }
  std::int32_t VisitImports(const std::function<bool(const ImportEntry&)>& visitor) override {
    return history_.VisitImports(visitor);
  }
  std::int32_t VisitFiles(std::optional<std::int32_t> import,
                          const std::function<bool(const ImportedFile&)>& visitor) override {
    return history_.VisitFiles(import, visitor);
  }
  std::int32_t FindOrigin(StoredKind kind, std::int32_t key, RecordOrigin& origin) override {
    return history_.FindOrigin(kind, key, origin);
  }
  bool ReadOriginal(std::int64_t file, const std::function<bool(NarrowStringView)>& take) override {
    return history_.ReadOriginal(file, take);
  }
  std::int32_t DropOriginals(std::optional<std::int32_t> import) override {
    return history_.DropOriginals(import);
  }
  std::int32_t Undo(const UndoOptions& options, UndoResult& result) override {
    return history_.Undo(options, result);
  }

 private:
  ImportHistory& history_;
  Troubles& troubles_;
};

// A store with troubles in the operations of an import.
class FailingStore final : public ForwardingStore {
 public:
  FailingStore(RecordStore& store, Trouble kind, Fails fails)
      : ForwardingStore(store),
        troubles_(store, kind, std::move(fails)),
        history_(*store.History(), troubles_) {}

  // How many operations there were.
  int count() const { return troubles_.count(); }
  // Of the last failure.
  bool mayTryAgain() const { return troubles_.mayTryAgain(); }

  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    return troubles_.Meet([&] { return ForwardingStore::LoadContactGroups(groups); });
  }
  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return troubles_.Meet(
        [&] { return ForwardingStore::SaveContacts(contacts, saveOption, saveFlag); });
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) override {
    return troubles_.Meet([&] { return ForwardingStore::SaveContactGroups(groups, saveFlag); });
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return troubles_.Meet([&] { return ForwardingStore::SaveContactGroupPairs(pairs); });
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return troubles_.Meet([&] { return ForwardingStore::SaveCalendars(items, saveFlag); });
  }
  bool Begin() override { return troubles_.Begin(); }
  bool Commit() override { return troubles_.Commit(); }
  bool Rollback() noexcept override { return troubles_.Rollback(); }
  ImportHistory* History() noexcept override { return &history_; }
  std::string LastError() const override { return "pim.db: the server is gone"; }

 private:
  Troubles troubles_;
  FailingHistory history_;
};

}  // namespace pim::app
