#pragma once

#include <cstdint>
#include <vector>

#include "pim/records/ContactParts.h"
#include "pim/records/VObject.h"

namespace pim {

class PimsDBManager;

// One contact. Lists keep the order in which their entries were made; an entry's reference is good
// until the next entry of the same list is made. Indexes run from 0 and must lie below the count.
class CContact : public CVObject {
 public:
  // The further arguments of the New... operations say whether the entry is the contact's default
  // one and which row of the store it comes from (-1: none). Records keep neither: a default is
  // told by the type's own bit, and the store numbers its rows itself.
  CTelephoneNumber& NewTelephone(WideStringView number, std::uint32_t type, bool isDefault,
                                 std::int32_t rowId);
  CEmail& NewEmail(WideStringView address, std::uint32_t type, std::int32_t rowId);
  CURL& NewURL(WideStringView url, std::uint32_t type, std::int32_t rowId);
  // `source` is copied when it isn't null; the type is `type` in any case.
  CPostalAddress& NewAddress(const CPostalAddress* source, std::uint32_t type, std::int32_t rowId);
  COrganization& NewOrganization(std::uint32_t type);
  CMessenger& NewMessenger(WideStringView address, std::uint32_t type);
  CContactEvent& NewContactEvent(const COleDateTimeNull& date, std::uint32_t type);
  void NewNickname(WideStringView text) { nicknames_.emplace_back(text); }
  void NewComment(WideStringView text) { comments_.emplace_back(text); }
  void NewGroup(WideStringView groupName) { groups_.emplace_back(groupName); }

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
  void GetGroup(std::int32_t index, WideString& groupName) const {
    groupName = At(groups_, index).view();
  }

  // The whole lists, for loops. The group names are those that the contact's own text held.
  const std::vector<CTelephoneNumber>& telephones() const { return telephones_; }
  const std::vector<CEmail>& emails() const { return emails_; }
  const std::vector<CMessenger>& messengers() const { return messengers_; }
  const std::vector<CURL>& urls() const { return urls_; }
  const std::vector<CPostalAddress>& addresses() const { return addresses_; }
  const std::vector<COrganization>& organizations() const { return organizations_; }
  const std::vector<CContactEvent>& contactEvents() const { return events_; }
  const std::vector<WideText>& nicknames() const { return nicknames_; }
  const std::vector<WideText>& comments() const { return comments_; }
  const std::vector<WideText>& groups() const { return groups_; }

  void setDBManager(PimsDBManager* manager) { manager_ = manager; }
  void releaseDB() { manager_ = nullptr; }

  std::int32_t favorite = 0;  // 1 for a favourite, else 0
  CName name;
  CName phonetic;  // how the name is pronounced
  WideText formatted_name;
  std::int32_t blood_type = BLOOD_NONE;
  WideText hobby;
  WideText org_title;
  WideText org_role;
  WideText photo;  // the picture's file name in the caller-ID folder

 private:
  friend struct ContactLists;  // the store's view of the lists

  template <class T>
  static std::int32_t Count(const std::vector<T>& list) {
    return static_cast<std::int32_t>(list.size());
  }
  template <class T>
  static const T& At(const std::vector<T>& list, std::int32_t index) {
    return list[static_cast<std::size_t>(index)];
  }

  PimsDBManager* manager_ = nullptr;  // the application's; never followed here
  std::vector<CTelephoneNumber> telephones_;
  std::vector<CEmail> emails_;
  std::vector<CMessenger> messengers_;
  std::vector<CURL> urls_;
  std::vector<CPostalAddress> addresses_;
  std::vector<COrganization> organizations_;
  std::vector<CContactEvent> events_;
  std::vector<WideText> nicknames_;
  std::vector<WideText> comments_;
  std::vector<WideText> groups_;
};

}  // namespace pim
