// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "pim/platform/FileError.h"
#include "platform/Handles.h"

namespace pim {

// A wide path as this system's: UTF-8, with slashes for backslashes. A component of more than 255
// bytes is shortened in front of the counter "(12)" and the extension at its end, so that names
// which differ in their counter alone stay different. A path with a NUL in it gives an empty
// string, which no file has.
std::string NativePath(std::u16string_view path);

// Whether a file, folder or anything else stands under that name; a link counts by itself.
bool PathExists(const std::string& path);

enum class Links { Followed, Refused };  // a link in place of the file itself

// A regular file open for reading, with a length that fits 31 bits.
class InputFile {
 public:
  // A folder, FIFO, device or longer file is not opened; Problem() then says why. Nor is a link
  // where it is refused.
  explicit InputFile(const std::string& path, Links links = Links::Followed);

  bool IsOpen() const noexcept { return static_cast<bool>(file_); }
  // Why the file isn't open, in the operating system's words or like them ("is a directory").
  const std::string& Problem() const noexcept { return problem_; }
  std::int32_t Length() const noexcept { return length_; }  // when it was opened, in bytes
  // Reads up to `count` bytes and gives their number, less only at the file's end. Throws
  // FileError.
  std::size_t Read(char* bytes, std::size_t count);

 private:
  std::string path_;
  std::string problem_;
  Descriptor file_{-1};
  std::int32_t length_ = 0;
};

// Why nothing can be made or changed in the folder that holds `path`, in the operating system's
// words, or an empty string.
std::string FolderProblem(const std::string& path);

// Creates or empties the file and writes `bytes`. False when it can't be opened, with errno telling
// why. A failure behind that removes the file and throws FileError; a device stays, and a link,
// with an empty file behind it.
[[nodiscard]] bool WriteFile(const std::string& path, std::string_view bytes);

// The same for a name that must be free yet: whether it is shows in the creation itself, so that no
// second writer can come between. Throws FileError as WriteFile does.
enum class NewFile { Written, Taken, Failed };  // Failed: errno tells why
[[nodiscard]] NewFile WriteNewFile(const std::string& path, std::string_view bytes);

// WriteFile over a file that may exist, whose earlier content stays when anything fails: the bytes
// are written beside it and moved in its place. Where that can't be (a device, a link, a folder in
// which nothing can be created) the file is written directly.
[[nodiscard]] bool ReplaceFile(const std::string& path, std::string_view bytes);

}  // namespace pim
