// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace pim::test {

// Sets an environment variable, or removes it for a null, while it lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    Set(value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() { Set(before_ ? before_->c_str() : nullptr); }

 private:
  void Set(const char* value) const {
    value != nullptr ? setenv(name_, value, 1) : unsetenv(name_);
  }

  const char* name_;
  std::optional<std::string> before_;
};

// A new folder, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "pim-test-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  const std::string& path() const { return path_; }
  std::size_t Count() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::string path_;
};

inline std::string ContentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace pim::test
