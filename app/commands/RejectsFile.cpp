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
  if (file_ == nullptr) file_.reset(std::fopen(path_.c_str(), force_ ? "wbe" : "wbxe"));
  if (file_ == nullptr) Fail();
  for (const RejectedPart& part : parts) {
    const NarrowStringView bytes = text.substr(part.offset, part.size);
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) Fail();
    // A last line without its end would join the next record.
    if (!bytes.ends_with('\n') && std::fputc('\n', file_.get()) == EOF) Fail();
  }
  if (std::fflush(file_.get()) != 0 || fsync(fileno(file_.get())) != 0) Fail();
}

void RejectsFile::Fail() const {
  throw Failure(ShownName(path_) + ": can't be written: " + std::strerror(errno));
}

}  // namespace pim::app
