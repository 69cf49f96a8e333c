#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "records/RecordMap.h"

namespace pim {

// What a record holds, in 128 bits: keys, stamps and picture names aside. Computed under a secret
// that each process draws anew, so that nobody can make two texts of one fingerprint; records with
// the same one are taken for equal. Not for keeping.
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

Fingerprint FingerprintOf(std::string_view bytes);
// `record` is the address of the map's record class.
Fingerprint FingerprintOf(const RecordMap& map, void* record);

}  // namespace pim
