// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "app/output/RecordDump.h"
#include "pim/manager/TextReading.h"
#include "tests/vcard4/Forms.h"

namespace pim {
namespace {

// What vCard text holds of a text, and what a vCard 2.1 holds of a number.
WideString Held(const WideString& text) {
  WideString held;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit == u'\r' && text.substr(i, 2) == u"\r\n") ++i;
    if (unit == u'\r' || unit == u'\n') held += u"\r\n";
    if (unit >= u' ' ? unit != 0x7F : unit == u'\t') held += unit;
  }
  return held;
}
WideString HeldNumber(const WideString& text) {
  WideString held = Held(text);
  for (char16_t& unit : held)
    if (unit == u'\r' || unit == u'\n') unit = u' ';
  return held.substr(held.find_first_not_of(u" \t"));
}

// Odd records, always the same for a seed, each with the one that is to come back.
class OddRecords {
 public:
  explicit OddRecords(std::uint32_t seed) : random_(seed) {}

  void Make(CContact& contact, CContact& expected) {
    for (const auto name : {&CContact::name, &CContact::phonetic}) {
      for (const auto part : {&CName::family_name, &CName::given_name, &CName::additional_name,
                              &CName::prefix_name, &CName::suffix_name})
        Set(contact.*name.*part, expected.*name.*part);
    }
    for (const auto field :
         {&CContact::formatted_name, &CContact::hobby, &CContact::org_title, &CContact::org_role})
      Set(contact.*field, expected.*field);
    contact.blood_type = expected.blood_type = static_cast<std::int32_t>(Below(5));
    contact.favorite = expected.favorite = static_cast<std::int32_t>(Below(2));
    MakeNumbers(contact, expected);
    MakeAddresses(contact, expected);
    Repeat([&] { Add(&CContact::NewNickname, contact, expected); });
    Repeat([&] { Add(&CContact::NewComment, contact, expected); });
    Repeat([&] { Add(&CContact::NewGroup, contact, expected); });
    Repeat([&] {
      COleDateTime day;
      day.SetDateTime(1600 + static_cast<std::int32_t>(Below(500)), 2, 28, 0, 0, 0);
      const std::uint32_t type = 1 + Below(3);
      contact.NewContactEvent(day, type);
      expected.NewContactEvent(day, type);
    });
  }
  // Of as many texts as differ, the account tells once.
  std::size_t changes = 0;

 private:
  std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
  template <class Do>
  void Repeat(Do make) {
    for (std::uint32_t left = Below(4); left > 0; --left) make();
  }
  WideString Text() {
    static constexpr WideStringView kParts[] = {
        u" ",           u"\t",         u"\\",           u";",
        u",",           u":",          u"\"",           u"=",
        u"\n",          u"\r\n",       u"\r",           u"\u00E9",
        u"\u3042",      u"^n",         u"\\n",          u"item1.TEL:1",
        u"BEGIN:VCARD", u"\U0001F600", u"plain words ", u"\u0001",
        u"%41",         u"x"};
    WideString text;
    for (std::uint32_t left = Below(12); left > 0; --left) {
      const WideStringView part = kParts[Below(std::size(kParts))];
      for (std::uint32_t times = 1 + (Below(20) == 0 ? Below(90) : 0); times > 0; --times)
        text += part;
    }
    return text + u"x";
  }
  WideString Text(WideString& held, WideString (*holds)(const WideString&) = Held) {
    const WideString text = Text();
    held = holds(text);
    changes += held != text ? 1 : 0;
    return text;
  }
  void Set(WideText& text, WideText& expected) {
    if (Below(3) == 0) return;
    WideString held;
    text = Text(held);
    expected = held;
  }
  void Add(void (CContact::*add)(WideText), CContact& contact, CContact& expected) {
    WideString held;
    (contact.*add)(Text(held));
    (expected.*add)(held);
  }
  void MakeNumbers(CContact& contact, CContact& expected) {
    WideString held;
    Repeat([&] {
      const std::uint32_t type = Below(0x2000000) | (Below(2) == 0 ? TEL_PREFERRED : 0U);
      contact.NewTelephone(Text(held, HeldNumber), type, false, -1);
      expected.NewTelephone(held, type, false, -1);
    });
    Repeat([&] {
      const std::uint32_t type = Below(6);
      contact.NewEmail(Text(held), type, -1);
      expected.NewEmail(held, type, -1);
    });
    Repeat([&] {  // a URI holds any text
      const std::uint32_t type = Below(11);
      const WideString text = Text();
      contact.NewMessenger(text, type);
      expected.NewMessenger(text, type);
    });
    Repeat([&] {
      const std::uint32_t type = Below(5);
      contact.NewURL(Text(held), type, -1);
      expected.NewURL(held, type, -1);
    });
  }
  void MakeAddresses(CContact& contact, CContact& expected) {
    Repeat([&] {
      const std::uint32_t type = Below(0x100) | (Below(2) == 0 ? ADR_PREFERRED : 0U);
      CPostalAddress& address = contact.NewAddress(nullptr, type, -1);
      CPostalAddress& held = expected.NewAddress(nullptr, type, -1);
      for (const auto part :
           {&CPostalAddress::post_office, &CPostalAddress::street, &CPostalAddress::locality})
        Set(address.*part, held.*part);
      address.country = held.country = WideString(u"Japan");
    });
    Repeat([&] {
      const std::uint32_t type = Below(4);
      COrganization& organization = contact.NewOrganization(type);
      COrganization& expectedOne = expected.NewOrganization(type);
      Set(organization.org_name, expectedOne.org_name);
      Set(organization.org_position, expectedOne.org_position);
      WideString held;
      organization.org_additional.emplace_back(Text(held));
      expectedOne.org_additional.emplace_back(held);
    });
  }

  std::mt19937 random_;
};

std::string Dump(const CContact& contact) { return std::string(app::RecordJson().Text(contact)); }

// A record goes out, comes down to 2.1 and is read: what was told is all that changed.
void ExpectBack(const CContact& contact, const CContact& expected, std::size_t changes,
                VCardVersion version) {
  const Formed formed = Form(MakeVCardForm(version, false), contact);
  const Formed down = Down(formed.text);
  CContacts read;
  ASSERT_EQ(ReadContacts(down.text, read).outcome, TextOutcome::Read) << down.text;
  ASSERT_EQ(read.GetCount(), 1) << down.text;
  read[0].tag = 0;
  ASSERT_EQ(Dump(read[0]), Dump(expected)) << formed.text << down.text;
  ASSERT_EQ((formed.losses + down.losses).empty(), changes == 0) << formed.losses << down.losses;
}

TEST(RoundTrip, OddRecords) {
  for (std::uint32_t seed = 0; seed < 300; ++seed) {
    for (const VCardVersion version : {VCardVersion::V3, VCardVersion::V4}) {
      SCOPED_TRACE(seed);
      OddRecords records(seed);
      CContact contact;
      CContact expected;
      records.Make(contact, expected);
      ExpectBack(contact, expected, records.changes, version);
      if (HasFatalFailure()) return;
    }
  }
}

// What each kind of record with little in it comes back as.
TEST(RoundTrip, FewFields) {
  void (*const kRows[])(CContact&) = {
      [](CContact&) {},
      [](CContact& contact) { contact.formatted_name = u"Only shown"; },
      [](CContact& contact) { contact.name.suffix_name = u"Jr."; },
      [](CContact& contact) { contact.NewEmail(u"a@b", EMAIL_UNKNOWN, -1); },
      [](CContact& contact) { contact.NewTelephone(u"*#06#", 0x11FFFFFF, false, -1); },
      [](CContact& contact) { contact.NewOrganization(ORG_OTHER).org_position = u"Sales"; },
      [](CContact& contact) { contact.phonetic.additional_name = u"\u3042"; },
      [](CContact& contact) { contact.NewMessenger(u"//a b?%", MESSENGER_QQ); },
  };
  for (const auto make : kRows) {
    for (const VCardVersion version : {VCardVersion::V3, VCardVersion::V4}) {
      CContact contact;
      make(contact);
      ExpectBack(contact, contact, 0, version);
    }
  }
}

}  // namespace
}  // namespace pim
