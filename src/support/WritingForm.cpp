// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/support/WritingForm.h"

namespace pim {
namespace {

WritingForm currentForm = WritingForm::ToTheLetter;

}  // namespace

void SetWritingForm(WritingForm form) noexcept { currentForm = form; }
WritingForm GetWritingForm() noexcept { return currentForm; }

}  // namespace pim
