// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "pim/stream/TextRejects.h"
#include "pim/support/Strings.h"

namespace pim::app {

// The records that would be rejected with their parts.
std::int64_t RecordsIn(const RejectedParts& rejected);

// "in the card of Ann Berg", by what of the text stands ahead of the part's fault.
std::string OwnerOf(const RejectedPart& part, NarrowStringView text, TextForm form);

// A record that isn't imported: its lines, and its name, which may be empty.
using TakeRefused =
    std::function<void(std::int64_t firstLine, std::int64_t lastLine, WideStringView name)>;
// Those that the parts of a text begin.
void VisitRejected(NarrowStringView text, TextForm form, const std::vector<RejectedPart>& parts,
                   const TakeRefused& take);
// All of a text, those included for which it is rejected, in its order.
void VisitRefused(NarrowStringView text, TextForm form, const TakeRefused& take);

}  // namespace pim::app
