#include "support/CallerIdPictures.h"

#include "pim/support/FileNames.h"
#include "platform/Files.h"

namespace pim {
namespace {

std::string PicturePath(WideStringView name) {
  return NativePath(GetCallerIdPath().append(u"\\").append(name));
}

}  // namespace

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
