// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "pim/records/TypeCodes.h"
#include "pim/support/DateTime.h"
#include "pim/support/WideText.h"

namespace pim {

// The five parts of a name, in the order of the vCard N value.
class CName {
 public:
  bool IsEmpty() const {
    return family_name.empty() && given_name.empty() && additional_name.empty() &&
           prefix_name.empty() && suffix_name.empty();
  }
  friend bool operator==(const CName&, const CName&) = default;

  WideText family_name;
  WideText given_name;
  WideText additional_name;
  WideText prefix_name;
  WideText suffix_name;
};

class CTelephoneNumber {
 public:
  std::uint32_t GetType() const { return number_type; }
  void SetType(std::uint32_t type) { number_type = type; }
  WideString GetNumber() const { return number.str(); }
  void SetNumber(const char16_t* text) { number = text; }
  bool IsEmpty() const { return number.empty(); }
  friend bool operator==(const CTelephoneNumber&, const CTelephoneNumber&) = default;

  std::uint32_t number_type = 0;  // TelephoneType bits
  WideText number;
};

class CEmail {
 public:
  std::uint32_t GetType() const { return email_type; }
  void SetType(std::uint32_t type) { email_type = type; }
  WideString GetEmail() const { return email_address.str(); }
  void SetEmail(const char16_t* text) { email_address = text; }
  bool IsEmpty() const { return email_address.empty(); }
  friend bool operator==(const CEmail&, const CEmail&) = default;

  std::uint32_t email_type = EMAIL_UNKNOWN;
  WideText email_address;
};

class CURL {
 public:
  std::uint32_t GetType() const { return url_type; }
  void SetType(std::uint32_t type) { url_type = type; }
  WideString GetURL() const { return url_address.str(); }
  void SetURL(const char16_t* text) { url_address = text; }
  bool IsEmpty() const { return url_address.empty(); }
  friend bool operator==(const CURL&, const CURL&) = default;

  std::uint32_t url_type = URL_UNKNOWN;
  WideText url_address;
};

class CMessenger {
 public:
  bool IsEmpty() const { return messenger_address.empty(); }
  friend bool operator==(const CMessenger&, const CMessenger&) = default;

  std::uint32_t messenger_type = MESSENGER_UNKNOWN;
  WideText messenger_address;
};

// The seven parts of an address, in the order of the vCard ADR value.
class CPostalAddress {
 public:
  std::uint32_t GetType() const { return address_type; }
  void SetType(std::uint32_t type) { address_type = type; }
  bool IsEmpty() const {
    return post_office.empty() && extended_address.empty() && street.empty() && locality.empty() &&
           region.empty() && postal_code.empty() && country.empty();
  }
  friend bool operator==(const CPostalAddress&, const CPostalAddress&) = default;

  std::uint32_t address_type = 0;  // AddressType bits
  WideText post_office;
  WideText extended_address;
  WideText street;
  WideText locality;
  WideText region;
  WideText postal_code;
  WideText country;
};

class COrganization {
 public:
  bool IsEmpty() const {
    return org_name.empty() && org_position.empty() &&
           std::ranges::all_of(org_additional, &WideText::empty);
  }
  friend bool operator==(const COrganization&, const COrganization&) = default;

  WideText org_name;
  WideText org_position;
  std::vector<WideText> org_additional;  // units behind the second field of the ORG value
  std::uint32_t org_type = ORG_UNKNOWN;
};

class CContactEvent {
 public:
  COleDateTimeNull event_date;   // a date without time or zone; null when it couldn't be read
  std::uint32_t event_type = 0;  // ContactEventType
};

class CNote {
 public:
  WideString GetNote() const { return note.str(); }
  void SetNote(const char16_t* text) { note = text; }

  WideText note;
};

}  // namespace pim
