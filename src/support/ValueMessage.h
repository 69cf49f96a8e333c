// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/MessageBox.h"
#include "support/TextCodec.h"

namespace pim {

// Shows the user a message that ends with a value of the text, in the default code page.
inline void ShowValueMessage(WideStringView message, NarrowStringView value) {
  WideString shown;
  WidenText(value, shown);
  AfxMessageBox(shown.insert(0, message));
}

}  // namespace pim
