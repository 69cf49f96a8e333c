#pragma once

#include <cstdint>
#include <string>

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
  std::int64_t NotMade() const { return notMade_; }
  const std::string& Problem() const { return problem_; }

 private:
  void Make(WideStringView name);

  PictureTable& pictures_;
  bool makes_ = true;
  std::int64_t notMade_ = 0;
  std::string problem_;
};

}  // namespace pim
