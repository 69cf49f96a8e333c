// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/Contact.h"

#include <utility>

namespace pim {

// Not in the class: a record would then be zeroed as a whole ahead of its own initialisers.
CContact::CContact() noexcept = default;

CTelephoneNumber& CContact::NewTelephone(WideText number, std::uint32_t type, bool /*isDefault*/,
                                         std::int32_t /*rowId*/) {
  return telephones_.emplace_back(CTelephoneNumber{type, std::move(number)});
}

CEmail& CContact::NewEmail(WideText address, std::uint32_t type, std::int32_t /*rowId*/) {
  return emails_.emplace_back(CEmail{type, std::move(address)});
}

CURL& CContact::NewURL(WideText url, std::uint32_t type, std::int32_t /*rowId*/) {
  return urls_.emplace_back(CURL{type, std::move(url)});
}

CPostalAddress& CContact::NewAddress(const CPostalAddress* source, std::uint32_t type,
                                     std::int32_t /*rowId*/) {
  CPostalAddress address = source != nullptr ? *source : CPostalAddress{};
  address.address_type = type;
  return addresses_.emplace_back(std::move(address));
}

COrganization& CContact::NewOrganization(std::uint32_t type) {
  COrganization& organization = organizations_.emplace_back();
  organization.org_type = type;
  return organization;
}

CMessenger& CContact::NewMessenger(WideText address, std::uint32_t type) {
  return messengers_.emplace_back(CMessenger{type, std::move(address)});
}

CContactEvent& CContact::NewContactEvent(const COleDateTimeNull& date, std::uint32_t type) {
  return events_.emplace_back(CContactEvent{date, type});
}

}  // namespace pim
