// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "formats/FormatLoss.h"
#include "formats/prepare/PrepareSteps.h"

namespace pim {

// Something that a step did.
struct PrepareNote {
  PrepareStep step;
  // Physical lines of the text, from 1, each ended by a line feed; where carriage returns end
  // lines, those count too, and in UTF-16 and UTF-32 lines count as in the UTF-8.
  std::int64_t first = 0;
  std::int64_t last = 0;
  std::string what;  // "\"item1.\" taken off", in English and UTF-8
};

// What a text's preparing tells; each may be empty.
struct PrepareObserver {
  std::function<void(const PrepareNote& note)> note;
  // What couldn't be carried, with its line as in a note.
  std::function<void(std::int64_t line, const FormatLoss& loss)> loss;
};

// Joins notes that say the same of lines that touch, such as of all lines of a file; of records it
// tells how many they are.
class PrepareNotes {
 public:
  explicit PrepareNotes(PrepareObserver observer) : observer_(std::move(observer)) {}

  void Add(PrepareStep step, std::int64_t first, std::int64_t last, std::string what) {
    if (!observer_.note) return;
    if (open_ && open_->step == step && open_->what == what && first <= open_->last + 1) {
      open_->last = std::max(open_->last, last);
      ++count_;
      return;
    }
    Flush();
    open_.emplace(PrepareNote{step, first, last, std::move(what)});
    count_ = 1;
  }
  void AddLoss(std::int64_t line, const FormatLoss& loss) {
    Flush();
    if (observer_.loss) observer_.loss(line, loss);
  }
  void Flush() {
    if (!open_) return;
    const bool isOfRecords =
        open_->step == PrepareStep::VCard || open_->step == PrepareStep::ICalendar;
    if (isOfRecords && count_ > 1) open_->what += ": " + std::to_string(count_) + " of them";
    observer_.note(*open_);
    open_.reset();
  }

 private:
  PrepareObserver observer_;
  std::optional<PrepareNote> open_;
  std::int64_t count_ = 0;  // of what it was joined of
};

}  // namespace pim
