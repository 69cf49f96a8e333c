// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

// PostgreSQL's texts hold UTF-8 without NUL. Bytes that are none of that, a NUL, those of a lone
// surrogate and those of a file's name in another code, are kept as the noncharacter U+FFFE and two
// hexadecimal digits, in upper case, for each byte; so is U+FFFE itself. All texts come back as
// they were, and the others look as they are.

// Whether the text is kept as it stands.
bool IsPlainText(std::string_view text);
// Appends the form that is kept.
void AppendKeptText(std::string_view text, std::string& kept);
// Whether a form that is kept is another than the text.
bool IsEscaped(std::string_view kept);
// Replaces `text`. An escape of no such form stands for itself.
void ReadKeptText(std::string_view kept, std::string& text);

// A statement as PostgreSQL takes it: "?" and "?1" become "$1", and names in double quotes get the
// small letters that those without have there.
std::string PostgresSql(std::string_view sql);
// A name of ours with those letters.
std::string PostgresName(std::string_view name);

}  // namespace pim
