#include "app/TextKind.h"

#include <algorithm>

#include "stream/VObjectParser.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

struct FirstObject {
  bool inBegin = false;
  bool inVersion = false;
  std::optional<TextForm> form;
  bool version2 = false;  // VERSION:2.0, which makes a calendar an iCalendar one
};

void OnProperty(void* user, const char* name, const ParserParam*) {
  auto& found = *static_cast<FirstObject*>(user);
  found.inBegin = EqualsIgnoringCase(name, "BEGIN");
  found.inVersion = EqualsIgnoringCase(name, "VERSION");
}

void OnValue(void* user, const char* bytes, std::int32_t length) {
  auto& found = *static_cast<FirstObject*>(user);
  if (bytes == nullptr) return;
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  if (found.inVersion && Trim(value) == "2.0") found.version2 = true;
  if (!found.inBegin || found.form) return;
  if (EqualsIgnoringCase(value, "VCARD")) found.form = TextForm::VCard;
  for (const NarrowStringView word : {"VCALENDAR", "VEVENT", "VTODO", "VMEMO"})
    if (EqualsIgnoringCase(value, word)) found.form = TextForm::VCalendar;
}

FirstObject FindFirstObject(NarrowStringView text) {
  constexpr std::size_t kPiece = 4096;
  FirstObject found;
  const auto parser = VObjectParser::Create();
  if (parser == nullptr) return found;
  parser->SetPropertyHandler(OnProperty);
  parser->SetDataHandler(OnValue);
  parser->SetUserData(&found);
  for (bool more = true; more && !found.form;) {
    const NarrowStringView piece = text.substr(0, kPiece);
    text.remove_prefix(piece.size());
    more = parser->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), text.empty()) &&
           !text.empty();
  }
  return found;
}

struct Mark {
  NarrowStringView head;
  NarrowStringView meaning;
};
constexpr Mark kMarks[] = {
    {"\xFF\xD8\xFF", "a JPEG picture"},
    {"\x89PNG", "a PNG picture"},
    {"GIF8", "a GIF picture"},
    {"BM", "a BMP picture"},
    {"\xFF\xFE", "UTF-16 text, which vObject text never is"},
    {"\xFE\xFF", "UTF-16 text, which vObject text never is"},
    {"PK\x03\x04", "a ZIP archive"},
    {"%PDF", "a PDF document"},
    {"SQLite format 3", "a SQLite database"},
};

}  // namespace

std::optional<TextForm> FormOf(NarrowStringView text) { return FindFirstObject(text).form; }

std::string LooksLike(NarrowStringView text, TextForm wanted) {
  if (text.empty()) return "it is empty";
  const FirstObject found = FindFirstObject(text);
  if (found.form && *found.form != wanted) {
    if (*found.form == TextForm::VCard) return "it looks like contacts (vCard)";
    return found.version2 ? "it looks like an iCalendar 2.0 calendar" : "it looks like a calendar";
  }
  const auto* mark =
      std::ranges::find_if(kMarks, [text](const Mark& row) { return text.starts_with(row.head); });
  if (mark != std::end(kMarks)) return "it looks like " + std::string(mark->meaning);
  if (text.substr(0, 512).find('\0') != NarrowStringView::npos)
    return "it looks like UTF-16 text or a binary file";
  return {};
}

}  // namespace pim::app
