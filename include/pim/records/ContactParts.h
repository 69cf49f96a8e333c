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

// The entries of a contact's lists. Each is a plain value: threads may read one together, or one
// thread alone may change it. Setters and copies of texts throw std::bad_alloc.
//
// Getters and setters stand beside the members themselves; texts that they take are zero-terminated
// and copied. What IsEmpty() has no text, whatever its type, and writers leave it out. Two entries
// are equal when all their members are.

// The five parts of a name, in the order of the vCard N value.
class CName {
 public:
  // Whether all five parts are empty.
  bool IsEmpty() const {
    return family_name.empty() && given_name.empty() && additional_name.empty() &&
           prefix_name.empty() && suffix_name.empty();
  }
  friend bool operator==(const CName&, const CName&) = default;

  WideText family_name;      // first part of N
  WideText given_name;       // second
  WideText additional_name;  // third: middle names
  WideText prefix_name;      // fourth: "Dr."
  WideText suffix_name;      // fifth: "Jr."
};

// TEL, written in the default code page.
class CTelephoneNumber {
 public:
  // Give or replace the type and the number.
  std::uint32_t GetType() const { return number_type; }
  void SetType(std::uint32_t type) { number_type = type; }
  WideString GetNumber() const { return number.str(); }
  void SetNumber(const char16_t* text) { number = text; }
  // Whether there is no number.
  bool IsEmpty() const { return number.empty(); }
  friend bool operator==(const CTelephoneNumber&, const CTelephoneNumber&) = default;

  std::uint32_t number_type = 0;  // TelephoneType bits
  WideText number;                // as it was read: signs and blanks stay
};

// EMAIL.
class CEmail {
 public:
  // Give or replace the type and the address.
  std::uint32_t GetType() const { return email_type; }
  void SetType(std::uint32_t type) { email_type = type; }
  WideString GetEmail() const { return email_address.str(); }
  void SetEmail(const char16_t* text) { email_address = text; }
  // Whether there is no address.
  bool IsEmpty() const { return email_address.empty(); }
  friend bool operator==(const CEmail&, const CEmail&) = default;

  std::uint32_t email_type = EMAIL_UNKNOWN;  // an EmailType
  WideText email_address;                    // any text; nothing looks at its form
};

// URL.
class CURL {
 public:
  // Give or replace the type and the address.
  std::uint32_t GetType() const { return url_type; }
  void SetType(std::uint32_t type) { url_type = type; }
  WideString GetURL() const { return url_address.str(); }
  void SetURL(const char16_t* text) { url_address = text; }
  // Whether there is no address.
  bool IsEmpty() const { return url_address.empty(); }
  friend bool operator==(const CURL&, const CURL&) = default;

  std::uint32_t url_type = URL_UNKNOWN;  // a UrlType
  WideText url_address;                  // any text; nothing looks at its form
};

// X-CHATID: a name in a messenger.
class CMessenger {
 public:
  // Whether there is no address.
  bool IsEmpty() const { return messenger_address.empty(); }
  friend bool operator==(const CMessenger&, const CMessenger&) = default;

  std::uint32_t messenger_type = MESSENGER_UNKNOWN;  // a MessengerType
  WideText messenger_address;                        // the user's name or number there
};

// The seven parts of an address, in the order of the vCard ADR value.
class CPostalAddress {
 public:
  // Give or replace the type.
  std::uint32_t GetType() const { return address_type; }
  void SetType(std::uint32_t type) { address_type = type; }
  // Whether all seven parts are empty.
  bool IsEmpty() const {
    return post_office.empty() && extended_address.empty() && street.empty() && locality.empty() &&
           region.empty() && postal_code.empty() && country.empty();
  }
  friend bool operator==(const CPostalAddress&, const CPostalAddress&) = default;

  std::uint32_t address_type = 0;  // AddressType bits
  WideText post_office;            // first part of ADR: a post office box
  WideText extended_address;       // second: flat, floor
  WideText street;                 // third, with the number
  WideText locality;               // fourth: the town
  WideText region;                 // fifth: state or province
  WideText postal_code;            // sixth
  WideText country;                // seventh: its name
};

// ORG: a company and its units.
class COrganization {
 public:
  // Whether name, position and all units are empty.
  bool IsEmpty() const {
    return org_name.empty() && org_position.empty() &&
           std::ranges::all_of(org_additional, &WideText::empty);
  }
  friend bool operator==(const COrganization&, const COrganization&) = default;

  WideText org_name;                     // first part of ORG
  WideText org_position;                 // second: a department
  std::vector<WideText> org_additional;  // the units behind it, in their order
  std::uint32_t org_type = ORG_UNKNOWN;  // an OrganizationType
};

// BDAY, X-ANNI or X-EVENTDAY: a day that comes every year.
class CContactEvent {
 public:
  COleDateTimeNull event_date;   // a date without time or zone; null when it couldn't be read
  std::uint32_t event_type = 0;  // ContactEventType
};

// A text for applications: a contact's own notes are its comments.
class CNote {
 public:
  // Give or replace the text.
  WideString GetNote() const { return note.str(); }
  void SetNote(const char16_t* text) { note = text; }

  WideText note;  // any text
};

}  // namespace pim
