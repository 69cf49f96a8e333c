// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "app/input/ByteSource.h"
#include "app/input/TextReading.h"
#include "pim/stream/TextHead.h"
#include "pim/support/Strings.h"

namespace pim::app {

// A text in stretches of whole records, each about a megabyte or one record long: to read them one
// by one gives what reading the text as a whole gives. No more than one of them is in memory.
class TextWindows {
 public:
  // The source must outlive this. Records are those of the form.
  TextWindows(ByteSource& source, TextForm form) : source_(source), form_(form) {}

  // Goes to the next one. False behind the last; a text without bytes has one that is empty.
  bool Next();

  // Good until the next call.
  NarrowStringView text() const { return NarrowStringView(bytes_).substr(0, size_); }
  std::int64_t linesAhead() const { return linesAhead_; }
  bool isFirst() const { return isFirst_; }
  // Whether nothing is behind it.
  bool isLast() const { return atEnd_ && size_ == bytes_.size(); }

 private:
  void Fill(std::size_t wanted);
  // Where the last record begins in what is there; 0 where there is none but the first.
  std::size_t LastRecord() const;

  ByteSource& source_;
  std::string bytes_;
  std::size_t size_ = 0;  // of the stretch, at the head of the bytes
  std::int64_t linesAhead_ = 0;
  TextForm form_;
  bool isFirst_ = false;
  bool hasBegun_ = false;
  bool atEnd_ = false;
};

// Tells what came of reading the stretch that is there of the file at `path`, as TellMessages and
// TellVersion do, once `begin` was called. Gives the exit status.
int TellStretch(const std::string& path, Outcome& outcome, const TextWindows& windows,
                TextForm form, const std::function<void()>& begin);

}  // namespace pim::app
