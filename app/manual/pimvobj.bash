# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Completion of pimvobj for bash, made by pim_manual from the program's table of commands. Needs
# nothing else: it may be sourced, or be found by its place.

# What may stand behind the words $1 of the line: `options`, and `first` and `rest` for the operands:
# words, or @ and the endings of files, or / for folders.
_pimvobj_place() {
  options='--store --code-page --lang -q --quiet --to-the-letter -h --help -V --version' first='' rest=''
  case $1 in
    '') first='contacts calendar todo memo original store history undo check album convert prepare charsets redact inspect show help' ;;
    'contacts') first='import export album list count show delete' ;;
    'help contacts') first='import export album list count show delete' ;;
    'contacts import') options+=' --group --no-groups --keep-duplicates --skip-duplicates -n --dry-run --json --rejects --report -f --force --no-originals --prepare --steps' first='@vcf' rest=$first ;;
    'contacts export') options+=' --group --no-name -o --output -f --force --to --split --groups --csv-columns --report' first='@vcf' ;;
    'contacts album') options+=' --group --no-name -o --output -f --force' first='@html' ;;
    'contacts list') options+=' --group --no-name --sort --fields --json --jsonl --csv' ;;
    'contacts count') options+=' --group --no-name' first='@vcf' rest=$first ;;
    'contacts show') options+=' --labels' ;;
    'contacts delete') options+=' --group -n --dry-run' ;;
    'calendar') first='import export album list count show delete' ;;
    'help calendar') first='import export album list count show delete' ;;
    'calendar import') options+=' --keep-duplicates --skip-duplicates -n --dry-run --json --rejects --report -f --force --no-originals --prepare --steps' first='@vcs ics' rest=$first ;;
    'calendar export') options+=' --all --no-name -o --output -f --force --to --split --report' first='@vcs ics' ;;
    'calendar album') options+=' --no-name -o --output --from --to -f --force' first='@html' ;;
    'calendar list') options+=' --no-name --sort --fields --json --jsonl --csv' ;;
    'calendar count') options+=' --no-name' first='@vcs ics' rest=$first ;;
    'calendar show') options+=' --labels' ;;
    'calendar delete') options+=' -n --dry-run' ;;
    'todo') first='import export album list count show delete' ;;
    'help todo') first='import export album list count show delete' ;;
    'todo import') options+=' --keep-duplicates --skip-duplicates -n --dry-run --json --rejects --report -f --force --no-originals --prepare --steps' first='@vcs ics' rest=$first ;;
    'todo export') options+=' --all --no-name -o --output -f --force --to --split --report' first='@vcs ics' ;;
    'todo album') options+=' --no-name -o --output --from --to -f --force' first='@html' ;;
    'todo list') options+=' --no-name --sort --fields --json --jsonl --csv' ;;
    'todo count') options+=' --no-name' first='@vcs ics' rest=$first ;;
    'todo show') options+=' --labels' ;;
    'todo delete') options+=' -n --dry-run' ;;
    'memo') first='import export album list count show delete' ;;
    'help memo') first='import export album list count show delete' ;;
    'memo import') options+=' --keep-duplicates --skip-duplicates -n --dry-run --json --rejects --report -f --force --no-originals --prepare --steps' first='@vcs ics' rest=$first ;;
    'memo export') options+=' --all --no-name -o --output -f --force --to --split --report' first='@vcs ics' ;;
    'memo album') options+=' --no-name -o --output --from --to -f --force' first='@html' ;;
    'memo list') options+=' --no-name --sort --fields --json --jsonl --csv' ;;
    'memo count') options+=' --no-name' first='@vcs ics' rest=$first ;;
    'memo show') options+=' --labels' ;;
    'memo delete') options+=' -n --dry-run' ;;
    'original') first='list export show drop on off' ;;
    'help original') first='list export show drop on off' ;;
    'original list') options+=' --json' ;;
    'original export') options+=' --import' first='/' ;;
    'original show') first='contact calendar todo memo' ;;
    'original drop') options+=' --import' ;;
    'original on') ;;
    'original off') ;;
    'store') first='tidy copy schema' ;;
    'help store') first='tidy copy schema' ;;
    'store tidy') options+=' --delete --json' ;;
    'store copy') options+=' --from --to' ;;
    'store schema') ;;
    'history') options+=' --json' ;;
    'undo') options+=' -n --dry-run -f --force --json' ;;
    'check') options+=' --json --as' first='@vcf vcs ics' rest=$first ;;
    'album') options+=' -o --output --as --from --to --prepare --steps -f --force' first='@vcf vcs ics' rest=$first ;;
    'convert') options+=' --to -o --output --split --groups --csv-columns --prepare --steps -f --force --report --strict' first='@vcf vcs ics' rest=$first ;;
    'prepare') options+=' -o --output --steps -f --force --report --strict' first='@vcf vcs ics' ;;
    'charsets') options+=' --json' first='@vcf vcs ics' rest=$first ;;
    'redact') options+=' -o --output -f --force' first='@vcf vcs ics' ;;
    'inspect') options+=' --json --as --losses --strict' first='@vcf vcs ics' rest=$first ;;
    'show') options+=' --all --labels' first='@vcf vcs ics' rest=$first ;;
    'help') first='contacts calendar todo memo original store history undo check album convert prepare charsets redact inspect show help formats environment labels exit-statuses steps columns' ;;
  esac
}

# The `values` of the option $1 when the line begins with the words $2, each with a blank behind it:
# words, ahead of which a comma says that several may be joined by commas, or @ for files.
_pimvobj_values() {
  values=''
  case "$1 $2" in
    '--as '*) values='vcard vcalendar' ;;
    '--code-page '*) values='UTF-8 CP1250 CP1251 CP1252 CP1253 CP1254 ISO-8859-1 ISO-8859-15 KOI8-R Shift_JIS EUC-JP EUC-KR BIG5 GBK' ;;
    '--csv-columns '*) values='@' ;;
    '--fields ''contacts '*) values=',key name full-name family-name given-name additional-name prefix suffix phonetic-name nickname number mail messenger url address organisation unit title role birthday anniversary event-day blood-type hobby picture note groups favourite created modified help' ;;
    '--fields '*) values=',key subject summary description location start end all-day due completed alarm repeats exceptions category class priority status colour holiday created modified help' ;;
    '--from '*' ''album '*) values='' ;;
    '--from ''album '*) values='' ;;
    '--from '*) values='@' ;;
    '--labels '*) values='@' ;;
    '--lang '*) values='en de fr es ja ko' ;;
    '-o '* | '--output '*) values='@' ;;
    '--rejects '*) values='@' ;;
    '--report '*) values='@' ;;
    '--sort ''contacts '*) values='name key' ;;
    '--sort '*) values='name key time' ;;
    '--steps '*) values=',unicode nul line-ends joined missing-end base64 charsets prefixes types vcard icalendar alarms times' ;;
    '--store '*) values='@' ;;
    '--to '*' ''album '*) values='' ;;
    '--to '*' ''copy '*) values='@' ;;
    '--to ''album '*) values='' ;;
    '--to ''convert '*) values='vcard4 vcard3 jcard csv icalendar' ;;
    '--to ''contacts '*) values='vcard4 vcard3 jcard csv' ;;
    '--to '*) values='icalendar' ;;
  esac
}

_pimvobj_offer_files() {
  local file ending endings=$1
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(
    compgen -d -- "$cur"
    compgen -f -- "$cur" | while IFS= read -r file; do
      ending=${file##*.}
      [[ -z $endings || " $endings " == *" ${ending,,} "* ]] && printf '%s\n' "$file"
    done
  )
  # Where none has such an ending, one that has another is meant.
  [[ ${#COMPREPLY[@]} -gt 0 ]] || mapfile -t COMPREPLY < <(compgen -f -- "$cur")
}

_pimvobj_offer_list() {
  local word ahead='' words=()
  [[ $cur == *,* ]] && ahead=${cur%,*},
  for word in $1; do
    [[ ",$ahead" == *",$word,"* ]] || words+=("$ahead$word")
  done
  compopt -o nospace 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -W "${words[*]}" -- "$cur")
}

_pimvobj_offer() {
  case $1 in
    @*) _pimvobj_offer_files "${1#@}" ;;
    /) compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$cur") ;;
    ,*) _pimvobj_offer_list "${1#,}" ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur") ;;
  esac
}

# The words of the line up to the cursor into `line`, and into `ahead` what the last one has ahead of
# the part that bash completes: bash parts words at colons, too.
_pimvobj_join() {
  local left=$COMP_LINE word blanks last=''
  line=() ahead=''
  for word in "${COMP_WORDS[@]:0:COMP_CWORD+1}"; do
    blanks=${left%%[![:space:]]*}
    left=${left#"$blanks"}
    left=${left#"$word"}
    if [[ ${#line[@]} -gt 0 && ! $blanks && ($word == :* || $last == *:) ]]; then
      line[-1]+=$word
      ahead=${line[-1]%"${word#:}"}
    else
      line+=("$word")
      ahead=''
    fi
    last=$word
  done
}

# The option of the line that $1 is, which may be cut short, into `full`.
_pimvobj_full() {
  local known
  full=''
  for known in --all --as --code-page --csv --csv-columns --delete -n --dry-run --fields -f --force --from --group --groups -h --help --import --json --jsonl --keep-duplicates --labels --lang --losses --no-groups --no-name --no-originals -o --output --prepare -q --quiet --rejects --report --skip-duplicates --sort --split --steps --store --strict --to --to-the-letter -V --version; do
    [[ $known == "$1" ]] && full=$1 && return
    [[ $1 == --* && $known == "$1"* ]] && full+=${full:+ }$known
  done
}

_pimvobj() {
  local IFS=$' \t\n' line ahead full cur word option='' ended='' i
  local options first rest values words=()
  COMPREPLY=()
  _pimvobj_join
  cur=${line[-1]}
  # bash takes an equals sign as a word of its own.
  for word in "${line[@]:1:${#line[@]}-2}"; do
    if [[ $option ]]; then
      [[ $word == = ]] || option=''
    elif [[ $ended || $word != -* || $word == - ]]; then
      words+=("$word")
    elif [[ $word == -- ]]; then
      ended=1
    else
      _pimvobj_full "$word"
      [[ ' --as --code-page --csv-columns --fields --from --group --import --labels --lang -o --output --rejects --report --sort --steps --store --to ' == *" $full "* ]] && option=$full
    fi
  done
  [[ $option && $cur == = ]] && cur=''
  if [[ $option ]]; then
    _pimvobj_values "$option" "${words[0]-} ${words[1]-} "
    _pimvobj_offer "$values"
    COMPREPLY=("${COMPREPLY[@]#"$ahead"}")
    return
  fi
  local operands=$((${#words[@]} - 1)) place=${words[0]-}
  if [[ ${#words[@]} -gt 1 && ' help contacts calendar todo memo original store ' == *" $place "* ]]; then
    place+=" ${words[1]}"
    ((--operands))
  fi
  _pimvobj_place "$place"
  if [[ $cur == -?* && ! $ended ]] || [[ $cur == - ]]; then
    _pimvobj_offer "$options"
  elif [[ $operands -le 0 ]]; then
    _pimvobj_offer "$first"
  else
    _pimvobj_offer "$rest"
  fi
  COMPREPLY=("${COMPREPLY[@]#"$ahead"}")
}

complete -F _pimvobj pimvobj
