// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/CodePages.h"
#include "platform/Files.h"
#include "platform/Guid.h"
#include "platform/Handles.h"

namespace pim {
namespace {

std::string Reason(int error) { return std::system_category().message(error); }

// Not even a FIFO without a second end makes these wait.
constexpr int kOpenFlags = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr mode_t kNewFileMode = 0666;  // less the process's mask

Descriptor Open(const std::string& path, int flags) {
  return Descriptor(Retry([&] { return open(path.c_str(), flags | kOpenFlags, kNewFileMode); }));
}

// Why a file isn't one to be read, or an empty string.
std::string Unreadable(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return Reason(EISDIR);
  if (!S_ISREG(status.st_mode)) return "Not a regular file";
  if (status.st_size > std::numeric_limits<std::int32_t>::max()) return Reason(EFBIG);
  return {};
}

// A full disk or a broken server may show only here. After EINTR the file is closed all the same.
int Close(Descriptor file) { return close(file.Release()) == 0 || errno == EINTR ? 0 : errno; }

bool IsSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Takes away what a failed write left of the file that was opened as `path`: the file itself, or
// its content where `path` is a link to it. A device stays.
void Discard(const std::string& path, const struct stat& opened) {
  struct stat named;
  if (!S_ISREG(opened.st_mode)) return;
  if (lstat(path.c_str(), &named) == 0 && IsSameFile(named, opened)) {
    unlink(path.c_str());
  } else if (stat(path.c_str(), &named) == 0 && IsSameFile(named, opened)) {
    (void)!truncate(path.c_str(), 0);  // nothing else is left to be done about it
  }
}

// Writes everything and closes the file, with its bytes on the medium if `sync`. Gives 0, or the
// error after which nothing of the file is left.
int Fill(const std::string& path, Descriptor file, std::string_view bytes, bool sync) {
  struct stat opened;
  if (fstat(file.get(), &opened) != 0) return errno;
  if (!S_ISREG(opened.st_mode)) fcntl(file.get(), F_SETFL, 0);  // a slow reader is waited for
  int error = WriteAll(file.get(), bytes) ? 0 : errno;
  // A file system that can't sync says so with EINVAL; that loses nothing.
  if (error == 0 && sync && fsync(file.get()) != 0 && errno != EINVAL) error = errno;
  const int close_error = Close(std::move(file));
  if (error == 0) error = close_error;
  if (error != 0) Discard(path, opened);
  return error;
}

// A new empty file beside `path`, or none.
struct Sibling {
  std::string path;
  Descriptor file;
};

Sibling CreateSibling(const std::string& path) {
  GUID guid;
  if (!CoCreateGuid(guid)) return {{}, Descriptor(-1)};
  std::string sibling = path.substr(0, path.rfind('/') + 1);
  sibling += ".";
  AppendUtf8(StringFromGUID2(guid), sibling);
  Descriptor file = Open(sibling, O_WRONLY | O_CREAT | O_EXCL);
  return {std::move(sibling), std::move(file)};
}

// Gives a file the owner and the permissions of the one that it's to replace.
bool TakeOver(int file, const struct stat& replaced) {
  struct stat status;
  if (fstat(file, &status) != 0) return false;
  const bool same_owner = status.st_uid == replaced.st_uid && status.st_gid == replaced.st_gid;
  return (same_owner || fchown(file, replaced.st_uid, replaced.st_gid) == 0) &&
         fchmod(file, replaced.st_mode & 07777) == 0;
}

// Whether `path` names nothing yet or a file that may be written and replaced by another.
bool IsReplaceable(const std::string& path, std::optional<struct stat>& replaced) {
  struct stat status;
  if (lstat(path.c_str(), &status) != 0) return errno == ENOENT && !path.empty();
  replaced = status;
  return S_ISREG(status.st_mode) && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace

std::string FolderProblem(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  return access(folder.c_str(), W_OK | X_OK) == 0 ? std::string() : Reason(errno);
}

InputFile::InputFile(const std::string& path, Links links) : path_(path) {
  Descriptor file = Open(path, O_RDONLY | (links == Links::Refused ? O_NOFOLLOW : 0));
  struct stat status;
  if (!file || fstat(file.get(), &status) != 0) {
    problem_ = Reason(errno);
    return;
  }
  problem_ = Unreadable(status);
  if (!problem_.empty()) return;
  file_ = std::move(file);
  length_ = static_cast<std::int32_t>(status.st_size);
}

std::size_t InputFile::Read(char* bytes, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t read_now = Retry([&] { return read(file_.get(), bytes + done, count - done); });
    if (read_now < 0) throw FileError(path_, Reason(errno));
    if (read_now == 0) break;
    done += static_cast<std::size_t>(read_now);
  }
  return done;
}

bool WriteFile(const std::string& path, std::string_view bytes) {
  Descriptor file = Open(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (!file) return false;
  const int error = Fill(path, std::move(file), bytes, false);
  if (error != 0) throw FileError(path, Reason(error));
  return true;
}

NewFile WriteNewFile(const std::string& path, std::string_view bytes) {
  Descriptor file = Open(path, O_WRONLY | O_CREAT | O_EXCL);
  if (!file) return errno == EEXIST ? NewFile::Taken : NewFile::Failed;
  int error = WriteAll(file.get(), bytes) ? 0 : errno;
  const int close_error = Close(std::move(file));
  if (error == 0) error = close_error;
  if (error == 0) return NewFile::Written;
  unlink(path.c_str());  // it was made here
  throw FileError(path, Reason(error));
}

bool ReplaceFile(const std::string& path, std::string_view bytes) {
  std::optional<struct stat> replaced;
  if (!IsReplaceable(path, replaced)) return WriteFile(path, bytes);
  Sibling sibling = CreateSibling(path);
  if (!sibling.file) return WriteFile(path, bytes);
  if (replaced && !TakeOver(sibling.file.get(), *replaced)) {
    unlink(sibling.path.c_str());
    return WriteFile(path, bytes);
  }
  const int error = Fill(sibling.path, std::move(sibling.file), bytes, true);
  if (error != 0) throw FileError(path, Reason(error));
  if (rename(sibling.path.c_str(), path.c_str()) == 0) return true;
  const int rename_error = errno;
  unlink(sibling.path.c_str());
  // A folder with the sticky bit and a file that something is mounted on can still be written to.
  if (rename_error == EPERM || rename_error == EACCES || rename_error == EBUSY)
    return WriteFile(path, bytes);
  throw FileError(path, Reason(rename_error));
}

}  // namespace pim
