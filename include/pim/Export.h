// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Marks what a host may call: PIM_EXPORT in the core library, PIM_STORE_EXPORT in that of the
// SQLite store, PIM_POSTGRES_EXPORT in that of the PostgreSQL store. All else is hidden in shared
// libraries. A host defines PIM_STATIC where it links the static ones; the CMake targets and the
// pkg-config files do. PIM_BUILDING_CORE, PIM_BUILDING_STORE and PIM_BUILDING_POSTGRES are the
// build's own.
#if defined(PIM_STATIC)
#define PIM_EXPORT
#define PIM_STORE_EXPORT
#define PIM_POSTGRES_EXPORT
#define PIM_HIDDEN
#elif defined(_WIN32)
#if defined(PIM_BUILDING_CORE)
#define PIM_EXPORT __declspec(dllexport)
#else
#define PIM_EXPORT __declspec(dllimport)
#endif
#if defined(PIM_BUILDING_STORE)
#define PIM_STORE_EXPORT __declspec(dllexport)
#else
#define PIM_STORE_EXPORT __declspec(dllimport)
#endif
#if defined(PIM_BUILDING_POSTGRES)
#define PIM_POSTGRES_EXPORT __declspec(dllexport)
#else
#define PIM_POSTGRES_EXPORT __declspec(dllimport)
#endif
#define PIM_HIDDEN
#else
#define PIM_EXPORT __attribute__((visibility("default")))
#define PIM_STORE_EXPORT __attribute__((visibility("default")))
#define PIM_POSTGRES_EXPORT __attribute__((visibility("default")))
#define PIM_HIDDEN __attribute__((visibility("hidden")))
#endif
