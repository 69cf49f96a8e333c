#pragma once

namespace pim {

// The keys of the words that the renderings ask for; an application feeds the words through
// VObjectMgr::MakeMapString. A word that is missing leaves its place empty.
namespace labels {

inline constexpr const char16_t* kVCard = u"VCARD_vCard";  // heading of a contact
inline constexpr const char16_t* kName = u"VCARD_Name";
inline constexpr const char16_t* kNumber = u"VCARD_Number";
inline constexpr const char16_t* kEmail = u"VCARD_Email";

inline constexpr const char16_t* kVCalendar = u"VCAL_vCalendar";  // heading of an item
inline constexpr const char16_t* kStartDate = u"VCAL_Start_date";
inline constexpr const char16_t* kEndDate = u"VCAL_End_date";
inline constexpr const char16_t* kCategory = u"VCAL_Category";
inline constexpr const char16_t* kAppointment = u"VCAL_Appointment";
inline constexpr const char16_t* kAnniversary = u"VCAL_Anniversary";
inline constexpr const char16_t* kBirthday = u"VCAL_Birthday";
inline constexpr const char16_t* kTime = u"VCAL_Time";
inline constexpr const char16_t* kSubject = u"VCAL_Subject";
inline constexpr const char16_t* kLocation = u"VCAL_Location";
inline constexpr const char16_t* kAlarm = u"VCAL_Alarm";
inline constexpr const char16_t* kNoAlarm = u"VCAL_No_alarm";
inline constexpr const char16_t* kMinutesBefore = u"VCAL_mins_before";  // behind the number
inline constexpr const char16_t* kRepeat = u"VCAL_Repeat";
inline constexpr const char16_t* kOnce = u"VCAL_Once";
inline constexpr const char16_t* kDaily = u"VCAL_Daily";
inline constexpr const char16_t* kWeekly = u"VCAL_Weekly";
inline constexpr const char16_t* kMonthly = u"VCAL_Monthly";
inline constexpr const char16_t* kYearly = u"VCAL_Yearly";
inline constexpr const char16_t* kExpiration = u"VCAL_Expiration";
inline constexpr const char16_t* kNoExpiration = u"VCAL_No_expiration";

inline constexpr const char16_t* kVTodo = u"VCAL_vTodo";  // heading of a to-do
inline constexpr const char16_t* kDate = u"VCAL_Date";
inline constexpr const char16_t* kPriority = u"VCAL_Priority";
inline constexpr const char16_t* kHigh = u"VCAL_High";
inline constexpr const char16_t* kMedium = u"VCAL_Medium";
inline constexpr const char16_t* kLow = u"VCAL_Low";
inline constexpr const char16_t* kNotes = u"VCAL_Notes";

inline constexpr const char16_t* kAll[] = {
    kVCard,    kName,        kNumber,        kEmail,        kVCalendar, kStartDate, kEndDate,
    kCategory, kAppointment, kAnniversary,   kBirthday,     kTime,      kSubject,   kLocation,
    kAlarm,    kNoAlarm,     kMinutesBefore, kRepeat,       kOnce,      kDaily,     kWeekly,
    kMonthly,  kYearly,      kExpiration,    kNoExpiration, kVTodo,     kDate,      kPriority,
    kHigh,     kMedium,      kLow,           kNotes,
};

}  // namespace labels

}  // namespace pim
