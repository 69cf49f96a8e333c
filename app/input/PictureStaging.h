#pragma once

#include <string>
#include <vector>

#include "pim/store/SqliteStore.h"
#include "pim/support/Strings.h"

namespace pim::app {

// A private folder that takes the place of the application-data folder for pictures while it lives,
// and goes with all that is in it.
class PrivatePictures {
 public:
  // `parent` must exist. Throws Failure.
  explicit PrivatePictures(const std::string& parent);
  PrivatePictures(const PrivatePictures&) = delete;
  PrivatePictures& operator=(const PrivatePictures&) = delete;
  ~PrivatePictures();

  // Whether the pictures that are read from now on go nowhere.
  void LeaveOut(bool leaveOut);
  // Takes away the picture of that name; none for an empty one.
  void Remove(WideStringView name);

  const std::string& root() const { return root_; }
  const std::string& folder() const { return folder_; }  // where the pictures are

 private:
  std::string root_;
  std::string folder_;
};

// The folder for what a command reads and doesn't keep.
std::string TemporaryFolder();

// Pictures of an import: they wait in a folder of their own, beside the caller-ID folder, until the
// contacts that name them are stored. A picture is put in its place ahead of the commit, so that no
// stored contact names one that isn't there, and the waiting copy goes behind it; what a killed
// import left is sorted out by the next one into the same store. Imports into any stores may run
// side by side.
class PictureStaging {
 public:
  // `storePath` is the open store's file. Throws Failure.
  PictureStaging(SqliteStore& store, const std::string& storePath);
  PictureStaging(const PictureStaging&) = delete;
  PictureStaging& operator=(const PictureStaging&) = delete;
  ~PictureStaging();

  // Puts the pictures of that name, as far as they wait here, into the caller-ID folder. Throws
  // Failure.
  void Publish(const std::vector<WideString>& names);
  // The contacts that name the published pictures are stored.
  void Committed();

 private:
  struct Staging;

  std::string callerIdFolder_;
  std::string waiting_;                 // the folder of all imports' waiting pictures
  std::unique_ptr<Staging> staging_;    // null when there is no application-data folder
  std::vector<std::string> published_;  // paths that go again unless Committed is called
};

}  // namespace pim::app
