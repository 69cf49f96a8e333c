// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <utility>

#include "pim/records/ContactParts.h"
#include "stream/AccountKeeper.h"
#include "vcard/VCardFields.h"

namespace pim {

// The account of contacts. Two things of a card follow from several lines together: the given name,
// which a formatted name fills where no name stands, and whether a picture is the same as before,
// since each gets a file of its own.
class VCardAccount final : public AccountKeeper {
 public:
  VCardAccount(TakeEntry take, VObjectParser& parser, NameOfRecord nameOfLast)
      : AccountKeeper(std::move(take), parser, kContactPlaces, std::move(nameOfLast)) {}

  // The two parts of a name that decide where a formatted name goes.
  struct Name {
    WideText family;
    WideText given;
    friend bool operator==(const Name&, const Name&) = default;
  };
  static Name Of(const CName& name) { return {name.family_name, name.given_name}; }

  // An N or FN has made `now` out of `before`; apply(Name&) does the same to any name.
  template <class Apply>
  void TakeNames(const Name& before, const CName& now, Apply apply) {
    names_.Take(Current(), before, Of(now), apply);
  }

  // Whether the picture, if it has a file, is the one that the card had before.
  bool IsSamePicture(bool isThere, NarrowStringView bytes, std::int32_t mediaType) {
    Picture now;
    if (isThere) {
      const std::int32_t extension = std::max(mediaType, std::int32_t{MEDIA_NONE});
      now = {bytes.size(), std::hash<NarrowStringView>{}(bytes), extension, true};
    }
    return std::exchange(picture_, now) == now;
  }

 private:
  struct Picture {
    std::size_t size = 0;
    std::size_t hash = 0;
    std::int32_t mediaType = 0;
    bool isThere = false;
    friend bool operator==(const Picture&, const Picture&) = default;
  };

  void CompleteRecord() override {
    names_.Complete([this](std::uint32_t entry) { NeedsEntry(entry, FIELD_NAME); },
                    std::not_equal_to<>());
    picture_ = {};
  }

  OtherStates<Name> names_;
  Picture picture_;
};

}  // namespace pim
