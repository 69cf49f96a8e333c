// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <utility>

#include "pim/platform/Host.h"
#include "platform/Handles.h"
#include "platform/MessageBox.h"
#include "platform/Visible.h"

namespace pim {
namespace {

MessageSink& HostSink() {
  static MessageSink sink;
  return sink;
}

// In one write, so that the lines of several processes don't mix.
void WriteToStandardError(std::u16string_view text) {
  const std::string line = VisibleUtf8(text, LineFeeds::Kept) + '\n';
  static_cast<void>(WriteAll(STDERR_FILENO, line));  // a failure has nowhere to be told
}

}  // namespace

void SetMessageSink(MessageSink sink) { HostSink() = std::move(sink); }

void AfxMessageBox(std::u16string_view text) {
  if (HostSink()) {
    HostSink()(text);
  } else {
    WriteToStandardError(text);
  }
}

}  // namespace pim
