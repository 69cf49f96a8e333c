#include "app/CalendarCommands.h"

#include <cerrno>
#include <cstring>

#include "app/Importer.h"
#include "app/Inputs.h"
#include "app/Interrupt.h"
#include "app/ItemText.h"
#include "app/Output.h"
#include "app/RecordDump.h"
#include "app/Session.h"
#include "app/Table.h"
#include "app/TextReading.h"
#include "pim/manager/CalendarImport.h"
#include "platform/Files.h"
#include "vcalendar/VCalendarWriter.h"

namespace pim::app {
namespace {

CalendarType KindOf(const Options& options) {
  switch (options.kind) {
    case RecordKind::Todo:
      return CalendarType::Todo;
    case RecordKind::Memo:
      return CalendarType::Memo;
    default:
      return CalendarType::Event;
  }
}

// The import of events takes the to-dos of a file too.
std::string_view ImportNoun(CalendarType kind) {
  return kind == CalendarType::Event ? "item" : NounOf(kind);
}

class CalendarImporter : public Importer {
 public:
  explicit CalendarImporter(const Options& options)
      : Importer(options, {".vcs", ".ics"}, ImportNoun(KindOf(options)), TextForm::VCalendar,
                 ByteOrderMark::Kept) {}

 private:
  FileCounts StoreText(NarrowStringView text, const ProgressCall& progress) override {
    CalendarImportCounts counts;
    const auto report = [&](const CalendarImportCounts& soFar) { progress(CountsOf(soFar)); };
    std::int32_t stored = 0;
    try {
      stored = ImportCalendarText(session().db(), KindOf(options()), text,
                                  !options().skipDuplicates, counts, report);
    } catch (ParseFailure) {
      report(counts);  // how many stood ahead of what was rejected
      throw;
    }
    if (stored < 0) session().Fail();
    return CountsOf(counts);
  }

  static FileCounts CountsOf(const CalendarImportCounts& counts) {
    FileCounts file;
    file.inText = counts.inText;
    file.stored = counts.stored;
    file.otherKind = counts.inText - counts.kept;
    return file;
  }
};

template <class Visitor>
void VisitItems(Session& session, CalendarType kind, Visitor visitor) {
  const std::int32_t visited = session.store().VisitCalendars(kind, [&](CCalendar& item) {
    CheckInterrupt();
    visitor(item);
    return true;
  });
  if (visited < 0) session.Fail();
}

// Another program's rows, which belong to no list and no export.
void TellItemsWithoutKind(Session& session) {
  const std::int32_t count = session.store().CountItemsWithoutKind();
  if (count < 0) session.Fail();
  if (count == 0) return;
  Complain(ShownName(session.path()) + ": " + Counted(count, "item") +
           " of no known kind left out: neither event nor to-do nor memo");
}

// What an item is about, in one line: many devices fill the description alone.
std::string Title(const CCalendar& item) {
  WideString title = (item.summary.empty() ? item.description : item.summary).str();
  for (char16_t& unit : title)
    if (unit == u'\n' || unit == u'\r') unit = u' ';
  return Shown(title);
}

std::vector<std::string> TitlesOf(CalendarType kind) {
  switch (kind) {
    case CalendarType::Todo:
      return {"ID",        "DUE",     "STATUS", "PRIORITY", "START",
              "COMPLETED", "REPEATS", "ALARM",  "SUMMARY"};
    case CalendarType::Memo:
      return {"ID", "MODIFIED", "COLOUR", "TEXT"};
    default:
      return {"ID", "START", "END", "REPEATS", "ALARM", "CATEGORY", "LOCATION", "SUMMARY"};
  }
}

std::vector<std::string> RowOf(CalendarType kind, const CCalendar& item, const LocalTimes& times) {
  const std::string id = std::to_string(item.tag);
  const std::string start = SpanEndText(item, item.start_time, times);
  const std::string alarm = times.Moment(item.reminder.alarm_date);
  switch (kind) {
    case CalendarType::Todo:
      return {id,
              times.Moment(item.due),
              StatusText(item),
              item.priority == PRIORITY_NONE ? std::string() : std::to_string(item.priority),
              start,
              times.Moment(item.completed),
              RuleText(item.recurrence),
              alarm,
              Title(item)};
    case CalendarType::Memo:
      return {id, times.Moment(item.modified_time), Shown(item.color), Title(item)};
    default:
      return {id,
              start,
              SpanEndText(item, item.end_time, times),
              RuleText(item.recurrence),
              alarm,
              CategoryText(item),
              Shown(item.location),
              Title(item)};
  }
}

}  // namespace

int ImportItems(const Options& options) { return CalendarImporter(options).Run(); }

int ExportItems(const Options& options) {
  const std::string& file = options.paths.front();
  const std::string_view noun = NounOf(KindOf(options));
  Session session(options);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  TellItemsWithoutKind(session);
  CCalendars items;
  if (items.OpenFromDB(session.db(), KindOf(options), 0) < 0) session.Fail();
  CheckInterrupt();
  if (items.GetCount() == 0) {
    Print("the store holds no " + std::string(noun) + "; nothing is written to " + ShownName(file) +
          "\n");
    return kDone;
  }
  VObjectBuffer text;
  WriteVCalendar(items, text);
  CheckInterrupt();
  try {
    if (!ReplaceFile(file, text.bytes.view()))
      throw Failure(ShownName(file) + ": can't be written: " + std::strerror(errno));
  } catch (const FileError& failure) {
    throw Failure(ShownName(file) + ": " + failure.reason() + "; nothing is exported");
  }
  Print(Counted(items.GetCount(), noun) + " exported\n");
  return kDone;
}

int ListItems(const Options& options) {
  const CalendarType kind = KindOf(options);
  Session session(options);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  TellItemsWithoutKind(session);
  if (options.json) {
    JsonList list("calendars");
    VisitItems(session, kind, [&](const CCalendar& item) { list.Add(item); });
    list.End();
    return kDone;
  }
  constexpr std::size_t kWidestColumn = 64;
  const LocalTimes times;
  Table table(TitlesOf(kind), kWidestColumn);
  VisitItems(session, kind,
             [&](const CCalendar& item) { table.Measure(RowOf(kind, item, times)); });
  Print(table.TitleLine());
  VisitItems(session, kind,
             [&](const CCalendar& item) { Print(table.Line(RowOf(kind, item, times))); });
  return kDone;
}

int CountItems(const Options& options) {
  ByteBuffer text;
  ReadInput(options.paths.front(), ByteOrderMark::Kept, text);
  CCalendars items;
  const Outcome outcome = ReadItems(text.view(), items);
  if (!outcome.rejected) Print(Counted(items.GetCount(), "item") + "\n");
  return TellOutcome(options.paths.front(), outcome, items.GetCount(), text.view(),
                     TextForm::VCalendar);
}

}  // namespace pim::app
