// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace pim {

inline std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Writes a committed file anew, or looks whether it is as it would be made now. Gives the exit
// status; `target` is what makes it.
inline int WriteOrCheck(const std::string& path, const std::string& made, bool check,
                        const char* target) {
  if (!check) std::ofstream(path, std::ios::binary) << made;
  if (BytesOf(path) == made) return 0;
  if (check) {
    std::fprintf(stderr, "%s is stale: make the target \"%s\"\n", path.c_str(), target);
  } else {
    std::fprintf(stderr, "%s can't be written\n", path.c_str());
  }
  return 1;
}

}  // namespace pim
