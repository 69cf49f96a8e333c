#include "vcalendar/VCalendarReader.h"

#include <new>

#include "pim/support/ParseFailure.h"
#include "support/ParameterTable.h"
#include "support/ShowParseFailure.h"
#include "vcalendar/VCalendarValues.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {
namespace {

constexpr WordIndex kPropertyIndex(kVCalendarProperties);

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

// Like their BEGIN, an item's END may be cut short.
void WatchEnd(TextWatcher& watcher, NarrowStringView value) {
  const NarrowStringView word = watcher.WordOfEnd(value);
  if (CodeOfStart(kItemObjects, word)) return watcher.EndRecord();
  if (IsStartOf(kCalendarObject.text, word)) watcher.EndFrame();
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

bool VCalendarReader::Read(NarrowStringView piece, bool final) {
  const auto parse = [&] {
    return parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final);
  };
  if (!watcher_) return parse();
  return watcher_->Around(piece, final, parse, [this] { return NameOfLast(*context_.calendars); });
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
  const auto id = kPropertyIndex.CodeOf(KeyOf(name));
  context.propertyId = id ? static_cast<std::int32_t>(*id) : VCAL_UNKNOWN;
  if (context.watcher != nullptr) context.isEnd = EqualsIgnoringCase(name, kEndWord);
  for (const ParserParam* param = params; param->name.text != nullptr; ++param) {
    TakeTextParameter(KeyOf(param->name.text), param->ValueText(), context.charset,
                      context.encoding);
    if (context.propertyId == VCAL_AALARM)
      context.alarmFormat |= AlarmBitsOf(param->name.text, param->ValueText());
  }
}

void OnVCalData(void* user, const char* bytes, std::int32_t length) {
  auto& context = *static_cast<VCalReadContext*>(user);
  if (bytes == nullptr) {
    context.propertyId = VCAL_NO_PROPERTY;
    context.alarmFormat = 0;
    return;
  }
  CCalendars& calendars = *context.calendars;
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  // The only place where an item begins; none has an end, so what stands behind its END, and in
  // blocks inside it, is its own.
  if (context.propertyId == VCAL_BEGIN) {
    if (const auto type = CodeOfStart(kItemObjects, value)) {
      if (context.watcher != nullptr) {
        context.watcher->Complete([&calendars] { return NameOfLast(calendars); });
        context.watcher->BeginRecord();
      }
      if (context.onBegin) context.onBegin();
      calendars.AddNew().calendar_type = static_cast<std::uint8_t>(*type);
      AllDayPending = false;
    } else if (context.watcher != nullptr && EqualsIgnoringCase(value, kCalendarObject.text)) {
      context.watcher->BeginFrame();
    }
    return;
  }
  if (context.isEnd) WatchEnd(*context.watcher, value);
  if (calendars.GetCount() == 0) return;
  CCalendar& item = calendars[calendars.GetCount() - 1];
  const auto event = TakeVCalendarValue(context, bytes, length, item);
  if (event && context.watcher != nullptr) {
    const auto id = static_cast<std::uint32_t>(context.propertyId);
    context.watcher->Note(*event, TextOf(kVCalendarProperties, id), value);
  }
}

}  // namespace pim
