// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemComponent.h"

#include <algorithm>
#include <array>

#include "formats/Uuid.h"
#include "formats/icalendar/ColorNames.h"
#include "formats/icalendar/ItemAlarm.h"
#include "formats/icalendar/ItemSpan.h"
#include "formats/icalendar/ItemText.h"
#include "formats/icalendar/OwnWords.h"
#include "formats/icalendar/RuleDates.h"
#include "formats/icalendar/RuleDown.h"
#include "formats/icalendar/RuleText.h"
#include "formats/icalendar/StatusWords.h"
#include "pim/manager/TypeWords.h"
#include "records/CategoryWords.h"

namespace pim {
namespace {

icalcomponent_kind KindOf(const CCalendar& item) {
  switch (static_cast<CalendarType>(item.calendar_type)) {
    case CalendarType::Todo:
      return ICAL_VTODO_COMPONENT;
    case CalendarType::Memo:
      return ICAL_VJOURNAL_COMPONENT;
    default:
      return ICAL_VEVENT_COMPONENT;
  }
}

// Of all that the item says but its stamps of changes, and its place in a store: the same item is
// the same wherever it is exported from.
std::string UidOf(const CCalendar& item) {
  UuidMaker uid;
  const auto add = [&uid](auto number) { uid.Add(static_cast<std::uint64_t>(number)); };
  add(item.calendar_type);
  add(item.allday);
  for (const WideText* text : {&item.summary, &item.description, &item.location, &item.color})
    uid.Add(text->view());
  for (const COleDateTimeNull* date :
       {&item.created_time, &item.start_time, &item.end_time, &item.due, &item.completed}) {
    const auto fields = date->GetFields();
    add(fields.has_value());
    if (!fields) continue;
    for (const std::int32_t field :
         {fields->year, fields->month, fields->day, fields->hour, fields->minute, fields->second})
      add(field);
  }
  uid.Add(NarrowStringView(RuleWords(item.recurrence)));
  uid.Add(NarrowStringView(RuleWords(item.exceptionRule)));
  for (const CCategory& category : item.categories) uid.Add(category.category_name.view());
  for (const std::int32_t code : {item.class_, item.status, item.priority}) add(code);
  return uid.Text();
}

class ItemBuilder {
 public:
  ItemBuilder(const CCalendar& item, const ItemZone* zone, const TellFormatLoss& tell)
      : item_(item),
        tell_(tell),
        kind_(KindOf(item)),
        component_(Made(icalcomponent_new(kind_))),
        zone_(zone),
        span_(item, zone, component_.get(), tell) {}

  IcalOwner<icalcomponent> Build() {
    if (item_.calendar_type < 1 || item_.calendar_type > 3)
      Tell("calendar_type", FormatVerdict::Changed, FormatReason::BadValue);
    AddStamps();
    span_.AddDates();
    AddCompleted();
    AddRules();
    AddText(ICAL_SUMMARY_PROPERTY, "summary", item_.summary);
    AddText(ICAL_DESCRIPTION_PROPERTY, "description", item_.description);
    AddLocation();
    AddCategories();
    AddClass();
    AddStatus();
    AddPriority();
    AddColor();
    AddHoliday();
    AddZone();
    AddAlarm(item_.reminder, span_.anchors(), component_.get(), tell_);
    return std::move(component_);
  }

 private:
  bool isJournal() const { return kind_ == ICAL_VJOURNAL_COMPONENT; }
  void Tell(std::string field, FormatVerdict verdict, FormatReason reason) {
    tell_({std::move(field), verdict, reason});
  }
  void Add(icalproperty* property) { icalcomponent_add_property(component_.get(), Made(property)); }
  void AddOwnText(const char* name, const std::string& text) {
    AddOwn(component_.get(), name, text);
  }
  // A text as the form has it; what it hasn't is told.
  std::string Text(const char* field, const WideText& wide) {
    ItemText text(wide);
    if (text.loss) {
      Tell(field, text.text.empty() ? FormatVerdict::Dropped : FormatVerdict::Changed, *text.loss);
    }
    return std::move(text.text);
  }
  void AddText(icalproperty_kind kind, const char* field, const WideText& wide) {
    const std::string text = Text(field, wide);
    if (text.empty()) return;
    icalproperty* const property = Made(icalproperty_new(kind));
    Add(property);
    icalproperty_set_value(property, Made(icalvalue_new_text(text.c_str())));
  }
  // A stamp in UTC; nothing for null, and what is no date is told.
  std::optional<icaltimetype> StampOf(const char* field, const COleDateTimeNull& value) {
    const auto stamp = IcalUtc(value);
    if (!stamp && value.status != StatusNull)
      Tell(field, FormatVerdict::Dropped, FormatReason::BadValue);
    return stamp;
  }
  void AddOwnStamp(const char* name, const icaltimetype& stamp) {
    AddOwnText(name, UtcText(DateTimeOf(stamp)));
  }

  void AddStamps();
  void AddCompleted();
  void AddRules();
  void AddRepeats(const RecurrenceData& rule, std::string& text);
  void AddExceptions(const RecurrenceData& rule, const std::string& repeats);
  void AddLocation();
  void AddCategories();
  void AddClass();
  void AddStatus();
  void AddPriority();
  void AddColor();
  void AddHoliday();
  void AddZone();

  const CCalendar& item_;
  const TellFormatLoss& tell_;
  icalcomponent_kind kind_;
  IcalOwner<icalcomponent> component_;
  const ItemZone* zone_;
  ItemSpan span_;
};

// DTSTAMP must stand. No clock gives it, so that one item always has one text.
void ItemBuilder::AddStamps() {
  Add(icalproperty_new_uid(UidOf(item_).c_str()));
  icaltimetype stamp = icaltime_from_timet_with_zone(0, 0, icaltimezone_get_utc_timezone());
  for (const COleDateTimeNull* date : {&item_.modified_time, &item_.created_time,
                                       &item_.xmodified_time, &item_.start_time, &item_.due}) {
    if (const auto time = IcalUtc(*date)) {
      stamp = *time;
      break;
    }
  }
  Add(icalproperty_new_dtstamp(stamp));
  if (const auto created = StampOf("created_time", item_.created_time))
    Add(icalproperty_new_created(*created));
  if (const auto modified = StampOf("modified_time", item_.modified_time))
    Add(icalproperty_new_lastmodified(*modified));
  if (const auto modified = StampOf("xmodified_time", item_.xmodified_time))
    AddOwnStamp(kOwnModified, *modified);
}

void ItemBuilder::AddCompleted() {
  const auto completed = StampOf("completed", item_.completed);
  if (!completed) return;
  if (kind_ == ICAL_VTODO_COMPONENT) {
    Add(icalproperty_new_completed(*completed));
  } else {
    AddOwnStamp(kOwnCompleted, *completed);
  }
}

void ItemBuilder::AddRules() {
  const RecurrenceData* const rule = item_.recurrence.GetRecurrenceData();
  const RecurrenceData* const exception = item_.exceptionRule.GetRecurrenceData();
  std::string repeats;
  if (rule != nullptr) AddRepeats(*rule, repeats);
  if (exception != nullptr) AddExceptions(*exception, repeats);
}

void ItemBuilder::AddRepeats(const RecurrenceData& rule, std::string& text) {
  if (!span_.start()) {
    Tell("recurrence", FormatVerdict::Changed, FormatReason::RuleTooRich);
    AddOwnText(kOwnRule, RuleWords(item_.recurrence));
    return;
  }
  RuleText repeats = RRuleOf(rule, *span_.start());
  text = std::move(repeats.text);
  if (repeats.loss) {
    Tell("recurrence", text.empty() ? FormatVerdict::Dropped : FormatVerdict::Changed,
         *repeats.loss);
  }
  const RecurrencePointer back = text.empty() ? nullptr : RuleOfRRule(text, *span_.start());
  if (back == nullptr || *back != rule) AddOwnText(kOwnRule, RuleWords(item_.recurrence));
  if (!text.empty()) Add(icalproperty_new_rrule(icalrecurrencetype_from_string(text.c_str())));
}

void ItemBuilder::AddExceptions(const RecurrenceData& rule, const std::string& repeats) {
  AddOwnText(kOwnException, RuleWords(item_.exceptionRule));
  if (!span_.start()) return;
  const RuleText exception = RRuleOf(rule, *span_.start());
  if (exception.loss) {
    Tell("exceptionRule", exception.text.empty() ? FormatVerdict::Dropped : FormatVerdict::Changed,
         *exception.loss);
  }
  const ExceptionDates away = ExceptionDatesOf(repeats, exception.text, *span_.start());
  if (away.isCut) Tell("exceptionRule", FormatVerdict::Changed, FormatReason::DatesCut);
  for (const icaltimetype& date : away.dates) span_.Add(icalproperty_new_exdate(date), date);
}

void ItemBuilder::AddLocation() {
  if (!isJournal()) {
    AddText(ICAL_LOCATION_PROPERTY, "location", item_.location);
    return;
  }
  const std::string location = Text("location", item_.location);
  if (!location.empty()) AddOwnText(kOwnLocation, location);
}

// One property for each, since the library can't part them otherwise.
void ItemBuilder::AddCategories() {
  for (std::size_t i = 0; i < item_.categories.size(); ++i) {
    const std::string field = "categories[" + std::to_string(i) + "]";
    const WideStringView name = item_.categories[i].category_name.view();
    if (name.empty() || (!isJournal() && CategoryBitOf(name) == CATEGORY_MEMO)) {
      // It would make a memo of the item.
      Tell(field, FormatVerdict::Dropped, FormatReason::BadValue);
      continue;
    }
    ItemText text(name);
    const auto parts = [](char c) { return c == ',' || c == ';'; };
    if (std::ranges::any_of(text.text, parts)) {
      std::ranges::replace_if(text.text, parts, ' ');
      text.loss = FormatReason::BadCharacter;
    }
    if (text.loss) {
      Tell(field, text.text.empty() ? FormatVerdict::Dropped : FormatVerdict::Changed, *text.loss);
    }
    if (text.text.empty()) continue;
    Add(icalproperty_new_categories(text.text.c_str()));
  }
}

void ItemBuilder::AddClass() {
  constexpr std::array kClasses = {ICAL_CLASS_PUBLIC, ICAL_CLASS_PRIVATE, ICAL_CLASS_CONFIDENTIAL};
  if (item_.class_ == CLASS_NONE) return;
  if (item_.class_ < CLASS_PUBLIC || item_.class_ > CLASS_CONFIDENTIAL) {
    Tell("class", FormatVerdict::Dropped, FormatReason::BadValue);
    return;
  }
  Add(icalproperty_new_class(kClasses[static_cast<std::size_t>(item_.class_ - CLASS_PUBLIC)]));
}

void ItemBuilder::AddStatus() {
  for (const StatusRow& row : kStatusRows) {
    if (row.kind != kind_ || row.status != item_.status) continue;
    Add(icalproperty_new_status(row.word));
    return;
  }
  if (item_.status == STATUS_NEEDS_ACTION) return;
  const NarrowStringView word = StatusWord(item_.status);
  if (word.empty()) {
    Tell("status", FormatVerdict::Dropped, FormatReason::BadValue);
  } else {
    AddOwnText(kOwnStatus, std::string(word));
  }
}

void ItemBuilder::AddPriority() {
  constexpr std::int32_t kLargest = 9;
  if (item_.priority == PRIORITY_NONE) return;
  if (isJournal() || item_.priority < 0 || item_.priority > kLargest) {
    AddOwnText(kOwnPriority, std::to_string(item_.priority));
  } else {
    Add(icalproperty_new_priority(item_.priority));
  }
}

void ItemBuilder::AddColor() {
  const std::string color = Text("color", item_.color);
  if (color.empty()) return;
  if (IsColorName(color)) {
    Add(icalproperty_new_color(color.c_str()));
  } else {
    AddOwnText(kOwnColor, color);
  }
}

void ItemBuilder::AddHoliday() {
  if (item_.set_holiday == 1) AddOwnText(kOwnHoliday, "YES");
  if (item_.set_holiday > 1) Tell("set_holiday", FormatVerdict::Dropped, FormatReason::BadValue);
}

void ItemBuilder::AddZone() {
  if (!HasZoneValues(item_.zone)) {
    Tell("zone", FormatVerdict::Changed, FormatReason::BadValue);
    return;
  }
  const bool isMachines = zone_ != nullptr && zone_->isMachines();
  const std::string offset = isMachines ? kOwnOffsetOfMachine : OffsetValueOf(item_.zone);
  const std::string daylight = DaylightValueOf(item_.zone);
  if (!offset.empty()) AddOwnText(kOwnOffset, offset);
  if (!daylight.empty()) AddOwnText(kOwnDaylight, daylight);
}

}  // namespace

IcalOwner<icalcomponent> MakeItemComponent(const CCalendar& item, const ItemZone* zone,
                                           const TellFormatLoss& tell) {
  return ItemBuilder(item, zone, tell).Build();
}

}  // namespace pim
