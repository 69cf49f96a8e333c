#pragma once

#include <optional>
#include <string>

#include "app/Options.h"
#include "pim/support/Strings.h"

namespace pim::app {

// The form of the first object that begins in a text, where one does.
std::optional<TextForm> FormOf(NarrowStringView text);

// What a text looks like in which no record of the form begins, as the end of a sentence:
// "it looks like a JPEG picture". Empty when there is nothing to say.
std::string LooksLike(NarrowStringView text, TextForm wanted);

}  // namespace pim::app
