# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Completes each line of standard input in an interactive zsh, and prints its words in a line.
# Usage: zsh -f completion.zsh FOLDER-OF-_pimvobj WORK-FOLDER
emulate -R zsh
zmodload zsh/zpty
words=$2/words
cat >$2/.zshrc <<END
PROMPT= RPROMPT=
fpath=($1 \$fpath)
autoload -Uz compinit && compinit -u -D
zstyle ':completion:*' list-max 0
LISTMAX=10000
# Notes what is offered, but for what the functions look up for themselves.
compadd() {
  if [[ \${@[1,(i)(-|--)]} != *-(O|A|D)\ * ]]; then
    local -a hits
    builtin compadd -O hits "\$@"
    print -rl -- \$hits >>$words
  fi
  builtin compadd "\$@"
}
end-of-case() { BUFFER= ; print done >$words.end }
zle -N end-of-case
bindkey '^I' list-choices
bindkey '^G' end-of-case
print ready >$words.end
END
wait-for-end() {
  repeat 1000; do
    [[ -s $words.end ]] && return
    zpty -rt shell output && continue
    sleep 0.01
  done
  print "zsh doesn't answer" >&2
  exit 1
}
export ZDOTDIR=$2
zpty shell "zsh -i"
wait-for-end
while IFS= read -r line; do
  rm -f $words $words.end
  zpty -wn shell "$line"$'\t\x07'
  wait-for-end
  print -r -- ${(ouQ)${(f)"$([[ -e $words ]] && cat $words)"}%=}
done
zpty -d shell
