# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Completion of pimvobj for fish, made by pim_manual from the program's table of commands.

# The option that the word is, which may be cut short where that leaves one alone.
function __pimvobj_full
    set -l known --all --as --code-page --csv --csv-columns --delete -n --dry-run --fields -f --force --from --group --groups -h --help --import --json --jsonl --keep-duplicates --labels --lang --losses --no-groups --no-name --no-originals -o --output --prepare -q --quiet --rejects --report --skip-duplicates --sort --split --steps --store --strict --to --to-the-letter -V --version
    set -l begun (string match -- $argv[1]'*' $known)
    if contains -- $argv[1] $known
        echo $argv[1]
    else if string match -q -- '--*' $argv[1]; and test (count $begun) = 1
        echo $begun
    else
        echo none
    end
end

# The words $argv, joined by commas to those that the value begins with, whether in quotes or not.
function __pimvobj_list
    set -l value (commandline -ct | string replace -r -- '^(--[^=]*=)?["\']?' '')
    set -l ahead (string match -r -- '^.*,' $value)
    printf '%s\n' "$ahead"$argv
end

# The words ahead of the cursor, without options and their values.
function __pimvobj_words
    set -l option
    set -l ended
    for word in (commandline -opc)[2..]
        if set -q option[1]
            set -e option
        else if set -q ended[1]; or not string match -q -- '-?*' $word
            printf '%s\n' $word
        else if test $word = --
            set ended 1
        else if contains -- (__pimvobj_full $word) --as --code-page --csv-columns --fields --from --group --import --labels --lang -o --output --rejects --report --sort --steps --store --to
            set option $word
        end
    end
end

# Whether these words are one of the places $argv[2..], and $argv[1] is "first" only where nothing
# stands behind them yet.
function __pimvobj_at
    set -l words (__pimvobj_words)
    set -l place "$words[1]"
    set -l behind (math (count $words) - 1)
    if test (count $words) -gt 1; and contains -- $place help contacts calendar todo memo original store
        set place "$words[1..2]"
        set behind (math $behind - 1)
    end
    contains -- $place $argv[2..]; and test $argv[1] = any -o $behind -le 0
end

complete -c pimvobj -f
complete -c pimvobj -l store -r -F -d 'The store: a file, or a PostgreSQL server\'s URL (default: $PIMVOBJ_STORE, else pimvobj/pim.db in the application-data folder)'
complete -c pimvobj -l code-page -x -a 'UTF-8 CP1250 CP1251 CP1252 CP1253 CP1254 ISO-8859-1 ISO-8859-15 KOI8-R Shift_JIS EUC-JP EUC-KR BIG5 GBK' -d 'Charset of texts that name none, such as CP1252 (default: UTF-8)'
complete -c pimvobj -l lang -x -a 'en de fr es ja ko' -d 'Language of labels and titles: en, de, fr, es, ja or ko (default: the locale\'s)'
complete -c pimvobj -s q -l quiet -d 'Show no progress'
complete -c pimvobj -l to-the-letter -d 'Write blanks at the head of a line and line breaks in numbers as they stand, though readers lose them'
complete -c pimvobj -s h -l help -d 'Print help of the command'
complete -c pimvobj -s V -l version -d 'Print the program\'s version'
complete -c pimvobj -n '__pimvobj_at first ""' -a contacts -d 'Contacts, as vCard 2.1'
complete -c pimvobj -n '__pimvobj_at first ""' -a calendar -d 'Events, as vCalendar 1.0'
complete -c pimvobj -n '__pimvobj_at first ""' -a todo -d 'To-dos, as vCalendar 1.0'
complete -c pimvobj -n '__pimvobj_at first ""' -a memo -d 'Memos, as vCalendar 1.0'
complete -c pimvobj -n '__pimvobj_at first ""' -a original -d 'Copies of imported files'
complete -c pimvobj -n '__pimvobj_at first ""' -a store -d 'The store and what belongs to it'
complete -c pimvobj -n '__pimvobj_at first ""' -a history -d 'Tell what was imported, and what was taken back'
complete -c pimvobj -n '__pimvobj_at first ""' -a undo -d 'Take an import back: the last one that stands, or that with the number N'
complete -c pimvobj -n '__pimvobj_at first ""' -a check -d 'Tell what in files would not come back from an export'
complete -c pimvobj -n '__pimvobj_at first ""' -a album -d 'Write what files hold as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first ""' -a convert -d 'Write what files hold in a form of today\'s programs'
complete -c pimvobj -n '__pimvobj_at first ""' -a prepare -d 'Write a broken or modern file as one that is read well'
complete -c pimvobj -n '__pimvobj_at first ""' -a charsets -d 'Show the lines that are no text in their charset as they would be in others'
complete -c pimvobj -n '__pimvobj_at first ""' -a redact -d 'Write a file without what is private in it, to show it to others'
complete -c pimvobj -n '__pimvobj_at first ""' -a inspect -d 'Show what files hold, record by record'
complete -c pimvobj -n '__pimvobj_at first ""' -a show -d 'Show the first record of a file in a few lines'
complete -c pimvobj -n '__pimvobj_at first ""' -a help -d 'Tell more of a command, or of a topic'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a import -d 'Read vCard files into the store'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a export -d 'Write contacts as vCard: one file each into DIR, or all into one file'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a album -d 'Write contacts as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a list -d 'List stored contacts'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a count -d 'Count stored contacts, or those of files'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a show -d 'Show stored contacts in a few lines'
complete -c pimvobj -n '__pimvobj_at first "contacts"' -a delete -d 'Delete stored contacts, with pictures that no other one has'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a import -d 'Read vCard files into the store'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a export -d 'Write contacts as vCard: one file each into DIR, or all into one file'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a album -d 'Write contacts as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a list -d 'List stored contacts'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a count -d 'Count stored contacts, or those of files'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a show -d 'Show stored contacts in a few lines'
complete -c pimvobj -n '__pimvobj_at first "help contacts"' -a delete -d 'Delete stored contacts, with pictures that no other one has'
complete -c pimvobj -n '__pimvobj_at any "contacts import"' -a '(__fish_complete_suffix .vcf)'
complete -c pimvobj -n '__pimvobj_at first "contacts export"' -a '(__fish_complete_suffix .vcf)'
complete -c pimvobj -n '__pimvobj_at first "contacts album"' -a '(__fish_complete_suffix .html)'
complete -c pimvobj -n '__pimvobj_at any "contacts count"' -a '(__fish_complete_suffix .vcf)'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a import -d 'Read vCalendar files into the store'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a export -d 'Write events into one vCalendar file'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a album -d 'Write events as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a list -d 'List stored events'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a count -d 'Count stored events, or the items of files'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a show -d 'Show stored events in a few lines'
complete -c pimvobj -n '__pimvobj_at first "calendar"' -a delete -d 'Delete stored events'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a import -d 'Read vCalendar files into the store'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a export -d 'Write events into one vCalendar file'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a album -d 'Write events as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a list -d 'List stored events'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a count -d 'Count stored events, or the items of files'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a show -d 'Show stored events in a few lines'
complete -c pimvobj -n '__pimvobj_at first "help calendar"' -a delete -d 'Delete stored events'
complete -c pimvobj -n '__pimvobj_at any "calendar import"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "calendar export"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "calendar album"' -a '(__fish_complete_suffix .html)'
complete -c pimvobj -n '__pimvobj_at any "calendar count"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a import -d 'Read vCalendar files into the store'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a export -d 'Write to-dos into one vCalendar file'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a album -d 'Write to-dos as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a list -d 'List stored to-dos'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a count -d 'Count stored to-dos, or the items of files'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a show -d 'Show stored to-dos in a few lines'
complete -c pimvobj -n '__pimvobj_at first "todo"' -a delete -d 'Delete stored to-dos'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a import -d 'Read vCalendar files into the store'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a export -d 'Write to-dos into one vCalendar file'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a album -d 'Write to-dos as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a list -d 'List stored to-dos'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a count -d 'Count stored to-dos, or the items of files'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a show -d 'Show stored to-dos in a few lines'
complete -c pimvobj -n '__pimvobj_at first "help todo"' -a delete -d 'Delete stored to-dos'
complete -c pimvobj -n '__pimvobj_at any "todo import"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "todo export"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "todo album"' -a '(__fish_complete_suffix .html)'
complete -c pimvobj -n '__pimvobj_at any "todo count"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a import -d 'Read vCalendar files into the store'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a export -d 'Write memos into one vCalendar file'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a album -d 'Write memos as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a list -d 'List stored memos'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a count -d 'Count stored memos, or the items of files'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a show -d 'Show stored memos in a few lines'
complete -c pimvobj -n '__pimvobj_at first "memo"' -a delete -d 'Delete stored memos'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a import -d 'Read vCalendar files into the store'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a export -d 'Write memos into one vCalendar file'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a album -d 'Write memos as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a list -d 'List stored memos'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a count -d 'Count stored memos, or the items of files'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a show -d 'Show stored memos in a few lines'
complete -c pimvobj -n '__pimvobj_at first "help memo"' -a delete -d 'Delete stored memos'
complete -c pimvobj -n '__pimvobj_at any "memo import"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "memo export"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "memo album"' -a '(__fish_complete_suffix .html)'
complete -c pimvobj -n '__pimvobj_at any "memo count"' -a '(__fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "original"' -a list -d 'List the files of all imports: their size, SHA-256, and whether a copy is kept'
complete -c pimvobj -n '__pimvobj_at first "original"' -a export -d 'Write the kept files, byte for byte, into a folder'
complete -c pimvobj -n '__pimvobj_at first "original"' -a show -d 'Show the lines of a file that a stored record came from'
complete -c pimvobj -n '__pimvobj_at first "original"' -a drop -d 'Remove the kept copies; the history stays'
complete -c pimvobj -n '__pimvobj_at first "original"' -a on -d 'Have imports keep a copy of each file, as they do at first'
complete -c pimvobj -n '__pimvobj_at first "original"' -a off -d 'Have imports keep no copies from now on'
complete -c pimvobj -n '__pimvobj_at first "help original"' -a list -d 'List the files of all imports: their size, SHA-256, and whether a copy is kept'
complete -c pimvobj -n '__pimvobj_at first "help original"' -a export -d 'Write the kept files, byte for byte, into a folder'
complete -c pimvobj -n '__pimvobj_at first "help original"' -a show -d 'Show the lines of a file that a stored record came from'
complete -c pimvobj -n '__pimvobj_at first "help original"' -a drop -d 'Remove the kept copies; the history stays'
complete -c pimvobj -n '__pimvobj_at first "help original"' -a on -d 'Have imports keep a copy of each file, as they do at first'
complete -c pimvobj -n '__pimvobj_at first "help original"' -a off -d 'Have imports keep no copies from now on'
complete -c pimvobj -n '__pimvobj_at first "original export"' -a '(__fish_complete_directories)'
complete -c pimvobj -n '__pimvobj_at first "original show"' -a contact -d 'A record\'s kind'
complete -c pimvobj -n '__pimvobj_at first "original show"' -a calendar -d 'A record\'s kind'
complete -c pimvobj -n '__pimvobj_at first "original show"' -a todo -d 'A record\'s kind'
complete -c pimvobj -n '__pimvobj_at first "original show"' -a memo -d 'A record\'s kind'
complete -c pimvobj -n '__pimvobj_at first "store"' -a tidy -d 'Name pictures that no contact of the store has, and remove them with --delete'
complete -c pimvobj -n '__pimvobj_at first "store"' -a copy -d 'Copy all that a store holds into another one that is empty'
complete -c pimvobj -n '__pimvobj_at first "store"' -a schema -d 'Print the SQL that makes the tables of a store in a PostgreSQL server'
complete -c pimvobj -n '__pimvobj_at first "help store"' -a tidy -d 'Name pictures that no contact of the store has, and remove them with --delete'
complete -c pimvobj -n '__pimvobj_at first "help store"' -a copy -d 'Copy all that a store holds into another one that is empty'
complete -c pimvobj -n '__pimvobj_at first "help store"' -a schema -d 'Print the SQL that makes the tables of a store in a PostgreSQL server'
complete -c pimvobj -n '__pimvobj_at any "check"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at any "album"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at any "convert"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "prepare"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at any "charsets"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "redact"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at any "inspect"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at any "show"' -a '(__fish_complete_suffix .vcf; __fish_complete_suffix .vcs; __fish_complete_suffix .ics)'
complete -c pimvobj -n '__pimvobj_at first "help"' -a contacts -d 'Contacts, as vCard 2.1'
complete -c pimvobj -n '__pimvobj_at first "help"' -a calendar -d 'Events, as vCalendar 1.0'
complete -c pimvobj -n '__pimvobj_at first "help"' -a todo -d 'To-dos, as vCalendar 1.0'
complete -c pimvobj -n '__pimvobj_at first "help"' -a memo -d 'Memos, as vCalendar 1.0'
complete -c pimvobj -n '__pimvobj_at first "help"' -a original -d 'Copies of imported files'
complete -c pimvobj -n '__pimvobj_at first "help"' -a store -d 'The store and what belongs to it'
complete -c pimvobj -n '__pimvobj_at first "help"' -a history -d 'Tell what was imported, and what was taken back'
complete -c pimvobj -n '__pimvobj_at first "help"' -a undo -d 'Take an import back: the last one that stands, or that with the number N'
complete -c pimvobj -n '__pimvobj_at first "help"' -a check -d 'Tell what in files would not come back from an export'
complete -c pimvobj -n '__pimvobj_at first "help"' -a album -d 'Write what files hold as a page to look through in a browser'
complete -c pimvobj -n '__pimvobj_at first "help"' -a convert -d 'Write what files hold in a form of today\'s programs'
complete -c pimvobj -n '__pimvobj_at first "help"' -a prepare -d 'Write a broken or modern file as one that is read well'
complete -c pimvobj -n '__pimvobj_at first "help"' -a charsets -d 'Show the lines that are no text in their charset as they would be in others'
complete -c pimvobj -n '__pimvobj_at first "help"' -a redact -d 'Write a file without what is private in it, to show it to others'
complete -c pimvobj -n '__pimvobj_at first "help"' -a inspect -d 'Show what files hold, record by record'
complete -c pimvobj -n '__pimvobj_at first "help"' -a show -d 'Show the first record of a file in a few lines'
complete -c pimvobj -n '__pimvobj_at first "help"' -a help -d 'Tell more of a command, or of a topic'
complete -c pimvobj -n '__pimvobj_at first "help"' -a formats -d 'The files that are read and written'
complete -c pimvobj -n '__pimvobj_at first "help"' -a environment -d 'The variables that are looked at'
complete -c pimvobj -n '__pimvobj_at first "help"' -a labels -d 'What --labels takes'
complete -c pimvobj -n '__pimvobj_at first "help"' -a exit-statuses -d 'What commands end with'
complete -c pimvobj -n '__pimvobj_at first "help"' -a steps -d 'What \'pimvobj prepare\' does'
complete -c pimvobj -n '__pimvobj_at first "help"' -a columns -d 'What --csv-columns takes'
complete -c pimvobj -n '__pimvobj_at any "contacts import"' -l group -x -d 'Put all of them into this group, not into the file\'s own; not with --no-groups'
complete -c pimvobj -n '__pimvobj_at any "contacts import"' -l no-groups -d 'Leave the cards\' group names out; not with --group'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -l keep-duplicates -d 'Store also what equals a stored record (default: it is left out); not with --skip-duplicates'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -l skip-duplicates -d 'Leave out what equals a stored record, as is done without it; not with --keep-duplicates'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -s n -l dry-run -d 'Tell what would be done, and do nothing; not with --report'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -l json -d 'With --dry-run: print one JSON object'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -l rejects -r -F -d 'Put records that are rejected into this file, and take the others'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -l report -r -F -d 'Write into this file what became of each line, as JSON, one text a line; not with --dry-run'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -s f -l force -d 'Replace the files of --rejects and --report'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import"' -l no-originals -d 'Keep no copy of the files\' bytes'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import" "album" "convert"' -l prepare -d 'Take broken or modern files as \'pimvobj prepare\' mends them'
complete -c pimvobj -n '__pimvobj_at any "contacts import" "calendar import" "todo import" "memo import" "album" "convert" "prepare"' -l steps -x -a '(__pimvobj_list unicode nul line-ends joined missing-end base64 charsets prefixes types vcard icalendar alarms times)' -d 'These alone: unicode, nul, line-ends, joined, missing-end, base64, charsets, prefixes, types, vcard, icalendar, alarms or times (default: all)'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "contacts album" "contacts list" "contacts count" "contacts delete"' -l group -x -d 'Those in this group'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "contacts album" "contacts list" "contacts count"' -l no-name -d 'Those that have no name'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "contacts album" "calendar export" "calendar album" "todo export" "todo album" "memo export" "memo album" "album" "convert" "prepare" "redact"' -s o -l output -r -F -d 'Write into this file (- for standard output)'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "prepare" "redact"' -s f -l force -d 'Replace a file, or add to a folder that isn\'t empty'
complete -c pimvobj -n '__pimvobj_at any "contacts export"' -l to -x -a 'vcard4 vcard3 jcard csv' -d 'Write vcard4, vcard3, jcard or csv, not the old form'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "convert"' -l split -d 'With -o DIR: one file for each record; not with --groups'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "convert"' -l groups -d 'With --to vcard4, vcard3 or jcard: write each group too, with its members; not with --split'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "convert"' -l csv-columns -r -F -d 'With --to csv: its columns, as lines "name = field"; \'pimvobj help columns\' tells more'
complete -c pimvobj -n '__pimvobj_at any "contacts export" "calendar export" "todo export" "memo export"' -l report -r -F -d 'With --to: write into this file what the form can\'t hold'
complete -c pimvobj -n '__pimvobj_at any "contacts album" "calendar export" "calendar album" "todo export" "todo album" "memo export" "memo album" "album"' -s f -l force -d 'Replace a file'
complete -c pimvobj -n '__pimvobj_at any "contacts list"' -l sort -x -a 'name key' -d 'By name or key (default: key)'
complete -c pimvobj -n '__pimvobj_at any "contacts list"' -l fields -x -a '(__pimvobj_list key name full-name family-name given-name additional-name prefix suffix phonetic-name nickname number mail messenger url address organisation unit title role birthday anniversary event-day blood-type hobby picture note groups favourite created modified help)' -d 'Which fields, in this order; "help" names them; not with --json or --jsonl'
complete -c pimvobj -n '__pimvobj_at any "contacts list" "calendar list" "todo list" "memo list"' -l json -d 'Print all there is as one JSON object; not with --csv, --jsonl or --fields'
complete -c pimvobj -n '__pimvobj_at any "contacts list" "calendar list" "todo list" "memo list"' -l jsonl -d 'Print whole records as JSON, one a line; not with --json, --csv or --fields'
complete -c pimvobj -n '__pimvobj_at any "contacts list" "calendar list" "todo list" "memo list"' -l csv -d 'Print comma-separated values (RFC 4180); not with --json or --jsonl'
complete -c pimvobj -n '__pimvobj_at any "contacts show" "calendar show" "todo show" "memo show" "show"' -l labels -r -F -d 'Labels of your own, as lines "key = text"; \'pimvobj help labels\' tells the keys'
complete -c pimvobj -n '__pimvobj_at any "contacts delete" "calendar delete" "todo delete" "memo delete" "undo"' -s n -l dry-run -d 'Tell what would be done, and do nothing'
complete -c pimvobj -n '__pimvobj_at any "calendar export" "todo export" "memo export"' -l all -d 'All three kinds'
complete -c pimvobj -n '__pimvobj_at any "calendar export" "calendar album" "calendar list" "calendar count" "todo export" "todo album" "todo list" "todo count" "memo export" "memo album" "memo list" "memo count"' -l no-name -d 'Those that have neither summary nor description'
complete -c pimvobj -n '__pimvobj_at any "calendar export" "todo export" "memo export"' -l to -x -a 'icalendar' -d 'Write icalendar, not the old form'
complete -c pimvobj -n '__pimvobj_at any "calendar export" "todo export" "memo export"' -l split -d 'With -o DIR: one file for each record'
complete -c pimvobj -n '__pimvobj_at any "calendar album" "todo album" "memo album" "album"' -l from -x -d 'Of a calendar: what reaches into the days from this one on, such as 2010-03-01, 2010-03 or 2010'
complete -c pimvobj -n '__pimvobj_at any "calendar album" "todo album" "memo album" "album"' -l to -x -d 'Of a calendar: what reaches into the days up to this one, to which repeats are followed (default: for two years from today, or from where they begin)'
complete -c pimvobj -n '__pimvobj_at any "calendar list" "todo list" "memo list"' -l sort -x -a 'name key time' -d 'By name, key or time (default: key)'
complete -c pimvobj -n '__pimvobj_at any "calendar list" "todo list" "memo list"' -l fields -x -a '(__pimvobj_list key subject summary description location start end all-day due completed alarm repeats exceptions category class priority status colour holiday created modified help)' -d 'Which fields, in this order; "help" names them; not with --json or --jsonl'
complete -c pimvobj -n '__pimvobj_at any "original list" "store tidy" "history" "undo"' -l json -d 'Print all there is as one JSON object'
complete -c pimvobj -n '__pimvobj_at any "original export" "original drop"' -l import -x -d 'Those of that import alone, by its number in the history'
complete -c pimvobj -n '__pimvobj_at any "store tidy"' -l delete -d 'Remove them'
complete -c pimvobj -n '__pimvobj_at any "store copy"' -l from -r -F -d 'The store to copy'
complete -c pimvobj -n '__pimvobj_at any "store copy"' -l to -r -F -d 'Where the copy goes: a store without any records, or a new one'
complete -c pimvobj -n '__pimvobj_at any "undo"' -s f -l force -d 'Take what was changed since, too'
complete -c pimvobj -n '__pimvobj_at any "check" "charsets" "inspect"' -l json -d 'Print one JSON object for each FILE'
complete -c pimvobj -n '__pimvobj_at any "check" "album" "inspect"' -l as -x -a 'vcard vcalendar' -d 'Read it as vcard or vcalendar, whatever it looks like'
complete -c pimvobj -n '__pimvobj_at any "convert"' -l to -x -a 'vcard4 vcard3 jcard csv icalendar' -d 'Write vcard4, vcard3, jcard, csv or icalendar'
complete -c pimvobj -n '__pimvobj_at any "convert"' -s f -l force -d 'Replace files'
complete -c pimvobj -n '__pimvobj_at any "convert"' -l report -r -F -d 'Write into this file what the form can\'t hold, as JSON'
complete -c pimvobj -n '__pimvobj_at any "convert"' -l strict -d 'Exit status 4 when there is something that it can\'t'
complete -c pimvobj -n '__pimvobj_at any "prepare"' -l report -r -F -d 'Write into this file what can\'t be carried, as JSON'
complete -c pimvobj -n '__pimvobj_at any "prepare"' -l strict -d 'Exit status 4 when something can\'t be carried'
complete -c pimvobj -n '__pimvobj_at any "inspect"' -l losses -d 'Tell each line that isn\'t kept, or not as it is'
complete -c pimvobj -n '__pimvobj_at any "inspect"' -l strict -d 'With --losses: exit status 4 when there are any'
complete -c pimvobj -n '__pimvobj_at any "show"' -l all -d 'All of them, not only the first'
