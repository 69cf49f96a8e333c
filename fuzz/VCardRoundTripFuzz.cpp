// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>
#include <string>

#include "fuzz/ReadCards.h"
#include "pim/support/WritingForm.h"
#include "vcard/VCardWriter.h"

namespace {

std::string WriteAll(const pim::CContacts& contacts) {
  std::string text;
  pim::VObjectBuffer data;
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
    pim::WriteVCard(contacts[i], data);
    text.append(data.bytes.view()).append("\r\n");
  }
  return text;
}

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
  text.remove_prefix(line.size());
  return line;
}

bool IsProperty(std::string_view line, std::string_view name) {
  return line.starts_with(name) && line.substr(name.size()).find_first_of(":;") == 0;
}

// The text without what doesn't come back: blanks at the head of numbers, which have no escape,
// numbers that hold nothing else, and names, which a formatted name joins where they lack both
// family and given name.
std::string Comparable(std::string_view text) {
  std::string kept;
  while (!text.empty()) {
    std::string_view line = TakeLine(text);
    if (IsProperty(line, "N")) {
      while (line.ends_with("=\r\n")) line = TakeLine(text);
    } else if (IsProperty(line, "TEL")) {
      const std::size_t value = line.find(':') + 1;
      const std::size_t first = line.find_first_not_of(" \t", value);
      if (line.substr(first) != "\r\n")
        kept.append(line.substr(0, value)).append(line.substr(first));
    } else {
      kept.append(line);
    }
  }
  return kept;
}

}  // namespace

// What was read and written so that it reads back, and read again, is written the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  pim::SetWritingForm(pim::WritingForm::ReadsBack);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string first = WriteAll(pim::ReadCardsQuietly(text));
  const std::string second = WriteAll(pim::ReadCardsQuietly(first));
  const std::string third = WriteAll(pim::ReadCardsQuietly(second));
  if (Comparable(second) != Comparable(first) || third != second) std::abort();
  return 0;
}
