// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Album.h"

#include "app/commands/AlbumOutput.h"
#include "app/commands/StoredRecords.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"

namespace pim::app {

int WriteStoredAlbum(const Options& given) {
  Options options = given;
  if (!options.output) {
    if (options.operands.empty())
      throw WrongUsage("nothing says where to: name a file, or - for standard output");
    options.output = options.operands.front();
    options.operands.erase(options.operands.begin());
  }
  Session session(options, StoreAccess::ReadOnly);
  StoredContacts contacts(session, options.FilterFrom(0));
  AlbumOutput output(options, {});
  output.SetHead(TextForm::VCard, {});
  Progress progress(options.quiet, contacts.CountAll());
  contacts.Visit([&](const CContact& contact) {
    output.Add(contact, nullptr);
    progress.Show(output.count(), [&] { return Counted(output.count(), "contact"); });
  });
  progress.Clear();
  return Worse(output.End(), TellPicturesNotMade(session));
}

}  // namespace pim::app
