// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/CallerIdPictures.h"

#include <cerrno>
#include <filesystem>

#include "pim/support/FileNames.h"
#include "platform/Files.h"
#include "support/FileNames.h"

namespace pim {
namespace {

std::string PicturePath(WideStringView name) {
  return NativePath(GetCallerIdPath().append(u"\\").append(name));
}

}  // namespace

bool HasCallerIdFolder() {
  WideString folder;
  GetAppDataDir(folder);
  return folder != u"\\";
}

void MakeCallerIdPicture(WideStringView name, NarrowStringView bytes) {
  namespace fs = std::filesystem;
  const std::string path = PicturePath(name);
  if (!HasCallerIdFolder()) throw FileError(path, "there is no application-data folder");
  std::error_code error;
  fs::create_directories(fs::path(path).parent_path(), error);
  const std::string waiting = PicturePath(u"zevo" + NewGuidText() + u".part");
  if (!error && WriteNewFile(waiting, bytes) != NewFile::Written)
    error = std::error_code(errno, std::generic_category());
  if (!error) {
    fs::rename(waiting, path, error);
    std::error_code ignored;
    if (error) fs::remove(waiting, ignored);
  }
  if (error) throw FileError(path, error.message());
}

bool RemoveCallerIdPicture(WideStringView name) {
  std::error_code error;
  const std::string path = PicturePath(name);
  const bool removed = std::filesystem::remove(path, error);
  if (error) throw FileError(path, error.message());
  return removed;
}

bool WriteCallerIdPicture(WideStringView name, NarrowStringView bytes) {
  return WriteFile(PicturePath(name), bytes);
}

NarrowString ReadCallerIdPicture(WideStringView name) { return ReadPictureFile(PicturePath(name)); }

bool HasCallerIdPicture(WideStringView name) {
  const InputFile file(PicturePath(name), Links::Refused);
  return file.IsOpen() && file.Length() > 0;
}

NarrowString ReadPictureFile(const std::string& path) {
  InputFile file(path, Links::Refused);
  NarrowString bytes(static_cast<std::size_t>(file.IsOpen() ? file.Length() : 0), '\0');
  try {
    if (!bytes.empty()) bytes.resize(file.Read(bytes.data(), bytes.size()));
  } catch (const FileError&) {
    bytes.clear();
  }
  return bytes;
}

}  // namespace pim
