// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>

#include <algorithm>

#include "platform/CodePages.h"
#include "platform/Files.h"

namespace pim {
namespace {

constexpr std::size_t kLongestComponent = 255;  // bytes

// The largest size up to `limit` that cuts no UTF-8 sequence.
std::size_t CutSize(std::string_view text, std::size_t limit) {
  std::size_t size = std::min(limit, text.size());
  if (size < text.size())
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
  return size;
}

// Where the counter "(12)" in front of the last dot starts, or the dot where there is no counter.
// A name without a dot may end in a counter.
std::size_t TailStart(std::string_view name) {
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  const std::string_view stem = name.substr(0, dot);
  if (!stem.ends_with(')')) return dot;
  const std::size_t before = stem.find_last_not_of("0123456789", stem.size() - 2);
  const bool is_counter =
      before != std::string_view::npos && before + 2 < stem.size() && stem[before] == '(';
  return is_counter ? before : dot;
}

// Appends a component, its stem cut at the end where it's too long. What is no real extension, a
// long text behind some dot, is cut as well, but never the counter: names that differ in it alone
// have to stay different.
void AppendComponent(std::string_view name, std::string& path) {
  constexpr std::size_t kLongestTail = 128;
  if (name.size() <= kLongestComponent) {
    path += name;
    return;
  }
  const std::size_t tail_start = TailStart(name);
  std::string_view tail = name.substr(tail_start);
  tail = tail.substr(0, CutSize(tail, kLongestTail));
  const std::string_view stem = name.substr(0, tail_start);
  path += stem.substr(0, CutSize(stem, kLongestComponent - tail.size()));
  path += tail;
}

}  // namespace

std::string NativePath(std::u16string_view path) {
  std::string bytes = Utf8FromWide(path);
  if (bytes.find('\0') != std::string::npos) return {};
  std::ranges::replace(bytes, '\\', '/');
  if (bytes.size() <= kLongestComponent) return bytes;
  std::string shortened;
  shortened.reserve(bytes.size());
  std::string_view rest = bytes;
  for (;;) {
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    AppendComponent(rest.substr(0, slash), shortened);
    if (slash == rest.size()) return shortened;
    shortened += '/';
    rest.remove_prefix(slash + 1);
  }
}

bool PathExists(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0;
}

}  // namespace pim
