// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Marks what a host may call, functions and classes of the libraries. Everything else is hidden in
// them. No objects, so nothing for threads to share.
#if defined(_WIN32)
#define PIM_EXPORT
#else
#define PIM_EXPORT __attribute__((visibility("default")))
#endif
