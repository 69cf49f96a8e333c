// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcalendar/VCalendarReader.h"

#include <new>

#include "pim/support/ParseFailure.h"
#include "support/ParameterTable.h"
#include "support/ShowParseFailure.h"
#include "vcalendar/VCalendarValues.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {
namespace {

constexpr WordIndex kItemPropertyIndex(kVCalendarProperties);

// A parameter of which a known name is the start counts as that one.
std::uint32_t AlarmBitsOf(NarrowStringView name, NarrowStringView value) {
  while (!value.empty() && (value.front() == '=' || IsBlank(value.front()))) value.remove_prefix(1);
  value = Trim(value);
  if (IsStartOf(name, kAlarmTypeName)) return CodeOf(kAlarmTypeWords, value).value_or(0);
  if (IsStartOf(name, kAlarmValueName)) return CodeOf(kAlarmValueWords, value).value_or(0);
  return 0;
}

WideString NameOfLast(const CCalendars& calendars) {
  if (calendars.GetCount() == 0) return {};
  const CCalendar& item = calendars[calendars.GetCount() - 1];
  return (item.summary.empty() ? item.description : item.summary).str();
}

// Like their BEGIN, an item's END may be cut short. That of the frame ends its items too.
void TellEnd(VCalReadContext& context, NarrowStringView value) {
  const WordBehindEnd end = WordOfEnd(value);
  const bool endsItem = CodeOfStart(kItemObjects, end.word).has_value();
  const bool endsFrame = !endsItem && IsStartOf(kCalendarObject.text, end.word);
  if (context.watcher != nullptr) {
    if (end.isJoined) context.watcher->Note(TextEvent::RecordsJoined, kEndWord, value);
    if (endsItem) context.watcher->EndRecord();
    if (endsFrame) context.watcher->EndFrame();
  }
  if (context.account != nullptr) {
    if (end.isJoined) context.account->TellFrame(LOSS_JOINED);
    if (endsItem || endsFrame) context.account->EndRecord();
  }
}

void TakeBegin(VCalReadContext& context, NarrowStringView value) {
  CCalendars& calendars = *context.calendars;
  if (const auto type = CodeOfStart(kItemObjects, value)) {
    if (context.watcher != nullptr) {
      context.watcher->Complete([&calendars] { return NameOfLast(calendars); });
      context.watcher->BeginRecord();
    }
    if (context.account != nullptr) context.account->BeginRecord();
    if (context.onBegin) context.onBegin();
    calendars.AddNew().calendar_type = static_cast<std::uint8_t>(*type);
    AllDayPending = false;
  } else if (EqualsIgnoringCase(value, kCalendarObject.text)) {
    if (context.watcher != nullptr) context.watcher->BeginFrame();
  } else if (context.account != nullptr && CodeOfStart(kItemObjects, Trim(value))) {
    context.account->TellFrame(LOSS_BAD_VALUE);  // blanks behind the word: it begins nothing
  }
}

// Gives whether the parameter has an effect.
template <Telling>
[[gnu::always_inline]] inline bool TakeParameter(VCalReadContext& context,
                                                 const ParserParam& param) {
  const NarrowStringView value = param.ValueText();
  const bool ofText =
      TakeTextParameter(KeyOf(param.name.text), value, context.charset, context.encoding);
  if (context.propertyId != VCAL_AALARM) return ofText;
  const std::uint32_t bits = AlarmBitsOf(param.name.text, value);
  context.alarmFormat |= bits;
  return ofText || bits != 0;
}

void TellParameter(VCalReadContext& context, const ParserParam& param, bool isHeard,
                   const ReadingParameters& before) {
  const WordKey name = KeyOf(param.name.text);
  const LossMask losses =
      LossIf(!isHeard && !IsPlainEncoding(name.text), LOSS_TYPE_IGNORED) |
      LossesOfTextParameter(name, param.ValueText(), before, {context.charset, context.encoding});
  if (losses != 0) context.account->TellParameter(losses, name.text, param.ValueText());
}

PropertyKind KindOf(const VCalReadContext& context) {
  if (context.propertyId == VCAL_UNKNOWN)
    return context.isEnd ? PropertyKind::Frame : PropertyKind::Unknown;
  const bool isFrame = context.propertyId == VCAL_BEGIN || context.propertyId == VCAL_VERSION;
  return isFrame ? PropertyKind::Frame : PropertyKind::Known;
}

template <Telling kTelling>
void TakeParameters(VCalReadContext& context, const ParserParam* params) {
  const bool tells = kTelling == Telling::Account && KindOf(context) == PropertyKind::Known;
  for (const ParserParam* param = params; param->name.text != nullptr; ++param) {
    const ReadingParameters before{context.charset, context.encoding};
    const bool isHeard = TakeParameter<kTelling>(context, *param);
    if (tells) TellParameter(context, *param, isHeard, before);
  }
}

}  // namespace

VCalendarReader::VCalendarReader(CCalendars& calendars) : parser_(VObjectParser::Create()) {
  if (parser_ == nullptr) throw std::bad_alloc();
  context_.calendars = &calendars;
  parser_->SetPropertyHandler(OnVCalProperty);
  parser_->SetDataHandler(OnVCalData);
  parser_->SetUserData(&context_);
}

void VCalendarReader::Watch(WatchText watch) {
  watcher_.emplace(std::move(watch), *parser_);
  context_.watcher = &*watcher_;
}

void VCalendarReader::Account(TakeEntry take) {
  account_.emplace(std::move(take), *parser_, [this] { return NameOfLast(*context_.calendars); });
  context_.account = &*account_;
  parser_->junkHandler = [](void* user) {
    static_cast<VCalReadContext*>(user)->account->TakeJunk();
  };
}

bool VCalendarReader::Read(NarrowStringView piece, bool final) {
  const auto parse = [&] {
    return parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final);
  };
  const auto account = [&] { return account_ ? account_->Around(piece, final, parse) : parse(); };
  if (!watcher_) return account();
  return watcher_->Around(piece, final, account,
                          [this] { return NameOfLast(*context_.calendars); });
}

void ShowVCalendarFailure() { ShowParseFailure(u"Error parsing vCalendar"); }

void RaiseVCalendarFailure() {
  ShowVCalendarFailure();
  throw kParseFailure;
}

void ParseVCalendar(CCalendars& calendars, const VObjectBuffer& data) {
  const bool accepted = VCalendarReader(calendars).Read(data.bytes.view(), true);
  for (std::int32_t i = 0; i < calendars.GetCount(); ++i) calendars[i].tag = data.tag;
  if (!accepted) RaiseVCalendarFailure();
}

void OnVCalProperty(void* user, const char* name, const ParserParam* params) {
  auto& context = *static_cast<VCalReadContext*>(user);
  context.charset = CHARSET_NONE;
  context.encoding = ENCODING_NONE;
  context.alarmFormat = 0;
  const auto id = kItemPropertyIndex.CodeOf(KeyOf(name));
  context.propertyId = id ? static_cast<std::int32_t>(*id) : VCAL_UNKNOWN;
  VCalendarAccount* const account = context.account;
  if (context.watcher != nullptr || account != nullptr)
    context.isEnd = EqualsIgnoringCase(name, kEndWord);
  if (account != nullptr) [[unlikely]] {
    account->BeginProperty(name, KindOf(context), [](NarrowStringView rest) {
      return kItemPropertyIndex.CodeOf(KeyOf(rest)).has_value() ||
             EqualsIgnoringCase(rest, kEndWord);
    });
    return TakeParameters<Telling::Account>(context, params);
  }
  TakeParameters<Telling::None>(context, params);
}

namespace {

template <Telling kTelling>
void TakeData(VCalReadContext& context, const char* bytes, std::int32_t length) {
  constexpr bool kTells = kTelling == Telling::Account;
  if (bytes == nullptr) {
    if constexpr (kTells) context.account->EndProperty();
    context.propertyId = VCAL_NO_PROPERTY;
    context.alarmFormat = 0;
    return;
  }
  if constexpr (kTells) context.account->TakeValue();
  CCalendars& calendars = *context.calendars;
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  // The only place where an item begins; none has an end, so what stands behind its END, and in
  // blocks inside it, is its own.
  if (context.propertyId == VCAL_BEGIN) return TakeBegin(context, value);
  if (context.isEnd) TellEnd(context, value);
  if (calendars.GetCount() == 0) return;
  CCalendar& item = calendars[calendars.GetCount() - 1];
  const ValueOutcome outcome = TakeVCalendarValue(context, bytes, length, item);
  if constexpr (kTells) context.account->Tell(outcome.losses);
  if (outcome.event && context.watcher != nullptr) [[unlikely]] {
    const auto id = static_cast<std::uint32_t>(context.propertyId);
    context.watcher->Note(*outcome.event, TextOf(kVCalendarProperties, id), value);
  }
}

}  // namespace

void OnVCalData(void* user, const char* bytes, std::int32_t length) {
  auto& context = *static_cast<VCalReadContext*>(user);
  if (context.account != nullptr) [[unlikely]]
    return TakeData<Telling::Account>(context, bytes, length);
  TakeData<Telling::None>(context, bytes, length);
}

}  // namespace pim
