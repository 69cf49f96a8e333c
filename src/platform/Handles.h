// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

namespace pim {

// An open file descriptor. A writer closes it itself and looks at the result.
class Descriptor {
 public:
  explicit Descriptor(int number) noexcept : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (*this) close(number_);
  }

  explicit operator bool() const noexcept { return number_ >= 0; }
  int get() const noexcept { return number_; }
  int Release() noexcept { return std::exchange(number_, -1); }

 private:
  int number_;
};

// Closes a file that was read. A writer closes it itself and looks at the result.
struct CloseFile {
  void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// Repeats a system call that a signal interrupted.
template <class Call>
auto Retry(Call call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

// False with errno on failure.
[[nodiscard]] inline bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = Retry([&] { return write(file, bytes.data(), bytes.size()); });
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace pim
