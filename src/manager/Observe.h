// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/stream/TextObserver.h"

namespace pim {

// Has the reader of either form tell what the host wants to know.
template <class Reader>
void Observe(Reader& reader, const TextObserver& observer) {
  if (observer.notice) reader.Watch(observer.notice);
  if (observer.entry) reader.Account(observer.entry);
}

}  // namespace pim
