// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/OriginalLines.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/CommandTable.h"
#include "app/commands/History.h"
#include "app/commands/Kinds.h"
#include "app/commands/Nearest.h"
#include "app/commands/StoredRecords.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "support/TextCodec.h"

namespace pim::app {
namespace {

// By a noun, or the word for one of its records: "contacts", "contact".
RecordKind KindNamed(const std::string& word) {
  std::vector<std::string_view> words;
  for (const NounRow& noun : Nouns()) {
    if (!noun.kind) continue;
    if (word == noun.word || word == noun.one) return *noun.kind;
    words.emplace_back(*noun.kind == RecordKind::Contacts ? noun.one : noun.word);
  }
  throw WrongUsage("a record is contact, calendar, todo or memo, not '" + ShownName(word) + "'" +
                   Suggestion(word, words));
}

bool IsStored(Session& session, RecordKind kind, std::int32_t key) {
  bool isThere = false;
  const auto find = [&isThere](const auto&) { isThere = true; };
  if (kind == RecordKind::Contacts) {
    StoredContacts(session, {}).VisitKeys({&key, 1}, find);
  } else {
    StoredItems(session, CalendarKindOf(kind), {}).VisitKeys({&key, 1}, find);
  }
  return isThere;
}

ImportedFile FileOf(Session& session, const RecordOrigin& origin) {
  ImportedFile found;
  const std::int32_t visited =
      HistoryOf(session).VisitFiles(origin.import, [&](const ImportedFile& file) {
        CheckInterrupt();
        if (file.number == origin.file) found = file;
        return file.number != origin.file;
      });
  if (visited < 0) session.Fail();
  return found;
}

// Takes a text piece by piece and keeps the lines from one to another.
class LineCutter {
 public:
  LineCutter(std::int64_t first, std::int64_t last) : first_(first), last_(last) {}

  void Take(NarrowStringView piece) {
    while (!piece.empty() && line_ <= last_) {
      const std::size_t end = piece.find('\n');
      const NarrowStringView part = piece.substr(0, end == NarrowStringView::npos ? end : end + 1);
      if (line_ >= first_) text_.append(part);
      if (end != NarrowStringView::npos) ++line_;
      piece.remove_prefix(part.size());
    }
  }
  const NarrowString& text() const { return text_; }

 private:
  std::int64_t first_;
  std::int64_t last_;
  std::int64_t line_ = 1;
  NarrowString text_;
};

// "12:TEL:1", with what a terminal would obey made visible.
void PrintNumbered(NarrowStringView text, std::int64_t number) {
  WideString wide;
  while (!text.empty()) {
    NarrowStringView line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    WidenText(line, wide);
    Print(std::to_string(number++) + ":" + Shown(wide) + "\n");
  }
}

std::string LinesText(const RecordOrigin& origin) {
  if (origin.firstLine == origin.lastLine) return "line " + std::to_string(origin.firstLine);
  return "lines " + std::to_string(origin.firstLine) + " to " + std::to_string(origin.lastLine);
}

// Read to its end, since only then it is known that no byte of it is damaged.
void PrintLines(Session& session, const RecordOrigin& origin) {
  LineCutter lines(origin.firstLine, origin.lastLine);
  const bool isRead = HistoryOf(session).ReadOriginal(origin.file, [&](NarrowStringView piece) {
    CheckInterrupt();
    lines.Take(piece);
    return true;
  });
  if (!isRead) session.Fail();
  isatty(STDOUT_FILENO) == 1 ? PrintNumbered(lines.text(), origin.firstLine) : Print(lines.text());
}

}  // namespace

int ShowOriginal(const Options& options) {
  const RecordKind kind = KindNamed(options.operands.front());
  const std::int32_t key = KeysOf({options.operands.back()}).front();
  Session session(options, StoreAccess::ReadOnly);
  session.store().MakePictures(false);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  if (!IsStored(session, kind, key)) {
    TellNoSuchKey(kind, key);
    return kFailed;
  }
  const std::string record = std::string(NounOf(kind).one) + " " + std::to_string(key);
  RecordOrigin origin;
  const std::int32_t known = HistoryOf(session).FindOrigin(
      kind == RecordKind::Contacts ? StoredKind::Contact : StoredKind::Item, key, origin);
  if (known < 0) session.Fail();
  if (known == 0) throw Failure(record + " came from no import");
  const ImportedFile file = FileOf(session, origin);
  const std::string where =
      ShownName(file.name) + " (import " + std::to_string(origin.import) + ")";
  if (origin.firstLine == 0)
    throw Failure(record + " came from " + where + "; of which lines isn't known");
  if (!file.isKept) {
    throw Failure(record + " came from " + LinesText(origin) + " of " + where +
                  ", of which no copy is kept");
  }
  PrintLines(session, origin);
  return kDone;
}

}  // namespace pim::app
