// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "pim/Export.h"
#include "pim/support/Strings.h"

namespace pim {

// What a store remembers of its imports: which there were, which files they read, from which lines
// of them each record came, the files' own bytes, and how to take an import back.
//
// A history belongs to its store, and is used by the thread that uses the store; what is told here
// are values, which hold their own texts. Where memory is short, operations fail as the store does.

// The two kinds of records, each of which has keys of its own.
enum class StoredKind : std::uint8_t {
  Contact,  // a CContact
  Item,     // a CCalendar: event, to-do or memo
};

// How one run of an import began.
struct ImportStart {
  std::string command;               // "contacts import"; UTF-8
  std::vector<std::string> options;  // as they were given, values behind their option; UTF-8
};

// Numbers of records and lines. What was neither new nor refused nor of another kind was there
// already.
struct ImportCounts {
  std::int64_t inFile = 0;        // records
  std::int64_t stored = 0;        // new
  std::int64_t refused = 0;       // in what a reader rejects
  std::int64_t otherKind = 0;     // of a kind that the import leaves out
  std::int64_t lines = 0;         // physical lines
  std::int64_t linesNotKept = 0;  // dropped, or kept in part

  // Records that equalled stored ones.
  std::int64_t AlreadyThere() const { return inFile - stored - refused - otherKind; }
  // Adds those of another file.
  PIM_EXPORT ImportCounts& operator+=(const ImportCounts& other);
  // Number by number.
  friend bool operator==(const ImportCounts&, const ImportCounts&) = default;
};

// How an import stands.
enum class ImportState : std::uint8_t {
  Running,       // its program runs and hasn't ended it
  Done,          // it stands as it was made
  Interrupted,   // the program ended in the middle; what it had committed is there
  Undone,        // taken back wholly
  UndoneInPart,  // records or groups that had been changed since stayed
};

// One import of the history.
struct ImportEntry {
  std::int32_t number = 0;                // from 1, in the order of their beginning
  ImportStart start;                      // as it was told
  ImportState state = ImportState::Done;  // how it stands now
  std::int64_t began = 0;                 // seconds since 1970, UTC
  std::int64_t undone = 0;                // the same; 0 for one that stands
  std::int64_t takenBack = 0;             // records that undoing it has taken back
  std::int64_t files = 0;                 // refused ones too
  ImportCounts counts;                    // of all files
};

// A digest of bytes (FIPS 180-4).
using Sha256 = std::array<std::uint8_t, 32>;

// A file of an import. Its bytes are kept once for each content.
struct ImportedFile {
  std::int64_t number = 0;  // from 1, over all imports
  std::int32_t import = 0;  // ImportEntry::number
  std::string name;         // as the host named it: the operating system's bytes
  std::int64_t bytes = 0;   // its size
  Sha256 sha256{};          // zeros where the store makes none
  bool isKept = false;      // whether its bytes are there
  ImportCounts counts;      // of this file
};

// Where a stored record came from. Lines count from 1, each line feed ends one; 0 where the host
// told none.
struct RecordOrigin {
  std::int32_t import = 0;     // ImportEntry::number
  std::int64_t file = 0;       // ImportedFile::number
  std::int64_t firstLine = 0;  // that of its BEGIN
  std::int64_t lastLine = 0;   // that of its END, or of what landed on it behind
};

// The lines of one record that was just saved.
struct RecordLines {
  std::int32_t key = 0;        // that it has in the store
  std::int64_t firstLine = 0;  // physical lines of the file, from 1
  std::int64_t lastLine = 0;   // not before the first
};

// What to undo, and how.
struct UndoOptions {
  std::optional<std::int32_t> import;  // none: the last one that stands, if only in part
  bool force = false;                  // takes what was changed since, too
  bool dryRun = false;                 // only tells
  // Told how many records have been looked at, now and then. What it throws ends the undo, which
  // then has changed nothing, and passes to the caller.
  std::function<void(std::int64_t records)> progress = {};
};

// What undoing an import took back, or would.
struct UndoResult {
  std::int32_t import = 0;    // its number
  std::int64_t contacts = 0;  // deleted, or to be
  std::int64_t items = 0;     // the same: events, to-dos and memos
  std::int64_t groups = 0;    // that the import made
  std::int64_t links = 0;     // to contacts that were there before; those of the records go along
  std::int64_t pictures = 0;  // that no other record names
  // A record that stays.
  struct Kept {
    StoredKind kind;   // which kind of record
    std::int32_t key;  // its key
    WideString name;   // display name or summary; may be empty
  };
  std::vector<Kept> keptRecords;       // changed since
  std::vector<WideString> keptGroups;  // renamed since, or with other members

  // Whether all that the import brought is gone.
  bool IsWhole() const { return keptRecords.empty() && keptGroups.empty(); }
};

// The history of one store. Operations that give a bool or number give false or -1 when the store
// fails, or refuse; nothing is changed then, and the store's LastError tells why. Calls of visitors
// and takers come in the thread that asks; what they throw passes to the caller.
class PIM_EXPORT ImportHistory {
 public:
  virtual ~ImportHistory();

  // Begins an import and gives its number. From now on the groups and links that are newly saved
  // through the store are its own, and while a file is being read the records too. One at a time;
  // it may commit several transactions, the first of which holds its entry. Rolled back, it has
  // never begun. Goes on until EndImport, or until the store is closed: it is interrupted then, if
  // any of it was committed.
  [[nodiscard]] virtual std::int32_t BeginImport(const ImportStart& start) = 0;
  // Begins one of its files, in a transaction of the caller's that also holds EndFile: what is
  // saved between the two came from it. `bytes` are the file's own, whatever part of them is read,
  // and must stay until EndFile. `name` is kept as it stands.
  [[nodiscard]] virtual bool BeginFile(std::string_view name, NarrowStringView bytes) = 0;
  // Tells the lines of records that were saved since the last call, in the order of saving; records
  // of one kind. Those that equalled stored ones may be among them and are passed over, and those
  // that aren't told have none.
  [[nodiscard]] virtual bool AddLines(std::span<const RecordLines> lines) = 0;
  // Keeps the file's bytes where `keepsBytes` says so.
  [[nodiscard]] virtual bool EndFile(const ImportCounts& counts, bool keepsBytes) = 0;
  // A file of which nothing was imported; its bytes aren't kept.
  [[nodiscard]] virtual bool AddRefusedFile(std::string_view name, NarrowStringView bytes,
                                            const ImportCounts& counts) = 0;
  // Ends the import, which is done then.
  [[nodiscard]] virtual bool EndImport() = 0;

  // Whether imports are to keep their files' bytes: a setting of the store, true at first.
  [[nodiscard]] virtual bool KeepsOriginals() = 0;
  [[nodiscard]] virtual bool SetKeepsOriginals(bool keeps) = 0;

  // In the order of their numbers, until `visitor` gives false; gives how many were visited. A
  // visitor must not call this store.
  [[nodiscard]] virtual std::int32_t VisitImports(
      const std::function<bool(const ImportEntry&)>& visitor) = 0;
  // The files of one import, or of all, in the same way.
  [[nodiscard]] virtual std::int32_t VisitFiles(
      std::optional<std::int32_t> import,
      const std::function<bool(const ImportedFile&)>& visitor) = 0;
  // Where a record came from; 0 for a record that no import brought, else 1.
  [[nodiscard]] virtual std::int32_t FindOrigin(StoredKind kind, std::int32_t key,
                                                RecordOrigin& origin) = 0;

  // Gives a kept file's bytes piece by piece, until `take` gives false. Fails for bytes that aren't
  // kept and for damaged ones: what was given until then is no good.
  [[nodiscard]] virtual bool ReadOriginal(
      std::int64_t file, const std::function<bool(NarrowStringView piece)>& take) = 0;
  // Takes away the bytes of the files of one import, or of all, also where another import has read
  // the same. Gives how many files have lost theirs.
  [[nodiscard]] virtual std::int32_t DropOriginals(std::optional<std::int32_t> import) = 0;

  // Takes an import back: the records that it brought, the links and groups that it made, pictures
  // that no other record names. What was changed since stays unless forced, and is told. In one
  // transaction; 0, or -1 when there is nothing to undo.
  [[nodiscard]] virtual std::int32_t Undo(const UndoOptions& options, UndoResult& result) = 0;
};

}  // namespace pim
