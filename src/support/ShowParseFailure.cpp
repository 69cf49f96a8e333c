#include "support/ShowParseFailure.h"

#include "platform/MessageBox.h"

namespace pim {

void ShowParseFailure(WideStringView message) { AfxMessageBox(message); }

}  // namespace pim
