// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "pim/store/DatabaseStore.h"
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

// Pictures of an import: they wait in a folder of their own until the contacts that name them are
// stored, pictures included, and then become the caller-ID folder's copies. What a killed import
// left there is taken away by the next command. Imports into any stores may run side by side.
class PictureStaging {
 public:
  // Has the store find the pictures of contacts that are being saved. Throws Failure.
  explicit PictureStaging(DatabaseStore& store);
  PictureStaging(const PictureStaging&) = delete;
  PictureStaging& operator=(const PictureStaging&) = delete;
  ~PictureStaging();

  // The contacts that have pictures of these names are stored: the pictures go to their place, what
  // else waits goes. One that can't is made when it is needed.
  void Publish(const std::vector<WideString>& names);

 private:
  struct Staging;

  std::string callerIdFolder_;  // empty when there is no application-data folder
  std::unique_ptr<Staging> staging_;
};

// Takes away the pictures that waited in imports which have been killed.
void ClearAbandonedPictures();

}  // namespace pim::app
