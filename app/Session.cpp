#include "app/Session.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "app/Interrupt.h"
#include "app/Output.h"
#include "pim/platform/Host.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

constexpr auto kLockWait = std::chrono::seconds(30);

std::string StorePath(const Options& options) {
  if (options.store) return *options.store;
  const char* named = std::getenv("PIMVOBJ_STORE");
  if (named != nullptr && *named != '\0') return named;
  const std::string folder = Utf8FromWide(AppDataFolder());
  if (folder.empty()) throw Failure("no store: HOME isn't set; name one with --store");
  const std::string own = folder + "/pimvobj";
  std::error_code error;
  std::filesystem::create_directories(own, error);
  if (error) throw Failure(ShownName(own) + ": " + error.message());
  return own + "/pim.db";
}

}  // namespace

Session::Session(const Options& options)
    : path_(StorePath(options)), store_(path_, kLockWait, IsInterrupted), binding_(store_) {}

void Session::Fail() const {
  CheckInterrupt();  // which ends the wait for a lock
  throw Failure(store_.LastError());
}

Progress::Progress(bool quiet)
    : enabled_(!quiet && isatty(STDERR_FILENO) == 1),
      next_(std::chrono::steady_clock::now() + std::chrono::milliseconds(500)) {}

void Progress::Show(long long files, long long records) {
  if (!enabled_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < next_) return;
  next_ = now + std::chrono::milliseconds(100);
  std::fprintf(stderr, "\r%s, %s ", Counted(files, "file").c_str(),
               Counted(records, "record").c_str());
  shown_ = true;
}

void Progress::Clear() {
  if (shown_) std::fputs("\r\x1B[K", stderr);
  shown_ = false;
}

Messages::Messages() {
  SetMessageSink([this](std::u16string_view text) { texts_.emplace_back(text); });
}

Messages::~Messages() { SetMessageSink({}); }

}  // namespace pim::app
