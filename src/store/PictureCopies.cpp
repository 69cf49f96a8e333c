#include "store/PictureCopies.h"

#include <exception>

#include "support/CallerIdPictures.h"

namespace pim {

void PictureCopies::Need(WideStringView name) {
  if (!makes_ || name.empty() || HasCallerIdPicture(name)) return;
  try {
    Make(name);
  } catch (const std::exception& failure) {
    ++notMade_;
    problem_ = failure.what();
  }
}

void PictureCopies::Make(WideStringView name) {
  if (const auto bytes = pictures_.Read(name)) MakeCallerIdPicture(name, *bytes);
}

}  // namespace pim
