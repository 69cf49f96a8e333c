// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "formats/RecordForm.h"

namespace pim {

// The forms in which address books of today take contacts. A picture is read from the caller-ID
// folder. With `groups` each group becomes an object of its own that names its members, behind all
// contacts; until then the members' UIDs are kept, some 50 bytes each.

enum class VCardVersion : std::uint8_t {
  V3,  // RFC 2426
  V4,  // RFC 6350
};

// Cards one behind another; lines end in CR LF, the last too.
std::unique_ptr<ContactForm> MakeVCardForm(VCardVersion version, bool groups);

// A JSON array of cards (RFC 7095), each on a line of its own.
std::unique_ptr<ContactForm> MakeJCardForm(bool groups);

// RFC 4180, with a line of column names. `columns` is empty for those that address books know, else
// the text of a file that says which, as ContactCsv.h tells; throws std::invalid_argument for one
// that isn't understood, with what is wrong and in which line.
std::unique_ptr<ContactForm> MakeCsvForm(std::string_view columns);

}  // namespace pim
