// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Delete.h"

#include <algorithm>

#include "app/commands/CommandTable.h"
#include "app/commands/Kinds.h"
#include "app/commands/StoredRecords.h"
#include "app/output/Output.h"

namespace pim::app {
namespace {

// The keys that are stored, of those that the command line names or that are in its group.
template <class Record>
std::vector<std::int32_t> StoredKeys(StoredRecords<Record>& records, const Options& options,
                                     bool& allThere) {
  if (options.group) return records.Keys();
  std::vector<std::int32_t> wanted = KeysOf(options.operands);
  std::ranges::sort(wanted);
  wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
  std::vector<std::int32_t> keys;
  records.VisitKeys(wanted, [&keys](const Record& record) { keys.push_back(record.tag); });
  for (const std::int32_t key : wanted) {
    if (std::ranges::binary_search(keys, key)) continue;
    allThere = false;
    TellNoSuchKey(options.kind, key);
  }
  return keys;
}

std::vector<std::int32_t> KeysToDelete(Session& session, const Options& options, bool& allThere) {
  const Filter filter{{}, options.group, false};
  if (options.kind == RecordKind::Contacts) {
    StoredContacts contacts(session, filter);
    return StoredKeys(contacts, options, allThere);
  }
  StoredItems items(session, CalendarKindOf(options.kind), filter);
  return StoredKeys(items, options, allThere);
}

}  // namespace

int DeleteRecords(const Options& options) {
  if (options.operands.empty() == !options.group) throw WrongUsage("name either keys or a group");
  KeysOf(options.operands);  // wrong ones are told ahead of everything else
  Session session(options, options.dryRun ? StoreAccess::ReadOnly : StoreAccess::Existing);
  session.store().MakePictures(false);
  bool allDone = true;
  const std::vector<std::int32_t> keys = KeysToDelete(session, options, allDone);
  const std::string deleted =
      Counted(static_cast<long long>(keys.size()), NounOf(options.kind).one);
  std::int32_t pictures = 0;
  if (!options.dryRun) {
    session.Try([&] {
      std::vector<WideString> left;  // which the store knows by itself
      return options.kind == RecordKind::Contacts ? session.store().DeleteContacts(keys, left)
                                                  : session.store().DeleteCalendars(keys);
    });
    try {
      pictures = RemoveLeftPictures(session);
    } catch (const Failure& failure) {  // the contacts are gone all the same
      Complain(failure.what());
      allDone = false;
    }
  }
  Print(deleted + (options.dryRun ? " would be deleted" : " deleted") +
        (pictures == 0 ? "" : ", with " + Counted(pictures, "picture")) + "\n");
  return allDone ? kDone : kFailed;
}

}  // namespace pim::app
