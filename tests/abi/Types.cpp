// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Every type of the installed headers, in one library whose dump has their layouts: those of the
// libraries themselves leave out what is reached by templates of the standard library alone.
#include "pim/manager/CalendarImport.h"
#include "pim/manager/ContactExport.h"
#include "pim/manager/ContactImport.h"
#include "pim/manager/LabelKeys.h"
#include "pim/manager/TextReading.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/platform/FileError.h"
#include "pim/records/MemoryStore.h"
#include "pim/records/Messages.h"
#include "pim/records/PreviewStore.h"
#include "pim/records/TableStore.h"
#include "pim/store/DatabaseStore.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/PostgresStore.h"
#include "pim/store/SqliteStore.h"
#include "pim/stream/TextRejects.h"
#include "pim/support/Loss.h"
#include "pim/support/WritingForm.h"

template class pim::RowTable<pim::CContact>;

namespace pim_types {

template <class Type>
void Take(const Type&) {}

#define PIM_TAKE(type) template __attribute__((visibility("default"))) void Take(const type&)
PIM_TAKE(pim::CContact);
PIM_TAKE(pim::CContacts);
PIM_TAKE(pim::CContactGroup);
PIM_TAKE(pim::CContactGroups);
PIM_TAKE(pim::CContactGroupPair);
PIM_TAKE(pim::CContactGroupPairs);
PIM_TAKE(pim::CName);
PIM_TAKE(pim::CTelephoneNumber);
PIM_TAKE(pim::CEmail);
PIM_TAKE(pim::CURL);
PIM_TAKE(pim::CPostalAddress);
PIM_TAKE(pim::COrganization);
PIM_TAKE(pim::CMessenger);
PIM_TAKE(pim::CContactEvent);
PIM_TAKE(pim::CXItem);
PIM_TAKE(pim::CVObject);
PIM_TAKE(pim::WideText);
PIM_TAKE(pim::CCmdTarget);
PIM_TAKE(pim::CNote);
PIM_TAKE(pim::CSyncBackup);
PIM_TAKE(pim::COutlookLog);
PIM_TAKE(pim::DeleteRule);
PIM_TAKE(pim::CCalendar);
PIM_TAKE(pim::CCalendars);
PIM_TAKE(pim::CCalendarZone);
PIM_TAKE(pim::CReminder);
PIM_TAKE(pim::CCategory);
PIM_TAKE(pim::CRecurrence);
PIM_TAKE(pim::RecurrenceData);
PIM_TAKE(pim::DaysData);
PIM_TAKE(pim::DailyData);
PIM_TAKE(pim::WeeklyData);
PIM_TAKE(pim::MonthlyByDayData);
PIM_TAKE(pim::MonthlyByPosData);
PIM_TAKE(pim::YearlyByDayData);
PIM_TAKE(pim::YearlyByMonthData);
PIM_TAKE(pim::COleDateTime);
PIM_TAKE(pim::COleDateTimeNull);
PIM_TAKE(pim::COleDateTimeSpan);
PIM_TAKE(pim::CalendarFields);
PIM_TAKE(pim::RecordStore);
PIM_TAKE(pim::ForwardingStore);
PIM_TAKE(pim::TableStore);
PIM_TAKE(pim::RowTable<pim::CContact>);
PIM_TAKE(pim::MemoryStore);
PIM_TAKE(pim::PreviewStore);
PIM_TAKE(pim::DatabaseStore);
PIM_TAKE(pim::SqliteStore);
PIM_TAKE(pim::PostgresStore);
PIM_TAKE(pim::PostgresWaits);
PIM_TAKE(pim::StoreTransaction);
PIM_TAKE(pim::StoreReading);
PIM_TAKE(pim::StoreBinding);
PIM_TAKE(pim::StoreError);
PIM_TAKE(pim::NoStoreError);
PIM_TAKE(pim::FileError);
PIM_TAKE(pim::ImportHistory);
PIM_TAKE(pim::ImportStart);
PIM_TAKE(pim::ImportCounts);
PIM_TAKE(pim::ImportEntry);
PIM_TAKE(pim::ImportedFile);
PIM_TAKE(pim::RecordOrigin);
PIM_TAKE(pim::RecordLines);
PIM_TAKE(pim::UndoOptions);
PIM_TAKE(pim::UndoResult);
PIM_TAKE(pim::UndoResult::Kept);
PIM_TAKE(pim::VObjectMgr);
PIM_TAKE(pim::TextResult);
PIM_TAKE(pim::TextObserver);
PIM_TAKE(pim::SavedRecord);
PIM_TAKE(pim::TextNotice);
PIM_TAKE(pim::AccountEntry);
PIM_TAKE(pim::AccountTotals);
PIM_TAKE(pim::TextHead);
PIM_TAKE(pim::TextPart);
PIM_TAKE(pim::RejectedPart);
PIM_TAKE(pim::RejectedParts);
PIM_TAKE(pim::ContactImportCounts);
PIM_TAKE(pim::CalendarImportCounts);
PIM_TAKE(pim::ContactExport);
PIM_TAKE(pim::LabelKey);
PIM_TAKE(pim::LossRow);
PIM_TAKE(pim::AccessClass);
PIM_TAKE(pim::AddressType);
PIM_TAKE(DESKMATE_IDS::Alarm);
PIM_TAKE(pim::AttendeeExpect);
PIM_TAKE(pim::AttendeeReply);
PIM_TAKE(pim::AttendeeRole);
PIM_TAKE(pim::BloodType);
PIM_TAKE(pim::CalendarType);
PIM_TAKE(pim::CategoryBit);
PIM_TAKE(pim::ContactEventType);
PIM_TAKE(pim::DateTimeStatus);
PIM_TAKE(pim::EmailType);
PIM_TAKE(pim::ImportState);
PIM_TAKE(pim::ItemStatus);
PIM_TAKE(pim::Label);
PIM_TAKE(pim::Loss);
PIM_TAKE(pim::MessengerType);
PIM_TAKE(pim::OrganizationType);
PIM_TAKE(pim::RecurrenceType);
PIM_TAKE(pim::ReminderType);
PIM_TAKE(pim::ReminderValueType);
PIM_TAKE(pim::StoreAccess);
PIM_TAKE(pim::StoredKind);
PIM_TAKE(pim::TelephoneType);
PIM_TAKE(pim::TextEvent);
PIM_TAKE(pim::TextFault);
PIM_TAKE(pim::TextForm);
PIM_TAKE(pim::TextObject);
PIM_TAKE(pim::TextOutcome);
PIM_TAKE(pim::TodoPriority);
PIM_TAKE(pim::UrlType);
PIM_TAKE(pim::Verdict);
PIM_TAKE(pim::WritingForm);

}  // namespace pim_types
