#pragma once

#include "pim/stream/TextAccount.h"
#include "pim/stream/TextWatch.h"

namespace pim {

// What a host wants to be told while a text is read; nothing by default, and at no cost then.
struct TextObserver {
  WatchText notice = {};
  TakeEntry entry = {};
};

}  // namespace pim
