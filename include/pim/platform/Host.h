// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "pim/Export.h"

namespace pim {

// What a host may put in place of the operating system's own. All of it is process-wide, for all
// threads, and to be set before operations run: no function here may be called while another thread
// uses the library. The environment belongs to it too: TZ, TZDIR, XDG_DATA_HOME and HOME are read
// whenever local time or a folder is needed, and nobody may change them meanwhile (setenv).

// Receives each text that the user is to see, in UTF-16 and without a line end, in the thread whose
// operation shows it: several threads may call it at once. What it throws passes to the caller of
// the operation. An empty sink restores the default, which writes to standard error with control
// bytes made visible.
using MessageSink = std::function<void(std::u16string_view text)>;
// Replaces the sink, or restores the default.
PIM_EXPORT void SetMessageSink(MessageSink sink);

// Sets the application-data folder, a path of the operating system without a trailing slash. Empty
// restores the default: $XDG_DATA_HOME where that is an absolute path, else $HOME/.local/share.
PIM_EXPORT void SetAppDataFolder(std::string folder);

// Sets the charset of texts that name none, by its iconv name ("CP1252"); UTF-8 by default. False,
// with nothing changed, for a name that isn't known here. Throws std::bad_alloc.
[[nodiscard]] PIM_EXPORT bool SetDefaultCodePage(std::string_view name);

}  // namespace pim
