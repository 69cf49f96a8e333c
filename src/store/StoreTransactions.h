// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "store/Database.h"

namespace pim {

// What this process remembers of a store, and what must be forgotten with a transaction. `level` is
// that of the transaction: 1 for the outermost, to which an inner one's belongs once that is
// committed.
class TransactionMember {
 public:
  virtual void Begun(std::size_t level) = 0;
  // Ahead of the commit. Throws where there can be none yet.
  virtual void CheckCommit(std::size_t level) = 0;
  virtual void Committed(std::size_t level) = 0;
  virtual void RolledBack(std::size_t level) noexcept = 0;

 protected:
  ~TransactionMember() = default;
};

// The transactions of one store, and what its operations have failed with.
class StoreTransactions {
 public:
  explicit StoreTransactions(Database& db) : db_(db) {}

  void Join(TransactionMember& member) { members_.push_back(&member); }

  void Begin(bool alone = false);
  void Commit();
  bool Rollback() noexcept;
  std::size_t level() const { return level_; }

  // Gives what `operation` gives, or -1 with the problem kept.
  template <class Operation>
  std::int32_t Try(Operation operation) {
    try {
      return operation();
    } catch (const StoreError& error) {
      problem_ = error.what();
    } catch (const std::exception& error) {
      problem_ = StoreError(db_.name(), error.what()).what();
    }
    return -1;
  }
  template <class Operation>
  bool Succeeds(Operation operation) {
    return Try([&] {
             operation();
             return 0;
           }) >= 0;
  }
  // Gives what `look` gives, on one state of the store, or -1 with the problem kept.
  template <class Look>
  std::int32_t See(Look look) {
    return Try([&] {
      const NestedReading reading(db_);
      return look();
    });
  }
  // Runs `save` in a transaction of its own, after which a failure leaves nothing.
  template <class Save>
  std::int32_t Store(Save save) {
    return StoreIn(false, save);
  }
  // The same while nobody else writes.
  template <class Save>
  std::int32_t StoreAlone(Save save) {
    return StoreIn(true, save);
  }
  template <class Save>
  std::int32_t StoreIn(bool alone, Save save) {
    return Try([&] {
      Begin(alone);
      try {
        const std::int32_t result = save();
        Commit();
        return result;
      } catch (...) {
        Rollback();
        throw;
      }
    });
  }
  // Runs `reading` on one state of the store. What a visitor throws is its caller's, and no failure
  // of the store: `reading` hands each record over through the Guard that it is given.
  class Guard {
   public:
    // Gives what the call gives, or false when it throws.
    template <class Call>
    bool operator()(Call call) {
      try {
        return call();
      } catch (...) {
        thrown_ = std::current_exception();
        return false;
      }
    }

   private:
    friend class StoreTransactions;
    std::exception_ptr thrown_;
  };
  template <class Reading>
  std::int32_t Read(Reading reading) {
    Guard guard;
    const std::int32_t result = Try([&] {
      const ReadTransaction transaction(db_);
      return reading(guard);
    });
    if (guard.thrown_) std::rethrow_exception(guard.thrown_);
    return result;
  }

  const std::string& problem() const { return problem_; }

 private:
  Database& db_;
  std::vector<TransactionMember*> members_;
  std::size_t level_ = 0;
  std::string problem_;
};

}  // namespace pim
