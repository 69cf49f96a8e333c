// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "app/commands/ImportDiary.h"
#include "app/output/Progress.h"

namespace pim::app {

// For an import that is only looked at: prints what would become of each record, a line each or as
// one JSON object. The session is a preview.
std::unique_ptr<ImportDiary> PreviewDiary(Session& session, const Options& options, TextForm form,
                                          Progress& progress);

}  // namespace pim::app
