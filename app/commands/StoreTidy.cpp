// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/StoreTidy.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/Session.h"
#include "app/commands/StoredRecords.h"
#include "app/input/Interrupt.h"
#include "app/output/JsonWriter.h"
#include "app/output/Output.h"
#include "pim/support/FileNames.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Files.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

// Whether the library has given that name: "zevo", a GUID and an extension.
bool IsOwnName(std::string_view name) {
  constexpr std::string_view kForm = "zevoXXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX.";
  const auto fits = [](char form, char character) {
    if (form != 'X') return form == character;
    return std::string_view("0123456789ABCDEF").find(character) != std::string_view::npos;
  };
  return name.size() > kForm.size() &&
         std::ranges::equal(kForm, name.substr(0, kForm.size()), fits);
}

// By name; none where there is no folder.
std::vector<std::string> OwnPictures(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code unknown;
    std::string name = at->path().filename().string();
    if (IsOwnName(name) && at->symlink_status(unknown).type() == fs::file_type::regular)
      names.push_back(std::move(name));
  }
  if (error && error != std::errc::no_such_file_or_directory)
    throw Failure(ShownName(folder) + ": " + error.message());
  std::ranges::sort(names);
  return names;
}

// Those that no contact names, as paths.
std::vector<std::string> LeftPictures(Session& session, const std::string& folder) {
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  std::vector<std::string> paths;
  for (const std::string& name : OwnPictures(folder)) {
    CheckInterrupt();
    const std::int32_t isNamed = session.store().NamesPicture(WideFromUtf8(name));
    if (isNamed < 0) session.Fail();
    if (isNamed == 0) paths.push_back(folder + "/" + name);
  }
  return paths;
}

// Those that stay are told and taken out of `paths`.
int Remove(std::vector<std::string>& paths) {
  const auto stays = [](const std::string& path) {
    CheckInterrupt();
    if (unlink(path.c_str()) == 0 || errno == ENOENT) return false;
    Complain(ShownName(path) + ": can't be removed: " + std::strerror(errno));
    return true;
  };
  return std::erase_if(paths, stays) == 0 ? kDone : kFailed;
}

void PrintJson(const std::vector<std::string>& paths, std::int64_t ofDeleted, bool removed) {
  JsonWriter json;
  json.StartObject();
  json.Array("pictures", paths, [&json](const std::string& path) { json.Utf8(path); });
  json.Field("removed", removed);
  json.Field("of_deleted_contacts", ofDeleted);
  json.EndObject();
  Print(std::string(json.text()) + "\n");
}

void PrintPaths(const std::vector<std::string>& paths, std::int64_t ofDeleted, bool removed) {
  for (const std::string& path : paths) Print(ShownName(path) + "\n");
  std::string line = Counted(std::ssize(paths), "picture") + " that no contact of the store has";
  if (removed) {
    line += " removed";
    if (ofDeleted != 0) line += ", and " + std::to_string(ofDeleted) + " of deleted contacts";
  } else if (!paths.empty()) {
    line += "; --delete removes " + std::string(paths.size() == 1 ? "it" : "them");
  }
  Print(line + "\n");
}

}  // namespace

int TidyStore(const Options& options) {
  Session session(options, options.deletes ? StoreAccess::Existing : StoreAccess::ReadOnly);
  if (AppDataFolder().empty())
    throw Failure("HOME isn't set, so that no folder can have copies of pictures");
  const std::int64_t ofDeleted = options.deletes ? RemoveLeftPictures(session) : 0;
  std::vector<std::string> paths = LeftPictures(session, NativePath(GetCallerIdPath()));
  const int status = options.deletes ? Remove(paths) : kDone;
  options.listForm == ListForm::Json ? PrintJson(paths, ofDeleted, options.deletes)
                                     : PrintPaths(paths, ofDeleted, options.deletes);
  return status;
}

}  // namespace pim::app
