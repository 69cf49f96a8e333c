// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "app/input/ByteSource.h"
#include "pim/support/Strings.h"

namespace pim::app {

// A source whose head can be looked at ahead of the reading.
class PeekedSource final : public ByteSource {
 public:
  explicit PeekedSource(std::unique_ptr<ByteSource> source) : source_(std::move(source)) {
    head_.resize(kHead);
    std::size_t size = 0;
    for (std::size_t count = 1; count != 0 && size != kHead; size += count)
      count = source_->Read(head_.data() + size, kHead - size);
    head_.resize(size);
  }

  NarrowStringView head() const { return head_; }
  // Whether nothing stands behind the head.
  bool isWhole() const { return head_.size() < kHead; }

  std::size_t Read(char* to, std::size_t room) override {
    if (taken_ == head_.size()) return source_->Read(to, room);
    const std::size_t count = std::min(room, head_.size() - taken_);
    std::copy_n(head_.data() + taken_, count, to);
    taken_ += count;
    return count;
  }

 private:
  static constexpr std::size_t kHead = std::size_t{256} << 10;

  std::unique_ptr<ByteSource> source_;
  std::string head_;
  std::size_t taken_ = 0;
};

}  // namespace pim::app
