#include "app/output/Progress.h"

#include <unistd.h>

#include <cstdio>

#include "app/output/Output.h"

namespace pim::app {

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

}  // namespace pim::app
