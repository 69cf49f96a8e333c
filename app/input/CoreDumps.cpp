// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/CoreDumps.h"

#include <sys/resource.h>
#if defined(__linux__)
#include <sys/prctl.h>
#endif

namespace pim::app {

void ForbidCoreDumps() {
  const rlimit none{0, 0};
  static_cast<void>(setrlimit(RLIMIT_CORE, &none));
#if defined(__linux__)
  // A program that the system hands core dumps to is called whatever the limit is.
  static_cast<void>(prctl(PR_SET_DUMPABLE, 0));
#endif
}

}  // namespace pim::app
