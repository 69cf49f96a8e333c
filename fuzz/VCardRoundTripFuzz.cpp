#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

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

bool IsEncoded(std::string_view line) {
  return line.substr(0, line.find(':')).find(pim::TextParameters()) != std::string_view::npos;
}

// The logical lines: soft breaks of encoded properties gone. (A number may end in an equals sign.)
std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  bool continued = false;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find("\r\n"));
    text.remove_prefix(std::min(line.size() + 2, text.size()));
    if (!continued) lines.emplace_back();
    lines.back().append(line);
    continued = lines.back().ends_with('=') && IsEncoded(lines.back());
    if (continued) lines.back().pop_back();
  }
  return lines;
}

// The text without blanks, and without lines that hold nothing else. The N line goes too: where its
// blanks are lost, the formatted name takes its place.
std::string WithoutBlanks(std::string_view text) {
  std::string kept;
  for (std::string& line : LinesOf(text)) {
    for (const std::string_view part :
         {pim::TextParameters(), std::string_view("=20"), std::string_view("=09"),
          std::string_view(" "), std::string_view("\t")})
      RemoveAll(line, part);
    const bool isName = line.starts_with("N:") || line.starts_with("N;");
    if (!isName && line.find_last_not_of(":;") > line.find(':')) kept.append(line).append("\n");
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
