// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nettle/sha2.h>

#include <cstring>

#include "pim/store/ImportHistory.h"

namespace pim {

// SHA-256 (FIPS 180-4) of bytes that come piece by piece.
class Digest {
 public:
  Digest() { sha256_init(&context_); }
  void Take(NarrowStringView bytes) {
    sha256_update(&context_, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  }
  // Begins anew behind it.
  Sha256 Finish() {
    Sha256 digest{};
    sha256_digest(&context_, digest.size(), digest.data());
    return digest;
  }

 private:
  sha256_ctx context_;
};

inline Sha256 DigestOf(NarrowStringView bytes) {
  Digest digest;
  digest.Take(bytes);
  return digest.Finish();
}

inline NarrowStringView BytesOf(const Sha256& digest) {
  return {reinterpret_cast<const char*>(digest.data()), digest.size()};
}
// Zeros for what is none.
inline Sha256 DigestFrom(NarrowStringView bytes) {
  Sha256 digest{};
  if (bytes.size() == digest.size()) std::memcpy(digest.data(), bytes.data(), bytes.size());
  return digest;
}

}  // namespace pim
