// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "app/album/ReasonWords.h"
#include "app/output/JsonWriter.h"
#include "pim/stream/TextAccount.h"
#include "pim/support/Strings.h"

namespace pim::app {

// Lines of a file that aren't kept as they stand, or that a page doesn't show as they are kept.
struct LineMark {
  std::int64_t first = 0;
  std::int64_t last = 0;
  std::string_view verdict = {};  // good for ever
  WideString name = {};           // of the property
  WideString why = {};
  WideString head = {};  // of the lines
};

// Those of a record, or those of a file that no record has. A text may be all such lines: behind so
// many of them the rest is one mark.
class LineMarks {
 public:
  // The words must outlive this.
  explicit LineMarks(const ReasonWords& words) : words_(&words) {}

  bool empty() const { return marks_.empty(); }
  // How many lines or properties they stand for.
  std::int64_t count() const;
  // Of the record's BEGIN, from 1; 0 for a file's.
  std::int64_t line() const { return line_; }
  void SetLine(std::int64_t line) { line_ = line; }
  // Whether the next one is told with its lines.
  bool HasRoom() const { return marks_.size() < kMost; }
  void Add(LineMark mark);
  // The lines that the record's picture comes from.
  void SetPicture(LineMark mark) { picture_ = std::move(mark); }
  // A page doesn't show that picture, for a reason of ReasonWords. Nothing where no line of it is
  // kept, which has a mark of its own.
  void AddPicture(std::string_view reason);
  // As an array.
  void Write(JsonWriter& json) const;

 private:
  static constexpr std::size_t kMost = 1000;

  const ReasonWords* words_;
  std::vector<LineMark> marks_;
  std::optional<LineMark> picture_;
  std::int64_t line_ = 0;
  std::int64_t further_ = 0;  // those that the last one stands for
};

// Sorts what a reading tells of lines by records.
class MarkKeeper {
 public:
  // The words must outlive this.
  explicit MarkKeeper(const ReasonWords& words) : words_(&words), record_(words), file_(words) {}

  // The next stretch of the file's text, which must outlive the calls that follow, and the lines
  // ahead of it.
  void BeginText(TextForm form, NarrowStringView text, std::int64_t linesAhead);
  void Take(const AccountEntry& entry);
  // Those of the record that is complete.
  LineMarks TakeRecord() { return std::exchange(record_, LineMarks(*words_)); }
  // Those of no record, at the end of the file.
  LineMarks TakeFile() { return std::exchange(file_, LineMarks(*words_)); }

 private:
  // The head of some lines, as a reading decodes bytes.
  WideString HeadOf(std::int64_t first, std::int64_t last);

  const ReasonWords* words_;
  NarrowStringView rest_;  // of the text, from that line on
  std::int64_t line_ = 1;
  std::int64_t linesAhead_ = 0;
  LineMarks record_;
  LineMarks file_;
  TextForm form_ = TextForm::VCard;
};

}  // namespace pim::app
