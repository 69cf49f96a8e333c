// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/StoredRecords.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "app/commands/CommandTable.h"
#include "app/commands/Nearest.h"
#include "app/commands/OptionValues.h"
#include "app/input/Interrupt.h"
#include "app/output/FoldedText.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"
#include "platform/CodePages.h"

namespace pim::app {

template <class Record>
StoredRecords<Record>::StoredRecords(Session& session, Filter filter)
    : session_(session), reading_(session.store()), filter_(std::move(filter)) {
  if (!reading_.IsOpen()) session.Fail();
  for (const std::string& word : filter_.words) words_.push_back(Folded(word));
}

// All words must stand in one text or another of the record.
template <class Record>
bool StoredRecords<Record>::IsChosen(const Record& record) {
  if (filter_.withoutName && HasName(record)) return false;
  if (filter_.group && !IsInGroup(record)) return false;
  if (words_.empty()) return true;
  text_.clear();
  for (const FieldRow<Record>& field : FieldsOf(&record)) {
    if (field.isText) text_.append(field.cell(record, times_, CellForm::Whole)).append("\n");
  }
  const std::string folded = Folded(text_);
  return std::ranges::all_of(
      words_, [&](const std::string& word) { return folded.find(word) != std::string::npos; });
}

template <class Record>
void StoredRecords<Record>::Visit(const Visitor& visitor) {
  if (filter_.IsEmpty()) return VisitAll(visitor);
  VisitAll([&](Record& record) {
    if (IsChosen(record)) visitor(record);
  });
}

template <class Record>
std::vector<std::int32_t> StoredRecords<Record>::Keys() {
  std::vector<std::int32_t> keys;
  Visit([&keys](Record& record) { keys.push_back(record.tag); });
  return keys;
}

template <class Record>
SortKey StoredRecords<Record>::SortKeyOf(const Record& record, ListOrder order) const {
  switch (order) {
    case ListOrder::Key:
      break;
    case ListOrder::Name: {
      std::string name = Folded(Utf8FromWide(NameOf(record)));
      return {0, name.empty(), std::move(name)};
    }
    case ListOrder::Time: {
      const COleDateTime time = TimeOf(record);
      return {time.status == StatusValid ? time.value : std::numeric_limits<double>::infinity()};
    }
  }
  return {};
}

template class StoredRecords<CContact>;
template class StoredRecords<CCalendar>;

StoredContacts::StoredContacts(Session& session, Filter filter)
    : StoredRecords(session, std::move(filter)) {
  if (groups_.OpenFromDB(session.db()) < 0 || pairs_.OpenFromDB() < 0) session.Fail();
  if (this->filter().group) FindMembers(*this->filter().group);
}

void StoredContacts::FindMembers(const std::string& group) {
  const std::string wanted = Folded(group);
  std::vector<std::string> names;
  for (std::int32_t i = 0; i < groups_.GetCount(); ++i) {
    names.push_back(Utf8FromWide(groups_[i].group_name));
    if (Folded(names.back()) != wanted) continue;
    for (std::int32_t pair = 0; pair < pairs_.GetCount(); ++pair)
      if (pairs_[pair].group_id == groups_[i].group_id) members_.insert(pairs_[pair].contact_id);
    return;
  }
  const std::vector<std::string_view> choices(names.begin(), names.end());
  throw Failure("no group is called '" + ShownName(group) + "'" + Suggestion(group, choices));
}

std::int32_t StoredContacts::CountAll() {
  if (!filter().IsEmpty()) return 0;
  const std::int32_t count = session().store().CountContacts();
  if (count < 0) session().Fail();
  return count;
}

void StoredContacts::VisitAll(const Visitor& visitor) {
  std::optional<ContactExport> names;
  if (bringsGroups()) names.emplace(WideString(), groups_, pairs_);
  const std::int32_t visited = session().store().VisitContacts([&](CContact& contact) {
    CheckInterrupt();
    if (names) names->AttachGroupNames(contact);
    visitor(contact);
    return true;
  });
  if (visited < 0) session().Fail();
}

void StoredContacts::VisitKeys(std::span<const std::int32_t> keys, const Visitor& visitor) {
  ContactExport names({}, groups_, pairs_);
  const std::int32_t visited = session().store().VisitContacts(keys, [&](CContact& contact) {
    CheckInterrupt();
    names.AttachGroupNames(contact);
    visitor(contact);
    return true;
  });
  if (visited < 0) session().Fail();
}

bool StoredContacts::IsInGroup(const CContact& contact) const {
  return members_.contains(contact.tag);
}
bool StoredContacts::HasName(const CContact& contact) const {
  return !contact.formatted_name.empty() || !contact.name.IsEmpty();
}
// By family name ahead of given name, as address books are sorted.
WideString StoredContacts::NameOf(const CContact& contact) const {
  if (contact.name.family_name.empty()) return DisplayName(contact);
  return contact.name.family_name.str().append(u" ").append(contact.name.given_name.view());
}
COleDateTime StoredContacts::TimeOf(const CContact& contact) const { return contact.modified_time; }

// Another program's rows, which belong to no list and no export.
StoredItems::StoredItems(Session& session, CalendarType kind, Filter filter)
    : StoredRecords(session, std::move(filter)), kind_(kind) {
  const std::int32_t count = session.store().CountItemsWithoutKind();
  if (count < 0) session.Fail();
  if (count > 0) {
    Complain(session.name() + ": " + Counted(count, "item") +
             " of no known kind left out: neither event nor to-do nor memo");
  }
}

void StoredItems::VisitAll(const Visitor& visitor) {
  const std::int32_t visited = session().store().VisitCalendars(kind_, [&](CCalendar& item) {
    CheckInterrupt();
    visitor(item);
    return true;
  });
  if (visited < 0) session().Fail();
}

void StoredItems::VisitKeys(std::span<const std::int32_t> keys, const Visitor& visitor) {
  const std::int32_t visited = session().store().VisitCalendars(keys, [&](CCalendar& item) {
    CheckInterrupt();
    if (static_cast<CalendarType>(item.calendar_type) == kind_) visitor(item);
    return true;
  });
  if (visited < 0) session().Fail();
}

bool StoredItems::HasName(const CCalendar& item) const {
  return !item.summary.empty() || !item.description.empty();
}
WideString StoredItems::NameOf(const CCalendar& item) const { return ItemName(item); }
COleDateTime StoredItems::TimeOf(const CCalendar& item) const {
  if (kind_ == CalendarType::Todo && item.due.status == StatusValid) return item.due;
  return kind_ == CalendarType::Memo ? item.modified_time : item.start_time;
}

std::int32_t RemoveLeftPictures(Session& session) {
  const std::int32_t removed = session.Try([&] { return session.store().RemoveLeftPictures(); });
  if (session.store().HasLeftPictures()) {
    const std::string problem = session.store().PictureProblem();
    Complain("pictures of deleted contacts can't be removed yet: " +
             (problem.empty() ? "there is no application-data folder" : problem));
  }
  return removed;
}

int TellPicturesNotMade(Session& session) {
  const std::int64_t count = session.store().PicturesNotMade();
  if (count == 0) return kDone;
  Complain(Counted(count, "picture") + " couldn't be made: " + session.store().PictureProblem());
  return kFailed;
}

void TellNoSuchKey(RecordKind kind, std::int32_t key) {
  Complain("no stored " + std::string(NounOf(kind).one) + " has the key " + std::to_string(key));
}

std::vector<std::int32_t> KeysOf(const std::vector<std::string>& operands) {
  std::vector<std::int32_t> keys;
  for (const std::string& operand : operands) {
    const std::optional<std::int32_t> key = PositiveNumber(operand);
    if (!key) {
      throw WrongUsage("'" + ShownName(operand) +
                       "' is no key; a key is a number of list's first column");
    }
    keys.push_back(*key);
  }
  return keys;
}

}  // namespace pim::app
