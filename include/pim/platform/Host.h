// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "pim/Export.h"

namespace pim {

// What a host may put in place of the operating system's own. All of it is process-wide and to be
// set before operations run.

// Receives each text that the user is to see. An empty sink restores the default, which writes to
// standard error with control bytes made visible.
using MessageSink = std::function<void(std::u16string_view text)>;
PIM_EXPORT void SetMessageSink(MessageSink sink);

// The application-data folder, as a path of the operating system without a trailing slash. Empty
// restores the default: $XDG_DATA_HOME, else $HOME/.local/share.
PIM_EXPORT void SetAppDataFolder(std::string folder);

// The charset of texts that name none, by its iconv name ("CP1252"); UTF-8 by default. False, with
// nothing changed, for a name that isn't known here.
[[nodiscard]] PIM_EXPORT bool SetDefaultCodePage(std::string_view name);

}  // namespace pim
