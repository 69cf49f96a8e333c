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

// The transactions and readings of one store in memory, and what its operations have failed with.
class MemoryTransactions {
 public:
  static constexpr std::int32_t kFailure = -1;

  UndoLog& log() { return log_; }
  const std::string& problem() const { return problem_; }

  bool Begin() {
    if (IsBeingRead()) return false;
    log_.Begin();
    return true;
  }
  bool Commit() {
    if (!log_.IsOpen() || IsBeingRead()) return false;
    log_.Commit();
    return true;
  }
  bool Rollback() {
    if (!log_.IsOpen()) return false;
    log_.Rollback();
    return true;
  }
  void BeginReading() { ++readings_; }
  void EndReading() noexcept { --readings_; }

  // Runs `save` in a transaction of its own, after which a failure leaves nothing.
  template <class Save>
  std::int32_t Store(Save save) {
    if (IsBeingRead()) return kFailure;
    log_.Begin();
    try {
      const std::int32_t result = save();
      log_.Commit();
      return result;
    } catch (const std::exception& error) {
      log_.Rollback();
      return Fail(error.what());
    } catch (...) {  // a picture reader's own
      log_.Rollback();
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

 private:
  // Tells so as well.
  bool IsBeingRead() {
    const bool isRead = visiting_ || readings_ > 0;
    if (isRead) Fail("the store is being read, so that nothing can be written");
    return isRead;
  }

  UndoLog log_;
  bool visiting_ = false;
  int readings_ = 0;
  std::string problem_;
};

}  // namespace pim
