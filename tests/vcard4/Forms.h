// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "formats/vcard4/ContactForms.h"
#include "formats/vcard4/VCardDown.h"

namespace pim {

// A text and what was told of it, a line each: "name.given_name changed line-end".
struct Formed {
  std::string text;
  std::string losses;
};

inline TellFormatLoss Note(std::string& losses) {
  return [&losses](const FormatLoss& loss) {
    losses += std::to_string(loss.line) + " " + loss.field +
              (loss.verdict == FormatVerdict::Changed ? " changed " : " dropped ");
    losses.append(RowOf(loss.reason).name).append("\n");
  };
}

inline Formed Form(std::unique_ptr<ContactForm> form, const CContact& contact) {
  Formed formed;
  form->Begin(formed.text);
  form->Append(contact, Note(formed.losses), formed.text);
  form->End(formed.text);
  return formed;
}

inline Formed Down(std::string_view card) {
  Formed formed;
  VCardDown(card, Note(formed.losses), formed.text);
  return formed;
}

}  // namespace pim
