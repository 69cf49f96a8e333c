// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Gives each file of the folders to the target, as libFuzzer does with a corpus.
int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%d inputs\n", count);
  return count == 0 ? 1 : 0;
}
