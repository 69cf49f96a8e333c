#include <algorithm>
#include <array>
#include <cstdio>

#include "pim/manager/LabelKeys.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/records/Calendar.h"
#include "support/Ascii.h"
#include "support/TextCodec.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

constexpr WideStringView kLineEnd = u"\n";

VObjectBuffer NarrowObject(WideStringView text) {
  NarrowString bytes;
  NarrowText(text, bytes);
  VObjectBuffer data;
  data.bytes.Assign(bytes.data(), bytes.size());
  return data;
}

// Whether the text begins with the word, in any ASCII letter case.
bool BeginsWith(WideStringView text, NarrowStringView word) {
  return text.size() >= word.size() &&
         std::equal(word.begin(), word.end(), text.begin(), [](char letter, char16_t unit) {
           return unit < 0x80 && ToUpper(static_cast<char>(unit)) == letter;
         });
}

template <class... Numbers>
WideString Format(const char* form, Numbers... numbers) {
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), form, numbers...);
  return {text.data(), text.data() + length};
}

// The record's own value, UTC. A date that isn't set or doesn't exist is shown as none.
WideString FormatDate(const COleDateTime& value) {
  if (value.GetYear() < 0) return {};
  return Format("%02d/%02d/%04d", value.GetDay(), value.GetMonth(), value.GetYear());
}

WideString FormatTime(const COleDateTime& value) {
  if (value.GetYear() < 0) return {};
  return Format("%02d:%02d", value.GetHour(), value.GetMinute());
}

// A rendering under construction: labels, each with its value below.
class Rendering {
 public:
  Rendering(const VObjectMgr& manager, const char16_t* heading) : manager_(manager) {
    text_.append(manager_.GetString(heading)).append(kLineEnd).append(kLineEnd);
  }

  void Add(const char16_t* label, WideStringView value) {
    text_.append(manager_.GetString(label)).append(u":").append(kLineEnd);
    AddLine(value);
  }
  void AddNumbered(const char16_t* label, std::int32_t number, WideStringView value) {
    text_.append(manager_.GetString(label)).append(Format(" #%d:\n", number));
    AddLine(value);
  }
  void AddLine(WideStringView line) { text_.append(line).append(kLineEnd); }
  // The word of a key; nothing for null.
  WideString Word(const char16_t* key) const {
    return key == nullptr ? WideString() : manager_.GetString(key);
  }

  WideString& text() { return text_; }

 private:
  const VObjectMgr& manager_;
  WideString text_;
};

const char16_t* CategoryKey(std::uint32_t mask) {
  switch (mask) {
    case CATEGORY_ANNIVERSARY:
      return labels::kAnniversary;
    case CATEGORY_APPOINTMENT:
      return labels::kAppointment;
    case CATEGORY_BIRTHDAY:
      return labels::kBirthday;
    default:
      return nullptr;
  }
}

const char16_t* RepeatKey(const RecurrenceData* rule) {
  if (rule == nullptr) return labels::kOnce;
  switch (rule->type) {
    case RECUR_DAILY:
      return labels::kDaily;
    case RECUR_WEEKLY:
      return labels::kWeekly;
    case RECUR_MONTHLY_BY_POS:
    case RECUR_MONTHLY_BY_DAY:
      return labels::kMonthly;
    case RECUR_YEARLY_BY_MONTH:
    case RECUR_YEARLY_BY_DAY:
      return labels::kYearly;
    default:
      return nullptr;
  }
}

const char16_t* PriorityKey(std::int32_t priority) {
  switch (priority) {
    case PRIORITY_HIGH:
      return labels::kHigh;
    case PRIORITY_MEDIUM:
      return labels::kMedium;
    case PRIORITY_LOW:
      return labels::kLow;
    default:
      return nullptr;
  }
}

WideString AlarmPhrase(const Rendering& rendering, const CCalendar& item) {
  std::int32_t minutes = 0;
  item.GetAlarmRuntime(minutes);
  switch (item.GetAlarmType()) {
    case DESKMATE_IDS::ALARM_NONE:
      return rendering.Word(labels::kNoAlarm);
    case DESKMATE_IDS::ALARM_AUDIO:
    case DESKMATE_IDS::ALARM_OTHER:
      return Format("%d ", minutes).append(rendering.Word(labels::kMinutesBefore));
    default:
      return {};
  }
}

}  // namespace

void VObjectMgr::MakeMapString(WideString key, WideString text) {
  if (labelMap == nullptr) labelMap = std::make_unique<std::map<WideString, WideString>>();
  labelMap->try_emplace(std::move(key), std::move(text));
}

WideString VObjectMgr::GetString(const char16_t* key) const {
  if (labelMap == nullptr) return {};
  const auto found = labelMap->find(key);
  return found == labelMap->end() ? WideString() : found->second;
}

WideString VObjectMgr::VObjectToString(WideString text) const {
  if (BeginsWith(text, "BEGIN:VCARD")) return VCardToString(std::move(text));
  if (BeginsWith(text, "BEGIN:VCALE")) return VCalendarToString(std::move(text));
  if (BeginsWith(text, "BEGIN:VTODO")) return VTodoToString(std::move(text));
  return text;
}

WideString VObjectMgr::VCardToString(WideString text) const {
  if (text.empty()) return {};
  CContacts contacts;
  ParseVCard(contacts, NarrowObject(text));
  if (contacts.GetCount() == 0) return {};
  const CContact& contact = contacts[0];
  Rendering rendering(*this, labels::kVCard);
  rendering.Add(labels::kName,
                contact.name.given_name.str().append(u" ").append(contact.name.family_name.view()));
  for (std::int32_t i = 0; i < contact.GetTelephoneCount(); ++i)
    rendering.AddNumbered(labels::kNumber, i, contact.GetTelephone(i).number);
  for (std::int32_t i = 0; i < contact.GetEmailCount(); ++i)
    rendering.AddNumbered(labels::kEmail, i, contact.GetEmail(i).email_address);
  return std::move(rendering.text());
}

WideString VObjectMgr::VCalendarToString(WideString text) const {
  if (text.empty()) return {};
  CCalendars items;
  ParseVCalendar(items, NarrowObject(text));
  if (items.GetCount() == 0) return {};
  const CCalendar& item = items[0];
  const RecurrenceData* rule = item.recurrence.GetRecurrenceData();
  const bool ends = rule != nullptr && rule->endDate.status == StatusValid;
  Rendering rendering(*this, labels::kVCalendar);
  rendering.Add(labels::kStartDate, FormatDate(item.start_time));
  rendering.Add(labels::kEndDate, FormatDate(item.end_time));
  rendering.Add(labels::kCategory, rendering.Word(CategoryKey(item.GetCategories())));
  rendering.Add(labels::kTime,
                FormatTime(item.start_time).append(u" ~ ").append(FormatTime(item.end_time)));
  rendering.Add(labels::kSubject, item.summary);
  rendering.Add(labels::kLocation, item.location);
  rendering.Add(labels::kAlarm, AlarmPhrase(rendering, item));
  rendering.Add(labels::kRepeat, rendering.Word(RepeatKey(rule)));
  rendering.Add(labels::kExpiration,
                ends ? FormatDate(rule->endDate) : rendering.Word(labels::kNoExpiration));
  return std::move(rendering.text());
}

WideString VObjectMgr::VTodoToString(WideString text) const {
  if (text.empty()) return {};
  CCalendars items;
  ParseVCalendar(items, NarrowObject(text));
  if (items.GetCount() == 0) return {};
  const CCalendar& item = items[0];
  Rendering rendering(*this, labels::kVTodo);
  rendering.AddLine(rendering.Word(labels::kDate));  // the one label without a colon
  rendering.AddLine(FormatDate(item.due));
  rendering.Add(labels::kPriority, rendering.Word(PriorityKey(item.priority)));
  rendering.Add(labels::kNotes, {});
  return std::move(rendering.text());
}

}  // namespace pim
