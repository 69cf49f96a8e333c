// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/VObjectMgr.h"

#include <optional>

#include "manager/GroupLinks.h"
#include "pim/manager/ContactExport.h"
#include "pim/manager/ContactImport.h"
#include "pim/records/RecordStore.h"
#include "support/TextFiles.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

// Makes the pairs for all contacts from the names in their texts, and the groups that are missing.
void LinkInMemory(const CContacts& contacts, CContactGroups& groups, CContactGroupPairs& pairs) {
  GroupsByName byName;
  for (std::int32_t i = 0; i < groups.GetCount(); ++i)
    byName.Add(groups[i].group_name, groups[i].group_id);
  pairs.DeleteAll();
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
    for (const WideText& name : contacts[i].groups()) {
      CContactGroupPair& pair = pairs.AddNew();
      pair.contact_id = contacts[i].tag;
      if (const std::int32_t* groupId = byName.Find(name)) {
        pair.group_id = *groupId;
        continue;
      }
      CContactGroup& group = groups.AddNew();
      group.group_name = name;
      byName.Add(name, group.group_id);
      pair.group_id = group.group_id;
    }
  }
}

std::int32_t ExportContacts(WideString folder, CContacts& contacts, const CContactGroups& groups,
                            const CContactGroupPairs& pairs) {
  const std::int32_t count = contacts.GetCount();
  ContactExport files(std::move(folder), groups, pairs);
  for (std::int32_t i = 0; i < count; ++i) files.AttachGroupNames(contacts[i]);
  for (std::int32_t i = 0; i < count; ++i)
    if (!files.WriteContactFile(contacts[i])) return -1;
  contacts.DeleteAll();
  return count;
}

}  // namespace

std::int32_t VObjectMgr::Import_Contact(std::int32_t db, WideString path, std::int32_t saveOption,
                                        bool saveFlag) {
  VObjectBuffer data;
  if (path.empty() || !ReadTextFile(path, ByteOrderMark::Skipped, data.bytes)) return 0;
  ContactImportCounts counts;
  return ImportContactText(db, data.bytes.view(), saveOption, saveFlag, counts);
}

std::int32_t VObjectMgr::ImportToPC_Contact(std::int32_t, WideString path, std::int32_t saveOption,
                                            CContacts* contacts, CContactGroups* groups,
                                            CContactGroupPairs* pairs) {
  VObjectBuffer data;
  if (path.empty() || !ReadTextFile(path, ByteOrderMark::Skipped, data.bytes)) return 0;
  ParseVCard(*contacts, data);
  data.bytes.Clear();
  if (saveOption == -1) LinkInMemory(*contacts, *groups, *pairs);
  return contacts->GetCount();
}

std::int32_t VObjectMgr::Import_ContactGroup(std::int32_t db, CContacts& contacts) {
  static_cast<void>(GroupLinker(db).Link(contacts));  // the result tells nothing of groups
  return 0;
}

std::int32_t VObjectMgr::Export_Contact(std::int32_t db, WideString folder) {
  if (folder.empty()) return -1;
  std::optional<StoreReading> reading;  // links of contacts that came later would lead nowhere
  if (RecordStore* store = StoreForHandle(db)) reading.emplace(*store);
  CContacts contacts;
  const std::int32_t opened = contacts.OpenFromDB(db, 0);
  CContactGroups groups;
  static_cast<void>(groups.OpenFromDB(db));  // contacts go out without groups where these fail
  CContactGroupPairs pairs;
  static_cast<void>(pairs.OpenFromDB());
  reading.reset();
  if (opened <= 0) return opened < 0 ? -1 : 0;
  return ExportContacts(std::move(folder), contacts, groups, pairs);
}

std::int32_t VObjectMgr::ExportFromPC_Contact(std::int32_t, WideString folder, CContacts* contacts,
                                              CContactGroups* groups, CContactGroupPairs* pairs) {
  if (folder.empty()) return -1;
  return ExportContacts(std::move(folder), *contacts, *groups, *pairs);
}

}  // namespace pim
