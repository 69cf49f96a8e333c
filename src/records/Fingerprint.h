// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "records/RecordMap.h"

namespace pim {

// What a record holds, in 128 bits: keys, stamps and picture names aside. Computed under a secret,
// so that nobody can make two texts of one fingerprint; records with the same one are taken for
// equal. Stores keep those of imported records beside their secret: what a fingerprint is made of
// stays as it is for the fields that there are.
struct Fingerprint {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
  friend bool operator==(const Fingerprint&, const Fingerprint&) = default;
};

struct FingerprintHash {
  std::size_t operator()(const Fingerprint& print) const noexcept {
    return static_cast<std::size_t>(print.low);
  }
};

// The secret of one store.
struct FingerprintKey {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
};
FingerprintKey NewFingerprintKey();

Fingerprint FingerprintOf(std::string_view bytes, const FingerprintKey& key);
// `record` is the address of the map's record class.
Fingerprint FingerprintOf(const RecordMap& map, void* record, const FingerprintKey& key);
// Of a record together with its picture.
constexpr Fingerprint Joined(const Fingerprint& record, const Fingerprint& picture) {
  return {record.low ^ picture.low, record.high ^ picture.high};
}

}  // namespace pim
