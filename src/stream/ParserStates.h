// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "stream/VObjectParser.h"

namespace pim {

// The state machine takes the bytes of a line by runs without a real line feed, and the line feed
// by itself once the next line has shown that it isn't folded away.

// False at a byte that is rejected.
[[nodiscard]] bool FeedRun(VObjectParser& parser, const char* from, const char* end);
void FeedLineFeed(VObjectParser& parser);

// Ends the header, which lies in the buffer as zero-terminated words but for the last zero, and
// hands it on. False when memory is out.
[[nodiscard]] bool EmitProperty(VObjectParser& parser);

// Quoted-printable text up to the first escape that its line end, a carriage return or a NUL cuts:
// that escape, or `end`. Escapes stay in the value, so a run goes on across those that stand whole.
const char* FindSoftBreak(const char* from, const char* end);

// The part of it that stands in a value. Takes as much of the run as it can and gives its end, or
// null when a byte is rejected.
const char* FeedValue(VObjectParser& parser, const char* from, const char* end);
void EndValue(VObjectParser& parser);

// The line end that a soft break, or a fold, takes out of quoted-printable text. An escape of which
// only one digit stood ahead of it is lost.
void EndSoftBreak(VObjectParser& parser);

}  // namespace pim
