// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "records/Schema.h"

namespace pim {

namespace {

constexpr Column kCalendarsColumns[] = {
    {"calendar_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_type", ColumnType::Integer},
    {"summary", ColumnType::Text},
    {"description", ColumnType::Text},
    {"location", ColumnType::Text},
    {"start_time", ColumnType::DateTime},
    {"end_time", ColumnType::DateTime},
    {"allday", ColumnType::Integer},
    {"created_time", ColumnType::DateTime},
    {"modified_time", ColumnType::DateTime},
    {"outlook_id", ColumnType::Text},
    {"obj_uid", ColumnType::Text},
    {"is_deleted", ColumnType::Integer},
    {"set_holiday", ColumnType::Integer},
    {"class", ColumnType::Integer},
    {"xmodified_time", ColumnType::Integer},
};

constexpr Column kCalendarAlarmsColumns[] = {
    {"alram_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_id", ColumnType::Integer, KeyMark::Reference},
    {"runtime", ColumnType::Integer},
    {"alarm_date", ColumnType::DateTime},
};

constexpr Column kCalendarRecurrencesColumns[] = {
    {"recurrence_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_id", ColumnType::Integer, KeyMark::Reference},
    {"recurrence_type", ColumnType::Integer},
    {"recurrence_count", ColumnType::Integer},
    {"recurrence_time", ColumnType::Integer},
    {"recurrence_value", ColumnType::Integer},
};

constexpr Column kCalendarAttendeesColumns[] = {
    {"attendee_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_id", ColumnType::Integer, KeyMark::Reference},
    {"attendee_name", ColumnType::Text},
    {"role", ColumnType::Integer},
    {"status", ColumnType::Integer},
    {"rsvp", ColumnType::Integer},
    {"expect", ColumnType::Integer},
};

constexpr Column kCalendarCategoriesColumns[] = {
    {"category_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_id", ColumnType::Integer, KeyMark::Reference},
    {"category_name", ColumnType::Text},
};

constexpr Column kTodoColumns[] = {
    {"calendar_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_type", ColumnType::Integer},
    {"created_time", ColumnType::DateTime},
    {"modified_time", ColumnType::DateTime},
    {"summary", ColumnType::Text},
    {"description", ColumnType::Text},
    {"start_time", ColumnType::DateTime},
    {"end_time", ColumnType::DateTime},
    {"priority", ColumnType::Integer},
    {"status", ColumnType::Integer},
    {"outlook_id", ColumnType::Text},
    {"obj_uid", ColumnType::Text},
    {"is_deleted", ColumnType::Integer},
    {"xmodified_time", ColumnType::Integer},
};

constexpr Column kMemoColumns[] = {
    {"calendar_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_type", ColumnType::Integer},
    {"description", ColumnType::Text},
    {"created_time", ColumnType::DateTime},
    {"modified_time", ColumnType::DateTime},
    {"color", ColumnType::Integer},
    {"outlook_id", ColumnType::Text},
    {"obj_uid", ColumnType::Text},
    {"is_deleted", ColumnType::Integer},
    {"xmodified_time", ColumnType::Integer},
};

constexpr Column kMessagesColumns[] = {
    {"message_id", ColumnType::Integer, KeyMark::Own},
    {"message_type", ColumnType::Integer},
    {"message_box", ColumnType::Integer},
    {"message_time", ColumnType::Integer},
    {"message_title", ColumnType::Text},
    {"message_content", ColumnType::Text},
};

constexpr Column kMessageNumbersColumns[] = {
    {"number_id", ColumnType::Integer, KeyMark::Own},
    {"message_id", ColumnType::Integer, KeyMark::Reference},
    {"number_type", ColumnType::Integer},
    {"number", ColumnType::Text},
};

constexpr Column kMessageEmailsColumns[] = {
    {"email_id", ColumnType::Integer, KeyMark::Own},
    {"message_id", ColumnType::Integer, KeyMark::Reference},
    {"email_type", ColumnType::Integer},
    {"email_address", ColumnType::Text},
};

constexpr Table kCalendarTables[] = {
    {"Calendars", kCalendarsColumns},
    {"CalendarAlarms", kCalendarAlarmsColumns},
    {"CalendarRecurrences", kCalendarRecurrencesColumns},
    {"CalendarAttendees", kCalendarAttendeesColumns},
    {"CalendarCategories", kCalendarCategoriesColumns},
    {kNoTable, kTodoColumns},
    {kNoTable, kMemoColumns},
    {"Messages", kMessagesColumns},
    {"MessageNumbers", kMessageNumbersColumns},
    {"MessageEmails", kMessageEmailsColumns},
};

}  // namespace

std::span<const Table> CalendarTables() { return kCalendarTables; }

}  // namespace pim
