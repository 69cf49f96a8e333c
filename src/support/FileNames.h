// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>

#include "pim/support/FileNames.h"
#include "pim/support/Strings.h"

namespace pim {

// The name without \ / ? " : < > | *, which no file name of Windows may hold. Nothing else changes;
// the result may be empty.
WideString CleanFileName(WideStringView name);

// A path at which nothing stands at this moment: `path` itself, else with "(2)", "(3)" and so on in
// front of its extension, the stem being cut so that the path stays below 260 units.
WideString UniqueFileName(const WideString& path);

// The same for many files of one export, among which a name may come up again and again: the look
// starts at the last counter that was found for a path, since the ones below it were taken then.
class UniqueNames {
 public:
  // Whether a native path can't be had; it may be asked several times, last for the result.
  using Taken = std::function<bool(const std::string& path)>;

  // What UniqueFileName gives, unless a file was removed since an earlier call.
  WideString Next(const WideString& path, const Taken& isTaken);

 private:
  std::unordered_map<std::string, std::size_t> counters_;  // by native path; of paths once taken
};

// A new GUID as 36 characters without braces, or an empty string when the system gives none.
WideString NewGuidText();

}  // namespace pim
