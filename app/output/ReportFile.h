// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pim::app {

// A file that is there as a whole or not at all: it grows beside its place and is put there at the
// end. Each operation throws OutputFailure when the file can't be written.
class ReportFile {
 public:
  // What stands at `path` must be a regular file, and is replaced only with `force`.
  ReportFile(std::string path, bool force);
  ReportFile(const ReportFile&) = delete;
  ReportFile& operator=(const ReportFile&) = delete;
  ~ReportFile();

  void Append(std::string_view bytes);
  // How much there is so far, in bytes.
  std::int64_t size() const { return size_; }
  // Replaces bytes by others, or takes away those from an offset on.
  void Overwrite(std::int64_t offset, std::string_view bytes);
  void Truncate(std::int64_t size);
  void Publish();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  [[noreturn]] void Fail(int error) const;
  void Seek(std::int64_t offset);

  std::string path_;
  bool force_;
  std::string growing_;       // empty once it is in its place
  std::vector<char> buffer_;  // the file's
  std::unique_ptr<std::FILE, Close> file_;
  std::int64_t size_ = 0;
};

// Throws Failure unless a file may be made at `path`, or replaced with `force`.
void CheckNewFile(const std::string& path, bool force);

}  // namespace pim::app
