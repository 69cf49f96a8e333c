// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Messages.h"

#include "pim/platform/Host.h"

namespace pim::app {

Messages::Messages() {
  SetMessageSink([this](std::u16string_view text) { texts_.emplace_back(text); });
}

Messages::~Messages() { SetMessageSink({}); }

}  // namespace pim::app
