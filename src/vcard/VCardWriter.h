// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/Contact.h"
#include "support/ByteBuffer.h"

namespace pim {

// Replaces the text of `data` by the contact as one vCard 2.1 text: ASCII, other characters as
// UTF-8 under quoted-printable (telephone numbers in the default code page), lines in CR LF, none
// behind the last one. `tag` becomes the low 16 bits of the contact's key. The picture is read from
// the caller-ID folder. Throws SizeOverflow for a text beyond 31 bits.
void WriteVCard(const CContact& contact, VObjectBuffer& data);

}  // namespace pim
