#include "app/input/TextKind.h"

#include <algorithm>
#include <iterator>

namespace pim::app {
namespace {

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

std::string LooksLike(NarrowStringView text, TextForm wanted) {
  if (text.empty()) return "it is empty";
  const auto head = TextHeadOf(text);
  if (head && FormOf(head->object) != wanted) {
    if (wanted == TextForm::VCalendar) return "it looks like contacts (vCard)";
    return head->version == "2.0" ? "it looks like an iCalendar 2.0 calendar"
                                  : "it looks like a calendar";
  }
  const auto* mark =
      std::ranges::find_if(kMarks, [text](const Mark& row) { return text.starts_with(row.head); });
  if (mark != std::end(kMarks)) return "it looks like " + std::string(mark->meaning);
  if (text.substr(0, 512).find('\0') != NarrowStringView::npos)
    return "it looks like UTF-16 text or a binary file";
  return {};
}

}  // namespace pim::app
