# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Puts each C++ program of a Markdown page into a file of its own, PREFIX_N.cpp, and the text block
# behind it, which is what it prints, into PREFIX_N.txt. A block without main stands for itself.
# Usage: awk -v prefix=PREFIX -f extract.awk PAGE
/^```cpp$/ { block = "cpp"; text = ""; next }
/^```text$/ && program { block = "text"; text = ""; next }
/^```$/ && block == "cpp" {
  block = ""
  program = text ~ /int main\(/
  if (program) printf "%s", text > (prefix "_" ++count ".cpp")
  next
}
/^```$/ && block == "text" {
  printf "%s", text > (prefix "_" count ".txt")
  block = ""
  program = 0
  next
}
block { text = text $0 "\n" }
