// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Undo.h"

#include <string>
#include <unordered_map>

#include "app/commands/History.h"
#include "app/commands/OptionValues.h"
#include "app/commands/StoredRecords.h"
#include "app/input/Interrupt.h"
#include "app/output/ItemText.h"
#include "app/output/JsonWriter.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"

namespace pim::app {
namespace {

// What kind of item each kept one is, by its key.
using ItemNouns = std::unordered_map<std::int32_t, std::string>;

ItemNouns NounsOfKept(Session& session, const UndoResult& result) {
  std::vector<std::int32_t> keys;
  for (const UndoResult::Kept& kept : result.keptRecords)
    if (kept.kind == StoredKind::Item) keys.push_back(kept.key);
  ItemNouns nouns;
  if (keys.empty()) return nouns;
  // Where that fails, all is undone already, and they are just items.
  static_cast<void>(session.store().VisitCalendars(keys, [&nouns](const CCalendar& item) {
    nouns.emplace(item.tag, NounOf(static_cast<CalendarType>(item.calendar_type)));
    return true;
  }));
  return nouns;
}

std::string KindOf(const UndoResult::Kept& kept, const ItemNouns& nouns) {
  if (kept.kind == StoredKind::Contact) return "contact";
  const auto found = nouns.find(kept.key);
  return found != nouns.end() ? found->second : "item";
}

// What was kept, each in a line, and how to take it too.
void TellKept(const UndoResult& result, const ItemNouns& nouns, bool dryRun) {
  const std::string import = "import " + std::to_string(result.import);
  const std::string stays = dryRun ? "; it would stay" : "; it stays";
  for (const UndoResult::Kept& kept : result.keptRecords) {
    const std::string name = kept.name.empty() ? "" : " (" + ShownInOneLine(kept.name) + ")";
    Complain(KindOf(kept, nouns) + " " + std::to_string(kept.key) + name + " was changed since " +
             import + stays);
  }
  for (const WideString& group : result.keptGroups) {
    Complain("group '" + ShownInOneLine(group) + "' was renamed or has other members since " +
             import + stays);
  }
  const std::size_t count = result.keptRecords.size() + result.keptGroups.size();
  if (count == 0) return;
  Complain("'pimvobj undo " + std::to_string(result.import) + " --force' takes " +
           (count == 1 ? "it" : "them") + " too");
}

std::string CountsText(const UndoResult& result) {
  std::string text;
  const auto add = [&text](std::int64_t count, const char* noun) {
    if (count != 0) text.append(text.empty() ? "" : ", ").append(Counted(count, noun));
  };
  add(result.contacts, "contact");
  add(result.items, "item");
  add(result.groups, "group");
  add(result.links, "group membership");
  add(result.pictures, "picture");
  return text;
}

void PrintLine(const UndoResult& result, bool dryRun) {
  const std::string import = "import " + std::to_string(result.import);
  const std::string counts = CountsText(result);
  if (counts.empty()) {
    Print(import + (result.IsWhole() ? ": nothing is there of it to take back\n"
                                     : ": nothing else is there to take back\n"));
  } else if (dryRun) {
    Print("would take back " + import + ": " + counts + "\n");
  } else {
    Print(import + " taken back: " + counts + " removed\n");
  }
}

void PrintJson(const UndoResult& result, const ItemNouns& nouns, bool dryRun) {
  JsonWriter json;
  json.StartObject();
  json.Field("import", result.import);
  json.Field("dry_run", dryRun);
  json.Field("contacts", result.contacts);
  json.Field("items", result.items);
  json.Field("groups", result.groups);
  json.Field("links", result.links);
  json.Field("pictures", result.pictures);
  json.Array("kept_records", result.keptRecords, [&](const UndoResult::Kept& kept) {
    json.StartObject();
    json.Utf8Field("kind", KindOf(kept, nouns));
    json.Field("key", kept.key);
    json.Field("name", WideStringView(kept.name));
    json.EndObject();
  });
  json.Array("kept_groups", result.keptGroups,
             [&json](const WideString& name) { json.Value(WideStringView(name)); });
  json.EndObject();
  Print(std::string(json.text()) + "\n");
}

std::optional<std::int32_t> ImportToUndo(const Options& options) {
  if (options.operands.empty()) return std::nullopt;
  const auto number = PositiveNumber(options.operands.front());
  if (!number) {
    throw WrongUsage("'" + ShownName(options.operands.front()) +
                     "' is no number of an import; 'pimvobj history' tells them");
  }
  return number;
}

}  // namespace

int UndoImport(const Options& options) {
  UndoOptions wanted{ImportToUndo(options), options.force, options.dryRun};
  Session session(options, options.dryRun ? StoreAccess::ReadOnly : StoreAccess::Existing);
  session.store().MakePictures(false);
  Progress progress(options.quiet);
  wanted.progress = [&progress](std::int64_t records) {
    CheckInterrupt();
    progress.Show(0, [&] { return Counted(records, "record") + " looked at"; });
  };
  UndoResult result;
  session.Try([&] {
    result = {};
    return HistoryOf(session).Undo(wanted, result);
  });
  progress.Clear();
  const ItemNouns nouns = NounsOfKept(session, result);
  TellKept(result, nouns, options.dryRun);
  options.listForm == ListForm::Json ? PrintJson(result, nouns, options.dryRun)
                                     : PrintLine(result, options.dryRun);
  if (!options.dryRun) RemoveLeftPictures(session);
  return result.IsWhole() ? kDone : kFailed;
}

}  // namespace pim::app
