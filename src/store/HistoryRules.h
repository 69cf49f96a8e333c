// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"
#include "pim/store/ImportHistory.h"

namespace pim {

// What the histories of all stores name and refuse alike.

constexpr StoredKind KindOf(const CContact&) { return StoredKind::Contact; }
constexpr StoredKind KindOf(const CCalendar&) { return StoredKind::Item; }

// What a record is called that undoing leaves where it is.
inline WideString NameOf(const CContact& contact) {
  if (!contact.formatted_name.empty()) return contact.formatted_name.str();
  WideString name = contact.name.given_name.str();
  if (!name.empty() && !contact.name.family_name.empty()) name += u' ';
  return name.append(contact.name.family_name.view());
}
inline WideString NameOf(const CCalendar& item) {
  return (item.summary.empty() ? item.description : item.summary).str();
}

// When an import begins or is undone: since 1970, UTC.
inline std::int64_t SecondsNow() { return static_cast<std::int64_t>(std::time(nullptr)); }

inline constexpr const char* kImportIsUnderWay = "an import is under way already";
inline constexpr const char* kNoImportIsUnderWay = "no import is under way";
inline constexpr const char* kFilesNeedTransaction = "a file is imported in a transaction";
inline constexpr const char* kFileIsBeingRead = "a file of the import is being read already";
inline constexpr const char* kFileIsStillBeingRead = "a file of the import is being read still";
inline constexpr const char* kFilesEndWhereTheyBegin =
    "a file of an import ends in the transaction in which it began";
inline constexpr const char* kNoFileIsBeingRead = "no file of an import is being read";
inline constexpr const char* kBytesAreNotKept = "the file's bytes aren't kept";
inline constexpr const char* kNothingToUndo = "no import is left to be undone";

inline std::string NoSuchImport(std::int32_t import) {
  return "there is no import " + std::to_string(import);
}
inline std::string NoSuchImportedFile(std::int64_t file) {
  return "there is no imported file " + std::to_string(file);
}

inline std::string WasUndoneMeanwhile(std::int32_t import) {
  return "import " + std::to_string(import) + " was taken for given up, and undone, meanwhile";
}

// Why an import of that state, none for a number that no import has, can't be undone; empty when it
// can.
inline std::string WhyNotUndone(std::int32_t import, std::optional<ImportState> state) {
  if (!state) return NoSuchImport(import);
  const std::string name = "import " + std::to_string(import);
  if (*state == ImportState::Running) return name + " is under way";
  if (*state == ImportState::Undone) return name + " is undone already";
  return {};
}

}  // namespace pim
