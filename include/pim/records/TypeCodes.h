// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace pim {

// The codes of records. Stored values: add, never renumber. Bits are joined, hence the plain
// enumerations; a lone code has an enumeration class or a plain one whose values stand in a 32-bit
// field of a record. Where a word is given, vObject text has it for the code (TypeWords.h). Nothing
// here but constants, for any thread.

// What a telephone is, as bits of a mask: parameters of TEL.
enum TelephoneType : std::uint32_t {
  TEL_WORK = 0x1,              // WORK
  TEL_HOME = 0x2,              // HOME
  TEL_VOICE = 0x4,             // VOICE
  TEL_FAX = 0x8,               // FAX
  TEL_MESSAGE = 0x10,          // MSG: takes messages
  TEL_CELL = 0x20,             // CELL
  TEL_PAGER = 0x40,            // PAGER
  TEL_BBS = 0x80,              // BBS: a bulletin board
  TEL_MODEM = 0x100,           // MODEM
  TEL_CAR = 0x200,             // CAR
  TEL_ASSISTANT = 0x400,       // ASSISTANT
  TEL_VIDEO = 0x800,           // VIDEO
  TEL_INTERNET = 0x1000,       // INTERNET
  TEL_PTT = 0x2000,            // PTT: push to talk
  TEL_VOIP = 0x4000,           // VOIP
  TEL_COMPANY = 0x8000,        // COMPANY: its main number
  TEL_OTHER = 0x10000,         // ANDROID_OTHER
  TEL_CUSTOM = 0x20000,        // CUSTOM: the user's own kind
  TEL_ISDN = 0x40000,          // ISDN
  TEL_CALLBACK = 0x80000,      // CALLBACK
  TEL_MAIN = 0x100000,         // MAIN
  TEL_TELEX = 0x200000,        // TELEX
  TEL_TTY = 0x400000,          // TTY: a teletypewriter
  TEL_MMS = 0x800000,          // MMS
  TEL_RADIO = 0x1000000,       // RADIO
  TEL_PREFERRED = 0x10000000,  // PREF
};

// What an address is, as bits of a mask: parameters of ADR.
enum AddressType : std::uint32_t {
  ADR_DOMESTIC = 0x1,          // DOM
  ADR_INTERNATIONAL = 0x2,     // INTL
  ADR_POSTAL = 0x4,            // POSTAL
  ADR_PARCEL = 0x8,            // PARCEL
  ADR_HOME = 0x10,             // HOME
  ADR_WORK = 0x20,             // WORK
  ADR_OTHER = 0x40,            // OTHER
  ADR_CUSTOM = 0x80,           // CUSTOM: the user's own kind
  ADR_PREFERRED = 0x10000000,  // PREF
};

// What an e-mail address is, one code: a parameter of EMAIL.
enum EmailType : std::uint32_t {
  EMAIL_UNKNOWN = 0,  // Unknown, or no word
  EMAIL_WORK = 1,     // Work
  EMAIL_PRIVATE = 2,  // Private
  EMAIL_OTHER = 3,    // Other
  EMAIL_CUSTOM = 4,   // Custom: the user's own kind
  EMAIL_MOBILE = 5,   // Mobile
};

// What a URL is, one code: a parameter of URL.
enum UrlType : std::uint32_t {
  URL_UNKNOWN = 0,  // Unknown, or no word
  URL_WORK = 1,     // Work
  URL_PRIVATE = 2,  // Private
  URL_OTHER = 3,    // Other
  URL_CUSTOM = 4,   // Custom: the user's own kind
};

// What an organization is, one code: a parameter of ORG.
enum OrganizationType : std::uint32_t {
  ORG_UNKNOWN = 0,  // Unknown, or no word
  ORG_WORK = 1,     // Work
  ORG_OTHER = 2,    // Other
  ORG_CUSTOM = 3,   // Custom: the user's own kind
};

// Which messenger an address belongs to, one code: a parameter of X-CHATID.
enum MessengerType : std::uint32_t {
  MESSENGER_UNKNOWN = 0,      // Unknown, or no word
  MESSENGER_GOOGLE_TALK = 1,  // GoogleTalk
  MESSENGER_AIM = 2,          // AIM
  MESSENGER_WINDOW = 3,       // Window
  MESSENGER_YAHOO = 4,        // Yahoo
  MESSENGER_JABBER = 5,       // Jabber
  MESSENGER_SKYPE = 6,        // Skype
  MESSENGER_QQ = 7,           // QQ
  MESSENGER_ICQ = 8,          // ICQ
  MESSENGER_OTHER = 9,        // Other
  MESSENGER_CUSTOM = 10,      // Custom: the user's own kind
};

// Which day of a contact, one code.
enum ContactEventType : std::uint32_t {
  EVENT_BIRTHDAY = 1,     // BDAY
  EVENT_ANNIVERSARY = 2,  // X-ANNI
  EVENT_OTHER = 3,        // X-EVENTDAY
};

// A blood group, one code: the word of X-BLOOD.
enum BloodType : std::int32_t {
  BLOOD_UNNAMED = -1,  // kept for records made elsewhere: it has no word of its own
  BLOOD_NONE = 0,      // no word, or one that is none
  BLOOD_A = 1,         // A
  BLOOD_B = 2,         // B
  BLOOD_AB = 3,        // AB
  BLOOD_O = 4,         // O
};

// The kind of an item.
enum class CalendarType : std::uint8_t {
  Event = 1,  // VEVENT
  Todo = 2,   // VTODO
  Memo = 3,   // VMEMO, or CATEGORIES with MEMO
};

// Whom an item is for, one code: the word of CLASS.
enum AccessClass : std::int32_t {
  CLASS_NONE = 0,          // no word, or one that is none
  CLASS_PUBLIC = 1,        // PUBLIC
  CLASS_PRIVATE = 2,       // PRIVATE
  CLASS_CONFIDENTIAL = 3,  // CONFIDENTIAL
};

// How far a to-do or an attendee is, one code: the word of STATUS.
enum ItemStatus : std::int32_t {
  STATUS_NEEDS_ACTION = 0,  // NEEDS ACTION, or no word
  STATUS_ACCEPTED = 1,      // ACCEPTED
  STATUS_SENT = 2,          // SENT
  STATUS_TENTATIVE = 3,     // TENTATIVE
  STATUS_CONFIRMED = 4,     // CONFIRMED
  STATUS_DECLINED = 5,      // DECLINED
  STATUS_COMPLETED = 6,     // COMPLETED
  STATUS_DELEGATED = 7,     // DELEGATED
};

// What one of the store's attendees is, whom no text reads or writes.
enum AttendeeRole : std::int32_t {
  ROLE_ATTENDEE = 0,   // takes part
  ROLE_ORGANIZER = 1,  // invites
  ROLE_OWNER = 2,      // whose item it is
  ROLE_DELEGATE = 3,   // in the place of another
};
// Whether an attendee is asked for a reply.
enum AttendeeReply : std::int32_t {
  RSVP_NO = 0,   // no reply is asked for
  RSVP_YES = 1,  // a reply is asked for
};
// What is expected of an attendee.
enum AttendeeExpect : std::int32_t {
  EXPECT_FYI = 0,        // nothing: for information
  EXPECT_REQUIRE = 1,    // to come
  EXPECT_REQUEST = 2,    // to come, if possible
  EXPECT_IMMEDIATE = 3,  // to answer at once
};

// How urgent a to-do is, one code: the number of PRIORITY.
enum TodoPriority : std::int32_t {
  PRIORITY_NONE = 0,    // no number
  PRIORITY_HIGH = 1,    // the most urgent one
  PRIORITY_MEDIUM = 2,  // between the two
  PRIORITY_LOW = 3,     // the least urgent one
};

// What an item is about, as bits of a mask: words of CATEGORIES.
enum CategoryBit : std::uint32_t {
  CATEGORY_APPOINTMENT = 0x1,          // APPOINTMENT, which a reader keeps
  CATEGORY_ANNIVERSARY = 0x2,          // ANNIVERSARY, which a reader keeps
  CATEGORY_HOLIDAY = 0x4,              // HOLIDAY
  CATEGORY_IMPORTANT = 0x8,            // IMPORTANT
  CATEGORY_PRIVATE = 0x10,             // PRIVATE
  CATEGORY_MISCELLANEOUS = 0x20,       // MISCELLANEOUS
  CATEGORY_MEMO = 0x80,                // MEMO, which makes the item one
  CATEGORY_BUSINESS = 0x100,           // BUSINESS
  CATEGORY_EDUCATION = 0x200,          // EDUCATION
  CATEGORY_MEETING = 0x400,            // MEETING
  CATEGORY_PERSONAL = 0x800,           // PERSONAL
  CATEGORY_PHONE_CALL = 0x1000,        // PHONE CALL
  CATEGORY_SICK_DAY = 0x2000,          // SICK DAY
  CATEGORY_SPECIAL_OCCASION = 0x4000,  // SPECIAL OCCASION
  CATEGORY_TRAVEL = 0x8000,            // TRAVEL
  CATEGORY_VACATION = 0x10000,         // VACATION
  CATEGORY_BIRTHDAY = 0x20000,         // BIRTHDAY, which a reader keeps
  CATEGORY_DATE = 0x40000,             // DATE
};

// The audio format of a reminder, as bits: AALARM's TYPE.
enum ReminderType : std::uint32_t {
  REMINDER_PCM = 16,   // PCM
  REMINDER_WAVE = 32,  // WAVE
  REMINDER_AIFF = 64,  // AIFF
};
// Where a reminder's sound lies, one code: AALARM's VALUE.
enum ReminderValueType : std::uint32_t {
  REMINDER_INLINE = 0,      // in the value, or no word
  REMINDER_CONTENT_ID = 1,  // CONTENT-ID: elsewhere, under that name
};

// The kind of a repeat rule: the start of RRULE and XRULE.
enum RecurrenceType : std::int32_t {
  RECUR_DAILY = 1,            // D
  RECUR_WEEKLY = 2,           // W
  RECUR_MONTHLY_BY_POS = 3,   // MP: weekdays of weeks of the month
  RECUR_MONTHLY_BY_DAY = 4,   // MD: days of the month
  RECUR_YEARLY_BY_MONTH = 5,  // YM
  RECUR_YEARLY_BY_DAY = 6,    // YD: days of the year
};

}  // namespace pim

// Codes of alarms, named as applications name them.
namespace DESKMATE_IDS {

// How an item reminds of itself.
enum Alarm : std::int32_t {
  ALARM_OTHER = -1,  // shown like an audio alarm
  ALARM_NONE = 0,    // not at all
  ALARM_AUDIO = 2,   // AALARM: by a sound
};

}  // namespace DESKMATE_IDS
