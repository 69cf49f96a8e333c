#include "pim/manager/ContactImport.h"

#include <algorithm>
#include <optional>

#include "manager/GroupLinks.h"
#include "pim/records/RecordStore.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

// Large enough that a batch's statements outweigh its bookkeeping, small enough that its records
// stay in the cache and in the same memory.
constexpr std::size_t kBatchBytes = std::size_t{256} * 1024;

// The cards of one text on their way into the store.
class ContactBatches {
 public:
  ContactBatches(std::int32_t db, std::int32_t saveOption, bool saveFlag,
                 ContactImportCounts& counts)
      : db_(db), saveOption_(saveOption), saveFlag_(saveFlag), counts_(counts), linker_(db) {}

  CContacts& contacts() { return contacts_; }

  // Stores the cards read so far; the last one stays open for the text that follows.
  void StoreFinished() {
    if (contacts_.GetCount() < 2) return;
    auto open = contacts_.TakeLast();
    Store();
    contacts_.Add(std::move(open));
  }
  void StoreRest() { Store(); }

  bool failed() const { return failed_; }

 private:
  void Store() {
    for (std::int32_t i = 0; i < contacts_.GetCount(); ++i) contacts_[i].tag = kUnsavedTag;
    const std::int32_t stored = contacts_.SaveToDB(db_, saveOption_, saveFlag_);
    failed_ = failed_ || stored < 0;
    counts_.stored += std::max(stored, 0);
    if (saveOption_ == -1 && !linker_.Link(contacts_)) counts_.linked = false;
    for (std::int32_t i = 0; i < contacts_.GetCount(); ++i)
      if (!contacts_[i].photo.empty()) counts_.pictures.push_back(contacts_[i].photo.str());
    contacts_.DeleteAll();
  }

  std::int32_t db_;
  std::int32_t saveOption_;
  bool saveFlag_;
  ContactImportCounts& counts_;
  GroupLinker linker_;
  CContacts contacts_;
  bool failed_ = false;
};

}  // namespace

std::int32_t ImportContactText(std::int32_t db, NarrowStringView text, std::int32_t saveOption,
                               bool saveFlag, ContactImportCounts& counts,
                               const std::function<void(const ContactImportCounts&)>& progress) {
  counts = {};
  RecordStore* const store = StoreForHandle(db);
  std::optional<StoreTransaction> transaction;
  if (store != nullptr) transaction.emplace(*store);

  ContactBatches batches(db, saveOption, saveFlag, counts);
  VCardReader reader(batches.contacts());
  bool accepted = true;
  do {
    const std::size_t size = std::min(text.size(), kBatchBytes);
    const std::int32_t before = batches.contacts().GetCount();
    accepted = reader.Read(text.substr(0, size), size == text.size());
    text.remove_prefix(size);
    counts.inText += batches.contacts().GetCount() - before;
    if (!accepted) break;
    batches.StoreFinished();
    if (progress) progress(counts);
  } while (!text.empty());
  if (!accepted) {
    transaction.reset();
    counts.stored = 0;
    RaiseVCardFailure();
  }
  batches.StoreRest();
  if (batches.failed() || !transaction || !transaction->Commit()) {
    counts.stored = 0;
    return -1;
  }
  return static_cast<std::int32_t>(counts.stored);
}

}  // namespace pim
