#include "support/RaiseParseFailure.h"

#include "platform/MessageBox.h"

namespace pim {

void RaiseParseFailure(WideStringView message) {
  AfxMessageBox(message);
  throw kParseFailure;
}

}  // namespace pim
