# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Shows Doxygen a header's plain comments as those that it looks for. A comment tells of the
# declaration below it and of all that follow without a blank line or a comment of their own; one
# behind a member tells of that, and stands beside the one above when it's so from the first on; one
# with a blank line below tells of the file. An enumerator without a word gets an unknown command,
# since Doxygen itself doesn't look for those.

function IndentOf(line) {
  match(line, /^ */)
  return RLENGTH
}

function Tell(    i) {
  for (i = 1; i <= lines; ++i) print comment[i]
}

function Forget() {
  lines = 0
  isTold = 0
}

/^\/\/ SPDX-/ { next }

# Nothing inside a function is for readers of the interface.
bodyIndent != "" {
  if (IndentOf($0) == bodyIndent && /^ *}/) bodyIndent = ""
  if (!/^ *\/\//) print
  next
}

/^ *\/\// {
  if (isTold) Forget()
  indent = IndentOf($0)
  sub(/\/\//, "///")
  comment[++lines] = $0
  next
}

/^$/ {
  if (lines > 0 && !isTold) {
    print "/// \\file"
    Tell()
  }
  Forget()
  print
  next
}

{
  if (/= (default|delete);$/) next  # says all by itself
  if (/^ *}/) sub(/ *\/\/.*/, "")
  hasOwn = sub(/  +\/\/ /, "  ///< ")
  isLabel = /^ *(public|private|protected):$/
  # What goes on stands deeper, or behind the head of a template. A destructor needs no word.
  isDeclaration = !isHead && !isLabel && (!/^ *[}#~]/ || /^#define/)
  if (lines > 0 && isDeclaration && IndentOf($0) == indent) {
    if (!isTold) isShared = hasOwn
    if (!isTold || !hasOwn || isShared) Tell()
    isTold = 1
  }
  if (IndentOf($0) < indent) Forget()
  if (/^ *}/) isEnum = 0
  if (/^ *enum .*}/ || (isEnum && !hasOwn && !isTold)) print "/// \\undocumented"
  if (/^ *enum .*[{]$/) {
    isEnum = 1
    Forget()
  }
  isHead = /^ *template <.*>$/
  if (/[{]$/ && !/^ *(template <.*> )?(class|struct|enum|namespace) /) bodyIndent = IndentOf($0)
  print
}
