// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace pim {

// Stored values: add, never renumber. Bits are joined, hence the plain enumerations; a lone code
// has an enumeration class or a plain one whose values stand in a 32-bit field of a record.

enum TelephoneType : std::uint32_t {
  TEL_WORK = 0x1,
  TEL_HOME = 0x2,
  TEL_VOICE = 0x4,
  TEL_FAX = 0x8,
  TEL_MESSAGE = 0x10,
  TEL_CELL = 0x20,
  TEL_PAGER = 0x40,
  TEL_BBS = 0x80,
  TEL_MODEM = 0x100,
  TEL_CAR = 0x200,
  TEL_ASSISTANT = 0x400,
  TEL_VIDEO = 0x800,
  TEL_INTERNET = 0x1000,
  TEL_PTT = 0x2000,
  TEL_VOIP = 0x4000,
  TEL_COMPANY = 0x8000,
  TEL_OTHER = 0x10000,
  TEL_CUSTOM = 0x20000,
  TEL_ISDN = 0x40000,
  TEL_CALLBACK = 0x80000,
  TEL_MAIN = 0x100000,
  TEL_TELEX = 0x200000,
  TEL_TTY = 0x400000,
  TEL_MMS = 0x800000,
  TEL_RADIO = 0x1000000,
  TEL_PREFERRED = 0x10000000,
};

enum AddressType : std::uint32_t {
  ADR_DOMESTIC = 0x1,
  ADR_INTERNATIONAL = 0x2,
  ADR_POSTAL = 0x4,
  ADR_PARCEL = 0x8,
  ADR_HOME = 0x10,
  ADR_WORK = 0x20,
  ADR_OTHER = 0x40,
  ADR_CUSTOM = 0x80,
  ADR_PREFERRED = 0x10000000,
};

enum EmailType : std::uint32_t {
  EMAIL_UNKNOWN = 0,
  EMAIL_WORK = 1,
  EMAIL_PRIVATE = 2,
  EMAIL_OTHER = 3,
  EMAIL_CUSTOM = 4,
  EMAIL_MOBILE = 5,
};

enum UrlType : std::uint32_t {
  URL_UNKNOWN = 0,
  URL_WORK = 1,
  URL_PRIVATE = 2,
  URL_OTHER = 3,
  URL_CUSTOM = 4,
};

enum OrganizationType : std::uint32_t {
  ORG_UNKNOWN = 0,
  ORG_WORK = 1,
  ORG_OTHER = 2,
  ORG_CUSTOM = 3,
};

enum MessengerType : std::uint32_t {
  MESSENGER_UNKNOWN = 0,
  MESSENGER_GOOGLE_TALK = 1,
  MESSENGER_AIM = 2,
  MESSENGER_WINDOW = 3,
  MESSENGER_YAHOO = 4,
  MESSENGER_JABBER = 5,
  MESSENGER_SKYPE = 6,
  MESSENGER_QQ = 7,
  MESSENGER_ICQ = 8,
  MESSENGER_OTHER = 9,
  MESSENGER_CUSTOM = 10,
};

enum ContactEventType : std::uint32_t {
  EVENT_BIRTHDAY = 1,
  EVENT_ANNIVERSARY = 2,
  EVENT_OTHER = 3,
};

enum BloodType : std::int32_t {
  BLOOD_UNNAMED = -1,  // kept for records made elsewhere: it has no word of its own
  BLOOD_NONE = 0,
  BLOOD_A = 1,
  BLOOD_B = 2,
  BLOOD_AB = 3,
  BLOOD_O = 4,
};

enum class CalendarType : std::uint8_t { Event = 1, Todo = 2, Memo = 3 };

enum AccessClass : std::int32_t {
  CLASS_NONE = 0,
  CLASS_PUBLIC = 1,
  CLASS_PRIVATE = 2,
  CLASS_CONFIDENTIAL = 3,
};

// Of a to-do, and of an attendee.
enum ItemStatus : std::int32_t {
  STATUS_NEEDS_ACTION = 0,
  STATUS_ACCEPTED = 1,
  STATUS_SENT = 2,
  STATUS_TENTATIVE = 3,
  STATUS_CONFIRMED = 4,
  STATUS_DECLINED = 5,
  STATUS_COMPLETED = 6,
  STATUS_DELEGATED = 7,
};

// Of the store's attendees, whom no text reads or writes.
enum AttendeeRole : std::int32_t {
  ROLE_ATTENDEE = 0,
  ROLE_ORGANIZER = 1,
  ROLE_OWNER = 2,
  ROLE_DELEGATE = 3,
};
enum AttendeeReply : std::int32_t { RSVP_NO = 0, RSVP_YES = 1 };
enum AttendeeExpect : std::int32_t {
  EXPECT_FYI = 0,
  EXPECT_REQUIRE = 1,
  EXPECT_REQUEST = 2,
  EXPECT_IMMEDIATE = 3,
};

enum TodoPriority : std::int32_t {
  PRIORITY_NONE = 0,
  PRIORITY_HIGH = 1,
  PRIORITY_MEDIUM = 2,
  PRIORITY_LOW = 3,
};

enum CategoryBit : std::uint32_t {
  CATEGORY_APPOINTMENT = 0x1,
  CATEGORY_ANNIVERSARY = 0x2,
  CATEGORY_HOLIDAY = 0x4,
  CATEGORY_IMPORTANT = 0x8,
  CATEGORY_PRIVATE = 0x10,
  CATEGORY_MISCELLANEOUS = 0x20,
  CATEGORY_MEMO = 0x80,
  CATEGORY_BUSINESS = 0x100,
  CATEGORY_EDUCATION = 0x200,
  CATEGORY_MEETING = 0x400,
  CATEGORY_PERSONAL = 0x800,
  CATEGORY_PHONE_CALL = 0x1000,
  CATEGORY_SICK_DAY = 0x2000,
  CATEGORY_SPECIAL_OCCASION = 0x4000,
  CATEGORY_TRAVEL = 0x8000,
  CATEGORY_VACATION = 0x10000,
  CATEGORY_BIRTHDAY = 0x20000,
  CATEGORY_DATE = 0x40000,
};

// Audio format of a reminder, and where its sound lies.
enum ReminderType : std::uint32_t { REMINDER_PCM = 16, REMINDER_WAVE = 32, REMINDER_AIFF = 64 };
enum ReminderValueType : std::uint32_t { REMINDER_INLINE = 0, REMINDER_CONTENT_ID = 1 };

enum RecurrenceType : std::int32_t {
  RECUR_DAILY = 1,
  RECUR_WEEKLY = 2,
  RECUR_MONTHLY_BY_POS = 3,
  RECUR_MONTHLY_BY_DAY = 4,
  RECUR_YEARLY_BY_MONTH = 5,
  RECUR_YEARLY_BY_DAY = 6,
};

}  // namespace pim

namespace DESKMATE_IDS {

enum Alarm : std::int32_t {
  ALARM_OTHER = -1,  // shown like an audio alarm
  ALARM_NONE = 0,
  ALARM_AUDIO = 2,
};

}  // namespace DESKMATE_IDS
