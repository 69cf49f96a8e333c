#include "app/PictureStaging.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unordered_set>

#include "app/Output.h"
#include "pim/platform/Host.h"
#include "pim/records/Contacts.h"
#include "pim/support/FileNames.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
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
      : file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    locked_ = file_ >= 0 && flock(file_, LOCK_EX | LOCK_NB) == 0;
  }
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;
  ~LockedFile() {
    if (file_ >= 0) close(file_);
  }
  bool IsLocked() const { return locked_; }

 private:
  int file_;
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

// Takes away the folders of imports that were killed, and the pictures that they had put in their
// place for contacts which were never stored.
void ClearAbandoned(SqliteStore& store, const std::string& waiting,
                    const std::string& callerIdFolder) {
  std::unordered_set<std::string> suspects;
  std::vector<std::string> abandoned;
  for (const std::string& name : NamesIn(waiting)) {
    const std::string root = waiting + "/" + name;
    if (!LockedFile(root + kLockName).IsLocked()) continue;
    abandoned.push_back(root);
    for (std::string& picture : NamesIn(PicturesUnder(root))) suspects.insert(std::move(picture));
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

std::string TemporaryFolder() {
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  return error ? "/tmp" : folder.string();
}

struct PictureStaging::Staging {
  explicit Staging(const std::string& waiting)
      : pictures(waiting), lock(pictures.root() + kLockName) {}

  PrivatePictures pictures;
  LockedFile lock;
};

PictureStaging::PictureStaging(SqliteStore& store) {
  const std::string appData = Utf8FromWide(AppDataFolder());
  if (appData.empty()) return;  // without such a folder no picture can be kept
  callerIdFolder_ = NativePath(GetCallerIdPath());
  waiting_ = appData + "/pimvobj/incoming";
  MakeFolder(callerIdFolder_);
  MakeFolder(waiting_);
  ClearAbandoned(store, waiting_, callerIdFolder_);
  staging_ = std::make_unique<Staging>(waiting_);
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
    std::error_code error;
    fs::create_hard_link(from, to, error);
    if (error) fs::copy_file(from, to, error);  // a file system without links
    if (error) throw Failure(ShownName(to) + ": " + error.message());
    published_.push_back(to);
  }
}

void PictureStaging::Committed() {
  published_.clear();
  if (staging_ == nullptr) return;
  std::error_code error;
  for (const std::string& name : NamesIn(staging_->pictures.folder()))
    fs::remove(staging_->pictures.folder() + "/" + name, error);
}

}  // namespace pim::app
