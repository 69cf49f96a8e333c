// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace pim {

// What takes back each change, the last one first.
class UndoLog {
 public:
  void Add(std::function<void()> undo) { undos_.push_back(std::move(undo)); }
  // Puts back what `place` holds now; it must be there still then.
  template <class Value>
  void Remember(Value& place) {
    Add([&place, before = place] { place = before; });
  }
  bool IsOpen() const { return !marks_.empty(); }
  std::size_t depth() const { return marks_.size(); }
  void Begin() { marks_.push_back(undos_.size()); }
  void Commit() {
    marks_.pop_back();
    if (marks_.empty()) undos_.clear();
  }
  void Rollback() {
    for (; undos_.size() > marks_.back(); undos_.pop_back()) undos_.back()();
    marks_.pop_back();
  }

 private:
  std::vector<std::function<void()>> undos_;
  std::vector<std::size_t> marks_;
};

// The transactions and readings of one store whose changes are made and taken back by `Changes`,
// and what its operations have failed with.
template <class Changes>
class GuardedTransactions {
 public:
  static constexpr std::int32_t kFailure = -1;

  explicit GuardedTransactions(Changes changes = {}) : changes_(std::move(changes)) {}

  Changes& log() { return changes_; }
  const std::string& problem() const { return problem_; }

  bool Begin() {
    return !IsBeingRead() && Try([this] { changes_.Begin(); });
  }
  bool Commit() {
    return changes_.IsOpen() && !IsBeingRead() && Try([this] { changes_.Commit(); });
  }
  bool Rollback() {
    if (!changes_.IsOpen()) return false;
    changes_.Rollback();
    return true;
  }
  void BeginReading() { ++readings_; }
  void EndReading() noexcept { --readings_; }
  bool IsInReading() const { return readings_ > 0; }

  // Runs `save` in a transaction of its own, after which a failure leaves nothing.
  template <class Save>
  std::int32_t Store(Save save) {
    if (!Begin()) return kFailure;
    try {
      const std::int32_t result = save();
      changes_.Commit();
      return result;
    } catch (const std::exception& error) {
      changes_.Rollback();
      return Fail(error.what());
    } catch (...) {  // a picture reader's own
      changes_.Rollback();
      throw;
    }
  }
  // What `reading` throws is its caller's.
  template <class Reading>
  std::int32_t Read(Reading reading) {
    if (visiting_) return Fail("the store is being read already");
    struct Scope {
      bool& flag;
      ~Scope() { flag = false; }
    } const scope{visiting_ = true};
    return reading();
  }
  std::int32_t Fail(std::string problem) {
    problem_ = std::move(problem);
    return kFailure;
  }
  template <class Operation>
  bool Try(Operation operation) {
    try {
      operation();
      return true;
    } catch (const std::exception& error) {
      Fail(error.what());
      return false;
    }
  }

 private:
  // Tells so as well.
  bool IsBeingRead() {
    const bool isRead = visiting_ || readings_ > 0;
    if (isRead) Fail("the store is being read, so that nothing can be written");
    return isRead;
  }

  Changes changes_;
  bool visiting_ = false;
  int readings_ = 0;
  std::string problem_;
};

using MemoryTransactions = GuardedTransactions<UndoLog>;

}  // namespace pim
