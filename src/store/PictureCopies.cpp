// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/PictureCopies.h"

#include <exception>
#include <utility>

#include "pim/platform/FileError.h"
#include "support/CallerIdPictures.h"

namespace pim {

void PictureCopies::Need(WideStringView name) {
  if (!makes_ || name.empty() || HasCallerIdPicture(name)) return;
  try {
    Make(name);
  } catch (const std::exception& failure) {
    pictures_.CheckReading();
    ++notMade_;
    problem_ = failure.what();
  }
}

void PictureCopies::Make(WideStringView name) {
  const auto bytes = pictures_.Read(name);
  if (!bytes) return;
  MakeCallerIdPicture(name, *bytes);
  made_.emplace_back(name);
}

void PictureCopies::Settle() {
  for (const WideString& name : std::exchange(made_, {}))
    if (!pictures_.IsNamed(name)) Remove(name);
}

bool PictureCopies::Remove(WideStringView name) {
  try {
    RemoveCallerIdPicture(name);
    return true;
  } catch (const FileError& failure) {
    problem_ = failure.what();
    return false;
  }
}

}  // namespace pim
