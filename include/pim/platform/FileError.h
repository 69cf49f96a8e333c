// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>

#include "pim/Export.h"

namespace pim {

// A file that was open and failed later: a full disk, a medium that went away. A file that was
// being written is removed before this is thrown. Each one holds its own texts, so that it may pass
// to another thread.
class PIM_EXPORT FileError : public std::runtime_error {
 public:
  // `path` is the operating system's own form of it, `reason` its text for the failure. Throws
  // std::bad_alloc.
  FileError(const std::string& path, const std::string& reason)
      : std::runtime_error(path + ": " + reason), path_(path), reason_(reason) {}
  FileError(const FileError&) = default;
  FileError& operator=(const FileError&) = default;
  ~FileError() override;

  // The file's path, bytes, and the reason: "No space left on device". Good as long as this is.
  const std::string& path() const noexcept { return path_; }
  const std::string& reason() const noexcept { return reason_; }

 private:
  std::string path_;
  std::string reason_;
};

}  // namespace pim
