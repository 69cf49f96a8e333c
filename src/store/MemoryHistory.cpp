// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/MemoryHistory.h"

#include <algorithm>

namespace pim {
namespace {

void Require(bool holds, const std::string& problem) {
  if (!holds) throw std::runtime_error(problem);
}

template <class Record>
void PlanRecords(const MemoryRecords<Record>& records, bool force, KeySet& doomed,
                 UndoResult& result) {
  for (const auto& [key, entry] : records.entries()) {
    if (entry.origin.import != result.import) continue;
    if (force || !records.IsChanged(entry)) {
      doomed.insert(key);
    } else {
      result.keptRecords.push_back({KindOf(*entry.record), key, NameOf(*entry.record)});
    }
  }
}

}  // namespace

template <class Change>
bool MemoryHistory::Store(Change change) {
  return tables_.transactions().Store([&] {
    change();
    return 0;
  }) == 0;
}

ImportEntry* MemoryHistory::Find(std::int32_t import) {
  if (import <= 0 || import > std::ssize(imports_)) return nullptr;
  return &imports_[static_cast<std::size_t>(import) - 1];
}

std::int32_t MemoryHistory::BeginImport(const ImportStart& start) {
  return tables_.transactions().Store([&] {
    Require(current_.import == 0, kImportIsUnderWay);
    tables_.log().Add([this] { imports_.pop_back(); });
    ImportEntry& entry = imports_.emplace_back();
    entry.number = static_cast<std::int32_t>(imports_.size());
    entry.start = start;
    entry.state = ImportState::Running;
    entry.began = SecondsNow();
    tables_.log().Remember(current_);
    current_.import = entry.number;
    return entry.number;
  });
}

bool MemoryHistory::BeginFile(std::string_view name, NarrowStringView bytes) {
  const std::size_t depth = tables_.log().depth();
  return Store([&] {
    Require(current_.import != 0, kNoImportIsUnderWay);
    Require(depth > 0, kFilesNeedTransaction);
    Require(current_.file == 0, kFileIsBeingRead);
    tables_.log().Remember(current_);
    current_.file = AddFile(name);
    current_.fileDepth = depth;
    current_.bytes = bytes;
  });
}

bool MemoryHistory::AddLines(std::span<const RecordLines> lines) {
  return Store([&] {
    Require(current_.file != 0, kNoFileIsBeingRead);
    auto next = current_.untold.begin();
    for (const RecordLines& record : lines) {
      if (next == current_.untold.end() || next->key != record.key) continue;
      if (next->kind == StoredKind::Contact) {
        tables_.contacts.SetLines(record);
      } else {
        tables_.items.SetLines(record);
      }
      ++next;
    }
    tables_.log().Remember(current_);
    current_.untold.clear();
  });
}

bool MemoryHistory::EndFile(const ImportCounts& counts, bool keepsBytes) {
  const std::size_t depth = tables_.log().depth();
  return Store([&] {
    Require(current_.file != 0, kNoFileIsBeingRead);
    Require(depth == current_.fileDepth, kFilesEndWhereTheyBegin);
    SetFile(current_.file, current_.bytes, keepsBytes, counts);
    tables_.log().Remember(current_);
    current_ = {current_.import, 0, 0, {}, {}};
  });
}

bool MemoryHistory::AddRefusedFile(std::string_view name, NarrowStringView bytes,
                                   const ImportCounts& counts) {
  return Store([&] {
    Require(current_.import != 0, kNoImportIsUnderWay);
    Require(current_.file == 0, kFileIsStillBeingRead);
    SetFile(AddFile(name), bytes, false, counts);
  });
}

bool MemoryHistory::EndImport() {
  return Store([&] {
    Require(current_.import != 0, kNoImportIsUnderWay);
    Require(current_.file == 0, kFileIsStillBeingRead);
    ImportEntry& entry = *Find(current_.import);
    tables_.log().Remember(entry);
    entry.state = ImportState::Done;
    tables_.log().Remember(current_);
    current_ = {};
  });
}

std::int64_t MemoryHistory::AddFile(std::string_view name) {
  tables_.log().Add([this] { files_.pop_back(); });
  ImportedFile& file = files_.emplace_back().told;
  file.number = std::ssize(files_);
  file.import = current_.import;
  file.name = name;
  return file.number;
}

void MemoryHistory::SetFile(std::int64_t file, NarrowStringView bytes, bool keepsBytes,
                            const ImportCounts& counts) {
  File& ended = files_[static_cast<std::size_t>(file) - 1];
  tables_.log().Remember(ended);
  ended.original = &OriginalOf(bytes, keepsBytes);
  ended.told.bytes = ended.original->bytes;
  ended.told.counts = counts;
}

MemoryHistory::Original& MemoryHistory::OriginalOf(NarrowStringView bytes, bool keeps) {
  const Fingerprint print = FingerprintOf(bytes, tables_.services.key);
  const auto [found, isNew] = originals_.try_emplace(print, Original{std::ssize(bytes), nullptr});
  if (isNew) tables_.log().Add([this, print] { originals_.erase(print); });
  Original& original = found->second;
  if (keeps && original.content == nullptr) {
    tables_.log().Remember(original.content);
    original.content = std::make_shared<const NarrowString>(bytes);
  }
  return original;
}

bool MemoryHistory::SetKeepsOriginals(bool keeps) {
  return Store([&] {
    tables_.log().Remember(keepsOriginals_);
    keepsOriginals_ = keeps;
  });
}

std::int32_t MemoryHistory::VisitImports(const std::function<bool(const ImportEntry&)>& visitor) {
  return tables_.transactions().Read([&] {
    std::vector<ImportEntry> entries(imports_.begin(), imports_.end());
    for (const auto& [file, original] : files_) {
      ImportEntry& entry = entries[static_cast<std::size_t>(file.import) - 1];
      ++entry.files;
      entry.counts += file.counts;
    }
    std::int32_t visited = 0;
    for (const ImportEntry& entry : entries) {
      ++visited;
      if (!visitor(entry)) break;
    }
    return visited;
  });
}

std::int32_t MemoryHistory::VisitFiles(std::optional<std::int32_t> import,
                                       const std::function<bool(const ImportedFile&)>& visitor) {
  if (import && Find(*import) == nullptr) return tables_.transactions().Fail(NoSuchImport(*import));
  return tables_.transactions().Read([&] {
    std::int32_t visited = 0;
    for (const auto& [told, original] : files_) {
      if (import && told.import != *import) continue;
      ImportedFile file = told;
      file.isKept = original != nullptr && original->content != nullptr;
      ++visited;
      if (!visitor(file)) break;
    }
    return visited;
  });
}

std::int32_t MemoryHistory::FindOrigin(StoredKind kind, std::int32_t key, RecordOrigin& origin) {
  const auto find = [&](const auto& records) {
    const auto found = records.entries().find(key);
    if (found == records.entries().end() || found->second.origin.file == 0) return 0;
    origin = found->second.origin;
    return 1;
  };
  return kind == StoredKind::Contact ? find(tables_.contacts) : find(tables_.items);
}

bool MemoryHistory::ReadOriginal(std::int64_t file,
                                 const std::function<bool(NarrowStringView piece)>& take) {
  return tables_.transactions().Read([&] {
    if (file <= 0 || file > std::ssize(files_))
      return tables_.transactions().Fail(NoSuchImportedFile(file));
    const Original* original = files_[static_cast<std::size_t>(file) - 1].original;
    if (original == nullptr || original->content == nullptr)
      return tables_.transactions().Fail(kBytesAreNotKept);
    if (!original->content->empty()) take(*original->content);
    return 0;
  }) == 0;
}

std::int32_t MemoryHistory::DropOriginals(std::optional<std::int32_t> import) {
  return tables_.transactions().Store([&] {
    Require(!import || Find(*import) != nullptr, import ? NoSuchImport(*import) : "");
    std::unordered_set<const Original*> dropped;
    for (const auto& [file, original] : files_) {
      if (import && file.import != *import) continue;
      if (original == nullptr || original->content == nullptr) continue;
      tables_.log().Remember(original->content);
      original->content.reset();
      dropped.insert(original);
    }
    return static_cast<std::int32_t>(std::ranges::count_if(
        files_, [&](const File& file) { return dropped.contains(file.original); }));
  });
}

std::int32_t MemoryHistory::Undo(const UndoOptions& options, UndoResult& result) {
  result = {};
  const auto last = std::find_if(imports_.rbegin(), imports_.rend(), [](const ImportEntry& entry) {
    return entry.state != ImportState::Undone;
  });
  if (!options.import && last == imports_.rend())
    return tables_.transactions().Fail(kNothingToUndo);
  const std::int32_t import = options.import ? *options.import : last->number;
  const ImportEntry* entry = Find(import);
  const std::string problem =
      WhyNotUndone(import, entry == nullptr ? std::nullopt : std::optional(entry->state));
  if (!problem.empty()) return tables_.transactions().Fail(problem);
  result.import = import;
  if (options.dryRun) {
    return tables_.transactions().Read([&] {
      Plan(options, result);
      return 0;
    });
  }
  return tables_.transactions().Store([&] {
    Apply(Plan(options, result), result);
    return 0;
  });
}

MemoryHistory::Doomed MemoryHistory::Plan(const UndoOptions& options, UndoResult& result) {
  const bool force = options.force;
  Doomed doomed;
  PlanRecords(tables_.contacts, force, doomed.contacts, result);
  PlanRecords(tables_.items, force, doomed.items, result);
  for (const auto& [key, group] : tables_.groups.entries()) {
    if (group.import != result.import) continue;
    if (force || !(group.IsRenamed() || HasOtherMembers(key, doomed, result.import))) {
      doomed.groups.insert(key);
    } else {
      result.keptGroups.push_back(group.name.str());
    }
  }
  result.contacts = std::ssize(doomed.contacts);
  result.items = std::ssize(doomed.items);
  result.groups = std::ssize(doomed.groups);
  const auto goesAlone = [&](const MemoryLinks::Entry& link) {
    return link.import == result.import && !doomed.contacts.contains(link.contact);
  };
  result.links = std::ranges::count_if(tables_.links.entries(), goesAlone,
                                       &MemoryLinks::Entries::value_type::second);
  result.pictures = std::ssize(tables_.contacts.PicturesOfNoOther(doomed.contacts));
  if (options.progress)
    options.progress(result.contacts + result.items + std::ssize(result.keptRecords));
  return doomed;
}

bool MemoryHistory::HasOtherMembers(std::int32_t group, const Doomed& doomed,
                                    std::int32_t import) const {
  const auto isOther = [&](const MemoryLinks::Entry& link) {
    return link.group == group && link.import != import && !doomed.contacts.contains(link.contact);
  };
  return std::ranges::any_of(tables_.links.entries(), isOther,
                             &MemoryLinks::Entries::value_type::second);
}

void MemoryHistory::Apply(const Doomed& doomed, const UndoResult& result) {
  tables_.links.EraseIf([&](const auto& link) {
    return link.import == result.import || doomed.contacts.contains(link.contact) ||
           doomed.groups.contains(link.group);
  });
  for (const std::int32_t key : doomed.contacts) tables_.contacts.Erase(key);
  for (const std::int32_t key : doomed.items) tables_.items.Erase(key);
  for (const std::int32_t key : doomed.groups) tables_.groups.Erase(key);
  ImportEntry& entry = *Find(result.import);
  tables_.log().Remember(entry);
  entry.state = result.IsWhole() ? ImportState::Undone : ImportState::UndoneInPart;
  entry.undone = SecondsNow();
  entry.takenBack += result.contacts + result.items;
}

}  // namespace pim
