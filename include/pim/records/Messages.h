// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/Collection.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/VObject.h"

namespace pim {

// Records of the message side and of synchronisation. Applications carry them; no flow of this
// library makes or reads one. They are values like the other records: threads may read one
// together, or one thread alone may change it.

// Messages of telephones and of mail, and collections of them.
class CMessage : public CVObject {};
class CMsgEmail : public CVObject {};
class CMessages : public Collection<CMessage> {};
class CMsgEmails : public Collection<CMsgEmail> {};

// A line of a log of synchronisation.
class COutlookLog : public CCmdTarget {
 public:
  WideText text;  // any text
};

// The moment of a backup.
class CSyncBackup : public CCmdTarget {
 public:
  COleDateTime time;  // day 0, valid, until it is set
};

}  // namespace pim
