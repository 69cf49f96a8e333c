// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/ByteSource.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"

namespace pim::app {
namespace {

bool IsStandardInput(const std::string& path) { return path == "-" || path == "/dev/stdin"; }

}  // namespace

bool IsStream(const std::string& path) {
  std::error_code error;
  return IsStandardInput(path) || std::filesystem::is_fifo(path, error);
}

void FailToRead(const std::string& path, const std::string& reason) {
  throw Failure(ShownName(path) + ": can't be read: " + reason);
}

// A FIFO is opened without waiting for a writer, who may never come.
FileSource::FileSource(const std::string& path)
    : path_(path),
      file_(IsStandardInput(path) ? STDIN_FILENO
                                  : open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)),
      isStandardInput_(IsStandardInput(path)) {
  struct stat status;
  if (!file_ || fstat(file_.get(), &status) != 0) FailToRead(path_, std::strerror(errno));
  if (!isStandardInput_) {
    if (S_ISDIR(status.st_mode)) FailToRead(path_, std::strerror(EISDIR));
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
      FailToRead(path_, "is no regular file");
  }
  waits_ = !S_ISREG(status.st_mode) && (fcntl(file_.get(), F_GETFL) & O_NONBLOCK) != 0;
  if (waits_) WaitForWriter();
}

FileSource::~FileSource() {
  if (isStandardInput_) file_.Release();
}

// Waits until there is something to read, or the end of it. False when nobody writes.
bool FileSource::WaitForWriter() const {
  constexpr int kMilliseconds = 1000;
  pollfd wanted{file_.get(), POLLIN, 0};
  const int ready = poll(&wanted, 1, kMilliseconds);
  CheckInterrupt();
  if (ready < 0 && errno != EINTR) FailToRead(path_, std::strerror(errno));
  return ready > 0;
}

// A read that would wait gives EAGAIN while somebody has a FIFO open for writing, and its end while
// nobody has.
std::size_t FileSource::Read(char* to, std::size_t room) {
  for (;;) {
    const ssize_t count = read(file_.get(), to, room);
    CheckInterrupt();
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN) {
      WaitForWriter();
    } else if (errno != EINTR) {
      FailToRead(path_, std::strerror(errno));
    }
  }
}

}  // namespace pim::app
