// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
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
    {"\xFF\xFE", "UTF-16 text; iconv -f UTF-16 -t UTF-8 makes text of it that can be read"},
    {"\xFE\xFF", "UTF-16 text; iconv -f UTF-16 -t UTF-8 makes text of it that can be read"},
    {"PK\x03\x04", "a ZIP archive; unzip gives the files in it"},
    {"%PDF", "a PDF document"},
    {"SQLite format 3", "a SQLite database"},
};

}  // namespace

std::string LooksLike(NarrowStringView text, TextForm wanted) {
  if (text.empty()) return "it is empty";
  const auto head = TextHeadOf(text);
  if (head && FormOf(head->object) != wanted) {
    if (wanted == TextForm::VCalendar)
      return "it looks like contacts (vCard), which 'contacts import' reads";
    return std::string("it looks like ") +
           (head->version == "2.0" ? "an iCalendar 2.0 calendar" : "a calendar") +
           ", which 'calendar import' reads";
  }
  const auto* mark =
      std::ranges::find_if(kMarks, [text](const Mark& row) { return text.starts_with(row.head); });
  if (mark != std::end(kMarks)) return "it looks like " + std::string(mark->meaning);
  if (text.substr(0, 512).find('\0') != NarrowStringView::npos) {
    return "it looks like a binary file, or like UTF-16 text, of which iconv -f UTF-16LE -t UTF-8 "
           "makes text that can be read";
  }
  return {};
}

TextForm FormToRead(const std::optional<TextForm>& given, NarrowStringView text) {
  if (given) return *given;
  const auto head = TextHeadOf(text);
  return head ? FormOf(head->object) : TextForm::VCard;
}

}  // namespace pim::app
