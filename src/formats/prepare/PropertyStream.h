// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "formats/prepare/BlockLines.h"

namespace pim {

// Gives the properties of a text one by one: each with all of its physical lines, and blank lines
// by themselves, so that all of it is the text. It comes in pieces of any size. Where carriage
// returns end its first line, they end lines, too.
class PropertyStream {
 public:
  // Physical lines count from 1.
  using Take = std::function<void(std::string_view text, std::int64_t first, std::int64_t last)>;

  explicit PropertyStream(Take take) : take_(std::move(take)) {}

  void Append(std::string_view piece) {
    if (end_ != '\0') return Feed(piece);
    line_ += piece;
    if (FindEnd()) Feed(std::exchange(line_, {}));
  }
  void Finish() {
    if (end_ == '\0') {
      end_ = '\n';
      Feed(std::exchange(line_, {}));
    }
    if (!line_.empty()) EndLine();
    EndProperty();
  }

 private:
  // The first line end tells what ends the lines. Carriage returns ahead of a line feed belong to
  // it.
  bool FindEnd() {
    const std::size_t at = line_.find_first_of("\r\n", searched_);
    searched_ = std::min(at, line_.size());
    if (at == std::string::npos) return false;
    const std::size_t next = line_.find_first_not_of('\r', at);
    if (next == std::string::npos) return false;
    end_ = line_[next] == '\n' ? '\n' : '\r';
    return true;
  }
  void Feed(std::string_view piece) {
    while (!piece.empty()) {
      const std::size_t end = end_ == '\n' ? piece.find('\n') : piece.find_first_of("\r\n");
      line_ += piece.substr(0, std::min(end, piece.size() - 1) + 1);
      piece.remove_prefix(std::min(end, piece.size() - 1) + 1);
      if (line_.back() == end_ || line_.back() == '\n') EndLine();
    }
  }
  void EndLine() {
    const LineJoints::Kind kind = joints_.Take(line_, false);
    if (kind == LineJoints::Kind::Begins || kind == LineJoints::Kind::Blank) EndProperty();
    property_.empty() ? property_.swap(line_) : void(property_ += line_);
    line_.clear();
    ++last_;
  }
  void EndProperty() {
    if (!property_.empty()) take_(property_, first_, last_);
    property_.clear();
    first_ = last_ + 1;
  }

  Take take_;
  LineJoints joints_;
  std::string line_;      // that isn't whole yet
  std::string property_;  // with its lines so far
  std::int64_t first_ = 1;
  std::int64_t last_ = 0;
  std::size_t searched_ = 0;  // of the text's head, for its first line end
  char end_ = '\0';           // what ends the lines; NUL until that is known
};

}  // namespace pim
