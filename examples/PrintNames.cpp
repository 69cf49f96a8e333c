// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Reads contacts from memory and prints their names and numbers, without any store.
// Usage: print_names < FILE
#include <cstdio>
#include <iostream>
#include <iterator>
#include <string>

#include "pim/manager/TextReading.h"
#include "pim/platform/Encoding.h"

int main() {
  const std::string text{std::istreambuf_iterator<char>(std::cin), {}};
  const pim::TextResult result = pim::ReadContacts(text, [](pim::CContact& contact) {
    const pim::WideText& name =
        contact.formatted_name.empty() ? contact.name.given_name : contact.formatted_name;
    std::cout << pim::Utf8FromWide(name);
    for (const pim::CTelephoneNumber& number : contact.telephones())
      std::cout << '\t' << pim::Utf8FromWide(number.number);
    std::cout << '\n';
    return true;  // go on with the next one
  });
  if (result.outcome == pim::TextOutcome::Rejected) {
    std::cerr << "line " << result.line << ": " << pim::TextOf(result.fault) << '\n';
    return 1;
  }
  return 0;
}
