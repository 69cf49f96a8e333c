// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Import.h"

#include "app/commands/Importer.h"
#include "app/commands/Kinds.h"
#include "app/output/ItemText.h"
#include "pim/manager/CalendarImport.h"
#include "pim/manager/ContactImport.h"
#include "pim/records/ContactGroups.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

// The key of the group of that name, made when it is missing.
std::int32_t GroupIdOf(const Session& session, std::int32_t db, const std::string& name) {
  CContactGroups groups;
  CContactGroup& group = groups.AddNew();
  group.group_name = WideFromUtf8(name);
  if (groups.SaveToDB(db, true) < 0) session.Fail();
  return group.group_id;
}

class ContactImporter : public Importer {
 public:
  ContactImporter(Session& session, const Options& options)
      : Importer(session, options, {".vcf"}, "contact", TextForm::VCard, ByteOrderMark::Skipped) {}

 private:
  FileCounts StoreText(NarrowStringView text, const ProgressCall& progress,
                       const TextObserver& observer) override {
    std::int32_t saveOption = options().noGroups ? 0 : -1;
    if (options().group) saveOption = GroupIdOf(session(), db(), *options().group);
    ContactImportCounts counts;
    const auto report = [&](const ContactImportCounts& soFar) {
      progress({soFar.inText, soFar.stored, 0, soFar.bytes});
    };
    std::int32_t stored = 0;
    try {
      stored = ImportContactText(db(), text, saveOption, options().keepDuplicates, counts, report,
                                 observer);
    } catch (ParseFailure) {
      report(counts);  // how many stood ahead of what was rejected
      throw;
    }
    if (stored < 0 || !counts.linked) session().Fail();
    return {counts.inText, counts.stored, 0, counts.bytes, std::move(counts.pictures)};
  }
};

// The import of events takes the to-dos of a file too.
std::string_view ImportNoun(CalendarType kind) {
  return kind == CalendarType::Event ? "item" : NounOf(kind);
}

class CalendarImporter : public Importer {
 public:
  CalendarImporter(Session& session, const Options& options)
      : Importer(session, options, {".vcs", ".ics"}, ImportNoun(CalendarKindOf(options.kind)),
                 TextForm::VCalendar, ByteOrderMark::Kept) {}

 private:
  FileCounts StoreText(NarrowStringView text, const ProgressCall& progress,
                       const TextObserver& observer) override {
    CalendarImportCounts counts;
    const auto report = [&](const CalendarImportCounts& soFar) { progress(CountsOf(soFar)); };
    std::int32_t stored = 0;
    try {
      stored = ImportCalendarText(db(), CalendarKindOf(options().kind), text,
                                  options().keepDuplicates, counts, report, observer);
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
    file.bytes = counts.bytes;
    return file;
  }
};

}  // namespace

int ImportInto(Session& session, const Options& options) {
  return options.kind == RecordKind::Contacts ? ContactImporter(session, options).Run()
                                              : CalendarImporter(session, options).Run();
}

int ImportFiles(const Options& options) {
  if (options.dryRun) {
    Session session(options, Session::Preview());
    return ImportInto(session, options);
  }
  Session session(options, StoreAccess::Create);
  return ImportInto(session, options);
}

}  // namespace pim::app
