// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"

namespace pim::testing {

// Everything that text can hold: a pair, a lone surrogate, a NUL, a line end.
inline const WideString kHardText{u"\u65E5\U0001F600\xD83D \xDE00\xDC00\0\r\n;\\\"", 13};

inline COleDateTimeNull Moment(std::int32_t year, std::int32_t hour, std::int32_t second) {
  COleDateTimeNull time;
  time.status = StatusValid;
  time.SetDateTime(year, 7, 31, hour, 59, second);
  return time;
}
inline COleDateTimeNull Invalid() {
  COleDateTimeNull time;
  time.status = StatusInvalid;
  return time;
}
inline COleDateTimeNull Exactly(double value) {
  COleDateTimeNull time;
  time.value = value;
  time.status = StatusValid;
  return time;
}

// A contact with something in every field.
inline void FillContact(CContact& contact) {
  contact.created_time = Moment(1950, 23, 1);
  contact.modified_time = Exactly(-1.0 / 3);
  contact.xmodified_time = Invalid();
  contact.xitems.resize(1);
  contact.xitems[0] = {0xFFFFFFFF, u"value", u"name"};
  contact.favorite = 1;
  contact.name = {u"family", kHardText, u"additional", u"prefix", u"suffix"};
  contact.phonetic = {u"f", u"g", u"a", u"p", u"s"};
  contact.formatted_name = kHardText;
  contact.blood_type = BLOOD_UNNAMED;
  contact.hobby = u"hobby";
  contact.org_title = u"title";
  contact.org_role = u"role";
  contact.photo = u"zevo1.jpg";
  contact.NewTelephone(u"2", TEL_CELL | TEL_PREFERRED, false, -1);
  contact.NewTelephone(u"1", 0xFFFFFFFF, false, -1);
  contact.NewTelephone(u"", 0, false, -1);
  contact.NewEmail(u"a@b", EMAIL_MOBILE, -1);
  contact.NewURL(u"http://x", URL_WORK, -1);
  CPostalAddress address{0, u"1", u"2", u"3", u"4", u"5", u"6", u"7"};
  contact.NewAddress(&address, ADR_HOME, -1);
  COrganization& organization = contact.NewOrganization(ORG_WORK);
  organization.org_name = u"name";
  organization.org_position = u"position";
  organization.org_additional = {u"", kHardText, u"a;b", u"\\"};
  contact.NewOrganization(ORG_OTHER).org_additional = {u""};
  contact.NewMessenger(u"icq", MESSENGER_ICQ);
  contact.NewContactEvent(Moment(2001, 0, 0), EVENT_BIRTHDAY);
  contact.NewContactEvent(Invalid(), EVENT_ANNIVERSARY);
  contact.NewContactEvent({}, EVENT_OTHER);
  contact.NewNickname(u"nick");
  contact.NewNickname(kHardText);
  contact.NewComment(u"comment");
}

// Written field by field beside the map of columns, so that a field that the map forgets shows.
inline void ExpectTime(const COleDateTime& a, const COleDateTime& b) {
  EXPECT_EQ(a.status, b.status);
  if (a.status == StatusValid) {
    EXPECT_EQ(a.value, b.value);
  }
}
inline void ExpectBase(const CVObject& a, const CVObject& b) {
  ExpectTime(a.created_time, b.created_time);
  ExpectTime(a.modified_time, b.modified_time);
  ExpectTime(a.xmodified_time, b.xmodified_time);
  ASSERT_EQ(a.xitems.size(), b.xitems.size());
  for (std::size_t i = 0; i < a.xitems.size(); ++i) {
    EXPECT_EQ(a.xitems[i].params, b.xitems[i].params);
    EXPECT_EQ(a.xitems[i].name, b.xitems[i].name);
    EXPECT_EQ(a.xitems[i].value, b.xitems[i].value);
  }
}
inline void ExpectContact(const CContact& a, const CContact& b) {
  ExpectBase(a, b);
  EXPECT_EQ(a.favorite, b.favorite);
  EXPECT_TRUE(a.name == b.name);
  EXPECT_TRUE(a.phonetic == b.phonetic);
  EXPECT_EQ(a.formatted_name, b.formatted_name);
  EXPECT_EQ(a.blood_type, b.blood_type);
  EXPECT_EQ(a.hobby, b.hobby);
  EXPECT_EQ(a.org_title, b.org_title);
  EXPECT_EQ(a.org_role, b.org_role);
  EXPECT_EQ(a.photo, b.photo);
  EXPECT_TRUE(a.telephones() == b.telephones());
  EXPECT_TRUE(a.emails() == b.emails());
  EXPECT_TRUE(a.urls() == b.urls());
  EXPECT_TRUE(a.addresses() == b.addresses());
  EXPECT_TRUE(a.organizations() == b.organizations());
  EXPECT_TRUE(a.messengers() == b.messengers());
  EXPECT_TRUE(a.nicknames() == b.nicknames());
  EXPECT_TRUE(a.comments() == b.comments());
  ASSERT_EQ(a.contactEvents().size(), b.contactEvents().size());
  for (std::size_t i = 0; i < a.contactEvents().size(); ++i) {
    EXPECT_EQ(a.contactEvents()[i].event_type, b.contactEvents()[i].event_type);
    ExpectTime(a.contactEvents()[i].event_date, b.contactEvents()[i].event_date);
  }
}

// An item with something in every field, and a rule of the type; `type` 0 is none.
inline void FillItem(CCalendar& item, std::int32_t type) {
  item.created_time = Moment(1850, 1, 2);
  item.modified_time = Invalid();
  item.xmodified_time = Exactly(45000.1234567);
  item.xitems.resize(1);
  item.xitems[0].name = u"X-A";
  item.calendar_type = 1;
  item.allday = 1;
  item.set_holiday = 1;
  item.class_ = CLASS_PRIVATE;
  item.zone.tzOffset.SetDateTimeSpan(0, -3, -30, 0);
  item.zone.daylightOffset.status = StatusInvalid;
  item.zone.daylightStart = Moment(2024, 2, 0);
  item.zone.daylightEnd = Invalid();
  item.zone.standardName = u"S";
  item.zone.daylightName = u"D";
  item.reminder = {
      REMINDER_WAVE, REMINDER_CONTENT_ID, DESKMATE_IDS::ALARM_OTHER, Moment(2024, 5, 0), {}, -4,
      kHardText};
  item.reminder.snooze.status = StatusNull;
  item.start_time = Moment(9999, 22, 0);
  item.end_time = Exactly(1e300);
  item.due = Exactly(-0.25);
  item.completed = Invalid();
  item.summary = u"summary";
  item.description = kHardText;
  item.location = u"location";
  item.color = u"007";
  item.priority = -7;
  item.status = STATUS_DELEGATED;
  item.NewCategory(u"BIRTHDAY");
  item.NewCategory(kHardText);
  for (CRecurrence* rule : {&item.recurrence, &item.exceptionRule}) {
    rule->data = MakeRecurrenceData(type);
    if (rule->data == nullptr) continue;
    rule->data->interval = 2;
    rule->data->count = type;
    rule->data->endDate = type % 2 == 0 ? Invalid() : Moment(2025, 3, 4);
    if (auto* days = dynamic_cast<DaysData*>(rule->data.get())) days->days = {1, 31, -31, -1};
    if (auto* byPosition = dynamic_cast<MonthlyByPosData*>(rule->data.get())) {
      byPosition->positions = {1, -1};
      byPosition->weekdays = {0, 6};
    }
  }
}

inline void ExpectRule(const CRecurrence& a, const CRecurrence& b) {
  ASSERT_EQ(a.data == nullptr, b.data == nullptr);
  if (a.data == nullptr) return;
  ASSERT_EQ(a.data->type, b.data->type);
  ExpectTime(a.data->endDate, b.data->endDate);
  a.data->endDate = b.data->endDate = {};  // two invalid ones are never equal
  EXPECT_TRUE(*a.data == *b.data);
}
inline void ExpectSpan(const COleDateTimeSpan& a, const COleDateTimeSpan& b) {
  EXPECT_EQ(a.status, b.status);
  if (a.status == StatusValid) {
    EXPECT_EQ(a.value, b.value);
  }
}
inline void ExpectItem(const CCalendar& a, const CCalendar& b) {
  ExpectBase(a, b);
  EXPECT_EQ(a.calendar_type, b.calendar_type);
  EXPECT_EQ(a.allday, b.allday);
  EXPECT_EQ(a.set_holiday, b.set_holiday);
  EXPECT_EQ(a.class_, b.class_);
  ExpectSpan(a.zone.tzOffset, b.zone.tzOffset);
  ExpectSpan(a.zone.daylightOffset, b.zone.daylightOffset);
  ExpectTime(a.zone.daylightStart, b.zone.daylightStart);
  ExpectTime(a.zone.daylightEnd, b.zone.daylightEnd);
  EXPECT_EQ(a.zone.standardName, b.zone.standardName);
  EXPECT_EQ(a.zone.daylightName, b.zone.daylightName);
  EXPECT_EQ(a.reminder.reminderType, b.reminder.reminderType);
  EXPECT_EQ(a.reminder.valueType, b.reminder.valueType);
  EXPECT_EQ(a.reminder.alarmType, b.reminder.alarmType);
  ExpectTime(a.reminder.alarm_date, b.reminder.alarm_date);
  ExpectSpan(a.reminder.snooze, b.reminder.snooze);
  EXPECT_EQ(a.reminder.repeatCount, b.reminder.repeatCount);
  EXPECT_EQ(a.reminder.displayText, b.reminder.displayText);
  ExpectTime(a.start_time, b.start_time);
  ExpectTime(a.end_time, b.end_time);
  ExpectTime(a.due, b.due);
  ExpectTime(a.completed, b.completed);
  EXPECT_EQ(a.summary, b.summary);
  EXPECT_EQ(a.description, b.description);
  EXPECT_EQ(a.location, b.location);
  EXPECT_EQ(a.color, b.color);
  EXPECT_EQ(a.priority, b.priority);
  EXPECT_EQ(a.status, b.status);
  ASSERT_EQ(a.categories.size(), b.categories.size());
  for (std::size_t i = 0; i < a.categories.size(); ++i)
    EXPECT_EQ(a.categories[i].category_name, b.categories[i].category_name);
  ExpectRule(a.recurrence, b.recurrence);
  ExpectRule(a.exceptionRule, b.exceptionRule);
}

}  // namespace pim::testing
