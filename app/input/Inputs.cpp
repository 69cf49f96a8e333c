// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/Inputs.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "platform/Handles.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

bool HasExtension(const fs::path& path, const std::vector<std::string_view>& extensions) {
  const std::string extension = path.extension().string();
  return std::ranges::any_of(
      extensions, [&](std::string_view wanted) { return EqualsIgnoringCase(extension, wanted); });
}

void Walk(const fs::path& folder, const std::vector<std::string_view>& extensions,
          std::vector<std::string>& files) {
  std::error_code error;
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    entries.push_back(*entry);
  if (error) throw Failure(ShownName(folder.string()) + ": " + error.message());
  std::ranges::sort(entries, {}, [](const fs::directory_entry& entry) -> const std::string& {
    return entry.path().native();
  });
  for (const fs::directory_entry& entry : entries) {
    CheckInterrupt();
    // A link to a folder isn't followed: it could lead round in a circle.
    if (entry.is_directory(error) && !entry.is_symlink(error)) {
      Walk(entry.path(), extensions, files);
    } else if (HasExtension(entry.path(), extensions) && !entry.is_directory(error)) {
      files.push_back(entry.path().string());
    }
  }
}

constexpr std::size_t kLongestInput = std::numeric_limits<std::int32_t>::max();

[[noreturn]] void FailToRead(const std::string& path, const std::string& reason) {
  throw Failure(ShownName(path) + ": can't be read: " + reason);
}

// Waits until there is something to read, or the end of it. False when nobody writes.
bool WaitForWriter(int descriptor, const std::string& path) {
  constexpr int kMilliseconds = 1000;
  pollfd wanted{descriptor, POLLIN, 0};
  const int ready = poll(&wanted, 1, kMilliseconds);
  CheckInterrupt();
  if (ready < 0 && errno != EINTR) FailToRead(path, std::strerror(errno));
  return ready > 0;
}

// A read that would wait gives EAGAIN while somebody has a FIFO open for writing, and its end while
// nobody has.
std::string ReadStream(int descriptor, const std::string& path) {
  std::string bytes;
  std::array<char, std::size_t{64} * 1024> piece{};
  const bool waits = (fcntl(descriptor, F_GETFL) & O_NONBLOCK) != 0;
  if (waits) WaitForWriter(descriptor, path);
  for (;;) {
    const ssize_t count = read(descriptor, piece.data(), piece.size());
    CheckInterrupt();
    if (count == 0) return bytes;
    if (count < 0 && errno == EAGAIN) {
      WaitForWriter(descriptor, path);
      continue;
    }
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailToRead(path, std::strerror(errno));
    bytes.append(piece.data(), static_cast<std::size_t>(count));
    if (bytes.size() > kLongestInput) FailToRead(path, "longer than 2 GiB");
  }
}

bool IsStandardInput(const std::string& path) { return path == "-" || path == "/dev/stdin"; }

std::string ReadFifo(const std::string& path) {
  // Without waiting for a writer, who may never come.
  const Descriptor fifo{open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)};
  if (!fifo) FailToRead(path, std::strerror(errno));
  return ReadStream(fifo.get(), path);
}

}  // namespace

std::vector<std::string> FilesOf(const std::string& path,
                                 const std::vector<std::string_view>& extensions) {
  std::error_code error;
  if (path == "-" || !fs::is_directory(path, error)) return {path};
  std::vector<std::string> files;
  Walk(path, extensions, files);
  if (files.empty()) {
    std::string wanted;
    for (const std::string_view extension : extensions)
      wanted.append(wanted.empty() ? "" : " or ").append(extension);
    throw Failure(ShownName(path) + ": no " + wanted + " file in this folder");
  }
  return files;
}

bool IsStream(const std::string& path) {
  std::error_code error;
  return IsStandardInput(path) || fs::is_fifo(path, error);
}

bool AreOneFile(const std::string& one, const std::string& other) {
  std::error_code error;
  if (fs::equivalent(one, other, error)) return true;
  const auto whole = [](const std::string& path) {
    std::error_code ignored;
    return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
  };
  return whole(one) == whole(other);
}

void ReadInput(const std::string& path, ByteOrderMark mark, ByteBuffer& text) {
  if (IsStream(path)) {
    const std::string bytes =
        IsStandardInput(path) ? ReadStream(STDIN_FILENO, path) : ReadFifo(path);
    const NarrowStringView kept = mark == ByteOrderMark::Skipped ? WithoutMark(bytes) : bytes;
    text.Assign(kept.data(), kept.size());
    return;
  }
  InputFile file(path);
  if (!file.IsOpen()) FailToRead(path, file.Problem());
  ReadTextFile(file, mark, text);
}

}  // namespace pim::app
