// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Inspect.h"

#include "app/commands/Losses.h"
#include "app/input/Inputs.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextKind.h"
#include "app/input/TextReading.h"
#include "app/labels/Labels.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"
#include "app/output/RecordDump.h"
#include "app/output/RecordText.h"

namespace pim::app {
namespace {

std::string_view TitleOf(const CContact&) { return "contact"; }
std::string_view TitleOf(const CCalendar& item) {
  return NounOf(static_cast<CalendarType>(item.calendar_type));
}

// How the records of each form are named: the list's in JSON, and one record's in words.
template <class Record>
struct Names;
template <>
struct Names<CContact> {
  static constexpr std::string_view kList = "contacts";
  static constexpr std::string_view kNoun = "contact";
};
template <>
struct Names<CCalendar> {
  static constexpr std::string_view kList = "calendars";
  static constexpr std::string_view kNoun = "item";
};

WideStringView PictureOf(const CContact& contact) { return contact.photo; }
WideStringView PictureOf(const CCalendar&) { return {}; }

// Reads the text and prints its records one by one, so that no more than one is held.
template <class Record>
Outcome PrintLines(NarrowStringView text, const Titles& titles, PrivatePictures& pictures) {
  long long number = 0;
  Outcome outcome = ReadText(text, [&](const Record& record) {
    Print(titles.Of(TitleOf(record)) + " " + std::to_string(++number) + "\n" +
          LinesOf(record, titles));
    pictures.Remove(PictureOf(record));
  });
  Print(Counted(number, Names<Record>::kNoun) + "\n");
  return outcome;
}

// What came of the text stands ahead of its records, so that it is read twice.
template <class Record>
Outcome PrintJson(NarrowStringView text, PrivatePictures& pictures) {
  pictures.LeaveOut(true);
  Outcome outcome = ReadText(text, [](const Record&) {});
  pictures.LeaveOut(false);
  JsonList list(Names<Record>::kList, outcome.result.outcome == TextOutcome::Rejected,
                outcome.messages);
  ReadText(text, [&](const Record& record) {
    list.Add(record);
    pictures.Remove(PictureOf(record));
  });
  list.End();
  return outcome;
}

template <class Record>
Outcome PrintRecords(const Options& options, NarrowStringView text) {
  PrivatePictures pictures(TemporaryFolder());
  if (options.listForm == ListForm::Json) return PrintJson<Record>(text, pictures);
  return PrintLines<Record>(text, Titles(LabelsOf(options.language)), pictures);
}

}  // namespace

int InspectFiles(const Options& options) {
  int status = kDone;
  for (const std::string& path : options.operands) {
    status = Worse(status, ForInput([&] {
                     ByteBuffer bytes;
                     ReadInput(path, ByteOrderMark::Kept, bytes);
                     const NarrowStringView text = bytes.view();
                     const TextForm form = FormToRead(options.form, text);
                     if (options.losses) return PrintLosses(path, text, form, options);
                     const Outcome outcome = form == TextForm::VCard
                                                 ? PrintRecords<CContact>(options, text)
                                                 : PrintRecords<CCalendar>(options, text);
                     return TellOutcome(path, outcome, text, form);
                   }));
  }
  return status;
}

}  // namespace pim::app
