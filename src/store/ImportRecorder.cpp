#include "store/ImportRecorder.h"

#include <iterator>
#include <utility>

namespace pim {

void KeyRanges::Add(std::int32_t key) {
  auto next = lasts_.lower_bound(key);
  if (next != lasts_.end() && next->first == key) return;
  if (next != lasts_.begin()) {
    const auto before = std::prev(next);
    if (before->second >= key) return;
    if (before->second == key - 1) {
      before->second = key;
      if (next != lasts_.end() && next->first == key + 1) {
        before->second = next->second;
        lasts_.erase(next);
      }
      return;
    }
  }
  std::int32_t last = key;
  if (next != lasts_.end() && next->first - 1 == key) {
    last = next->second;
    next = lasts_.erase(next);
  }
  lasts_.emplace_hint(next, key, last);
}

bool KeyRanges::Holds(std::int32_t key) const {
  const auto behind = lasts_.upper_bound(key);
  return behind != lasts_.begin() && std::prev(behind)->second >= key;
}

std::vector<KeyRanges::Range> KeyRanges::All() const {
  std::vector<Range> ranges;
  for (const auto& [first, last] : lasts_) ranges.push_back({first, last});
  return ranges;
}

ImportRecorder::ImportRecorder(Database& db)
    : db_(db),
      imports_(db),
      originals_(db),
      contacts_(db, StoredKind::Contact),
      items_(db, StoredKind::Item),
      insertGroup_(db, "INSERT OR REPLACE INTO ImportedGroups (group_id, import_id) VALUES (?, ?)"),
      insertLink_(db,
                  "INSERT INTO ImportedLinks (import_id, contact_id, group_id) VALUES (?, ?, ?)") {}

std::int32_t ImportRecorder::Begin(const ImportStart& start, std::size_t level) {
  if (IsOpen()) db_.Fail("an import is under way already");
  import_ = imports_.Begin(start);
  importLevel_ = level;
  return import_;
}

void ImportRecorder::BeginFile(std::string_view name, NarrowStringView bytes, std::size_t level) {
  if (!IsOpen()) db_.Fail("no import is under way");
  if (level == 0) db_.Fail("a file is imported in a transaction");
  if (file_ != 0) db_.Fail("a file of the import is being read already");
  file_ = imports_.NextFile();
  fileLevel_ = level;
  name_ = name;
  bytes_ = bytes;
}

void ImportRecorder::AddRecord(StoredKind kind, std::int32_t key, const Fingerprint& print) {
  if (file_ == 0) return;
  pending_.push_back({kind, {key, file_, 0, 0, print}});
  if (kind == StoredKind::Contact) broughtContacts_.Add(key);
}

void ImportRecorder::AddGroup(std::int32_t group) {
  if (!IsOpen()) return;
  insertGroup_.Bind(1, std::int64_t{group});
  insertGroup_.Bind(2, std::int64_t{import_});
  insertGroup_.Run();
}

void ImportRecorder::AddLinks(std::span<const LinkRow> links) {
  if (!IsOpen()) return;
  for (const auto& [contact, group] : links) {
    if (broughtContacts_.Holds(contact)) continue;
    insertLink_.Bind(1, std::int64_t{import_});
    insertLink_.Bind(2, std::int64_t{contact});
    insertLink_.Bind(3, std::int64_t{group});
    insertLink_.Run();
  }
}

void ImportRecorder::Store(const Pending& pending) {
  (pending.kind == StoredKind::Contact ? contacts_ : items_).Add(pending.row);
}

void ImportRecorder::AddLines(std::span<const RecordLines> lines) {
  if (file_ == 0) db_.Fail("no file of an import is being read");
  for (const RecordLines& record : lines) {
    if (pending_.empty() || pending_.front().row.key != record.key) continue;
    pending_.front().row.firstLine = record.firstLine;
    pending_.front().row.lastLine = record.lastLine;
    Store(pending_.front());
    pending_.pop_front();
  }
}

void ImportRecorder::EndFile(const ImportCounts& counts, bool keepsBytes) {
  if (file_ == 0) db_.Fail("no file of an import is being read");
  for (const Pending& pending : pending_) Store(pending);
  contacts_.Flush();
  items_.Flush();
  imports_.AddFile(file_, import_, originals_.Add(bytes_, keepsBytes), name_, counts);
  ForgetFile();
}

void ImportRecorder::AddRefusedFile(std::string_view name, NarrowStringView bytes,
                                    const ImportCounts& counts) {
  if (!IsOpen()) db_.Fail("no import is under way");
  if (file_ != 0) db_.Fail("a file of the import is being read still");
  imports_.AddFile(imports_.NextFile(), import_, originals_.Add(bytes, false), name, counts);
}

void ImportRecorder::ForgetFile() noexcept {
  file_ = 0;
  fileLevel_ = 0;
  bytes_ = {};
  pending_.clear();
  contacts_.Forget();
  items_.Forget();
}

void ImportRecorder::End() {
  if (!IsOpen()) db_.Fail("no import is under way");
  if (file_ != 0) db_.Fail("a file of the import is being read still");
  imports_.End(import_);
  import_ = 0;
  broughtContacts_.Clear();
}

void ImportRecorder::Interrupt() {
  const std::int32_t import = std::exchange(import_, 0);
  if (import != 0 && importLevel_ == 0) imports_.Interrupt(import);
}

void ImportRecorder::Committed(std::size_t level) {
  if (importLevel_ == level) --importLevel_;
  if (fileLevel_ == level && file_ != 0) --fileLevel_;
}

// What a transaction's inner ones have committed goes with it.
void ImportRecorder::RolledBack(std::size_t level) noexcept {
  if (file_ != 0 && fileLevel_ >= level) ForgetFile();
  if (import_ != 0 && importLevel_ >= level) {
    import_ = 0;
    importLevel_ = 0;
    broughtContacts_.Clear();
  }
}

}  // namespace pim
