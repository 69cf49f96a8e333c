// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/ImportRecorder.h"

#include <algorithm>
#include <utility>

#include "store/HistoryRules.h"

namespace pim {

ImportRecorder::ImportRecorder(Database& db)
    : db_(db),
      imports_(db),
      originals_(db),
      contacts_(db, StoredKind::Contact),
      items_(db, StoredKind::Item),
      insertGroup_(db,
                   "INSERT INTO ImportedGroups (group_id, import_id, name) SELECT "
                   "group_id, ?2, group_name FROM ContactGroups WHERE group_id = ?1"),
      forgetGroup_(db, "DELETE FROM ImportedGroups WHERE group_id = ?"),
      insertLink_(db,
                  "INSERT INTO ImportedLinks (import_id, contact_id, group_id) VALUES (?, ?, ?)") {}

void ImportRecorder::CheckFile(bool isOpen, const char* problem) {
  if (!import_) db_.Fail(kNoImportIsUnderWay);
  if (static_cast<bool>(file_) != isOpen) db_.Fail(problem);
}

std::int32_t ImportRecorder::Begin(const ImportStart& start) {
  if (import_) db_.Fail(kImportIsUnderWay);
  const std::int32_t import = imports_.Begin(start);
  import_ = {import, level_};
  return import;
}

void ImportRecorder::BeginFile(std::string_view name, NarrowStringView bytes) {
  CheckFile(false, kFileIsBeingRead);
  if (level_ == 0) db_.Fail(kFilesNeedTransaction);
  if (!imports_.Stands(Import())) db_.Fail(WasUndoneMeanwhile(Import()));
  file_ = {imports_.NextFile(), level_};
  name_ = name;
  bytes_ = bytes;
}

void ImportRecorder::ForgetKeys(StoredKind kind, std::int32_t first, std::int32_t last) {
  OriginsOf(kind).ForgetKeys(first, last);
}

void ImportRecorder::AddRecord(StoredKind kind, std::int32_t key, const Fingerprint& print) {
  if (!file_) return;
  pending_.push_back({kind, {key, file_.number, 0, 0, print}});
  if (kind != StoredKind::Contact) return;
  brought_.push_back(key);
  broughtKeys_.Add(key);
}

void ImportRecorder::ChangeRecord(StoredKind kind, std::int32_t key, const Fingerprint& print) {
  if (file_) {
    changes_.push_back({kind, key, print});
  } else {
    OriginsOf(kind).Change(key, Import(), 0, print);
  }
}

void ImportRecorder::EraseRecords(std::int32_t first, std::int32_t last) {
  if (!file_) return;
  for (const Pending& record : pending_)
    if (record.row.key >= first && record.row.key <= last) erased_.Add(record.row.key);
}

void ImportRecorder::AddGroup(std::int32_t group) {
  forgetGroup_.Bind(1, std::int64_t{group});
  forgetGroup_.Run();
  if (!import_) return;
  insertGroup_.Bind(1, std::int64_t{group});
  insertGroup_.Bind(2, import_.number);
  insertGroup_.Run();
}

void ImportRecorder::AddLinks(std::span<const LinkRow> links) {
  if (!import_) return;
  for (const auto& [contact, group] : links) {
    if (broughtKeys_.Holds(contact)) continue;
    insertLink_.Bind(1, import_.number);
    insertLink_.Bind(2, std::int64_t{contact});
    insertLink_.Bind(3, std::int64_t{group});
    insertLink_.Run();
  }
}

void ImportRecorder::AddLines(std::span<const RecordLines> lines) {
  if (!file_) db_.Fail(kNoFileIsBeingRead);
  auto next = pending_.begin() + static_cast<std::ptrdiff_t>(told_ - stored_);
  for (const RecordLines& record : lines) {
    if (next == pending_.end()) break;
    if (next->row.key != record.key) continue;
    next->row.firstLine = record.firstLine;
    next->row.lastLine = record.lastLine;
    ++next;
  }
  told_ = stored_ + pending_.size();
  // In an inner transaction the rows could be rolled back, and the records stay.
  if (level_ == file_.level) StoreOrigins();
}

void ImportRecorder::CheckEnd() {
  if (!file_) db_.Fail(kNoFileIsBeingRead);
  if (level_ != file_.level) db_.Fail(kFilesEndWhereTheyBegin);
}

void ImportRecorder::StoreOrigins() {
  for (const auto& [kind, row] : pending_) {
    // The deletion of a record may have been rolled back.
    if (!erased_.Holds(row.key) || OriginsOf(kind).HoldsRecord(row.key)) OriginsOf(kind).Add(row);
  }
  contacts_.Flush();
  items_.Flush();
  for (const auto& [kind, key, print] : changes_)
    OriginsOf(kind).Change(key, Import(), file_.number, print);
  stored_ += pending_.size();
  told_ = stored_;
  pending_.clear();
  changes_.clear();
  erased_.Clear();
}

void ImportRecorder::EndFile(const ImportCounts& counts, bool keepsBytes) {
  CheckFile(true, kNoFileIsBeingRead);
  imports_.AddFile(file_.number, Import(), originals_.Add(bytes_, keepsBytes), name_, counts);
  ForgetFile();
}

void ImportRecorder::AddRefusedFile(std::string_view name, NarrowStringView bytes,
                                    const ImportCounts& counts) {
  CheckFile(false, kFileIsStillBeingRead);
  if (!imports_.Stands(Import())) db_.Fail(WasUndoneMeanwhile(Import()));
  imports_.AddFile(imports_.NextFile(), Import(), originals_.Add(bytes, false), name, counts);
}

void ImportRecorder::End() {
  CheckFile(false, kFileIsStillBeingRead);
  if (!imports_.End(Import())) db_.Fail(WasUndoneMeanwhile(Import()));
  ended_.push_back({import_, {import_.number, level_}, std::move(brought_)});
  ForgetImport();
}

void ImportRecorder::Interrupt() {
  if (import_) imports_.Interrupt(Import());
}

void ImportRecorder::ForgetFile() noexcept {
  file_ = {};
  bytes_ = {};
  pending_.clear();
  changes_.clear();
  erased_.Clear();
  stored_ = 0;
  told_ = 0;
}

void ImportRecorder::ForgetImport() noexcept {
  import_ = {};
  brought_.clear();
  broughtKeys_.Clear();
  for (Mark& mark : marks_) mark.brought = 0;
}

// Ends that are rolled back are none, of those that a transaction holds the last one first.
void ImportRecorder::TakeBackEnds(std::size_t level) noexcept {
  while (!ended_.empty() && ended_.back().end.GoesWith(level)) {
    import_ = ended_.back().import;
    brought_ = std::move(ended_.back().brought);
    for (const std::int32_t key : brought_) broughtKeys_.Add(key);
    ended_.pop_back();
    if (import_.GoesWith(level)) ForgetImport();
  }
}

void ImportRecorder::Begun(std::size_t level) {
  level_ = level;
  marks_.push_back({stored_ + pending_.size(), told_, brought_.size(), changes_.size()});
}

void ImportRecorder::CheckCommit(std::size_t level) {
  if (file_ && file_.level == level) db_.Fail(kFileIsStillBeingRead);
}

void ImportRecorder::Committed(std::size_t level) {
  for (Bound* bound : {&import_, &file_}) bound->Commit(level);
  for (Ended& ended : ended_) {
    ended.import.Commit(level);
    ended.end.Commit(level);
  }
  std::erase_if(ended_, [](const Ended& ended) { return ended.end.level == 0; });
  level_ = level - 1;
  marks_.pop_back();
}

// What a transaction's inner ones have committed goes with it.
void ImportRecorder::RolledBack(std::size_t level) noexcept {
  const Mark mark = marks_.back();
  marks_.pop_back();
  level_ = level - 1;
  if (file_.GoesWith(level)) {
    ForgetFile();
  } else if (file_) {
    while (stored_ + pending_.size() > mark.saved) pending_.pop_back();
    while (changes_.size() > mark.changes) changes_.pop_back();
    told_ = std::min(told_, mark.told);
    for (std::size_t i = told_ - stored_; i < pending_.size(); ++i)
      pending_[i].row.firstLine = pending_[i].row.lastLine = 0;
  }
  for (; brought_.size() > mark.brought; brought_.pop_back()) broughtKeys_.Remove(brought_.back());
  if (import_.GoesWith(level)) ForgetImport();
  TakeBackEnds(level);
}

}  // namespace pim
