// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "pim/stream/TextRejects.h"

namespace pim::app {

// Takes what imports put aside, byte for byte. The file is made when there is something for it.
class RejectsFile {
 public:
  // Throws Failure for a name that is taken, unless `force`.
  RejectsFile(std::string path, bool force);

  // Writes the parts of a text, down to the disk. Throws Failure.
  void Add(NarrowStringView text, const std::vector<RejectedPart>& parts);
  // How much was written, in bytes.
  std::int64_t size() const { return size_; }
  // Takes away what stands behind the first `size` bytes, and with all of them the file. Throws
  // Failure.
  void Truncate(std::int64_t size);
  const std::string& path() const { return path_; }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  [[noreturn]] void Fail(int error) const;

  std::string path_;
  bool force_;
  std::unique_ptr<std::FILE, Close> file_;
  std::int64_t size_ = 0;  // of what was written whole
};

}  // namespace pim::app
