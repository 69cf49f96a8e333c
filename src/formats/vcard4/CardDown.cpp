// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/CardDown.h"

#include <algorithm>

#include "formats/vcard4/UriText.h"
#include "pim/manager/TypeWords.h"
#include "support/Ascii.h"
#include "support/Base64.h"
#include "support/ParameterWords.h"
#include "support/TextCodec.h"

namespace pim {
namespace {

constexpr NarrowStringView kTelephoneScheme = "tel:";

bool StartsWith(NarrowStringView text, NarrowStringView start) {
  return EqualsIgnoringCase(text.substr(0, start.size()), start);
}

bool AreEmpty(const std::vector<NarrowString>& parts) {
  return std::ranges::all_of(parts, &NarrowString::empty);
}

const MediaRow* FindMedia(NarrowStringView media) {
  for (const MediaRow& row : kMediaRows) {
    if (EqualsIgnoringCase(media, row.media) || EqualsIgnoringCase(media, row.word) ||
        EqualsIgnoringCase(media, row.extension))
      return &row;
  }
  return EqualsIgnoringCase(media, kOtherMedia.word) ? &kOtherMedia : nullptr;
}

// The media that a picture's parameters name, in TYPE or as bare words.
NarrowStringView NamedMedia(const CardLine& line) {
  NarrowStringView media;
  for (const CardParameter& parameter : line.parameters) {
    if (!parameter.hasValue && FindMedia(parameter.name) != nullptr) media = parameter.name;
    if (EqualsIgnoringCase(parameter.name, kTypeName))
      ForEachWord(parameter.value, [&media](NarrowStringView word) { media = word; });
  }
  return media;
}

// The digits of base64 with their padding made right; whatever else stands there is left out, and
// makes `isWhole` false unless it's a blank.
NarrowString CleanBase64(NarrowStringView text, bool& isWhole) {
  NarrowString digits;
  digits.reserve(text.size() + 4);
  bool isPadded = false;
  for (const char c : text) {
    if (IsLetter(c) || IsDigit(c) || c == '+' || c == '/') {
      isWhole = isWhole && !isPadded;
      digits += c;
    } else if (c == '=') {
      isPadded = true;
    } else {
      isWhole = isWhole && IsBlank(c);
    }
  }
  if (digits.size() % 4 == 1) {
    digits.pop_back();
    isWhole = false;
  }
  digits.append((4 - digits.size() % 4) % 4, '=');
  return digits;
}

}  // namespace

NarrowString OldParameters(NarrowStringView words) {
  NarrowString parameters;
  if (!words.empty()) parameters.append(1, ';').append(words);
  std::ranges::replace(parameters, ' ', ';');
  return parameters;
}

NarrowStringView CardDown::Value(const CardLine& line) {
  bool isExact = true;
  const NarrowStringView value = ValueOf(line, decoded_, isExact);
  if (!isExact) Change(line, FormatReason::BadValue);
  return value;
}

const NarrowString& CardDown::Text(const CardLine& line) {
  UnescapeText(Value(line), text_);
  return text_;
}

std::vector<NarrowString>& CardDown::Parts(const CardLine& line, char mark) {
  parts_.clear();
  NarrowStringView rest = Value(line);
  for (;;) {
    const std::size_t end = FindUnescaped(rest, mark);
    UnescapeText(rest.substr(0, end), parts_.emplace_back());
    if (end == NarrowStringView::npos) return parts_;
    rest.remove_prefix(end + 1);
  }
}

void CardDown::AppendText(const CardLine& line, CardProperty property, NarrowStringView parameters,
                          NarrowStringView text) {
  if (text.empty()) return;
  if (groups_ != nullptr && property == CardProperty::Categories) named_.emplace(text);
  if (!lines_.AppendText(RowOf(property).v21, parameters, text))
    Change(line, FormatReason::BadCharacter);
}

void CardDown::AppendParts(const CardLine& line, CardProperty property, NarrowStringView parameters,
                           std::size_t count) {
  for (; parts_.size() > count; parts_.pop_back()) {
    if (parts_.back().empty()) continue;
    Change(line, FormatReason::ExtraParts);
    break;
  }
  parts_.resize(count);
  if (!lines_.AppendComponents(RowOf(property).v21, parameters, parts_))
    Change(line, FormatReason::BadCharacter);
}

TypesRead CardDown::Types(const CardLine& line, const TypeWords& words) {
  Label* label = LabelOf(line);
  const TypesRead types =
      ReadTypes(words, line, label == nullptr ? NarrowStringView() : label->text);
  if (label != nullptr && types.isLabelUsed) label->isUsed = true;
  if (!types.isWhole) Change(line, FormatReason::TypeIgnored);
  return types;
}

void CardDown::ConvertText(const CardLine& line, CardProperty property) {
  Types(line, kNoTypes);
  AppendText(line, property, {}, Text(line));
}

void CardDown::ConvertOnce(const CardLine& line, CardProperty property) {
  if (!IsTaken(line, property)) ConvertText(line, property);
}

// 2.1 has a line for each; its own property of a group holds one.
void CardDown::ConvertList(const CardLine& line, CardProperty property) {
  const PropertyRow& row = RowOf(property);
  if (row.v21 != row.v4 && EqualsIgnoringCase(line.name, row.v21))
    return ConvertText(line, property);
  Types(line, kNoTypes);
  for (const NarrowString& part : Parts(line, ',')) AppendText(line, property, {}, part);
}

void CardDown::ConvertName(const CardLine& line) {
  if (IsTaken(line, CardProperty::Name)) return;
  Types(line, kNoTypes);
  Parts(line, ';');
  AppendParts(line, CardProperty::Name, {}, kPersonNameParts.size());
}

void CardDown::ConvertTelephone(const CardLine& line) {
  const TypesRead types = Types(line, kTelephoneTypes);
  const CardParameter* kind = line.Find("VALUE");
  const NarrowStringView value = Value(line);
  const bool isUri = kind != nullptr && EqualsIgnoringCase(Trim(kind->value), "uri") &&
                     StartsWith(value, kTelephoneScheme);
  const NarrowString number =
      isUri ? ReadUriPart(value.substr(kTelephoneScheme.size())) : NarrowString(Text(line));
  const std::uint32_t mask = types.code | (types.isPreferred ? TEL_PREFERRED : 0U);
  if (!lines_.AppendNumber(OldParameters(TelephoneWords(mask)), number))
    Change(line, FormatReason::BadCharacter);
}

void CardDown::ConvertCoded(const CardLine& line, const TypeWords& words, CardProperty property,
                            WordOf wordOf) {
  const std::uint32_t code = Types(line, words).code;
  AppendText(line, property, code == 0 ? NarrowString() : OldParameters(wordOf(code)), Text(line));
}

void CardDown::ConvertAddress(const CardLine& line) {
  const TypesRead types = Types(line, kAddressTypes);
  if (AreEmpty(Parts(line, ';'))) return;
  const std::uint32_t mask = types.code | (types.isPreferred ? ADR_PREFERRED : 0U);
  AppendParts(line, CardProperty::Address, OldParameters(AddressWords(mask)), kPostalParts.size());
}

void CardDown::ConvertOrganization(const CardLine& line) {
  const std::uint32_t code = Types(line, kOrganizationTypes).code;
  if (AreEmpty(Parts(line, ';'))) return;
  AppendParts(line, CardProperty::Organization,
              code == 0 ? NarrowString() : OldParameters(OrganizationWord(code)),
              std::max<std::size_t>(parts_.size(), 2));
}

void CardDown::ConvertMessenger(const CardLine& line) {
  if (EqualsIgnoringCase(line.name, RowOf(CardProperty::Messenger).v21))
    return ConvertCoded(line, kChatTypes, CardProperty::Messenger, MessengerWord);
  Types(line, kNoTypes);
  const MessengerRead messenger = ReadMessenger(line, Text(line));
  if (!messenger.isWhole) Change(line, FormatReason::TypeIgnored);
  AppendText(line, CardProperty::Messenger,
             messenger.type == 0 ? NarrowString() : OldParameters(MessengerWord(messenger.type)),
             messenger.address);
}

void CardDown::ConvertDay(const CardLine& line, CardProperty property) {
  const DayRead day = ReadDay(line, Value(line));
  if (day.text.empty()) return Drop(line, FormatReason::BadValue);
  Label* label = LabelOf(line);
  if (label != nullptr && EqualsIgnoringCase(label->text, kAnniversaryLabel)) {
    label->isUsed = true;
    property = CardProperty::Anniversary;
  }
  Types(line, kNoTypes);
  if (day.hasTime) Change(line, FormatReason::TimeDropped);
  if (day.lacksYear) Change(line, FormatReason::NoYear);
  lines_.Append(RowOf(property).v21, {}, day.text);
}

void CardDown::ConvertPhoto(const CardLine& line) {
  NarrowStringView base64 = Text(line);
  NarrowStringView media;
  if (StartsWith(base64, kDataScheme)) {
    constexpr NarrowStringView kMark = ";base64";
    const std::size_t comma = base64.find(',');
    const NarrowStringView header = base64.substr(0, comma).substr(kDataScheme.size());
    if (comma == NarrowStringView::npos || !header.ends_with(kMark))
      return Drop(line, FormatReason::NoPicture);
    media = header.substr(0, header.find(';'));
    base64.remove_prefix(comma + 1);
  } else if (line.IsBase64()) {
    media = NamedMedia(line);
  } else {
    return Drop(line, FormatReason::NoPicture);
  }
  if (IsTaken(line, CardProperty::Photo)) return;
  bool isWhole = true;
  const NarrowString digits = CleanBase64(base64, isWhole);
  if (digits.empty()) return Drop(line, FormatReason::BadBase64);
  if (!isWhole) Change(line, FormatReason::BadBase64);
  const MediaRow* row = FindMedia(media);
  if (row == nullptr && !media.empty()) Change(line, FormatReason::TypeIgnored);
  NarrowString parameters;
  AppendParameter(parameters, kTypeName, row == nullptr ? kOtherMedia.word : row->word);
  AppendParameter(parameters, kEncodingName, kBase64Word.text);
  lines_.Append(RowOf(CardProperty::Photo).v21, parameters, FoldBase64(digits, kBase64LineWidth));
}

void CardDown::ConvertPronunciation(const CardLine& line, CardProperty property) {
  if (IsTaken(line, property)) return;
  Types(line, kNoTypes);
  for (std::size_t i = 0; i < kPersonNameParts.size(); ++i)
    if (kPersonNameParts[i].phonetic == property) pronunciation_[i] = Text(line);
}

void CardDown::AppendPronunciation() {
  parts_.assign(pronunciation_.begin(), pronunciation_.end());
  if (!AreEmpty(parts_))
    lines_.AppendComponents(RowOf(CardProperty::PhoneticFamily).v21, {}, parts_);
}

void CardDown::ConvertBlood(const CardLine& line) {
  for (const BloodType code : {BLOOD_A, BLOOD_B, BLOOD_AB, BLOOD_O}) {
    const NarrowStringView word = BloodWord(code);
    if (!EqualsIgnoringCase(Trim(line.value), word)) continue;
    if (!IsTaken(line, CardProperty::Blood))
      lines_.Append(RowOf(CardProperty::Blood).v21, {}, word);
    return;
  }
  Drop(line, FormatReason::BadValue);
}

void CardDown::ConvertFavorite(const CardLine& line) {
  const NarrowStringView value = Trim(line.value);
  const auto is = [value](NarrowStringView word) { return EqualsIgnoringCase(value, word); };
  if (is(kFavoriteWord) || is("TRUE") || is("1")) {
    if (!IsTaken(line, CardProperty::Favorite))
      lines_.Append(RowOf(CardProperty::Favorite).v21, {}, kFavoriteWord);
  } else if (!is("NO") && !is("FALSE") && !is("0")) {
    Drop(line, FormatReason::BadValue);
  }
}

}  // namespace pim
