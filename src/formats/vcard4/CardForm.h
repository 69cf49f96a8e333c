// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "formats/RecordForm.h"
#include "formats/vcard4/ContactProperties.h"
#include "formats/vcard4/GroupMembers.h"

namespace pim {

// Cards through a sink (ContactProperties), and those of groups behind them.
template <class Sink>
class CardForm final : public ContactForm {
 public:
  template <class... Arguments>
  explicit CardForm(bool groups, Arguments... arguments)
      : sink_(arguments...), hasGroups_(groups) {}

  void Begin(std::string& out) override { sink_.StartText(out); }

  void Append(const CContact& contact, const TellFormatLoss& tell, std::string& out) override {
    const std::string uuid = UuidOf(contact);
    sink_.StartCard(out);
    ContactProperties(sink_, tell).Give(contact, uuid);
    sink_.EndCard();
    if (hasGroups_) groups_.Add(contact, uuid);
  }

  void End(std::string& out) override {
    for (const GroupMembers::Group& group : groups_.groups()) {
      sink_.StartCard(out);
      Give(group);
      sink_.EndCard();
    }
    sink_.EndText(out);
  }

 private:
  void Give(const GroupMembers::Group& group) {
    GiveAscii(CardProperty::ProductId, {}, kProductId);
    GiveAscii(CardProperty::Uid, kUuidStart, UuidOfGroup(group.name));
    GiveAscii(CardProperty::Kind, {}, kGroupKind);
    for (const CardProperty property : {CardProperty::FormattedName, CardProperty::Name}) {
      sink_.Start(property);
      const std::size_t parts = property == CardProperty::Name ? kPersonNameParts.size() : 1;
      sink_.StartValue(parts == 1 ? ValueShape::Text : ValueShape::Structured, parts);
      sink_.Part(group.name);
      for (std::size_t i = 1; i < parts; ++i) sink_.Part({});
      sink_.EndValue();
    }
    for (const GroupMembers::Uuid& member : group.members)
      GiveAscii(CardProperty::Member, kUuidStart, {member.data(), member.size()});
  }
  void GiveAscii(CardProperty property, NarrowStringView start, NarrowStringView value) {
    sink_.Start(property);
    sink_.Ascii(start, value);
  }

  Sink sink_;
  GroupMembers groups_;
  const bool hasGroups_;
};

}  // namespace pim
