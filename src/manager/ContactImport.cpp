// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/ContactImport.h"

#include <algorithm>

#include "manager/BatchImport.h"
#include "manager/GroupLinks.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

// The cards of one text on their way into the store.
class ContactBatches {
 public:
  using Reader = VCardReader;

  ContactBatches(std::int32_t db, std::int32_t saveOption, bool saveFlag,
                 ContactImportCounts& counts)
      : db_(db), saveOption_(saveOption), saveFlag_(saveFlag), counts_(counts), linker_(db) {}

  CContacts& records() { return contacts_; }
  bool failed() const { return failed_; }
  [[noreturn]] void RaiseFailure() const { RaiseVCardFailure(); }
  void Store(std::vector<SavedRecord>& saved) {
    for (std::int32_t i = 0; i < contacts_.GetCount(); ++i) contacts_[i].tag = kUnsavedTag;
    const std::int32_t stored = contacts_.SaveToDB(db_, saveOption_, saveFlag_);
    failed_ = failed_ || stored < 0;
    counts_.stored += std::max(stored, 0);
    // What the store says of a failure stays the last that it says.
    if (!failed_ && saveOption_ == -1 && !linker_.Link(contacts_)) counts_.linked = false;
    for (std::int32_t i = 0; i < contacts_.GetCount(); ++i) {
      if (!contacts_[i].photo.empty()) counts_.pictures.push_back(contacts_[i].photo.str());
      saved.push_back({next_++, contacts_[i].tag});
    }
    contacts_.DeleteAll();
  }

 private:
  std::int32_t db_;
  std::int32_t saveOption_;
  bool saveFlag_;
  ContactImportCounts& counts_;
  GroupLinker linker_;
  CContacts contacts_;
  std::int64_t next_ = 0;  // the index of the first of them in the text
  bool failed_ = false;
};

}  // namespace

std::int32_t ImportContactText(std::int32_t db, NarrowStringView text, std::int32_t saveOption,
                               bool saveFlag, ContactImportCounts& counts,
                               const std::function<void(const ContactImportCounts&)>& progress,
                               const TextObserver& observer) {
  counts = {};
  ContactBatches batches(db, saveOption, saveFlag, counts);
  return ImportInBatches(db, text, batches, counts, progress, observer);
}

}  // namespace pim
