// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/WritingForm.h"

namespace pim {

// The writing form while it lives; then the one before.
class ScopedWritingForm {
 public:
  explicit ScopedWritingForm(WritingForm form) : before_(GetWritingForm()) { SetWritingForm(form); }
  ScopedWritingForm(const ScopedWritingForm&) = delete;
  ScopedWritingForm& operator=(const ScopedWritingForm&) = delete;
  ~ScopedWritingForm() { SetWritingForm(before_); }

 private:
  WritingForm before_;
};

}  // namespace pim
