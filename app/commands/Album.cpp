// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Album.h"

#include "app/commands/AlbumOutput.h"
#include "app/commands/Kinds.h"
#include "app/commands/StoredRecords.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"

namespace pim::app {

namespace {

void AddContacts(Session& session, const Options& options, AlbumOutput& output) {
  StoredContacts contacts(session, options.FilterFrom(0));
  Progress progress(options.quiet, contacts.CountAll());
  contacts.Visit([&](const CContact& contact) {
    output.Add(contact, nullptr);
    progress.Show(output.count(), [&] { return Counted(output.count(), "contact"); });
  });
}

// Those of all kinds under the noun "calendar", which stands for events elsewhere.
void AddItems(Session& session, const Options& options, AlbumOutput& output) {
  Progress progress(options.quiet);
  std::int64_t seen = 0;
  for (const CalendarType kind : {CalendarType::Event, CalendarType::Todo, CalendarType::Memo}) {
    if (options.kind != RecordKind::Calendar && kind != CalendarKindOf(options.kind)) continue;
    StoredItems(session, kind, options.FilterFrom(0)).Visit([&](const CCalendar& item) {
      output.Add(item, nullptr);
      progress.Show(++seen, [&] { return Counted(seen, "item"); });
    });
  }
}

}  // namespace

int WriteStoredAlbum(const Options& given) {
  Options options = given;
  if (!options.output) {
    if (options.operands.empty())
      throw WrongUsage("nothing says where to: name a file, or - for standard output");
    options.output = options.operands.front();
    options.operands.erase(options.operands.begin());
  }
  const bool isOfContacts = options.kind == RecordKind::Contacts;
  AlbumOutput output(options, {});
  output.SetHead(isOfContacts ? TextForm::VCard : TextForm::VCalendar, {});
  Session session(options, StoreAccess::ReadOnly);
  if (session.place().IsFile(*options.output))
    throw Failure(ShownName(*options.output) + ": is the store");
  isOfContacts ? AddContacts(session, options, output) : AddItems(session, options, output);
  return Worse(output.End(), TellPicturesNotMade(session));
}

}  // namespace pim::app
