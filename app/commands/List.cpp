// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/List.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <limits>

#include "app/commands/Kinds.h"
#include "app/commands/Nearest.h"
#include "app/commands/OptionChoices.h"
#include "app/commands/StoredRecords.h"
#include "app/input/Inputs.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextReading.h"
#include "app/labels/Labels.h"
#include "app/output/Csv.h"
#include "app/output/Output.h"
#include "app/output/RecordDump.h"
#include "app/output/Table.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

// What the lists of the two kinds of records differ in.
template <class Record>
struct ListKind;
template <>
struct ListKind<CContact> {
  static constexpr std::string_view kJsonName = "contacts";
  static constexpr std::size_t kWidestColumn = 32;  // on a terminal
};
template <>
struct ListKind<CCalendar> {
  static constexpr std::string_view kJsonName = "calendars";
  static constexpr std::size_t kWidestColumn = 64;
};

template <class Record>
using Fields = std::vector<const FieldRow<Record>*>;

template <class Record>
const FieldRow<Record>& FieldOf(std::string_view name) {
  const std::span<const FieldRow<Record>> all = FieldsOf(static_cast<const Record*>(nullptr));
  const auto found = std::ranges::find(all, name, &FieldRow<Record>::name);
  if (found != all.end()) return *found;
  std::vector<std::string_view> names;
  for (const FieldRow<Record>& row : all) names.push_back(row.name);
  throw WrongUsage("--fields: no field is called '" + ShownName(std::string(name)) + "'" +
                   Suggestion(name, names) + "; --fields help names them all");
}

template <class Record>
Fields<Record> ChosenFields(const Options& options, std::span<const std::string_view> usual) {
  Fields<Record> fields;
  for (const std::string& name : options.fields) fields.push_back(&FieldOf<Record>(name));
  if (fields.empty())
    for (const std::string_view name : usual) fields.push_back(&FieldOf<Record>(name));
  return fields;
}

template <class Record>
void PrintFieldNames() {
  for (const FieldRow<Record>& row : FieldsOf(static_cast<const Record*>(nullptr)))
    Print(std::string(row.name) + "\n");
}

// A row that waits until all are known, or for its place in the order.
struct KeptRow {
  SortKey sortKey;
  std::vector<std::string> cells;
};

template <class Record>
class Lister {
 public:
  Lister(StoredRecords<Record>& records, Fields<Record> fields, const Options& options)
      : records_(records), fields_(std::move(fields)), options_(options) {}

  void Print() {
    switch (options_.listForm) {
      case ListForm::Table:
        return PrintTable();
      case ListForm::Csv:
        return PrintLines(CsvLine(Names()), [this](const Record& record) {
          FillRow(record, CellForm::Whole, cells_);
          return CsvLine(cells_);
        });
      case ListForm::JsonLines:
        return PrintLines("", [this](const Record& record) {
          return std::string(lines_.Text(record)).append("\n");
        });
      case ListForm::Json:
        return PrintJson();
    }
  }

 private:
  void FillRow(const Record& record, CellForm form, std::vector<std::string>& cells) const {
    cells.clear();
    for (const FieldRow<Record>* field : fields_)
      cells.push_back(field->cell(record, times_, form));
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const FieldRow<Record>* field : fields_) names.emplace_back(field->name);
    return names;
  }

  // Calls take(cells) for each chosen record in order; fill(record, cells) makes them. All wait in
  // memory where they must be sorted.
  template <class Fill, class Take>
  void EachRow(Fill fill, Take take) {
    if (options_.order == ListOrder::Key) {
      records_.Visit([&](Record& record) {
        fill(record, cells_);
        take(cells_);
      });
      return;
    }
    std::vector<KeptRow> rows;
    records_.Visit([&](Record& record) {
      rows.push_back({records_.SortKeyOf(record, options_.order), {}});
      fill(record, rows.back().cells);
    });
    std::ranges::stable_sort(
        rows, [](const KeptRow& a, const KeptRow& b) { return a.sortKey < b.sortKey; });
    for (const KeptRow& row : rows) take(row.cells);
  }

  // A list of everything is read twice, once for the widths of its columns, so that it can be
  // larger than memory; one that is sorted or filtered waits there until its widths are known.
  void PrintTable() {
    const Titles words(LabelsOf(options_.language));
    std::vector<std::string> titles;
    for (const FieldRow<Record>* field : fields_) titles.push_back(words.Of(field->name));
    // A pipe gets all of every cell.
    Table table(std::move(titles), isatty(STDOUT_FILENO) == 1
                                       ? ListKind<Record>::kWidestColumn
                                       : std::numeric_limits<std::size_t>::max());
    const auto fill = [this](const Record& record, std::vector<std::string>& cells) {
      FillRow(record, CellForm::Table, cells);
    };
    std::vector<std::vector<std::string>> kept;
    const bool keeps = options_.order != ListOrder::Key || !options_.FilterFrom(0).IsEmpty();
    // The last column has no width.
    const bool measuresGroups =
        std::any_of(fields_.begin(), fields_.end() - 1,
                    [](const FieldRow<Record>* field) { return field->name == "groups"; });
    records_.BringGroups(keeps || measuresGroups);
    EachRow(fill, [&](const std::vector<std::string>& cells) {
      table.Measure(cells);
      if (keeps) kept.push_back(cells);
    });
    records_.BringGroups(true);
    app::Print(table.TitleLine());
    const auto print = [&table](const std::vector<std::string>& cells) {
      app::Print(table.Line(cells));
    };
    if (keeps) {
      std::ranges::for_each(kept, print);
    } else {
      EachRow(fill, print);
    }
  }

  template <class LineOf>
  void PrintLines(std::string_view head, LineOf lineOf) {
    app::Print(head);
    EachRow([&](const Record& record,
                std::vector<std::string>& cells) { cells.assign(1, lineOf(record)); },
            [](const std::vector<std::string>& cells) { app::Print(cells.front()); });
  }

  void PrintJson() {
    JsonList list(ListKind<Record>::kJsonName);
    if (options_.order == ListOrder::Key) {
      records_.Visit([&list](Record& record) { list.Add(record); });
    } else {
      EachRow(
          [this](const Record& record, std::vector<std::string>& cells) {
            cells.assign(1, std::string(lines_.Text(record)));
          },
          [&list](const std::vector<std::string>& cells) { list.AddText(cells.front()); });
    }
    list.End();
  }

  StoredRecords<Record>& records_;
  Fields<Record> fields_;
  const Options& options_;
  LocalTimes times_;
  RecordJson lines_;
  std::vector<std::string> cells_;
};

bool IsFile(const std::string& operand) {
  std::error_code error;
  if (operand == "-" || std::filesystem::exists(operand, error)) return true;
  const std::string extension = std::filesystem::path(operand).extension().string();
  return std::ranges::any_of(
      std::initializer_list<std::string_view>{".vcf", ".vcs", ".ics"},
      [&extension](std::string_view one) { return EqualsIgnoringCase(extension, one); });
}

template <class Record>
int CountFiles(const Options& options, TextForm form, ByteOrderMark mark) {
  if (!options.FilterFrom(options.operands.size()).IsEmpty())
    throw WrongUsage("files are counted whole: --group and --no-name choose stored records");
  PrivatePictures pictures(TemporaryFolder());
  pictures.LeaveOut(true);
  int status = kDone;
  for (const std::string& path : options.operands) {
    status = Worse(status, ForInput([&] {
                     ByteBuffer text;
                     ReadInput(path, mark, text);
                     const Outcome outcome = ReadText(text.view(), [](const Record&) {});
                     if (outcome.result.outcome != TextOutcome::Rejected) {
                       const std::string name =
                           options.operands.size() > 1 ? ShownName(path) + ":" : "";
                       Print(name + std::to_string(outcome.result.records) + "\n");
                     }
                     return TellOutcome(path, outcome, text.view(), form);
                   }));
  }
  return status;
}

template <class Record>
int PrintCount(StoredRecords<Record>& records) {
  long long count = 0;
  records.Visit([&count](Record&) { ++count; });
  Print(std::to_string(count) + "\n");
  return kDone;
}

// Whether a list names pictures' files, which are to be there then.
bool TellsPictures(const Options& options) {
  return options.listForm == ListForm::Json || options.listForm == ListForm::JsonLines ||
         std::ranges::find(options.fields, "picture") != options.fields.end();
}

}  // namespace

int ListRecords(const Options& options) {
  const bool isContacts = options.kind == RecordKind::Contacts;
  if (options.fields.size() == 1 && options.fields.front() == kFieldHelp) {
    isContacts ? PrintFieldNames<CContact>() : PrintFieldNames<CCalendar>();
    return kDone;
  }
  if (isContacts) {
    if (options.order == ListOrder::Time)
      throw WrongUsage("contacts have no time: --sort takes name or key");
    const auto fields = ChosenFields<CContact>(options, UsualContactFields());
    Session session(options, StoreAccess::ReadOnly);
    session.store().MakePictures(TellsPictures(options));
    StoredContacts contacts(session, options.FilterFrom(0));
    Lister<CContact>(contacts, fields, options).Print();
    return TellPicturesNotMade(session);
  }
  const CalendarType kind = CalendarKindOf(options.kind);
  const auto fields = ChosenFields<CCalendar>(options, UsualItemFields(kind));
  Session session(options, StoreAccess::ReadOnly);
  StoredItems items(session, kind, options.FilterFrom(0));
  Lister<CCalendar>(items, fields, options).Print();
  return kDone;
}

int CountRecords(const Options& options) {
  const bool isContacts = options.kind == RecordKind::Contacts;
  const auto files = std::ranges::count_if(options.operands, IsFile);
  if (files != 0 && files != std::ssize(options.operands))
    throw WrongUsage("count takes either words or files, not both");
  if (files != 0) {
    return isContacts ? CountFiles<CContact>(options, TextForm::VCard, ByteOrderMark::Skipped)
                      : CountFiles<CCalendar>(options, TextForm::VCalendar, ByteOrderMark::Kept);
  }
  const Filter filter = options.FilterFrom(0);
  Session session(options, StoreAccess::ReadOnly);
  session.store().MakePictures(false);
  if (isContacts) {
    StoredContacts contacts(session, filter);
    return PrintCount(contacts);
  }
  StoredItems items(session, CalendarKindOf(options.kind), filter);
  return PrintCount(items);
}

}  // namespace pim::app
