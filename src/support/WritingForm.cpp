#include "pim/support/WritingForm.h"

namespace pim {
namespace {

WritingForm currentForm = WritingForm::ToTheLetter;

}  // namespace

void SetWritingForm(WritingForm form) noexcept { currentForm = form; }
WritingForm GetWritingForm() noexcept { return currentForm; }

}  // namespace pim
