#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Completes command lines in bash, zsh and fish and compares the words that each offers. Usage:
# completion.sh PIM_MANUAL ROOT
set -u
tool=$(realpath "$1") root=$2 scripts=$2/app/manual
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home LC_ALL=C.UTF-8 TERM=xterm
unset XDG_DATA_HOME XDG_CONFIG_HOME
mkdir "$work/home" "$work/zsh" "$work/files" && cd "$work/files" || exit 1
mkdir phone 'old phone' && : >phone/col:1.vcf && : >a.vcf && : >b.VCS && : >c.txt && : >'my card.vcf'
failures=0
. "$root/tests/app/checks.sh"

# Each prints, for each line of standard input, a line of the words that are offered, in order.
offers_bash() {
  bash --norc -c '. "$1"
    while IFS= read -r line; do
      [[ $line == *" " ]] && cursor="" || cursor=-
      COMP_LINE=$line
      line=${line//=/ = }
      line=${line//:/ : }
      read -ra COMP_WORDS <<<"$line"
      [[ $cursor ]] || COMP_WORDS+=("")
      COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
      _pimvobj
      printf "%s\n" "${COMPREPLY[@]}" | LC_ALL=C sort -u | paste -sd" "
    done' bash "$scripts/pimvobj.bash"
}
offers_zsh() { zsh -f "$root/tests/app/completion.zsh" "$scripts" "$work/zsh"; }
offers_fish() {
  fish -N -c 'source $argv[1]
    while read -l line
      echo (complete -C $line | string split -f1 \t | string replace -r -- "^--.*=" "" | LC_ALL=C sort -u)
    end' "$scripts/pimvobj.fish"
}

# What follows "SHELLS|", with a letter for each shell, is a line; behind it the words that are wanted.
cat >../cases <<'END'
bzf|pimvobj con|contacts convert
bzf|pimvobj --store my.db --lang de con|contacts convert
bzf|pimvobj |album calendar charsets check contacts convert help history inspect memo original prepare redact show store todo undo
bzf|pimvobj contacts |album count delete export import list show
bzf|pimvobj contacts --quiet ex|export
bzf|pimvobj store |copy schema tidy
bzf|pimvobj original show |calendar contact memo todo
bzf|pimvobj original show contact |
bzf|pimvobj contacts list |
bzf|pimvobj contacts list mueller --s|--sort --store
bzf|pimvobj todo list --g|
bzf|pimvobj contacts list --sort |key name
bzf|pimvobj todo list --sort |key name time
bzf|pimvobj contacts list --sort=n|name
bzf|pimvobj --sto my.db con|contacts convert
bzf|pimvobj -- contacts li|list
bzf|pimvobj contacts -- li|list
bzf|pimvobj inspect --as v|vcalendar vcard
bzf|pimvobj convert --to v|vcard3 vcard4
bzf|pimvobj calendar export --to |icalendar
bzf|pimvobj calendar album --to |
bzf|pimvobj album a.vcf --from |
bz|pimvobj store copy --to |a.vcf b.VCS c.txt my card.vcf old phone phone
bzf|pimvobj prepare a.vcf --st|--steps --store --strict
bzf|pimvobj inspect a.vcf --lang |de en es fr ja ko
bzf|pimvobj inspect --code-page ISO|ISO-8859-1 ISO-8859-15
bzf|pimvobj contacts list --group |
bzf|pimvobj help ex|exit-statuses
bzf|pimvobj help sto|store
bzf|pimvobj help contacts i|import
bzf|pimvobj help inspect |
bzf|pimvobj history |
b|pimvobj contacts list --fields n|name nickname note number
b|pimvobj contacts list --fields key,na|key,name
b|pimvobj contacts list --fields=name,n|name,nickname name,note name,number
b|pimvobj todo list --fields due,s|due,start due,status due,subject due,summary
zf|pimvobj todo list --fields du|due
f|pimvobj contacts list --fields key,na|key,name
f|pimvobj contacts list --fields "key,na|key,name
f|pimvobj contacts list --fields=key,na|key,name
z|pimvobj contacts list --fields key,na|name
f|pimvobj contacts import |a.vcf b.VCS c.txt my card.vcf old phone/ phone/
f|pimvobj original export |old phone/ phone/
f|pimvobj --store |a.vcf b.VCS c.txt my card.vcf old phone/ phone/
bz|pimvobj contacts album |old phone phone
bz|pimvobj contacts import |a.vcf my card.vcf old phone phone
bz|pimvobj memo import |b.VCS old phone phone
b|pimvobj contacts import phone/co|phone/col:1.vcf
b|pimvobj contacts import phone/col:|1.vcf
b|pimvobj contacts import phone/col:1.vcf ./|./a.vcf ./my card.vcf ./old phone ./phone
bz|pimvobj inspect b|b.VCS
bz|pimvobj todo import c|c.txt
bz|pimvobj contacts export |a.vcf my card.vcf old phone phone
bzf|pimvobj contacts export a.vcf |
bz|pimvobj original export |old phone phone
bz|pimvobj --store |a.vcf b.VCS c.txt my card.vcf old phone phone
bzf|pimvobj contacts import -- --dry|
END
"$tool" --table | sed 's/^\([^:]*\): \(.*\)/bzf|pimvobj \1 --|\2/' >>../cases

for shell in bash zsh fish; do
  grep "^[a-z]*${shell:0:1}[a-z]*|" ../cases >../of-shell
  cut -d'|' -f2 ../of-shell | "offers_$shell" >../offered
  while IFS='|' read -r _ line wanted <&3 && IFS= read -r got <&4; do
    [[ $line == *-- ]] && wanted=$(tr ' ' '\n' <<<"$wanted" | LC_ALL=C sort | paste -sd' ')
    same "$shell: $line" "$wanted" "$got"
  done 3<../of-shell 4<../offered
  same "$shell answers" "$(wc -l <../of-shell)" "$(wc -l <../offered)"
done

# bash finds it by its place, too.
mkdir -p ../share/bash-completion/completions
cp "$scripts/pimvobj.bash" ../share/bash-completion/completions/pimvobj
same 'bash finds it' 'complete -F _pimvobj pimvobj' "$(XDG_DATA_DIRS=$work/share bash --norc -c '
  . /usr/share/bash-completion/bash_completion && _completion_loader pimvobj; complete -p pimvobj' 2>&1)"

[ "$failures" -eq 0 ] && echo "all is as it should be"
exit "$((failures > 0))"
