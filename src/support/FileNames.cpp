// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/FileNames.h"

#include <algorithm>
#include <utility>

#include "platform/CodePages.h"
#include "platform/Files.h"
#include "platform/Guid.h"

namespace pim {
namespace {

constexpr WideStringView kRefused = u"\\/?\":<>|*";

// The path with a counter in front of the extension: of whichever part of it has the last dot.
WideString WithCounter(WideStringView path, std::size_t counter) {
  constexpr std::size_t kPathLimit = 260;  // units, the terminating one included
  const std::size_t dot = std::min(path.rfind(u'.'), path.size());
  const WideStringView extension = path.substr(dot);
  const WideString suffix =
      WideString(u"(").append(WideFromUtf8(std::to_string(counter))).append(u")");
  const std::size_t behind_stem = extension.size() + suffix.size() + 1;
  const std::size_t room = kPathLimit - std::min(kPathLimit, behind_stem);
  WideString result(path.substr(0, std::min(dot, room)));
  return result.append(suffix).append(extension);
}

}  // namespace

WideString CleanFileName(WideStringView name) {
  WideString cleaned(name);
  std::erase_if(cleaned, [](char16_t unit) { return kRefused.find(unit) != WideStringView::npos; });
  return cleaned;
}

WideString UniqueFileName(const WideString& path) { return UniqueNames().Next(path, PathExists); }

WideString UniqueNames::Next(const WideString& path, const Taken& isTaken) {
  constexpr std::size_t kFirstCounter = 2;
  std::string native = NativePath(path);
  const auto known = counters_.find(native);
  if (known == counters_.end() && !isTaken(native)) return path;
  std::size_t counter = known == counters_.end() ? kFirstCounter : known->second;
  WideString candidate = WithCounter(path, counter);
  while (isTaken(NativePath(candidate))) candidate = WithCounter(path, ++counter);
  counters_.insert_or_assign(std::move(native), counter);
  return candidate;
}

WideString NewGuidText() {
  GUID guid;
  if (!CoCreateGuid(guid)) return {};
  const WideString text = StringFromGUID2(guid);
  return text.substr(1, text.size() - 2);
}

}  // namespace pim
