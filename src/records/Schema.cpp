// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "records/Schema.h"

namespace pim {

namespace {

constexpr Column kContactsColumns[] = {
    {"contact_id", ColumnType::Integer, KeyMark::Own},
    {"formatted_name", ColumnType::Text},
    {"given_name", ColumnType::Text},
    {"additional_name", ColumnType::Text},
    {"family_name", ColumnType::Text},
    {"prefix_name", ColumnType::Text},
    {"suffix_name", ColumnType::Text},
    {"photo", ColumnType::Text},
    {"call_sound", ColumnType::Text},
    {"sms_sound", ColumnType::Text},
    {"comment", ColumnType::Text},
    {"created_time", ColumnType::Integer},
    {"modified_time", ColumnType::Integer},
    {"messenger", ColumnType::Text},
    {"org_title", ColumnType::Text},
    {"org_role", ColumnType::Text},
    {"org_location", ColumnType::Text},
    {"org_logo", ColumnType::Text},
    {"administrator_name", ColumnType::Text},
    {"assistant_name", ColumnType::Text},
    {"spouse_name", ColumnType::Text},
    {"children_name", ColumnType::Text},
    {"blood_type", ColumnType::Integer},
    {"hobby", ColumnType::Text},
    {"geo_latitude", ColumnType::Real},
    {"geo_longitude", ColumnType::Real},
    {"timezone", ColumnType::Integer},
    {"favorite", ColumnType::Integer},
    {"phonetic_given", ColumnType::Text},
    {"phonetic_middle", ColumnType::Text},
    {"phonetic_family", ColumnType::Text},
    {"security", ColumnType::Integer},
    {"default_number_id", ColumnType::Integer, KeyMark::Reference},
    {"default_url_id", ColumnType::Integer, KeyMark::Reference},
    {"default_email_id", ColumnType::Integer, KeyMark::Reference},
    {"profile_id", ColumnType::Integer, KeyMark::Reference},
    {"obj_uid", ColumnType::Text},
    {"outlook_id", ColumnType::Text},
    {"is_deleted", ColumnType::Integer},
    {"xmodified_time", ColumnType::Integer},
};

constexpr Column kContactGroupsColumns[] = {
    {"group_id", ColumnType::Integer, KeyMark::Own},
    {"group_index", ColumnType::Integer},
    {"group_type", ColumnType::Integer},
    {"group_name", ColumnType::Text},
    {"profile_id", ColumnType::Integer},
    {"created_time", ColumnType::Integer},
    {"modified_time", ColumnType::Integer},
    {"obj_uid", ColumnType::Text},
    {"xmodified_time", ColumnType::Integer},
};

constexpr Column kContactNumbersColumns[] = {
    {"number_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"number_type", ColumnType::Integer},
    {"number", ColumnType::Text},
    {"speed_dial", ColumnType::Integer},
};

constexpr Column kContactEmailsColumns[] = {
    {"email_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"email_type", ColumnType::Integer},
    {"email_address", ColumnType::Text},
};

constexpr Column kContactUrlsColumns[] = {
    {"url_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"url_type", ColumnType::Integer},
    {"url_address", ColumnType::Text},
};

constexpr Column kContactAddressesColumns[] = {
    {"address_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"address_label", ColumnType::Text},
    {"address_type", ColumnType::Integer},
    {"country", ColumnType::Text},
    {"postal_code", ColumnType::Text},
    {"region", ColumnType::Text},
    {"locality", ColumnType::Text},
    {"street", ColumnType::Text},
    {"extended_address", ColumnType::Text},
    {"post_office", ColumnType::Text},
};

constexpr Column kContactNicknamesColumns[] = {
    {"nickname_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"nickname", ColumnType::Text},
};

constexpr Column kContactMessengersColumns[] = {
    {"messenger_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"messenger_type", ColumnType::Integer},
    {"messenger_address", ColumnType::Text},
    {"custom_subtype", ColumnType::Text},
};

constexpr Column kContactCommentsColumns[] = {
    {"comment_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"comment", ColumnType::Text},
};

constexpr Column kContactOrganizationsColumns[] = {
    {"org_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"org_type", ColumnType::Integer},
    {"org_name", ColumnType::Text},
    {"org_position", ColumnType::Text},
    {"org_additional", ColumnType::Text},
    {"custom_subtype", ColumnType::Text},
};

constexpr Column kContactEventsColumns[] = {
    {"event_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"event_type", ColumnType::Integer},
    {"event_date", ColumnType::Integer},
    {"event_luna", ColumnType::Integer},
    {"custom_subtype", ColumnType::Text},
};

constexpr Table kContactTables[] = {
    {"Contacts", kContactsColumns},
    {"ContactGroups", kContactGroupsColumns},
    {"ContactNumbers", kContactNumbersColumns},
    {"ContactEmails", kContactEmailsColumns},
    {"ContactUrls", kContactUrlsColumns},
    {"ContactAddresses", kContactAddressesColumns},
    {"ContactNicknames", kContactNicknamesColumns},
    {"ContactMessengers", kContactMessengersColumns},
    {"ContactComments", kContactCommentsColumns},
    {"ContactOrganizations", kContactOrganizationsColumns},
    {"ContactEvents", kContactEventsColumns},
};

constexpr std::string_view kTablesWithoutColumns[] = {
    "Contacts_ContactGroups", "ContactCategories", "CalendarExceptionRules",
    "CalendarExceptionDates", "CalendarResources", "CalendarAttachments",
    "CalendarUrls",
};

}  // namespace

std::span<const Table> ContactTables() { return kContactTables; }

std::span<const std::string_view> TablesWithoutColumns() { return kTablesWithoutColumns; }

}  // namespace pim
