#pragma once

#include <cstdint>
#include <deque>

#include "pim/stream/TextAccount.h"

namespace pim::app {

// From which physical lines of a text its records came, by the text's account.
class LinesOfRecords {
 public:
  struct Lines {
    std::int64_t first = 0;
    std::int64_t last = 0;
  };

  void Take(const AccountEntry& entry);
  // The lines of a record whose entries have come. Records are asked for in their order, each once.
  Lines Of(std::int64_t record);

 private:
  std::int64_t base_ = 0;  // the record of the first lines
  std::deque<Lines> lines_;
  bool hasEnded_ = false;  // the last one, unless more of it follows
};

}  // namespace pim::app
