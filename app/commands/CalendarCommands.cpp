#include "app/commands/CalendarCommands.h"

#include <cerrno>
#include <cstring>
#include <span>

#include "app/commands/Importer.h"
#include "app/commands/Session.h"
#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/TextReading.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"
#include "app/output/RecordDump.h"
#include "app/output/Table.h"
#include "pim/manager/CalendarImport.h"
#include "pim/manager/TextWriting.h"
#include "platform/Files.h"

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

// A column of a list: its title, and what stands in it for an item.
struct ItemColumn {
  const char* title;
  std::string (*cell)(const CCalendar& item, const LocalTimes& times);
};

std::string IdCell(const CCalendar& item, const LocalTimes&) { return std::to_string(item.tag); }
std::string StartCell(const CCalendar& item, const LocalTimes& times) {
  return SpanEndText(item, item.start_time, times);
}
std::string EndCell(const CCalendar& item, const LocalTimes& times) {
  return SpanEndText(item, item.end_time, times);
}
template <COleDateTimeNull CCalendar::*Field>
std::string MomentCell(const CCalendar& item, const LocalTimes& times) {
  return times.Moment(item.*Field);
}
std::string ModifiedCell(const CCalendar& item, const LocalTimes& times) {
  return times.Moment(item.modified_time);
}
std::string AlarmCell(const CCalendar& item, const LocalTimes& times) {
  return times.Moment(item.reminder.alarm_date);
}
std::string RuleCell(const CCalendar& item, const LocalTimes&) { return RuleText(item.recurrence); }
std::string StatusCell(const CCalendar& item, const LocalTimes&) { return StatusText(item); }
std::string PriorityCell(const CCalendar& item, const LocalTimes&) {
  return item.priority == PRIORITY_NONE ? std::string() : std::to_string(item.priority);
}
std::string CategoryCell(const CCalendar& item, const LocalTimes&) { return CategoryText(item); }
template <WideText CCalendar::*Field>
std::string TextCell(const CCalendar& item, const LocalTimes&) {
  return Shown(item.*Field);
}
std::string TitleCell(const CCalendar& item, const LocalTimes&) { return Title(item); }

constexpr ItemColumn kEventColumns[] = {
    {"ID", IdCell},
    {"START", StartCell},
    {"END", EndCell},
    {"REPEATS", RuleCell},
    {"ALARM", AlarmCell},
    {"CATEGORY", CategoryCell},
    {"LOCATION", TextCell<&CCalendar::location>},
    {"SUMMARY", TitleCell},
};
constexpr ItemColumn kTodoColumns[] = {
    {"ID", IdCell},         {"DUE", MomentCell<&CCalendar::due>},
    {"STATUS", StatusCell}, {"PRIORITY", PriorityCell},
    {"START", StartCell},   {"COMPLETED", MomentCell<&CCalendar::completed>},
    {"REPEATS", RuleCell},  {"ALARM", AlarmCell},
    {"SUMMARY", TitleCell},
};
constexpr ItemColumn kMemoColumns[] = {
    {"ID", IdCell},
    {"MODIFIED", ModifiedCell},
    {"COLOUR", TextCell<&CCalendar::color>},
    {"TEXT", TitleCell},
};

std::span<const ItemColumn> ColumnsOf(CalendarType kind) {
  switch (kind) {
    case CalendarType::Todo:
      return kTodoColumns;
    case CalendarType::Memo:
      return kMemoColumns;
    default:
      return kEventColumns;
  }
}

std::vector<std::string> TitlesOf(std::span<const ItemColumn> columns) {
  std::vector<std::string> titles;
  for (const ItemColumn& column : columns) titles.emplace_back(column.title);
  return titles;
}

std::vector<std::string> RowOf(std::span<const ItemColumn> columns, const CCalendar& item,
                               const LocalTimes& times) {
  std::vector<std::string> row;
  row.reserve(columns.size());
  for (const ItemColumn& column : columns) row.push_back(column.cell(item, times));
  return row;
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
  const NarrowString text = WriteCalendars(items);
  CheckInterrupt();
  try {
    if (!ReplaceFile(file, text))
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
  const std::span<const ItemColumn> columns = ColumnsOf(kind);
  Table table(TitlesOf(columns), kWidestColumn);
  VisitItems(session, kind,
             [&](const CCalendar& item) { table.Measure(RowOf(columns, item, times)); });
  Print(table.TitleLine());
  VisitItems(session, kind,
             [&](const CCalendar& item) { Print(table.Line(RowOf(columns, item, times))); });
  return kDone;
}

int CountItems(const Options& options) {
  ByteBuffer text;
  ReadInput(options.paths.front(), ByteOrderMark::Kept, text);
  const Outcome outcome = ReadText(text.view(), [](const CCalendar&) {});
  if (outcome.result.outcome != TextOutcome::Rejected)
    Print(Counted(outcome.result.records, "item") + "\n");
  return TellOutcome(options.paths.front(), outcome, text.view(), TextForm::VCalendar);
}

}  // namespace pim::app
