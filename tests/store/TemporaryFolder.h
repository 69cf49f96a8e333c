// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace pim::testing {

// A folder of the test's own, which goes with the object.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "pim-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace pim::testing
