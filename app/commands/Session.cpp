#include "app/commands/Session.h"

#include <cstdlib>
#include <filesystem>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Files.h"

namespace pim::app {
namespace {

constexpr auto kLockWait = std::chrono::seconds(30);

std::string StorePath(const Options& options, StoreAccess access) {
  if (options.store) return *options.store;
  const char* named = std::getenv("PIMVOBJ_STORE");
  if (named != nullptr && *named != '\0') return named;
  const std::string folder = Utf8FromWide(AppDataFolder());
  if (folder.empty()) throw Failure("no store: HOME isn't set; name one with --store");
  const std::string own = folder + "/pimvobj";
  if (access == StoreAccess::Create) {
    std::error_code error;
    std::filesystem::create_directories(own, error);
    if (error) throw Failure(ShownName(own) + ": " + error.message());
  }
  return own + "/pim.db";
}

SqliteStore Open(const std::string& path, StoreAccess access) {
  try {
    return SqliteStore(path, access, kLockWait, IsInterrupted);
  } catch (const NoStoreError& error) {
    throw Failure(std::string(error.what()) +
                  "; 'pimvobj contacts import FILE' makes one, --store names another");
  }
}

}  // namespace

Session::Session(const Options& options, StoreAccess access)
    : path_(StorePath(options, access)),
      isNew_(!PathExists(path_)),
      store_(Open(path_, access)),
      binding_(store_) {}

void Session::Fail() const {
  CheckInterrupt();  // which ends the wait for a lock
  throw Failure(store_.LastError());
}

}  // namespace pim::app
