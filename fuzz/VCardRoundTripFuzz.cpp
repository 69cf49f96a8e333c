#include <cstdlib>
#include <string>

#include "fuzz/ReadCards.h"
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

}  // namespace

// What was read, written and read again is written the same a second time. (The first writing may
// differ: blanks at the head of a value have no form in the text.)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string first = WriteAll(pim::ReadCardsQuietly(text));
  const std::string second = WriteAll(pim::ReadCardsQuietly(first));
  if (WriteAll(pim::ReadCardsQuietly(second)) != second) std::abort();
  return 0;
}
