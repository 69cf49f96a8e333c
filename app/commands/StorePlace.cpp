// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/StorePlace.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "app/input/CoreDumps.h"
#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "app/output/Passwords.h"
#include "pim/store/SqliteStore.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#if defined(PIM_HAS_POSTGRES)
#include "pim/store/PostgresStore.h"
#endif

namespace pim::app {
namespace {

#if defined(PIM_HAS_POSTGRES)
std::unique_ptr<DatabaseStore> OpenServer(const std::string& url, StoreAccess access,
                                          std::chrono::milliseconds lockWait) {
  ForbidCoreDumps();
  if (const std::string_view problem = ProblemOfUrl(url); !problem.empty())
    throw Failure("postgresql://...: " + std::string(problem));
  PostgresWaits waits;
  waits.lock = lockWait;
  waits.failover = std::min(waits.failover, 2 * lockWait);  // who hurries waits for neither
  waits.givesUp = IsInterrupted;
  return std::make_unique<PostgresStore>(url, access, std::move(waits));
}
#else
constexpr const char* kNoServers = "this pimvobj is built without PostgreSQL";

std::unique_ptr<DatabaseStore> OpenServer(const std::string& url, StoreAccess /*access*/,
                                          std::chrono::milliseconds /*lockWait*/) {
  throw Failure(ShownName(url) + ": " + kNoServers);
}
#endif

}  // namespace

StorePlace StorePlace::Chosen(const Options& options, StoreAccess access) {
  if (options.store) return StorePlace(*options.store);
  const char* named = std::getenv("PIMVOBJ_STORE");
  if (named != nullptr && *named != '\0') return StorePlace(named);
  const std::string folder = Utf8FromWide(AppDataFolder());
  if (folder.empty()) throw Failure("no store: HOME isn't set; name one with --store");
  const std::string own = folder + "/pimvobj";
  if (access == StoreAccess::Create) {
    std::error_code error;
    std::filesystem::create_directories(own, error);
    if (error) throw Failure(ShownName(own) + ": " + error.message());
  }
  return StorePlace(own + "/pim.db");
}

std::unique_ptr<DatabaseStore> StorePlace::Open(StoreAccess access,
                                                std::chrono::milliseconds lockWait) const {
  if (IsServerUrl(text_)) return OpenServer(text_, access, lockWait);
  return std::make_unique<SqliteStore>(text_, access, lockWait, IsInterrupted);
}

bool StorePlace::IsFile(const std::string& path) const {
  return !IsServerUrl(text_) && AreOneFile(text_, path);
}

bool StorePlace::IsSameAs(const StorePlace& other) const {
  return text_ == other.text_ || (!IsServerUrl(other.text_) && IsFile(other.text_));
}

std::string ServerSchema() {
#if defined(PIM_HAS_POSTGRES)
  return PostgresStore::SchemaSql();
#else
  throw Failure(kNoServers);
#endif
}

}  // namespace pim::app
