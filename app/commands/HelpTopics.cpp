// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/HelpTopics.h"

#include <algorithm>
#include <iterator>

#include "app/commands/ExitStatuses.h"
#include "app/commands/HelpLayout.h"
#include "app/labels/Labels.h"
#include "formats/prepare/PrepareSteps.h"
#include "pim/manager/LabelKeys.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

constexpr TopicRow kTopics[] = {
    {"formats", "The files that are read and written"},
    {"store", "Where records are kept"},
    {"environment", "The variables that are looked at"},
    {"labels", "What --labels takes"},
    {"exit-statuses", "What commands end with"},
    {"steps", "What 'pimvobj prepare' does"},
    {"columns", "What --csv-columns takes"},
};

struct Block {
  const char* term;
  const char* text;
};

constexpr Block kFormats[] = {
    {"",
     "Contacts are read and written as vCard 2.1 (.vcf), events, to-dos and memos as vCalendar 1.0 "
     "(.vcs, and .ics where a folder is read). Other versions are read as far as they are like "
     "these, and a message says so; 'pimvobj prepare', and imports with --prepare, make these of "
     "them first."},
    {"",
     "'pimvobj convert', and exports with --to, write what programs of today take: vCard 4.0 (RFC "
     "6350) and 3.0 (RFC 2426), iCalendar 2.0 (RFC 5545), jCard (RFC 7095) and tables of contacts "
     "(CSV, RFC 4180). What such a form has no place for is told, record by record."},
    {"",
     "A text is UTF-8 unless a line names its charset; --code-page names that of the other lines. "
     "A file has 2 GiB at most."},
    {"",
     "The records have no place for some properties. 'pimvobj inspect --losses' tells the lines of "
     "a file that aren't kept, 'pimvobj check' what of a file would not come back from an export. "
     "The store keeps a copy of each imported file with all that was in it, unless --no-originals "
     "or 'pimvobj original off' says otherwise."},
    {"",
     "Lists and reports are tables for people, and for programs values with commas (--csv, RFC "
     "4180), one JSON object (--json), of files one for each, or whole records as JSON, one a line "
     "(--jsonl)."},
};

constexpr Block kStore[] = {
    {"",
     "A store is one SQLite file, or the tables of a PostgreSQL server. It is the first of these "
     "that is named:"},
    {"--store FILE|URL", "By the command"},
    {"$PIMVOBJ_STORE", "By the environment, in the same way"},
    {"$XDG_DATA_HOME/pimvobj/pim.db", "In the application-data folder"},
    {"~/.local/share/pimvobj/pim.db", "In that folder, where no variable names one"},
    {"",
     "An import makes it; commands that only read don't. It holds the records, the history of "
     "imports, a copy of each imported file, compressed, and the pictures of contacts. 'pimvobj "
     "store copy' makes a copy of it, in a file or a server."},
    {"",
     "In a server it is named by a URL, all that libpq takes, such as "
     "postgresql://ann@db.example.org/pim, and its tables are in the first schema of the search "
     "path. Several people and computers may use it at once. An import whose connection is lost "
     "does again what wasn't stored yet, at the same server or the one that takes its place. "
     "A password is best left to ~/.pgpass: the program shows that of a URL nowhere, but the shell "
     "may keep it."},
    {"",
     "While commands run, and behind one that was killed, two more files belong to a store that is "
     "a file, named as it is with more behind that:"},
    {"-wal", "What is stored and not yet in the store's own file"},
    {"-shm", "Where each part of that stands"},
    {"",
     "To take such a store to another computer, copy it while no command runs, with these two "
     "where "
     "they are there. The next command that writes ends them, so that the store is one file "
     "again."},
    {"", "In the application-data folder are, too:"},
    {"Tessaly Works/Tessaly Deskmate IV/CallerId/",
     "Copies of the pictures, as files for other programs"},
    {"pimvobj/incoming/", "The pictures of an import that runs"},
    {"pimvobj/incoming.lock", "Which lets imports begin one by one"},
    {"",
     "Without that folder the last two are pimvobj-incoming-UID and pimvobj-incoming-UID.lock "
     "among "
     "the temporary files, UID being the user's number."},
    {"",
     "A command that needs files for a while makes a folder pimvobj-XXXXXX among the temporary "
     "files and takes it away at its end."},
};

constexpr Block kEnvironment[] = {
    {"PIMVOBJ_STORE", "The store, a file or a server's URL, where --store names none"},
    {"XDG_DATA_HOME", "The application-data folder, when it is an absolute path"},
    {"HOME", "The home folder; without XDG_DATA_HOME, that folder is .local/share in it"},
    {"LC_ALL, LC_MESSAGES, LANG",
     "The language of labels and titles, where --lang names none, by the first that is set; "
     "English where that is a language without labels"},
    {"TZ", "The time zone that times are shown in (default: /etc/localtime)"},
    {"TZDIR", "The folder of zone files (default: /usr/share/zoneinfo)"},
    {"TMPDIR", "The folder of temporary files (default: /tmp)"},
    {"PGCONNECT_TIMEOUT", "How many seconds a server may take to answer (default: 10)"},
    {"PGSERVICE", "The section of libpq's file of services that says the rest of a server's URL"},
    {"PGTARGETSESSIONATTRS",
     "Which one of several servers is taken (default: for writing, one that can be written)"},
    {"",
     "For a store in a server all others of libpq count, too, such as PGPASSFILE and PGSSLMODE. "
     "They say what its URL doesn't."},
};

constexpr Block kColumns[] = {
    {"",
     "A file of columns has one of them a line, as \"Column name = FIELD\"; blank lines and those "
     "that begin with # say nothing. A FIELD is one of those that 'pimvobj inspect --json' prints, "
     "with its list and number:"},
    {"name.given_name", "A part of the name"},
    {"hobby", "A text by its name alone"},
    {"telephones[0].number", "Of one entry of a list, counted from 0"},
    {"telephones[4..].number", "Of that entry and all behind it"},
    {"telephones.number", "Of all entries"},
    {"telephones.work.number", "Of those whose type has the word"},
    {"telephones.work[0].number", "Of the first one of those"},
    {"nicknames[0]", "Of a list of texts"},
    {"",
     "Several FIELDs with + between them go into one column, and a text in quotes ahead of a FIELD "
     "stands there where that isn't empty: \"Hobby\" hobby. What comes of several is parted by "
     "\" ::: \"."},
};

std::vector<TopicBlock> StepBlocks() {
  std::vector<TopicBlock> blocks = {
      {"",
       "All of these are done to a text, in this order, unless --steps names some; each leaves "
       "alone what needs nothing."}};
  for (const PrepareStepRow& row : PrepareSteps())
    blocks.push_back({std::string(row.name), std::string(row.help)});
  return blocks;
}

// The words of previews: all that a file of labels may change.
std::vector<TopicBlock> LabelBlocks() {
  std::vector<TopicBlock> blocks = {
      {"",
       "A file of labels has the words of what 'show' prints, as lines \"key = text\" in UTF-8; "
       "lines that begin with # say nothing. What it leaves out is as --lang has it. These are "
       "all keys, with their texts in English:"}};
  for (const auto& [key, text] : ReadLabels(LabelFiles().front().text)) {
    if (std::ranges::find(kLabelKeys, key, &LabelKey::key) != std::end(kLabelKeys))
      blocks.push_back({Utf8FromWide(key), Utf8FromWide(text)});
  }
  return blocks;
}

std::vector<TopicBlock> ExitStatusBlocks() {
  std::vector<TopicBlock> blocks;
  for (const ExitStatusRow& row : kExitStatuses)
    blocks.push_back({std::to_string(row.status), row.meaning});
  blocks.push_back(
      {"",
       "Several files go one by one: the first failure doesn't stop the others, and 1 weighs more "
       "than 3, which weighs more than 4."});
  return blocks;
}

}  // namespace

std::span<const TopicRow> Topics() { return kTopics; }

const TopicRow* FindTopic(std::string_view word) {
  const auto* found = std::ranges::find(kTopics, word, &TopicRow::word);
  return found == std::end(kTopics) ? nullptr : found;
}

std::vector<TopicBlock> BlocksOf(const TopicRow& topic) {
  const std::string_view word = topic.word;
  if (word == "exit-statuses") return ExitStatusBlocks();
  if (word == "labels") return LabelBlocks();
  if (word == "steps") return StepBlocks();
  const std::span<const Block> texts = word == "formats"   ? std::span<const Block>(kFormats)
                                       : word == "store"   ? std::span<const Block>(kStore)
                                       : word == "columns" ? std::span<const Block>(kColumns)
                                                           : std::span<const Block>(kEnvironment);
  std::vector<TopicBlock> blocks;
  for (const Block& block : texts) blocks.push_back({block.term, block.text});
  return blocks;
}

std::string TopicBody(const TopicRow& topic) {
  std::string text;
  Columns rows;
  const auto endRows = [&] {
    if (!rows.IsEmpty()) text.append("\n").append(rows.Text());
    rows = {};
  };
  for (const TopicBlock& block : BlocksOf(topic)) {
    if (!block.term.empty()) {
      rows.Add(block.term, block.text);
      continue;
    }
    endRows();
    text.append("\n").append(Wrapped(block.text, 0));
  }
  endRows();
  return text;
}

std::string TopicText(const TopicRow& topic) {
  return std::string(topic.summary) + ".\n" + TopicBody(topic);
}

}  // namespace pim::app
