// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/records/Contact.h"
#include "pim/support/Loss.h"

namespace pim {

struct VCardReadContext;

// Puts the value of the context's property into the contact. A property without a treatment does
// nothing, and a value that can't be read leaves its field empty, null or 0. Tells the context's
// account, if it has one, where the value went, and gives what of it was lost; without an account
// that is of dates alone.
LossMask TakeVCardValue(VCardReadContext& context, const char* bytes, std::int32_t length,
                        CContact& contact);

// Structured values, split at their semicolons before anything is decoded. Fields that the value
// doesn't reach stay as they were; what stands behind the last one is ignored. The last one gives
// what was lost.
void ParseNameValue(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, CName& name);
void ParseAddressValue(const char* bytes, std::int32_t length, std::int32_t charset,
                       std::int32_t encoding, CPostalAddress& address);
LossMask ParseOrganizationValue(const char* bytes, std::int32_t length, std::int32_t charset,
                                std::int32_t encoding, COrganization& organization);

// Reads YYYYMMDD or YYYY-MM-DD; any other text, or a day that doesn't exist, leaves `date` as it
// was. Gives whether it is understood: as a day, or as none.
bool ParseEventDate(const char* bytes, std::int32_t length, COleDateTimeNull& date);

// 1 for YES or a start of it, else 0.
void ParseYesFlag(const char* bytes, std::int32_t length, std::int32_t& flag);
// A BloodType; BLOOD_NONE for any other text.
void ParseBloodType(const char* bytes, std::int32_t length, std::int32_t& code);

}  // namespace pim
