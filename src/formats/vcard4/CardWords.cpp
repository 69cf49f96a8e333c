// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/CardWords.h"

#include <algorithm>
#include <array>

#include "formats/vcard4/UriText.h"
#include "pim/manager/TypeWords.h"
#include "support/Ascii.h"
#include "support/DateTimeText.h"
#include "support/ParameterWords.h"

namespace pim {
namespace {

constexpr NarrowStringView kPreferredWord = "PREF";
constexpr NarrowStringView kOmittedYear = "X-APPLE-OMIT-YEAR";

// Parameters that say nothing of the value, or that are read where it is.
constexpr NarrowStringView kIdleParameters[] = {
    kCharsetName,      kEncodingName,     kQuotedPrintableWord.text,
    kBase64Word.text,  "VALUE",           "PID",
    "ALTID",           "INDEX",           "MEDIATYPE",
    kServiceParameter, kDerivedParameter, kOwnDerivedParameter,
    kOmittedYear,      "X-IRMC-N",
};

// Messengers' URIs besides those that are written.
constexpr MessengerRow kMessengerUris[] = {
    {MESSENGER_AIM, "", "aim:goim?screenname="},
    {MESSENGER_YAHOO, "", "ymsgr:sendim?"},
    {MESSENGER_WINDOW, "", "msnim:chat?contact="},
    {MESSENGER_WINDOW, "", "msn:"},
    {MESSENGER_GOOGLE_TALK, "", "gtalk:"},
    {MESSENGER_JABBER, "", "jabber:"},
    {MESSENGER_OTHER, "", "x-apple:"},
};
constexpr Word kServiceAliases[] = {
    {"Google Talk", MESSENGER_GOOGLE_TALK},
    {"GTalk", MESSENGER_GOOGLE_TALK},
    {"Window", MESSENGER_WINDOW},
    {"XMPP", MESSENGER_JABBER},
    {"AOL", MESSENGER_AIM},
};
constexpr Word kMessengerProperties[] = {
    {"X-AIM", MESSENGER_AIM},
    {"X-ICQ", MESSENGER_ICQ},
    {"X-JABBER", MESSENGER_JABBER},
    {"X-MSN", MESSENGER_WINDOW},
    {"X-YAHOO", MESSENGER_YAHOO},
    {"X-SKYPE", MESSENGER_SKYPE},
    {"X-SKYPE-USERNAME", MESSENGER_SKYPE},
    {"X-GOOGLE-TALK", MESSENGER_GOOGLE_TALK},
    {"X-GTALK", MESSENGER_GOOGLE_TALK},
    {"X-QQ", MESSENGER_QQ},
};

NarrowStringView WithoutOwnMark(NarrowStringView word) {
  const bool isOwn = EqualsIgnoringCase(word.substr(0, kOwnWord.size()), kOwnWord);
  return isOwn ? word.substr(kOwnWord.size()) : word;
}

std::optional<std::uint32_t> CodeOfType(const TypeWords& words, NarrowStringView word) {
  word = WithoutOwnMark(Trim(word));
  if (word.empty()) return std::nullopt;
  for (const TypeRow& row : words.rows) {
    if (EqualsIgnoringCase(word, WithoutOwnMark(row.v4)) ||
        EqualsIgnoringCase(word, WithoutOwnMark(row.v3)))
      return row.code;
  }
  return CodeOf(words.aliases, word);
}

class TypeReader {
 public:
  explicit TypeReader(const TypeWords& words) : words_(words) {}

  bool Take(NarrowStringView word) {
    const auto near = CodeOf(words_.near, Trim(word));
    if (near) types_.isWhole = false;
    if (const auto code = near ? near : CodeOfType(words_, word)) {
      // One place holds one code: the first.
      if (words_.isMask || types_.code == 0) {
        types_.code |= *code;
      } else if (types_.code != *code) {
        types_.isWhole = false;
      }
      return true;
    }
    if (EqualsIgnoringCase(word, kPreferredWord) && words_.isMask && !words_.rows.empty()) {
      types_.isPreferred = true;
      return true;
    }
    return !words_.idle.empty() && EqualsIgnoringCase(word, words_.idle);
  }
  void TakeParameter(const CardParameter& parameter) {
    if (!parameter.hasValue) {
      if (!IsIdle(parameter.name)) Keep(Take(parameter.name));
    } else if (EqualsIgnoringCase(parameter.name, kTypeName)) {
      ForEachWord(parameter.value, [this](NarrowStringView word) { Keep(Take(word)); });
    } else if (EqualsIgnoringCase(parameter.name, kPreferredWord)) {
      Keep(Trim(parameter.value) == "1" && Take(kPreferredWord));
    } else {
      Keep(IsIdle(parameter.name));
    }
  }

  TypesRead types_;

 private:
  static bool IsIdle(NarrowStringView name) {
    return std::ranges::any_of(
        kIdleParameters, [name](NarrowStringView idle) { return EqualsIgnoringCase(idle, name); });
  }
  void Keep(bool hasEffect) { types_.isWhole = types_.isWhole && hasEffect; }

  const TypeWords& words_;
};

// The URI's start where one of the rows has it.
const MessengerRow* RowOfUri(std::span<const MessengerRow> rows, NarrowStringView uri) {
  const auto row = std::ranges::find_if(rows, [uri](const MessengerRow& candidate) {
    return EqualsIgnoringCase(candidate.scheme, uri.substr(0, candidate.scheme.size()));
  });
  return row == rows.end() ? nullptr : &*row;
}

std::optional<std::uint32_t> CodeOfService(NarrowStringView service) {
  for (const MessengerRow& row : kMessengerRows)
    if (!row.service.empty() && EqualsIgnoringCase(row.service, service)) return row.code;
  return CodeOf(kServiceAliases, service);
}

// The digits of a date, with a hyphen for each place of a year or month that isn't told; empty when
// something else stands there.
NarrowString DigitsOfDay(NarrowStringView date) {
  constexpr NarrowStringView kExtended = "dddd-dd-dd";
  const bool lacksYear = date.starts_with("--");
  NarrowString digits;
  if (lacksYear) {
    date.remove_prefix(2);
    digits = kYearOfNone;
    if (date.size() == 5 && date[2] == '-') return digits.append(date, 0, 2).append(date, 3, 2);
    return digits.append(date);
  }
  if (date.size() != kExtended.size() || date[4] != '-' || date[7] != '-')
    return NarrowString(date);
  return digits.append(date, 0, 4).append(date, 5, 2).append(date, 8, 2);
}

bool IsDay(NarrowStringView digits) {
  if (digits.size() != 8 || !std::ranges::all_of(digits, IsDigit)) return false;
  std::int32_t number = 0;
  for (const char c : digits) number = number * 10 + (c - '0');
  COleDateTime day;
  day.SetDateTime(number / 10000, number / 100 % 100, number % 100, 0, 0, 0);
  return day.status == StatusValid;
}

}  // namespace

TypesRead ReadTypes(const TypeWords& words, const CardLine& line, NarrowStringView label) {
  TypeReader reader(words);
  if (!label.empty()) reader.types_.isLabelUsed = reader.Take(label);
  for (const CardParameter& parameter : line.parameters) reader.TakeParameter(parameter);
  return reader.types_;
}

std::optional<CardProperty> PropertyOf(NarrowStringView name) {
  constexpr NarrowStringView kPronunciation = "SOUND";  // a sound in today's versions
  for (const PropertyRow& row : kPropertyRows) {
    if (EqualsIgnoringCase(name, row.v4) || EqualsIgnoringCase(name, row.v3) ||
        (row.v21 != kPronunciation && !name.empty() && EqualsIgnoringCase(name, row.v21)))
      return row.code;
  }
  for (const PropertyAlias& alias : kPropertyAliases)
    if (EqualsIgnoringCase(name, alias.name)) return alias.property;
  return std::nullopt;
}

NarrowStringView LabelText(NarrowStringView value) {
  constexpr NarrowStringView kStart = "_$!<";
  constexpr NarrowStringView kEnd = ">!$_";
  value = Trim(value);
  if (value.size() < kStart.size() + kEnd.size() || !value.starts_with(kStart) ||
      !value.ends_with(kEnd))
    return value;
  return value.substr(kStart.size(), value.size() - kStart.size() - kEnd.size());
}

MessengerRead ReadMessenger(const CardLine& line, NarrowStringView text) {
  const CardParameter* service = line.Find(kServiceParameter);
  const MessengerRow* uri = RowOfUri(kMessengerUris, text);
  if (uri == nullptr) uri = RowOfUri(kMessengerRows, text);
  MessengerRead messenger;
  messenger.type = uri == nullptr ? std::uint32_t{MESSENGER_OTHER} : uri->code;
  messenger.isWhole = uri != nullptr;
  if (service != nullptr) {
    NarrowString name;
    ForEachWord(service->value, [&name](NarrowStringView word) { name = word; });
    const auto code = CodeOfService(name);
    messenger.isWhole = code.has_value();
    messenger.type = code.value_or(MESSENGER_OTHER);
  }
  messenger.address =
      uri == nullptr ? NarrowString(text) : ReadUriPart(text.substr(uri->scheme.size()));
  return messenger;
}

std::optional<std::uint32_t> MessengerOf(NarrowStringView property) {
  return CodeOf(kMessengerProperties, property);
}

DayRead ReadDay(const CardLine& line, NarrowStringView value) {
  value = Trim(value);
  const std::size_t time = value.find_first_of("Tt ");
  DayRead day;
  day.text = DigitsOfDay(value.substr(0, time));
  if (!IsDay(day.text)) {
    day.text.clear();
    return day;
  }
  day.hasTime = time != NarrowStringView::npos;
  const CardParameter* omitted = line.Find(kOmittedYear);
  day.lacksYear = value.starts_with("--") ||
                  (omitted != nullptr && NarrowStringView(day.text).starts_with(omitted->value));
  return day;
}

}  // namespace pim
