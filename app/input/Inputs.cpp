// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/Inputs.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>

#include "app/input/ByteSource.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

bool HasExtension(const fs::path& path, const std::vector<std::string_view>& extensions) {
  const std::string extension = path.extension().string();
  return std::ranges::any_of(
      extensions, [&](std::string_view wanted) { return EqualsIgnoringCase(extension, wanted); });
}

void Walk(const fs::path& folder, const std::vector<std::string_view>& extensions,
          std::vector<std::string>& files) {
  std::error_code error;
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    entries.push_back(*entry);
  if (error) throw Failure(ShownName(folder.string()) + ": " + error.message());
  std::ranges::sort(entries, {}, [](const fs::directory_entry& entry) -> const std::string& {
    return entry.path().native();
  });
  for (const fs::directory_entry& entry : entries) {
    CheckInterrupt();
    // A link to a folder isn't followed: it could lead round in a circle.
    if (entry.is_directory(error) && !entry.is_symlink(error)) {
      Walk(entry.path(), extensions, files);
    } else if (HasExtension(entry.path(), extensions) && !entry.is_directory(error)) {
      files.push_back(entry.path().string());
    }
  }
}

constexpr std::size_t kLongestInput = std::numeric_limits<std::int32_t>::max();

std::string ReadStream(const std::string& path) {
  FileSource source(path);
  std::string bytes;
  std::array<char, std::size_t{64} * 1024> piece{};
  while (const std::size_t count = source.Read(piece.data(), piece.size())) {
    bytes.append(piece.data(), count);
    if (bytes.size() > kLongestInput) FailToRead(path, "longer than 2 GiB");
  }
  return bytes;
}

}  // namespace

std::vector<std::string> FilesOf(const std::string& path,
                                 const std::vector<std::string_view>& extensions) {
  std::error_code error;
  if (path == "-" || !fs::is_directory(path, error)) return {path};
  std::vector<std::string> files;
  Walk(path, extensions, files);
  if (files.empty()) {
    std::string wanted;
    for (const std::string_view extension : extensions)
      wanted.append(wanted.empty() ? "" : " or ").append(extension);
    throw Failure(ShownName(path) + ": no " + wanted + " file in this folder");
  }
  return files;
}

bool AreOneFile(const std::string& one, const std::string& other) {
  std::error_code error;
  if (fs::equivalent(one, other, error)) return true;
  const auto whole = [](const std::string& path) {
    std::error_code ignored;
    return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
  };
  return whole(one) == whole(other);
}

void ReadInput(const std::string& path, ByteOrderMark mark, ByteBuffer& text) {
  if (IsStream(path)) {
    const std::string bytes = ReadStream(path);
    const NarrowStringView kept = mark == ByteOrderMark::Skipped ? WithoutMark(bytes) : bytes;
    text.Assign(kept.data(), kept.size());
    return;
  }
  InputFile file(path);
  if (!file.IsOpen()) FailToRead(path, file.Problem());
  ReadTextFile(file, mark, text);
}

}  // namespace pim::app
