#include <algorithm>
#include <cstdlib>
#include <string>

#include "fuzz/ReadCards.h"
#include "support/TextCodec.h"
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

void RemoveAll(std::string& text, std::string_view part) {
  std::string kept;
  std::size_t from = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, from)) {
    kept.append(text, from, at - from);
    from = at + part.size();
  }
  text = kept.append(text, from);
}

// The text without blanks, and without lines that hold nothing else. The N line goes too: where its
// blanks are lost, the formatted name takes its place.
std::string WithoutBlanks(std::string text) {
  for (const std::string_view part :
       {pim::TextParameters(), std::string_view("=\r\n"), std::string_view("=20"),
        std::string_view("=09"), std::string_view(" "), std::string_view("\t")})
    RemoveAll(text, part);
  std::string kept;
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min(text.find('\n', from), text.size() - 1) + 1;
    const std::string_view line = std::string_view(text).substr(from, end - from);
    const bool isName = line.starts_with("N:") || line.starts_with("N;");
    if (!isName && line.find_last_not_of(":;\r\n") > line.find(':')) kept.append(line);
    from = end;
  }
  return kept;
}

}  // namespace

// What was read, written and read again is written the same a second time, but for blanks: those at
// the head of a value, or of a line behind a soft line break, have no form in the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string first = WriteAll(pim::ReadCardsQuietly(text));
  const std::string second = WriteAll(pim::ReadCardsQuietly(first));
  const std::string third = WriteAll(pim::ReadCardsQuietly(second));
  if (third != second && WithoutBlanks(third) != WithoutBlanks(second)) std::abort();
  return 0;
}
