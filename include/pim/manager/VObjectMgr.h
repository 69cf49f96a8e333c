// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "pim/Export.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/support/ParseFailure.h"
#include "pim/support/Strings.h"

namespace pim {

// What an application uses: the operations by which vObject text in files meets the store. `db` is
// the handle that a StoreBinding gives. Paths are wide, with slashes or backslashes.
//
// An operation that reads a text which is rejected shows a message (SetMessageSink) and throws
// kParseFailure; nothing of that text is in the store then. Files that fail behind their opening
// throw FileError, and all operations throw std::bad_alloc. A text is read as a whole, up to 2 GiB.
//
// One object is used by one thread at a time, and so is the store behind `db`. Threads with objects
// and stores of their own may work at once; renderings of one object too, as long as no word is
// fed.
class PIM_EXPORT VObjectMgr {
 public:
  VObjectMgr() = default;
  VObjectMgr(const VObjectMgr&) = delete;
  VObjectMgr& operator=(const VObjectMgr&) = delete;
  ~VObjectMgr() = default;

  // Does nothing.
  void Test(WideString) {}

  // Reads a vCard file of any number of cards into the store, as CContacts::SaveToDB tells of
  // `saveOption` and `saveFlag`; -1 as `saveOption` also links the contacts to the groups that
  // their text names; a failure of that alone isn't told, and the contacts stay. Gives what
  // SaveToDB gives; 0 when the path is empty or can't be opened.
  [[nodiscard]] std::int32_t Import_Contact(std::int32_t db, WideString path,
                                            std::int32_t saveOption, bool saveFlag);

  // The same into the caller's collections, behind what they hold; nothing is stored and `db` isn't
  // used. With -1 as `saveOption` the pairs are made anew for all contacts, and the groups that are
  // missing are added. Gives the number of contacts in the collection then.
  [[nodiscard]] std::int32_t ImportToPC_Contact(std::int32_t db, WideString path,
                                                std::int32_t saveOption, CContacts* contacts,
                                                CContactGroups* groups, CContactGroupPairs* pairs);

  // Links stored contacts to the groups that their text names; names are compared without regard to
  // letter case, and a group that the store lacks is made. Gives 0, whatever fails.
  std::int32_t Import_ContactGroup(std::int32_t db, CContacts& contacts);

  // Writes each contact of the store as a vCard file of its own, without the groups' names where
  // the store can't give its groups. `folder` must end with a separator. Gives the number of files;
  // 0 when the store holds no contact; -1 when the folder is empty, the store fails or a file can't
  // be created, where files written before it stay.
  [[nodiscard]] std::int32_t Export_Contact(std::int32_t db, WideString folder);

  // The same from the caller's collections; `db` isn't used. Adds group names to the contacts, by
  // the pairs, and empties `contacts` when it succeeds.
  [[nodiscard]] std::int32_t ExportFromPC_Contact(std::int32_t db, WideString folder,
                                                  CContacts* contacts, CContactGroups* groups,
                                                  CContactGroupPairs* pairs);

  // Read a vCalendar file and store its items, as CCalendars::SaveToDB tells of `saveFlag`:
  // Import_Calendar all but memos, Import_Todo the to-dos, Import_Memo the memos. Each gives what
  // SaveToDB gives; -1 when the path is empty or can't be opened.
  [[nodiscard]] std::int32_t Import_Calendar(std::int32_t db, WideString path, bool saveFlag);
  [[nodiscard]] std::int32_t Import_Todo(std::int32_t db, WideString path, bool saveFlag);
  [[nodiscard]] std::int32_t Import_Memo(std::int32_t db, WideString path, bool saveFlag);

  // Give the number of items in a vCalendar file, all kinds together; -1 when the path is empty or
  // can't be opened. `db` isn't used.
  [[nodiscard]] std::int32_t Count_Calendar(std::int32_t db, WideString path);
  [[nodiscard]] std::int32_t Count_Todo(std::int32_t db, WideString path);
  [[nodiscard]] std::int32_t Count_Memo(std::int32_t db, WideString path);

  // Write all stored events, to-dos or memos into one file. Each gives their number; 0, leaving an
  // earlier file as it was, when there are none; -1 when the path is empty, the store fails or the
  // file can't be created. A failure while writing leaves an earlier file as it was, where the file
  // system allows, and throws FileError.
  [[nodiscard]] std::int32_t Export_Calendar(std::int32_t db, WideString path);
  [[nodiscard]] std::int32_t Export_Todo(std::int32_t db, WideString path);
  [[nodiscard]] std::int32_t Export_Memo(std::int32_t db, WideString path);

  // Feeds one word of the user's language for the renderings (see LabelKeys.h). The first text of
  // a key stays.
  void MakeMapString(WideString key, WideString text);
  // The text of a key, empty when there is none.
  WideString GetString(const char16_t* key) const;

  // Renders a vObject as a few lines for a preview, by what the text begins with: BEGIN:VCARD,
  // BEGIN:VCALENDAR or BEGIN:VTODO, in any letter case. Any other text comes back as it is. Only
  // the first record shows, with its own date-times (UTC); a date that isn't set shows as none.
  // Empty when no record begins in the text. The lines end in one line feed. A card's picture
  // becomes a file, as in an import.
  WideString VObjectToString(WideString text) const;
  WideString VCardToString(WideString text) const;
  WideString VCalendarToString(WideString text) const;
  WideString VTodoToString(WideString text) const;

 private:
  std::unique_ptr<std::map<WideString, WideString>> labelMap;  // null until a word is fed
};

}  // namespace pim
