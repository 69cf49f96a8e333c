// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/PictureStaging.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <thread>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/platform/Host.h"
#include "pim/support/FileNames.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/CallerIdPictures.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

// Holds a folder of waiting pictures as one that is in use.
constexpr const char* kLockName = "/in-use";

void MakeFolder(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) throw Failure(ShownName(path) + ": " + error.message());
}

// A file that is locked as long as it is open.
class LockedFile {
 public:
  explicit LockedFile(const std::string& path)
      : path_(path), file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    TryAgain();
  }

  bool IsLocked() const { return locked_; }
  void TryAgain() { locked_ = file_ && flock(file_.get(), LOCK_EX | LOCK_NB) == 0; }
  // Waits a while for whoever has it. Throws Failure.
  void Wait() {
    constexpr auto kPause = std::chrono::milliseconds(5);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (; !locked_; TryAgain()) {
      if (!file_) throw Failure(ShownName(path_) + ": can't be written");
      if (std::chrono::steady_clock::now() > end)
        throw Failure(ShownName(path_) + ": locked by another program");
      CheckInterrupt();
      std::this_thread::sleep_for(kPause);
    }
  }

 private:
  std::string path_;
  Descriptor file_;
  bool locked_ = false;
};

std::string InFolder(const std::string& folder, WideStringView name) {
  return std::string(folder).append("/").append(NativePath(name));
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    names.push_back(entry->path().filename().string());
  return names;
}

// Where imports' pictures wait; without an application-data folder it is among the temporary files.
std::string WaitingFolder() {
  const std::string appData = Utf8FromWide(AppDataFolder());
  return appData.empty() ? TemporaryFolder() + "/pimvobj-incoming-" + std::to_string(geteuid())
                         : appData + "/pimvobj/incoming";
}

// Among temporary files somebody else may have put a folder in its place.
bool IsOwn(const std::string& folder) {
  struct stat status = {};
  return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid();
}

// A folder without its lock yet looks like an abandoned one, so imports begin one by one.
constexpr const char* kBeginning = ".lock";

void ClearAbandoned(const std::string& waiting) {
  for (const std::string& name : NamesIn(waiting)) {
    const std::string root = waiting + "/" + name;
    const LockedFile lock(root + kLockName);
    std::error_code error;
    if (lock.IsLocked()) fs::remove_all(root, error);
  }
}

}  // namespace

PrivatePictures::PrivatePictures(const std::string& parent) : root_(parent + "/pimvobj-XXXXXX") {
  if (mkdtemp(root_.data()) == nullptr)
    throw Failure(ShownName(parent) + ": " + std::strerror(errno));
  SetAppDataFolder(root_);
  folder_ = NativePath(GetCallerIdPath());
  MakeFolder(folder_);
}

PrivatePictures::~PrivatePictures() {
  SetAppDataFolder({});
  std::error_code error;
  fs::remove_all(root_, error);
}

void PrivatePictures::LeaveOut(bool leaveOut) {
  SetAppDataFolder(leaveOut ? root_ + "/none" : root_);
}

void PrivatePictures::Remove(WideStringView name) {
  if (name.empty()) return;
  std::error_code error;
  fs::remove(InFolder(folder_, name), error);
}

std::string TemporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  std::error_code error;
  return folder != nullptr && fs::is_directory(folder, error) ? folder : "/tmp";
}

struct PictureStaging::Staging {
  explicit Staging(const std::string& waiting)
      : pictures(waiting), lock(pictures.root() + kLockName) {
    lock.Wait();
  }

  PrivatePictures pictures;
  LockedFile lock;
};

PictureStaging::PictureStaging(DatabaseStore& store) {
  const std::string waiting = WaitingFolder();
  if (!AppDataFolder().empty()) callerIdFolder_ = NativePath(GetCallerIdPath());
  if (!callerIdFolder_.empty()) MakeFolder(callerIdFolder_);
  MakeFolder(waiting);
  if (callerIdFolder_.empty() && !IsOwn(waiting))
    throw Failure(ShownName(waiting) + ": isn't a folder of yours");
  LockedFile beginning(waiting + kBeginning);
  beginning.Wait();
  ClearAbandoned(waiting);
  staging_ = std::make_unique<Staging>(waiting);
  store.SetPictureReader([this](WideStringView name) {
    return ReadPictureFile(InFolder(staging_->pictures.folder(), name));
  });
}

PictureStaging::~PictureStaging() = default;

void PictureStaging::Publish(const std::vector<WideString>& names) {
  const std::string& folder = staging_->pictures.folder();
  std::error_code error;
  if (!callerIdFolder_.empty()) {
    for (const WideString& name : names)
      fs::rename(InFolder(folder, name), InFolder(callerIdFolder_, name), error);
  }
  for (const std::string& name : NamesIn(folder)) fs::remove(folder + "/" + name, error);
}

void ClearAbandonedPictures() {
  const std::string waiting = WaitingFolder();
  if (NamesIn(waiting).empty() || !IsOwn(waiting)) return;
  const LockedFile beginning(waiting + kBeginning);
  if (beginning.IsLocked()) ClearAbandoned(waiting);
}

}  // namespace pim::app
