// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "pim/Export.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/support/Strings.h"

namespace pim {

// Writes contacts one by one as VObjectMgr::Export_Contact does, for hosts that read them from the
// store one by one (RecordStore::VisitContacts). One object is used by one thread at a time;
// several may write into one folder at once, since no file that is there is written over. All
// operations but LastPath throw std::bad_alloc.
class PIM_EXPORT ContactExport {
 public:
  // `folder` is put in front of the file names as it stands, so it must end with a separator.
  // Groups and pairs are read here and not needed any more.
  ContactExport(WideString folder, const CContactGroups& groups, const CContactGroupPairs& pairs);
  ContactExport(const ContactExport&) = delete;
  ContactExport& operator=(const ContactExport&) = delete;
  ~ContactExport();

  // Adds the names of its groups to the contact.
  void AttachGroupNames(CContact& contact);
  // Writes the contact's file, named by given and family name, with a counter where that is taken.
  // False when it can't be created, with errno telling why; throws FileError when writing fails
  // behind that.
  [[nodiscard]] bool WriteContactFile(const CContact& contact);
  // The path of the file that was written, or tried, last.
  const WideString& LastPath() const noexcept { return lastPath_; }

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
  WideString lastPath_;
};

}  // namespace pim
