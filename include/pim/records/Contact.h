// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <utility>

#include "pim/Export.h"
#include "pim/records/ContactParts.h"
#include "pim/records/VObject.h"
#include "pim/support/InlineList.h"

namespace pim {

class PimsDBManager;  // the application's own

// The one entry that most of a contact's lists hold takes no memory of its own, unless it's large.
template <class T>
using RecordList = InlineList<T, (sizeof(T) <= 32 ? 1 : 0)>;

// One contact: what a vCard 2.1 text says of a person. Lists keep the order in which their entries
// were made; an entry's reference is good until the next entry of the same list is made. Indexes
// run from 0 and must lie below the count.
//
// Threads may read a contact together, or one thread alone may change it; any thread may free it.
// The New... operations throw std::bad_alloc, and the contact is as it was then.
class PIM_EXPORT CContact : public CVObject {
 public:
  // An empty contact, which allocates nothing.
  CContact() noexcept;

  // The further arguments of the New... operations say whether the entry is the contact's default
  // one and which row of the store it comes from (-1: none). Records keep neither: a default is
  // told by the type's own bit, and the store numbers its rows itself.
  // Each adds an entry as the last one of its list, and gives it where there is more to fill in.
  CTelephoneNumber& NewTelephone(WideText number, std::uint32_t type, bool isDefault,
                                 std::int32_t rowId);
  CEmail& NewEmail(WideText address, std::uint32_t type, std::int32_t rowId);
  CURL& NewURL(WideText url, std::uint32_t type, std::int32_t rowId);
  // An address. `source` is copied when it isn't null; the type is `type` in any case.
  CPostalAddress& NewAddress(const CPostalAddress* source, std::uint32_t type, std::int32_t rowId);
  // An empty organization of the type (OrganizationType).
  COrganization& NewOrganization(std::uint32_t type);
  // A messenger's address with its MessengerType.
  CMessenger& NewMessenger(WideText address, std::uint32_t type);
  // A day with its ContactEventType.
  CContactEvent& NewContactEvent(const COleDateTimeNull& date, std::uint32_t type);
  // One more text of its kind.
  void NewNickname(WideText text) { nicknames_.emplace_back(std::move(text)); }
  void NewComment(WideText text) { comments_.emplace_back(std::move(text)); }
  void NewGroup(WideText groupName) { groups_.emplace_back(std::move(groupName)); }

  // How many entries a list has.
  std::int32_t GetTelephoneCount() const { return Count(telephones_); }
  std::int32_t GetEmailCount() const { return Count(emails_); }
  std::int32_t GetMessengerCount() const { return Count(messengers_); }
  std::int32_t GetURLCount() const { return Count(urls_); }
  std::int32_t GetAddressCount() const { return Count(addresses_); }
  std::int32_t GetOrganizationCount() const { return Count(organizations_); }
  std::int32_t GetContactEventCount() const { return Count(events_); }
  std::int32_t GetNicknameCount() const { return Count(nicknames_); }
  std::int32_t GetCommentCount() const { return Count(comments_); }
  std::int32_t GetGroupCount() const { return Count(groups_); }

  // The entry of that index, which isn't checked.
  const CTelephoneNumber& GetTelephone(std::int32_t index) const { return At(telephones_, index); }
  const CEmail& GetEmail(std::int32_t index) const { return At(emails_, index); }
  const CMessenger& GetMessenger(std::int32_t index) const { return At(messengers_, index); }
  const CURL& GetURL(std::int32_t index) const { return At(urls_, index); }
  const CPostalAddress& GetAddress(std::int32_t index) const { return At(addresses_, index); }
  const COrganization& GetOrganization(std::int32_t index) const {
    return At(organizations_, index);
  }
  const CContactEvent& GetContactEvent(std::int32_t index) const { return At(events_, index); }
  const WideText& GetNickname(std::int32_t index) const { return At(nicknames_, index); }
  const WideText& GetComment(std::int32_t index) const { return At(comments_, index); }
  // Sets `groupName` to a copy of the name.
  void GetGroup(std::int32_t index, WideString& groupName) const {
    groupName = At(groups_, index).view();
  }

  // The whole lists, for loops. The group names are those that the contact's own text held.
  const RecordList<CTelephoneNumber>& telephones() const { return telephones_; }
  const RecordList<CEmail>& emails() const { return emails_; }
  const InlineList<CMessenger, 0>& messengers() const { return messengers_; }
  const RecordList<CURL>& urls() const { return urls_; }
  const RecordList<CPostalAddress>& addresses() const { return addresses_; }
  const RecordList<COrganization>& organizations() const { return organizations_; }
  const RecordList<CContactEvent>& contactEvents() const { return events_; }
  const RecordList<WideText>& nicknames() const { return nicknames_; }
  const RecordList<WideText>& comments() const { return comments_; }
  const RecordList<WideText>& groups() const { return groups_; }

  // Keep and forget a pointer of the application's, which nothing here follows.
  void setDBManager(PimsDBManager* manager) { manager_ = manager; }
  void releaseDB() { manager_ = nullptr; }

  std::int32_t favorite = 0;             // X-FAVORITE: 1 for a favourite, else 0
  CName name;                            // N; where that is missing, the given name is FN
  CName phonetic;                        // SOUND: how the name is pronounced
  WideText formatted_name;               // FN
  std::int32_t blood_type = BLOOD_NONE;  // X-BLOOD: a BloodType
  WideText hobby;                        // X-HOBBY
  WideText org_title;                    // TITLE
  WideText org_role;                     // ROLE
  WideText photo;                        // PHOTO: its file's name in the caller-ID folder, or empty

 private:
  friend struct ContactLists;  // the store's view of the lists

  template <class T, std::uint32_t Inside>
  static std::int32_t Count(const InlineList<T, Inside>& list) {
    return static_cast<std::int32_t>(list.size());
  }
  template <class T, std::uint32_t Inside>
  static const T& At(const InlineList<T, Inside>& list, std::int32_t index) {
    return list[static_cast<std::size_t>(index)];
  }

  PimsDBManager* manager_ = nullptr;  // the application's; never followed here
  RecordList<CTelephoneNumber> telephones_;
  RecordList<CEmail> emails_;
  InlineList<CMessenger, 0> messengers_;
  RecordList<CURL> urls_;
  RecordList<CPostalAddress> addresses_;
  RecordList<COrganization> organizations_;
  RecordList<CContactEvent> events_;
  RecordList<WideText> nicknames_;
  RecordList<WideText> comments_;
  RecordList<WideText> groups_;
};

}  // namespace pim
