// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/Files.h"
#include "platform/ZoneFile.h"
#include "platform/ZoneRecord.h"
#include "platform/ZoneRule.h"

namespace pim {
namespace {

constexpr const char* kSystemZoneFile = "/etc/localtime";
constexpr const char* kZoneFolder = "/usr/share/zoneinfo";

bool ReadZoneFile(const std::string& path, TIME_ZONE_INFORMATION& zone) {
  constexpr std::int32_t kLargestFile = 1 << 20;  // the largest zones have a few thousand bytes
  InputFile file(path);
  if (!file.IsOpen() || file.Length() > kLargestFile) return false;
  std::string bytes(static_cast<std::size_t>(file.Length()), '\0');
  try {
    bytes.resize(file.Read(bytes.data(), bytes.size()));
  } catch (const FileError&) {
    return false;
  }
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return ParseZoneFile(bytes, std::chrono::duration_cast<std::chrono::seconds>(now).count(), zone);
}

// A name of TZ as the C library reads it: in the folder of zone files unless it's absolute.
std::string ZoneFilePath(std::string_view name) {
  if (name.starts_with('/')) return std::string(name);
  const char* folder = std::getenv("TZDIR");
  std::string path = folder != nullptr && *folder != '\0' ? folder : kZoneFolder;
  return path.append("/").append(name);
}

}  // namespace

void GetTimeZoneInformation(TIME_ZONE_INFORMATION& zone) {
  zone = {};  // UTC, for whatever can't be read
  const char* variable = std::getenv("TZ");
  if (variable == nullptr) {
    ReadZoneFile(kSystemZoneFile, zone);
    return;
  }
  std::string_view value(variable);
  if (value.starts_with(':')) value.remove_prefix(1);
  // A file comes first: EST5EDT is a rule as well, but the system may know better.
  if (!value.empty() && !ReadZoneFile(ZoneFilePath(value), zone))
    static_cast<void>(ParseZoneRule(value, zone));
}

}  // namespace pim
