// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/commands/Options.h"
#include "app/commands/Session.h"
#include "app/output/JsonWriter.h"
#include "pim/store/ImportHistory.h"

namespace pim::app {

// What the session's store remembers. Throws Failure for a store that remembers nothing.
ImportHistory& HistoryOf(Session& session);

// All imports in the order of their numbers. Throws Failure.
std::vector<ImportEntry> ImportsOf(Session& session);
// The same, or that with the number alone. Throws Failure where no import has it.
std::vector<ImportEntry> ImportsOf(Session& session, std::optional<std::int32_t> number);

// As sha256sum prints it; empty where the store makes none.
std::string Sha256Text(const Sha256& sum);
// The fields of JSON that tell which file it is: name, size, SHA-256, whether its bytes are kept.
void WriteNameOf(const ImportedFile& file, JsonWriter& json);

// Prints what was imported and taken back. Gives the exit status, or throws Failure.
int PrintHistory(const Options& options);

}  // namespace pim::app
