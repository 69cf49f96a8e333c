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
#include <unordered_set>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/platform/Host.h"
#include "pim/records/Contacts.h"
#include "pim/support/FileNames.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/CallerIdPictures.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

// Holds a folder of waiting pictures as one that is in use, and names the store that it is for.
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
  std::string Read() const { return ReadPictureFile(path_); }
  void Write(std::string_view text) {
    if (!WriteAll(file_.get(), text)) throw Failure(ShownName(path_) + ": " + std::strerror(errno));
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

std::string PicturesUnder(const std::string& root) {
  SetAppDataFolder(root);
  std::string folder = NativePath(GetCallerIdPath());
  SetAppDataFolder({});
  return folder;
}

// A store's file as it stays under another name, and the path where it was: "DEVICE INODE PATH".
std::string IdentityOf(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return {};
  std::error_code error;
  const fs::path canonical = fs::canonical(path, error);
  return std::to_string(status.st_dev) + ' ' + std::to_string(status.st_ino) + ' ' +
         (error ? path : canonical.string());
}

std::string FileOf(const std::string& identity) {
  return identity.substr(0, identity.find(' ', identity.find(' ') + 1));
}

// Whether the file of an identity is still where it was.
bool IsThere(const std::string& identity) {
  const std::string file = FileOf(identity);
  return file.size() < identity.size() &&
         FileOf(IdentityOf(identity.substr(file.size() + 1))) == file;
}

// Takes away the folders of imports that were killed, and the pictures that they had put in their
// place for contacts of this store which were never stored. Another store's are left to its own
// next import; of one that is elsewhere by now nobody can tell what its contacts name, so that the
// pictures stay.
void ClearAbandoned(SqliteStore& store, const std::string& identity, const std::string& waiting,
                    const std::string& callerIdFolder) {
  std::unordered_set<std::string> suspects;
  std::vector<std::string> abandoned;
  for (const std::string& name : NamesIn(waiting)) {
    const std::string root = waiting + "/" + name;
    const LockedFile lock(root + kLockName);
    if (!lock.IsLocked()) continue;
    const std::string owner = lock.Read();
    if (FileOf(owner) == FileOf(identity)) {
      for (std::string& picture : NamesIn(PicturesUnder(root))) suspects.insert(std::move(picture));
    } else if (IsThere(owner)) {
      continue;
    }
    abandoned.push_back(root);
  }
  if (!suspects.empty()) {
    const std::int32_t visited = store.VisitContacts([&](CContact& contact) {
      suspects.erase(Utf8FromWide(contact.photo));
      return true;
    });
    if (visited < 0) return;
  }
  std::error_code error;
  for (const std::string& picture : suspects) fs::remove(callerIdFolder + "/" + picture, error);
  for (const std::string& root : abandoned) fs::remove_all(root, error);
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
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  return error ? "/tmp" : folder.string();
}

struct PictureStaging::Staging {
  Staging(const std::string& waiting, std::string_view identity)
      : pictures(waiting), lock(pictures.root() + kLockName) {
    lock.Wait();
    lock.Write(identity);
  }

  PrivatePictures pictures;
  LockedFile lock;
};

PictureStaging::PictureStaging(SqliteStore& store, const std::string& storePath) {
  const std::string appData = Utf8FromWide(AppDataFolder());
  if (appData.empty()) {
    Complain("HOME isn't set, so pictures have no place and are left out");
    return;
  }
  callerIdFolder_ = NativePath(GetCallerIdPath());
  waiting_ = appData + "/pimvobj/incoming";
  MakeFolder(callerIdFolder_);
  MakeFolder(waiting_);
  // A folder without its lock yet looks like an abandoned one, so imports begin one by one.
  LockedFile beginning(waiting_ + ".lock");
  beginning.Wait();
  const std::string identity = IdentityOf(storePath);
  ClearAbandoned(store, identity, waiting_, callerIdFolder_);
  staging_ = std::make_unique<Staging>(waiting_, identity);
  store.SetPictureReader([this](WideStringView name) {
    NarrowString bytes = ReadPictureFile(InFolder(staging_->pictures.folder(), name));
    return bytes.empty() ? ReadPictureFile(InFolder(callerIdFolder_, name)) : bytes;
  });
}

PictureStaging::~PictureStaging() {
  std::error_code error;
  for (const std::string& path : published_) fs::remove(path, error);
}

void PictureStaging::Publish(const std::vector<WideString>& names) {
  if (staging_ == nullptr) return;
  for (const WideString& name : names) {
    const std::string from = InFolder(staging_->pictures.folder(), name);
    if (!PathExists(from)) continue;
    const std::string to = InFolder(callerIdFolder_, name);
    published_.push_back(to);  // also what a failure leaves of it
    std::error_code error;
    fs::create_hard_link(from, to, error);
    if (error) fs::copy_file(from, to, error);  // a file system without links
    if (error) throw Failure(ShownName(to) + ": " + error.message());
  }
  if (!names.empty() && !SyncFileSystem(callerIdFolder_))
    throw Failure(ShownName(callerIdFolder_) + ": " + std::strerror(errno));
}

void PictureStaging::Committed() {
  published_.clear();
  if (staging_ == nullptr) return;
  std::error_code error;
  for (const std::string& name : NamesIn(staging_->pictures.folder()))
    fs::remove(staging_->pictures.folder() + "/" + name, error);
}

}  // namespace pim::app
