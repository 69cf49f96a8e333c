// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "formats/prepare/BlockSteps.h"

namespace pim {

// What the parameters of a head say, for lines that are only passed over. A text has few of them,
// again and again, so they are looked at once.
class ParameterCache {
 public:
  enum Trait : std::uint8_t {
    IsQuotedPrintable = 1,
    IsBase64 = 2,
    MayNeedCharset = 4,
    MayNeedTypes = 8,
  };

  // Trait bits, joined.
  std::uint8_t Of(std::string_view params) {
    if (params.size() > sizeof Slot::text) return Look(params);
    Slot& slot = slots_[HashOf(params)];
    if (slot.size != params.size() || std::memcmp(slot.text, params.data(), params.size()) != 0) {
      slot.size = static_cast<std::uint8_t>(params.size());
      std::memcpy(slot.text, params.data(), params.size());
      slot.traits = Look(params);
    }
    return slot.traits;
  }

 private:
  struct Slot {
    char text[62];
    std::uint8_t size = 0;
    std::uint8_t traits = 0;
  };

  static std::size_t HashOf(std::string_view params) {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    const std::size_t count = std::min(params.size(), sizeof first);
    std::memcpy(&first, params.data(), count);
    std::memcpy(&last, params.data() + params.size() - count, count);
    return ((first ^ std::rotl(last, 29)) + params.size()) * 0x9E3779B97F4A7C15 >> 58;
  }
  static std::uint8_t Look(std::string_view params) {
    const LineCoding coding = LineCoding::Of(params);
    unsigned traits = 0;
    if (coding.isQuotedPrintable) traits |= IsQuotedPrintable;
    if (coding.isBase64) traits |= IsBase64;
    if (pim::MayNeedCharset(coding)) traits |= MayNeedCharset;
    if (HasTypeParameter(params)) traits |= MayNeedTypes;
    return static_cast<std::uint8_t>(traits);
  }

  std::array<Slot, 64> slots_{};
};

}  // namespace pim
