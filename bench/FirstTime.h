// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pim::bench {

// What a program does that runs once over a text: the work is timed in a process of its own, where
// all memory is new. `argv` of that process names the work; gives its exit status, or -1 when the
// arguments ask for none.
int RunFirstTime(int argc, char** argv);

}  // namespace pim::bench
