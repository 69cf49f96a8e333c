// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/Collection.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/VObject.h"

namespace pim {

// Records of the message side and of synchronisation. Applications carry them; no flow of this
// library makes or reads one.

class CMessage : public CVObject {};
class CMsgEmail : public CVObject {};
class CMessages : public Collection<CMessage> {};
class CMsgEmails : public Collection<CMsgEmail> {};

class COutlookLog : public CCmdTarget {
 public:
  WideText text;
};

class CSyncBackup : public CCmdTarget {
 public:
  COleDateTime time;  // day 0, valid
};

}  // namespace pim
