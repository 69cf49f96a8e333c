// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/commands/FormatAccount.h"
#include "app/commands/Options.h"
#include "app/input/ByteSource.h"
#include "formats/prepare/Preparer.h"

namespace pim::app {

// Writes a file as one that is read well and gives the exit status. Throws Failure, WrongUsage or
// Interrupted.
int PrepareFile(const Options& options);

// Tells on standard error what is done to the file at `path`, and the account of what can't be
// carried. The account must outlive what it gives.
PrepareObserver TellPreparing(const std::string& path, FormatAccount& account);

// The bytes of a file, prepared on the way where the options say so; the account must outlive it.
std::unique_ptr<ByteSource> SourceOf(const std::string& path, const Options& options,
                                     FormatAccount& account);

}  // namespace pim::app
