// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "stream/VObjectParser.h"

namespace pim {

// The short way through the text: a line that stands whole in it, with its line end and the first
// byte of the line behind, needs no state between its bytes, and its value no copy. Nearly all
// lines are such.
//
// `from` is the first byte of a line, the parser is at rest and the line before has ended. Takes as
// many whole lines as follow and gives the first byte that is left, never `end`: of a line, or of
// a value whose property was emitted. The state machine goes on there. Null when memory is out.
const char* FeedWholeLines(VObjectParser& parser, const char* from, const char* end);

}  // namespace pim
