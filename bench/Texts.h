// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace pim::bench {

// vCard text of about 450 bytes a contact, as phones and desktop programs write it; every fourth
// one under quoted-printable with soft breaks.
std::string MakeCards(std::int64_t count);

// The same with a picture of 15 KB in each.
std::string MakeCardsWithPictures(std::int64_t count);

// vCalendar text of about 370 bytes an event, every fourth one under quoted-printable.
std::string MakeEvents(std::int64_t count);

}  // namespace pim::bench
