// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pim/support/Strings.h"
#include "store/PictureTable.h"

namespace pim {

// The copies of stored pictures in the caller-ID folder, where other programs look for them.
class PictureCopies {
 public:
  explicit PictureCopies(PictureTable& pictures) : pictures_(pictures) {}

  void Switch(bool makes) { makes_ = makes; }
  // Makes the copy of that name, and the folder, unless it is there or the store has no bytes for
  // it. What goes wrong is counted and told by Problem.
  void Need(WideStringView name);
  // Takes away copies that were made for a state of the store that isn't any more: another program
  // may have deleted the contacts meanwhile, and the copies with them.
  void Settle();
  // False, with Problem telling why, when the copy can't be removed.
  bool Remove(WideStringView name);
  std::int64_t NotMade() const { return notMade_; }
  const std::string& Problem() const { return problem_; }

 private:
  void Make(WideStringView name);

  PictureTable& pictures_;
  bool makes_ = true;
  std::vector<WideString> made_;  // since the last Settle
  std::int64_t notMade_ = 0;
  std::string problem_;
};

}  // namespace pim
