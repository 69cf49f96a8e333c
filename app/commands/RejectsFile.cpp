// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/RejectsFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "app/output/Output.h"
#include "app/output/ReportFile.h"

namespace pim::app {

RejectsFile::RejectsFile(std::string path, bool force) : path_(std::move(path)), force_(force) {
  CheckNewFile(path_, force_);
}

void RejectsFile::Add(NarrowStringView text, const std::vector<RejectedPart>& parts) {
  const char* const mode = size_ != 0 ? "abe" : force_ ? "wbe" : "wbxe";
  if (file_ == nullptr) file_.reset(std::fopen(path_.c_str(), mode));
  if (file_ == nullptr) Fail(errno);
  NarrowString bytes;
  for (const RejectedPart& part : parts) {
    bytes += text.substr(part.offset, part.size);
    // A last line without its end would join the next record.
    if (!bytes.ends_with('\n')) bytes += '\n';
  }
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size() ||
      std::fflush(file_.get()) != 0 || fsync(fileno(file_.get())) != 0) {
    const int error = errno;
    static_cast<void>(ftruncate(fileno(file_.get()), size_) == 0);  // no half record stays
    file_.reset();
    Fail(error);
  }
  size_ += static_cast<std::int64_t>(bytes.size());
}

void RejectsFile::Truncate(std::int64_t size) {
  if (size == size_) return;
  file_.reset();
  if ((size == 0 ? unlink(path_.c_str()) : truncate(path_.c_str(), size)) != 0) Fail(errno);
  size_ = size;
}

void RejectsFile::Fail(int error) const {
  throw Failure(ShownName(path_) + ": can't be written: " + std::strerror(error));
}

}  // namespace pim::app
