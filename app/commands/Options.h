// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/prepare/PrepareSteps.h"
#include "pim/stream/TextHead.h"

namespace pim::app {

enum class RecordKind : std::uint8_t { Contacts, Calendar, Todo, Memo };
enum class Action : std::uint8_t {
  Check,
  Convert,
  Prepare,
  Redact,
  TellCharsets,
  Import,
  Export,
  Album,
  FileAlbum,
  List,
  Count,
  ShowRecords,
  Delete,
  ShowFile,
  Inspect,
  History,
  Undo,
  ListOriginals,
  ExportOriginals,
  ShowOriginal,
  DropOriginals,
  OriginalsOn,
  OriginalsOff,
  TidyStore,
  CopyStore,
  PrintSchema,
  TellHelp
};
enum class ListForm : std::uint8_t { Table, Json, JsonLines, Csv };
enum class ListOrder : std::uint8_t { Key, Name, Time };
// Today's forms, in which records leave.
enum class TargetForm : std::uint8_t { VCard4, VCard3, ICalendar, JCard, Csv };

// Which stored records a command is about: those that all of it holds for.
struct Filter {
  std::vector<std::string> words = {};
  std::optional<std::string> group = {};
  bool withoutName = false;

  bool IsEmpty() const { return words.empty() && !group && !withoutName; }
};

// One command line, read.
struct Options {
  Action action = Action::Inspect;
  RecordKind kind = RecordKind::Contacts;
  std::string command;                 // "contacts list"
  std::vector<std::string> given;      // the options that change what it does, "--group=Family"
  std::vector<std::string> operands;   // files, folders, words or keys, as the command takes them
  std::optional<std::string> store;    // a path or a server's URL, as the next two
  std::optional<std::string> from;     // the store that is copied, or the first day of an album
  std::optional<std::string> to;       // where the copy goes, the form that is written or a day
  std::optional<std::string> group;    // import: every contact joins it; elsewhere: those in it
  std::optional<std::string> output;   // where an export goes
  std::optional<std::string> rejects;  // import: where rejected records go, the others being taken
  std::optional<std::string> report;   // import: where the account of all lines goes
  std::optional<std::int32_t> import;  // whose originals alone
  std::optional<std::string> csvColumns;  // a file that says which
  std::optional<TextForm> form;
  std::optional<std::string> language;  // of labels and titles
  std::optional<std::string> labels;    // a file of the user's own
  std::vector<std::string> fields;      // of a list, none for its usual ones
  ListForm listForm = ListForm::Table;
  ListOrder order = ListOrder::Key;
  PrepareStepMask steps = kAllPrepareSteps;  // of preparing
  bool all = false;
  bool deletes = false;  // what is found
  bool dryRun = false;
  bool force = false;
  bool groupCards = false;  // groups as objects of their own
  bool keepDuplicates = false;
  bool losses = false;  // tell what becomes of each line, not the records
  bool noGroups = false;
  bool noName = false;
  bool noOriginals = false;
  bool prepare = false;  // what is read goes through the filters first
  bool quiet = false;
  bool split = false;        // one file a record
  bool strict = false;       // a loss is a failure
  bool toTheLetter = false;  // what is written need not read back

  // The filter whose words are the operands from the one with that number on.
  Filter FilterFrom(std::size_t firstWord) const {
    return {
        {operands.begin() + static_cast<std::ptrdiff_t>(firstWord), operands.end()}, group, noName};
  }
};

}  // namespace pim::app
