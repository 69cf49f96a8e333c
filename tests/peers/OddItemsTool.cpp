// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <iostream>

#include "tests/icalendar/OddItems.h"

// Prints vCalendar 1.0 of odd items. Usage: odd_items SEED COUNT
int main(int argc, char** argv) {
  if (argc != 3) return 2;
  std::cout << pim::OddCalendar(static_cast<std::uint32_t>(std::atoi(argv[1])), std::atoi(argv[2]));
  return 0;
}
