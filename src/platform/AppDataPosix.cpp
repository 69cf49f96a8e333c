// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "pim/platform/Host.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"

namespace pim {
namespace {

std::string& HostFolder() {
  static std::string folder;
  return folder;
}

std::string_view Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::string_view(value) : std::string_view();
}

std::string FindFolder() {
  if (!HostFolder().empty()) return HostFolder();
  const std::string_view data = Variable("XDG_DATA_HOME");
  if (data.starts_with('/')) return std::string(data);
  const std::string_view home = Variable("HOME");
  return home.empty() ? std::string() : std::string(home) + "/.local/share";
}

}  // namespace

void SetAppDataFolder(std::string folder) { HostFolder() = std::move(folder); }

std::u16string AppDataFolder() {
  std::string folder = FindFolder();
  while (folder.ends_with('/')) folder.pop_back();
  return WideFromUtf8(folder);
}

}  // namespace pim
