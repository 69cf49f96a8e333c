// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/ReportFile.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "app/output/Output.h"
#include "platform/Files.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

// As any new file's, by the user's mask.
void OpenToOthers(int descriptor) {
  const mode_t mask = umask(0);
  umask(mask);
  static_cast<void>(fchmod(descriptor, 0666 & ~mask));
}

}  // namespace

void CheckNewFile(const std::string& path, bool force) {
  std::error_code error;
  // A link would be replaced by the file, whatever it leads to.
  const fs::file_status status = fs::symlink_status(path, error);
  if (!fs::exists(status)) {
    const std::string problem = FolderProblem(path);
    if (!problem.empty()) throw Failure(ShownName(path) + ": can't be made: " + problem);
    return;
  }
  if (!fs::is_regular_file(status)) throw Failure(ShownName(path) + ": is no regular file");
  if (!force) throw Failure(ShownName(path) + ": is there already; --force replaces it");
}

ReportFile::ReportFile(std::string path, bool force)
    : path_(std::move(path)), force_(force), buffer_(std::size_t{256} * 1024) {
  CheckNewFile(path_, force_);
  std::string growing = path_ + ".XXXXXX";
  const int descriptor = mkstemp(growing.data());
  if (descriptor < 0) Fail(errno);
  growing_ = std::move(growing);
  OpenToOthers(descriptor);
  file_.reset(fdopen(descriptor, "w"));
  if (file_ == nullptr) Fail(errno);
  static_cast<void>(std::setvbuf(file_.get(), buffer_.data(), _IOFBF, buffer_.size()));
}

ReportFile::~ReportFile() {
  if (!growing_.empty()) unlink(growing_.c_str());
}

void ReportFile::Append(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) Fail(errno);
  size_ += static_cast<std::int64_t>(bytes.size());
}

void ReportFile::Overwrite(std::int64_t offset, std::string_view bytes) {
  Seek(offset);
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) Fail(errno);
  Seek(size_);
}

void ReportFile::Truncate(std::int64_t size) {
  if (std::fflush(file_.get()) != 0 || ftruncate(fileno(file_.get()), size) != 0) Fail(errno);
  size_ = size;
  Seek(size_);
}

void ReportFile::Publish() {
  // Of a write that failed nobody may have taken notice.
  if (std::ferror(file_.get()) != 0) Fail(EIO);
  if (std::fflush(file_.get()) != 0) Fail(errno);
  // A link takes no place that has been taken meanwhile.
  if (force_ || link(growing_.c_str(), path_.c_str()) != 0) {
    if (!force_ && errno == EEXIST) CheckNewFile(path_, force_);
    if (rename(growing_.c_str(), path_.c_str()) != 0) Fail(errno);
    growing_.clear();
  }
}

void ReportFile::Seek(std::int64_t offset) {
  if (fseeko(file_.get(), offset, SEEK_SET) != 0) Fail(errno);
}

void ReportFile::Fail(int error) const {
  throw OutputFailure(ShownName(path_) + ": can't be written: " + std::strerror(error));
}

}  // namespace pim::app
