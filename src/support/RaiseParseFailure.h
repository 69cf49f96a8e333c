#pragma once

#include "pim/support/ParseFailure.h"
#include "pim/support/Strings.h"

namespace pim {

// Shows `message` to the user, then throws kParseFailure.
[[noreturn]] void RaiseParseFailure(WideStringView message);

}  // namespace pim
