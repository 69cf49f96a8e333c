// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/VCardDown.h"

#include <algorithm>

#include "formats/vcard4/CardDown.h"
#include "pim/manager/TypeWords.h"
#include "stream/ObjectWords.h"
#include "support/Ascii.h"
#include "support/ParameterWords.h"

namespace pim {
namespace {

constexpr NarrowStringView kOldVersion = "2.1";
// A sound, unless devices mark it as a pronunciation, which it is in 2.1.
constexpr NarrowStringView kSound = "SOUND";
constexpr NarrowStringView kDeviceName = "X-IRMC-N";
// What tells of the text and not of the person.
constexpr NarrowStringView kFrameNames[] = {kBeginWord, kEndWord, kVersionWord, "PROFILE"};

bool IsName(NarrowStringView name) {
  return !name.empty() &&
         std::ranges::all_of(name, [](char c) { return IsLetter(c) || IsDigit(c) || c == '-'; });
}

// The words of a property's parameters, as 2.1 has them.
NarrowString WordsOf(const CardLine& line) {
  constexpr NarrowStringView kEncodings[] = {kQuotedPrintableWord.text, kBase64Word.text, k7BitText,
                                             k8BitWord.text};
  NarrowString words;
  const auto take = [&](NarrowStringView word) {
    const bool isEncoding = std::ranges::any_of(kEncodings, [word](NarrowStringView encoding) {
      return EqualsIgnoringCase(encoding, word);
    });
    if (IsName(word) && !isEncoding) words.append(1, ';').append(word);
  };
  for (const CardParameter& parameter : line.parameters) {
    if (!parameter.hasValue) take(parameter.name);
    if (EqualsIgnoringCase(parameter.name, kTypeName)) ForEachWord(parameter.value, take);
  }
  return words;
}

// A formatted name that tells nothing of its own.
bool IsDerived(const CardLine& line) {
  for (const NarrowStringView name : {kDerivedParameter, kOwnDerivedParameter}) {
    const CardParameter* derived = line.Find(name);
    if (derived != nullptr && EqualsIgnoringCase(derived->value, kDerivedWord)) return true;
  }
  return false;
}

bool IsFrame(NarrowStringView name) {
  return std::ranges::any_of(
      kFrameNames, [name](NarrowStringView frame) { return EqualsIgnoringCase(frame, name); });
}

}  // namespace

void VCardDown(std::string_view card, const TellFormatLoss& tell, std::string& out,
               GroupBook* groups) {
  out.clear();
  CardDown(card, tell, groups, out).Run();
}

void CardDown::Run() {
  if (GroupMarkOf(card_.lines()) != nullptr) return DropGroup();
  lines_.Append(kBeginWord, {}, kContactObject.text);
  lines_.Append(kVersionWord, {}, kOldVersion);
  CollectLabels();
  ConvertLines();
  AppendPronunciation();
  AppendGroups();
  for (const CardLine& line : card_.lines()) {
    const Label* label = LabelOf(line);
    if (label != nullptr && label->line == &line && !label->isUsed)
      Drop(line, FormatReason::TypeIgnored);
  }
  lines_.Append(kEndWord, {}, kContactObject.text);
}

// Its members have its name where the text's groups are known; all else of it goes.
void CardDown::DropGroup() {
  const NarrowString name = GroupNameOf(card_.lines());
  const auto isIn = [&](const CardLine& line) {
    return groups_ != nullptr && !name.empty() && PropertyOf(line.name) == CardProperty::Member &&
           groups_->HasCardOf(line.value);
  };
  const bool isKept = std::ranges::any_of(card_.lines(), isIn);
  for (const CardLine& line : card_.lines()) {
    const auto property = PropertyOf(line.name);
    if (IsFrame(line.name) || line.value.empty() || property == CardProperty::ProductId) continue;
    const bool isSaid = isKept && (property == CardProperty::Kind || SaysName(line, name));
    if (!isSaid && !isIn(line)) Drop(line, FormatReason::NoProperty);
  }
}

// Whether the line names the card so and says nothing else.
bool CardDown::SaysName(const CardLine& line, NarrowStringView name) {
  const auto property = PropertyOf(line.name);
  if (property == CardProperty::FormattedName) return Text(line) == name;
  if (property != CardProperty::Name || Parts(line, ';').front() != name) return false;
  return std::ranges::all_of(parts_.begin() + 1, parts_.end(), &NarrowString::empty);
}

void CardDown::CollectLabels() {
  for (const CardLine& line : card_.lines()) {
    if (!EqualsIgnoringCase(line.name, kLabelProperty)) continue;
    const Label label = {&line, LabelText(line.value), false};
    if (!labels_.try_emplace(line.group, label).second) Drop(line, FormatReason::Replaced);
  }
}

// A card inside of the card is another person's.
void CardDown::ConvertLines() {
  std::size_t depth = 0;
  bool isFirst = true;
  for (const CardLine& line : card_.lines()) {
    const bool isCard = EqualsIgnoringCase(Trim(line.value), kContactObject.text);
    if (isCard && EqualsIgnoringCase(line.name, kBeginWord)) {
      if (!isFirst && depth++ == 0) Drop(line, FormatReason::NoProperty);
    } else if (isCard && EqualsIgnoringCase(line.name, kEndWord)) {
      depth -= depth == 0 ? 0 : 1;
    } else if (depth == 0) {
      Convert(line);
    }
    isFirst = false;
  }
}

void CardDown::Convert(const CardLine& line) {
  if (!IsName(line.name)) return Drop(line, FormatReason::BadValue);
  if (IsFrame(line.name) || EqualsIgnoringCase(line.name, kLabelProperty) || line.value.empty())
    return;
  if (const auto property = PropertyOf(line.name)) {
    ConvertKnown(line, *property);
  } else {
    ConvertOther(line);
  }
}

void CardDown::ConvertKnown(const CardLine& line, CardProperty property) {
  if (line.IsBase64() && property != CardProperty::Photo) return ConvertUnknown(line);
  switch (property) {
    case CardProperty::ProductId:
      if (Value(line) == kProductId) return;
      return AppendText(line, property, {}, Value(line));
    case CardProperty::Uid:
    case CardProperty::Revision:
      return AppendText(line, property, {}, Value(line));
    case CardProperty::Kind:
      if (EqualsIgnoringCase(Trim(line.value), kPersonKind)) return;
      return ConvertUnknown(line);
    case CardProperty::Member:
      return ConvertUnknown(line);
    case CardProperty::Name:
      return ConvertName(line);
    case CardProperty::PhoneticFamily:
    case CardProperty::PhoneticGiven:
    case CardProperty::PhoneticMiddle:
    case CardProperty::PhoneticPrefix:
    case CardProperty::PhoneticSuffix:
      return ConvertPronunciation(line, property);
    case CardProperty::Nickname:
    case CardProperty::Categories:
      return ConvertList(line, property);
    case CardProperty::Birthday:
    case CardProperty::FurtherBirthday:
    case CardProperty::Anniversary:
    case CardProperty::FurtherAnniversary:
    case CardProperty::OtherDay:
      return ConvertDay(line, property);
    case CardProperty::Telephone:
      return ConvertTelephone(line);
    case CardProperty::Email:
      return ConvertCoded(line, kEmailTypes, property, EmailWord);
    case CardProperty::Url:
      return ConvertCoded(line, kUrlTypes, property, UrlWord);
    case CardProperty::Messenger:
      return ConvertMessenger(line);
    case CardProperty::Address:
      return ConvertAddress(line);
    case CardProperty::Organization:
      return ConvertOrganization(line);
    case CardProperty::Note:
      return ConvertText(line, property);
    case CardProperty::FormattedName:
      if (IsDerived(line)) return;
      return ConvertOnce(line, property);
    case CardProperty::Title:
    case CardProperty::Role:
    case CardProperty::Hobby:
      return ConvertOnce(line, property);
    case CardProperty::Blood:
      return ConvertBlood(line);
    case CardProperty::Photo:
      return ConvertPhoto(line);
    case CardProperty::Favorite:
      return ConvertFavorite(line);
  }
}

void CardDown::ConvertOther(const CardLine& line) {
  if (const auto messenger = MessengerOf(line.name)) {
    AppendText(line, CardProperty::Messenger, OldParameters(MessengerWord(*messenger)), Text(line));
  } else if (EqualsIgnoringCase(line.name, kSound)) {
    if (line.Find(kDeviceName) == nullptr) return Drop(line, FormatReason::NoProperty);
    const std::vector<NarrowString>& parts = Parts(line, ';');
    for (std::size_t i = 0; i < std::min(parts.size(), pronunciation_.size()); ++i)
      pronunciation_[i] = parts[i];
  } else {
    ConvertUnknown(line);
  }
}

// It stays in the text, where who knows it finds it; but for pictures and keys, which are long.
void CardDown::ConvertUnknown(const CardLine& line) {
  Drop(line, FormatReason::NoProperty);
  if (line.IsBase64() || EqualsIgnoringCase(line.value.substr(0, kDataScheme.size()), kDataScheme))
    return;
  // Parts keep their escapes, which 2.1 has for them too.
  const bool isText = FindUnescaped(line.value, ';') == NarrowStringView::npos;
  lines_.AppendText(line.name, WordsOf(line), isText ? Text(line) : Value(line));
}

// The groups that cards of their own tell; the card may name some of them itself.
void CardDown::AppendGroups() {
  if (groups_ == nullptr) return;
  const auto uid = std::ranges::find_if(card_.lines(), [](const CardLine& line) {
    return PropertyOf(line.name) == CardProperty::Uid && !Trim(line.value).empty();
  });
  if (uid == card_.lines().end()) return;
  for (const NarrowStringView name : groups_->TakeGroupsOf(uid->value)) {
    if (!named_.contains(NarrowString(name))) AppendText(*uid, CardProperty::Categories, {}, name);
  }
}

CardDown::Label* CardDown::LabelOf(const CardLine& line) {
  if (line.group.empty()) return nullptr;
  const auto place = labels_.find(line.group);
  return place == labels_.end() ? nullptr : &place->second;
}

bool CardDown::IsTaken(const CardLine& line, CardProperty property) {
  const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(property);
  if ((taken_ & bit) != 0) {
    Drop(line, FormatReason::Replaced);
    return true;
  }
  taken_ |= bit;
  return false;
}

void CardDown::Tell(const CardLine& line, FormatVerdict verdict, FormatReason reason) const {
  if (tell_) tell_({NarrowString(line.name), verdict, reason, line.line});
}

}  // namespace pim
