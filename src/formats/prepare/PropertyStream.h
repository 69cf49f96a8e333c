// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "formats/prepare/BlockLines.h"

namespace pim {

// Gives the properties of a text one by one: each with all of its physical lines, and blank lines
// by themselves, so that all of it is the text. It comes in pieces of any size.
class PropertyStream {
 public:
  // Physical lines count from 1.
  using Take = std::function<void(std::string_view text, std::int64_t first, std::int64_t last)>;

  explicit PropertyStream(Take take) : take_(std::move(take)) {}

  void Append(std::string_view piece) {
    while (!piece.empty()) {
      const std::size_t size = std::min(piece.find('\n'), piece.size() - 1) + 1;
      line_ += piece.substr(0, size);
      piece.remove_prefix(size);
      if (line_.ends_with('\n')) EndLine();
    }
  }
  void Finish() {
    if (!line_.empty()) EndLine();
    EndProperty();
  }

 private:
  void EndLine() {
    const LineJoints::Kind kind = joints_.Take(line_, false);
    if (kind == LineJoints::Kind::Begins || kind == LineJoints::Kind::Blank) EndProperty();
    property_ += line_;
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
};

}  // namespace pim
