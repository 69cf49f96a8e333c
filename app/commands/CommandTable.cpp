// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/CommandTable.h"

#include <algorithm>

#include "app/commands/HelpLayout.h"

namespace pim::app {
namespace {

constexpr NounRow kNouns[] = {
    {"contacts", Family::Contacts, RecordKind::Contacts, "contact", "Contacts, as vCard 2.1"},
    {"calendar", Family::Items, RecordKind::Calendar, "event", "Events, as vCalendar 1.0"},
    {"todo", Family::Items, RecordKind::Todo, "to-do", "To-dos, as vCalendar 1.0"},
    {"memo", Family::Items, RecordKind::Memo, "memo", "Memos, as vCalendar 1.0"},
    {"original", Family::Original, std::nullopt, "original", "Copies of imported files"},
    {"store", Family::Store, std::nullopt, "store", "The store and what belongs to it"},
};

constexpr Option kContactImport[] = {
    Option::Group,  Option::NoGroups,    Option::KeepDuplicates, Option::SkipDuplicates,
    Option::DryRun, Option::Json,        Option::Rejects,        Option::Report,
    Option::Force,  Option::NoOriginals, Option::Prepare,        Option::Steps};
constexpr Option kItemImport[] = {Option::KeepDuplicates, Option::SkipDuplicates, Option::DryRun,
                                  Option::Json,           Option::Rejects,        Option::Report,
                                  Option::Force,          Option::NoOriginals,    Option::Prepare,
                                  Option::Steps};
constexpr Option kContactExport[] = {Option::Group,  Option::NoName,     Option::Output,
                                     Option::Force,  Option::To,         Option::Split,
                                     Option::Groups, Option::CsvColumns, Option::Report};
constexpr Option kItemExport[] = {Option::All, Option::NoName, Option::Output, Option::Force,
                                  Option::To,  Option::Split,  Option::Report};
constexpr Option kContactAlbum[] = {Option::Group, Option::NoName, Option::Output, Option::Force};
constexpr Option kItemAlbum[] = {Option::NoName, Option::Output, Option::From, Option::To,
                                 Option::Force};
constexpr Option kFileAlbum[] = {Option::Output,  Option::As,    Option::From, Option::To,
                                 Option::Prepare, Option::Steps, Option::Force};
constexpr Option kConvert[] = {Option::To,         Option::Output,  Option::Split, Option::Groups,
                               Option::CsvColumns, Option::Prepare, Option::Steps, Option::Force,
                               Option::Report,     Option::Strict};
constexpr Option kPrepare[] = {Option::Output, Option::Steps, Option::Force, Option::Report,
                               Option::Strict};
constexpr Option kRedact[] = {Option::Output, Option::Force};
constexpr Option kCharsets[] = {Option::Json};
constexpr Option kContactList[] = {Option::Group, Option::NoName,    Option::Sort, Option::Fields,
                                   Option::Json,  Option::JsonLines, Option::Csv};
constexpr Option kItemList[] = {Option::NoName, Option::Sort,      Option::Fields,
                                Option::Json,   Option::JsonLines, Option::Csv};
constexpr Option kContactCount[] = {Option::Group, Option::NoName};
constexpr Option kItemCount[] = {Option::NoName};
constexpr Option kPreview[] = {Option::Labels};
constexpr Option kContactDelete[] = {Option::Group, Option::DryRun};
constexpr Option kItemDelete[] = {Option::DryRun};
constexpr Option kJson[] = {Option::Json};
constexpr Option kOfImport[] = {Option::Import};
constexpr Option kCopy[] = {Option::From, Option::To};
constexpr Option kTidy[] = {Option::Delete, Option::Json};
constexpr Option kUndo[] = {Option::DryRun, Option::Force, Option::Json};
constexpr Option kShowFile[] = {Option::All, Option::Labels};
constexpr Option kCheck[] = {Option::Json, Option::As};
constexpr Option kInspect[] = {Option::Json, Option::As, Option::Losses, Option::Strict};

constexpr const char* kWords =
    "WORDs choose the records that hold all of them in any text, whatever their letter case and "
    "accents.";
constexpr const char* kCounting =
    "WORDs choose as those of list do. Operands that are files (or -) are counted themselves; no "
    "store is looked at.";
constexpr const char* kContactExporting =
    "Nothing is replaced unless --force is given. WORDs choose as those of list do. With --to, all "
    "go into one file, whatever its name; --split makes one each in a folder.";
constexpr const char* kExporting =
    "Nothing is replaced unless --force is given. WORDs choose as those of list do.";

constexpr const char* kAlbum =
    "The page is one file that needs nothing else and asks no network for anything: records and "
    "pictures are in it. Its name ends in .html or .htm. WORDs choose as those of list do. Nothing "
    "is replaced unless --force is given, which takes any name too.";
constexpr const char* kItemAlbumText =
    "The page is one file that needs nothing else and asks no network for anything. 'pimvobj "
    "calendar album' has events, to-dos and memos; 'todo album' and 'memo album' have theirs "
    "alone. "
    "With --from or --to, memos and to-dos without a time are in, too. Its name ends in .html or "
    ".htm. WORDs choose as those of list do. Nothing is replaced unless --force is given, which "
    "takes any name too.";

constexpr CommandRow kCommands[] = {
    {Family::Contacts, Action::Import, "import", "PATH...", 1, kAnyNumber,
     "Read vCard files into the store", kContactImport,
     "pimvobj contacts import backup.vcf\n"
     "pimvobj contacts import phone/ --group Phone\n"
     "pimvobj contacts import backup.vcf --dry-run\n"
     "unzip -p backup.zip contacts.vcf | pimvobj contacts import -\n"
     "pimvobj contacts import damaged.vcf --rejects rejects.vcf",
     "A PATH is a file, a folder (its .vcf files, subfolders too) or - for standard input. A file "
     "goes in wholly or not at all, but for what --rejects puts aside. 'pimvobj undo' takes an "
     "import back."},
    {Family::Contacts, Action::Export, "export", "DIR|FILE.vcf|- [WORD...]", 0, kAnyNumber,
     "Write contacts as vCard: one file each into DIR, or all into one file", kContactExport,
     "pimvobj contacts export cards/\n"
     "pimvobj contacts export all.vcf\n"
     "pimvobj contacts export - --group Family > family.vcf\n"
     "pimvobj contacts export new.vcf --to vcard4",
     kContactExporting},
    {Family::Contacts, Action::Album, "album", "FILE.html|- [WORD...]", 0, kAnyNumber,
     "Write contacts as a page to look through in a browser", kContactAlbum,
     "pimvobj contacts album album.html\n"
     "pimvobj contacts album family.html --group Family --lang de",
     kAlbum},
    {Family::Contacts, Action::List, "list", "[WORD...]", 0, kAnyNumber, "List stored contacts",
     kContactList,
     "pimvobj contacts list müller berlin\n"
     "pimvobj contacts list --group Family --sort name\n"
     "pimvobj contacts list --fields name,mail --csv > mail.csv",
     kWords},
    {Family::Contacts, Action::Count, "count", "[WORD...|FILE...]", 0, kAnyNumber,
     "Count stored contacts, or those of files", kContactCount,
     "pimvobj contacts count\n"
     "pimvobj contacts count --no-name\n"
     "pimvobj contacts count old.vcf new.vcf",
     kCounting},
    {Family::Contacts, Action::ShowRecords, "show", "KEY...", 1, kAnyNumber,
     "Show stored contacts in a few lines", kPreview, "pimvobj contacts show 17", ""},
    {Family::Contacts, Action::Delete, "delete", "KEY...", 0, kAnyNumber,
     "Delete stored contacts, with pictures that no other one has", kContactDelete,
     "pimvobj contacts delete 17 18\n"
     "pimvobj contacts delete --group Phone --dry-run",
     ""},
    {Family::Items, Action::Import, "import", "PATH...", 1, kAnyNumber,
     "Read vCalendar files into the store", kItemImport,
     "pimvobj {noun} import calendar.vcs\n"
     "pimvobj {noun} import phone/",
     "A PATH is a file, a folder (its .vcs and .ics files, subfolders too) or - for standard "
     "input. A file goes in wholly or not at all, but for what --rejects puts aside. 'pimvobj "
     "undo' takes an import back."},
    {Family::Items, Action::Export, "export", "FILE|- [WORD...]", 0, kAnyNumber,
     "Write {one}s into one vCalendar file", kItemExport,
     "pimvobj {noun} export all.vcs\n"
     "pimvobj {noun} export - --all > everything.vcs\n"
     "pimvobj {noun} export all.ics --to icalendar",
     kExporting},
    {Family::Items, Action::Album, "album", "FILE.html|- [WORD...]", 0, kAnyNumber,
     "Write {one}s as a page to look through in a browser", kItemAlbum,
     "pimvobj {noun} album all.html\n"
     "pimvobj {noun} album 2010.html --from 2010 --to 2010",
     kItemAlbumText},
    {Family::Items, Action::List, "list", "[WORD...]", 0, kAnyNumber, "List stored {one}s",
     kItemList,
     "pimvobj {noun} list lunch\n"
     "pimvobj {noun} list --sort time\n"
     "pimvobj {noun} list --jsonl | jq .summary",
     kWords},
    {Family::Items, Action::Count, "count", "[WORD...|FILE...]", 0, kAnyNumber,
     "Count stored {one}s, or the items of files", kItemCount,
     "pimvobj {noun} count\n"
     "pimvobj {noun} count calendar.vcs",
     kCounting},
    {Family::Items, Action::ShowRecords, "show", "KEY...", 1, kAnyNumber,
     "Show stored {one}s in a few lines", kPreview, "pimvobj {noun} show 3", ""},
    {Family::Items, Action::Delete, "delete", "KEY...", 1, kAnyNumber, "Delete stored {one}s",
     kItemDelete, "pimvobj {noun} delete 3 4", ""},
    {Family::Original, Action::ListOriginals, "list", "", 0, 0,
     "List the files of all imports: their size, SHA-256, and whether a copy is kept", kJson,
     "pimvobj original list\n"
     "pimvobj original list --json | jq -r '.files[] | .sha256'",
     ""},
    {Family::Original, Action::ExportOriginals, "export", "DIR", 1, 1,
     "Write the kept files, byte for byte, into a folder", kOfImport,
     "pimvobj original export originals/\n"
     "pimvobj original export originals/ --import 3",
     "Each gets its own name, without what a file name may not hold. Nothing is replaced: where "
     "something has that name, a counter tells them apart."},
    {Family::Original,
     Action::ShowOriginal,
     "show",
     "contact|calendar|todo|memo KEY",
     2,
     2,
     "Show the lines of a file that a stored record came from",
     {},
     "pimvobj original show contact 17\n"
     "pimvobj original show todo 3 > lines.vcs",
     "A terminal gets each line behind its number, with control bytes made visible; a file or "
     "pipe gets the bytes alone, as they stand in the file."},
    {Family::Original, Action::DropOriginals, "drop", "", 0, 0,
     "Remove the kept copies; the history stays", kOfImport,
     "pimvobj original drop\n"
     "pimvobj original drop --import 3",
     "A copy that another import has read too, byte for byte, is gone for both."},
    {Family::Original,
     Action::OriginalsOn,
     "on",
     "",
     0,
     0,
     "Have imports keep a copy of each file, as they do at first",
     {},
     "pimvobj original on",
     ""},
    {Family::Original,
     Action::OriginalsOff,
     "off",
     "",
     0,
     0,
     "Have imports keep no copies from now on",
     {},
     "pimvobj original off",
     "Copies that are kept already stay; 'pimvobj original drop' removes them."},
    {Family::Store, Action::TidyStore, "tidy", "", 0, 0,
     "Name pictures that no contact of the store has, and remove them with --delete", kTidy,
     "pimvobj store tidy\n"
     "pimvobj store tidy --delete",
     "All stores of one user have the copies of their pictures in one folder, so that those of "
     "another store are named too. Removed ones are made again when their store needs them, "
     "unless an earlier version of this program was the last to open it: then they are lost."},
    {Family::Store, Action::CopyStore, "copy", "", 0, 0,
     "Copy all that a store holds into another one that is empty", kCopy,
     "pimvobj store copy --from my.db --to postgresql://ann@db.example.org/pim\n"
     "pimvobj store copy --from postgresql://ann@db.example.org/pim --to backup.db",
     "Records keep their keys, and groups, pictures, the history and the copies of imported files "
     "come along. The copy is there wholly or not at all."},
    {Family::Store,
     Action::PrintSchema,
     "schema",
     "",
     0,
     0,
     "Print the SQL that makes the tables of a store in a PostgreSQL server",
     {},
     "pimvobj store schema | psql -f - pim",
     "An import makes them by itself where it has the right to. No server is asked."},
    {Family::NoNoun, Action::History, "history", "", 0, 0,
     "Tell what was imported, and what was taken back", kJson,
     "pimvobj history\n"
     "pimvobj history --json | jq '.imports[-1].files'",
     "The last import stands last. An interrupted one holds what it had stored until then."},
    {Family::NoNoun, Action::Undo, "undo", "[N]", 0, 1,
     "Take an import back: the last one that stands, or that with the number N", kUndo,
     "pimvobj undo\n"
     "pimvobj undo 3 --dry-run\n"
     "pimvobj undo 3 --force",
     "The records that it brought go, with the groups that it made. What was changed since stays "
     "and is named, with exit status 1; --force takes that too. 'pimvobj history' tells the "
     "numbers."},
    {Family::NoNoun, Action::Check, "check", "FILE...", 1, kAnyNumber,
     "Tell what in files would not come back from an export", kCheck,
     "pimvobj check backup.vcf\n"
     "pimvobj check calendar.vcs --json | jq '.differences[].field'",
     "Each record is read, written and read again. Exit status 4 when one doesn't come back as it "
     "was. A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun, Action::FileAlbum, "album", "FILE...", 1, kAnyNumber,
     "Write what files hold as a page to look through in a browser", kFileAlbum,
     "pimvobj album old.vcf -o old.html\n"
     "pimvobj album phone/ -o phone.html --lang ja\n"
     "pimvobj album calendar.vcs -o 2010.html --from 2010 --to 2010",
     "The page is of contacts or of a calendar, as --as says, else as the first FILE is. Each "
     "record has its lines that aren't kept as they stand, with their numbers and why. A FILE may "
     "be a folder, whose .vcf or .vcs and .ics files are read, or - for standard input. What is of "
     "the other kind is left out and told. Times of a calendar without a zone are read as this "
     "machine's; --prepare puts them to UTC by the TZ of their own file. No store is touched."},
    {Family::NoNoun, Action::Convert, "convert", "FILE...", 1, kAnyNumber,
     "Write what files hold in a form of today's programs", kConvert,
     "pimvobj convert old.vcf --to vcard4 -o new.vcf\n"
     "pimvobj convert old.vcs --to icalendar > new.ics\n"
     "pimvobj convert phone/*.vcf --to csv -o contacts.csv",
     "All records of the FILEs become one text. What the form can't hold is told on standard "
     "error. "
     "A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun, Action::Prepare, "prepare", "FILE", 1, 1,
     "Write a broken or modern file as one that is read well", kPrepare,
     "pimvobj prepare new.vcf | pimvobj contacts import -\n"
     "pimvobj prepare mac.vcf --steps line-ends -o mended.vcf",
     "A text that needs nothing comes out byte for byte. Each thing that is done is told on "
     "standard "
     "error with its line. 'pimvobj help steps' tells what the steps do. FILE may be - for "
     "standard "
     "input."},
    {Family::NoNoun, Action::TellCharsets, "charsets", "FILE...", 1, kAnyNumber,
     "Show the lines that are no text in their charset as they would be in others", kCharsets,
     "pimvobj charsets old.vcf",
     "The likeliest charset stands first, with the option that reads the file in it; nothing is "
     "decided. A FILE may be - for standard input."},
    {Family::NoNoun, Action::Redact, "redact", "FILE", 1, 1,
     "Write a file without what is private in it, to show it to others", kRedact,
     "pimvobj redact failing.vcf -o shown.vcf",
     "Letters and digits of values become other ones, of the same kind and length; names, "
     "parameters, line ends and damaged bytes stay, so that it fails as the file does. FILE may be "
     "- "
     "for standard input."},
    {Family::NoNoun, Action::Inspect, "inspect", "FILE...", 1, kAnyNumber,
     "Show what files hold, record by record", kInspect,
     "pimvobj inspect backup.vcf\n"
     "pimvobj inspect backup.vcf --json | jq '.contacts[0]'\n"
     "pimvobj inspect backup.vcf --losses",
     "A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun, Action::ShowFile, "show", "FILE...", 1, kAnyNumber,
     "Show the first record of a file in a few lines", kShowFile,
     "pimvobj show card.vcf\n"
     "pimvobj show --all calendar.vcs --lang ja",
     "A FILE may be - for standard input. No store is touched."},
    {Family::NoNoun,
     Action::TellHelp,
     "help",
     "[COMMAND...|TOPIC]",
     0,
     2,
     "Tell more of a command, or of a topic",
     {},
     "pimvobj help contacts import\n"
     "pimvobj help exit-statuses",
     "Without operands it tells all commands and topics."},
};

}  // namespace

std::span<const NounRow> Nouns() { return kNouns; }
std::span<const CommandRow> Commands() { return kCommands; }

const NounRow& NounOf(RecordKind kind) { return *std::ranges::find(kNouns, kind, &NounRow::kind); }

std::string Filled(std::string_view text, const NounRow& noun) {
  std::string filled(text);
  ReplaceAll(filled, "{noun}", noun.word);
  ReplaceAll(filled, "{one}", noun.one);
  return filled;
}

}  // namespace pim::app
