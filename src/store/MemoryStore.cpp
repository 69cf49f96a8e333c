#include "pim/records/MemoryStore.h"

#include <algorithm>
#include <exception>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/LetterCase.h"
#include "records/SaveRecords.h"
#include "support/CallerIdPictures.h"

namespace pim {

namespace {

constexpr std::int32_t kFailure = -1;

// What takes back each change, the last one first.
class UndoLog {
 public:
  void Add(std::function<void()> undo) { undos_.push_back(std::move(undo)); }
  bool IsOpen() const { return !marks_.empty(); }
  void Begin() { marks_.push_back(undos_.size()); }
  void Commit() {
    marks_.pop_back();
    if (marks_.empty()) undos_.clear();
  }
  void Rollback() {
    for (; undos_.size() > marks_.back(); undos_.pop_back()) undos_.back()();
    marks_.pop_back();
  }

 private:
  std::vector<std::function<void()>> undos_;
  std::vector<std::size_t> marks_;
};

template <class Record>
class RecordTable {
 public:
  RecordTable(const RecordMap& map, UndoLog& log, const PictureReader& pictures,
              const FingerprintKey& key)
      : map_(map), log_(log), pictures_(pictures), key_(key) {}

  bool Holds(std::int32_t key) const { return records_.contains(key); }
  static bool NeedsPrints() { return false; }
  Fingerprint PrintOf(Record& record) const { return FingerprintOf(map_, &record, key_); }
  void Insert(std::span<const FreshRecord<Record>> records) {
    for (const auto& [record, print] : records) {
      const std::int32_t key = record->tag;
      log_.Add([this, key] {
        records_.erase(key);
        contents_.reset();
      });
      records_[key] = Copy(key, *record);
      given_.Add(key);
    }
  }
  void Update(std::int32_t key, Record& record) {
    log_.Add([this, key, before = records_[key]] {
      records_[key] = before;
      contents_.reset();
    });
    records_[key] = Copy(key, record);
  }
  // False when there is no record of that key.
  bool Erase(std::int32_t key) {
    const auto found = records_.find(key);
    if (found == records_.end()) return false;
    log_.Add([this, key, before = found->second] {
      records_[key] = before;
      contents_.reset();
    });
    records_.erase(found);
    contents_.reset();
    return true;
  }
  const GivenKeys& Given() const { return given_; }
  std::int32_t HighestKey() const {
    return given_.HighestWith(records_.empty() ? 0 : records_.rbegin()->first);
  }
  ContentIndex* Contents(bool isWanted) {
    if (!contents_ && isWanted) {
      ContentIndex filled(pictures_, key_);
      for (const auto& [key, record] : records_)
        filled.Add(key, PrintOf(*record), PhotoOf(*record));
      contents_ = std::move(filled);
    }
    return contents_ ? &*contents_ : nullptr;
  }
  void ForgetContents() { contents_.reset(); }

  // Reads copies of those that have the keys, until `visitor` gives false.
  template <class Visitor>
  std::int32_t VisitKeys(std::span<const std::int32_t> keys, Visitor visitor) const {
    std::int32_t visited = 0;
    for (const std::int32_t key : keys) {
      const auto found = records_.find(key);
      if (found == records_.end()) continue;
      ++visited;
      if (!visitor(Copy(key, *found->second))) break;
    }
    return visited;
  }

  // Reads copies until `visitor` gives false or there is no other that `isWanted` takes.
  template <class Wanted, class Visitor>
  std::int32_t Visit(Wanted isWanted, Visitor visitor) const {
    std::int32_t visited = 0;
    for (const auto& [key, record] : records_) {
      if (!isWanted(*record)) continue;
      ++visited;
      if (!visitor(Copy(key, *record))) break;
    }
    return visited;
  }

 private:
  std::unique_ptr<Record> Copy(std::int32_t key, Record& record) const {
    auto copy = std::make_unique<Record>();
    CopyRecord(map_, &record, copy.get());
    copy->tag = key;
    return copy;
  }

  const RecordMap& map_;
  UndoLog& log_;
  const PictureReader& pictures_;
  FingerprintKey key_;
  std::map<std::int32_t, std::shared_ptr<Record>> records_;
  std::optional<ContentIndex> contents_;
  GivenKeys given_;
};

class GroupTable {
 public:
  explicit GroupTable(UndoLog& log) : log_(log) {}

  bool Holds(std::int32_t key) const { return names_.contains(key); }
  std::int32_t Find(WideStringView name) const {
    const auto found = keys_.find(FoldLetterCase(name));
    return found == keys_.end() ? 0 : found->second;
  }
  const GivenKeys& Given() const { return given_; }
  std::int32_t HighestKey() const {
    return given_.HighestWith(names_.empty() ? 0 : names_.rbegin()->first);
  }
  void Insert(std::int32_t key, WideStringView name) {
    log_.Add([this, key] { Erase(key); });
    Put(key, name);
    given_.Add(key);
  }
  void Rename(std::int32_t key, WideStringView name) {
    log_.Add([this, key, before = names_.at(key)] {
      Erase(key);
      Put(key, before);
    });
    Erase(key);
    Put(key, name);
  }
  const std::map<std::int32_t, WideText>& names() const { return names_; }

 private:
  void Put(std::int32_t key, WideStringView name) {
    names_[key] = name;
    keys_[FoldLetterCase(name)] = key;
  }
  void Erase(std::int32_t key) {
    keys_.erase(FoldLetterCase(names_.at(key)));
    names_.erase(key);
  }

  UndoLog& log_;
  std::map<std::int32_t, WideText> names_;
  std::unordered_map<WideString, std::int32_t> keys_;  // by the name in one letter case
  GivenKeys given_;
};

constexpr auto kEach = [](const auto&) { return true; };

auto OfKind(CalendarType kind) {
  return [kind](const CCalendar& item) {
    return item.calendar_type == static_cast<std::uint8_t>(kind);
  };
}

template <class Records>
auto AppendTo(Records& records) {
  return [&records](auto record) {
    records.Add(std::move(record));
    return true;
  };
}

}  // namespace

class MemoryStore::Impl final : public RecordStore {
 public:
  void SetPictureReader(PictureReader reader) {
    pictures_ = std::move(reader);
    contacts_.ForgetContents();
  }

  std::int32_t LoadContacts(CContacts& contacts) override {
    return Visit(contacts_, kEach, AppendTo(contacts));
  }
  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    for (const auto& [key, name] : groups_.names()) {
      CContactGroup& group = groups.AddNew();
      group.group_id = key;
      group.group_name = name;
    }
    return static_cast<std::int32_t>(groups_.names().size());
  }
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override {
    for (const auto& [contact, group] : links_) {
      CContactGroupPair& pair = pairs.AddNew();
      pair.contact_id = contact;
      pair.group_id = group;
    }
    return static_cast<std::int32_t>(links_.size());
  }
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override {
    return Visit(calendars_, OfKind(kind), AppendTo(items));
  }
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override {
    return Visit(contacts_, kEach, [&](const auto& contact) { return visitor(*contact); });
  }
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return Visit(calendars_, OfKind(kind), [&](const auto& item) { return visitor(*item); });
  }
  std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                             const std::function<bool(CContact&)>& visitor) override {
    return Read([&] {
      return contacts_.VisitKeys(keys, [&](const auto& contact) { return visitor(*contact); });
    });
  }
  std::int32_t VisitCalendars(std::span<const std::int32_t> keys,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return Read([&] {
      return calendars_.VisitKeys(keys, [&](const auto& item) { return visitor(*item); });
    });
  }

  std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                              std::vector<WideString>& pictures) override {
    return Store([&] {
      std::unordered_set<WideString> names;
      std::unordered_set<std::int32_t> erased;
      const auto addName = [&names](const auto& contact) {
        if (!contact->photo.empty()) names.insert(contact->photo.str());
        return true;
      };
      contacts_.VisitKeys(keys, addName);
      for (const std::int32_t key : keys)
        if (contacts_.Erase(key)) erased.insert(key);
      EraseLinks(erased);
      contacts_.Visit(kEach, [&names](const auto& contact) {
        names.erase(contact->photo.str());
        return !names.empty();
      });
      pictures.insert(pictures.end(), names.begin(), names.end());
      return static_cast<std::int32_t>(erased.size());
    });
  }
  std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) override {
    return Store([&] {
      return static_cast<std::int32_t>(
          std::ranges::count_if(keys, [this](std::int32_t key) { return calendars_.Erase(key); }));
    });
  }

  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return SaveGuarded(contacts, [&](KeyGuard<CContacts>& keys) {
      return Store([&] {
        if (saveOption > 0 && !groups_.Holds(saveOption))
          throw std::runtime_error(NoSuchGroup(saveOption));
        const std::int32_t saved = SaveRecords(contacts, saveFlag, contacts_, keys);
        if (saveOption > 0) LinkContacts(contacts, saveOption, *this);
        return saved;
      });
    });
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) override {
    return SaveGuarded(groups,
                       [&](auto&) { return Store([&] { return SaveGroups(groups, groups_); }); });
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return Store([&] { return SaveLinks(pairs, *this); });
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return SaveGuarded(items, [&](KeyGuard<CCalendars>& keys) {
      return Store([&] { return SaveRecords(items, saveFlag, calendars_, keys); });
    });
  }

  bool Begin() override {
    if (IsBeingRead()) return false;
    log_.Begin();
    return true;
  }
  bool Commit() override {
    if (!log_.IsOpen() || IsBeingRead()) return false;
    log_.Commit();
    return true;
  }
  bool Rollback() noexcept override {
    if (!log_.IsOpen()) return false;
    log_.Rollback();
    return true;
  }
  bool BeginReading() override {
    ++readings_;
    return true;
  }
  void EndReading() noexcept override { --readings_; }
  std::string LastError() const override { return problem_; }

  // The links, as SaveLinks meets them.
  std::int64_t Count(std::int32_t contact, std::int32_t group) const {
    const auto found = linkCounts_.find({contact, group});
    return found == linkCounts_.end() ? 0 : found->second;
  }
  void Insert(std::span<const LinkRow> links) {
    for (const auto& [contact, group] : links) {
      if (!contacts_.Holds(contact) || !groups_.Holds(group))
        throw std::runtime_error(NoSuchLink(contact, group));
      log_.Add([this] {
        --linkCounts_[links_.back()];
        links_.pop_back();
      });
      links_.emplace_back(contact, group);
      ++linkCounts_[links_.back()];
    }
  }

 private:
  // Runs `save` in a transaction of its own, after which a failure leaves nothing.
  template <class Save>
  std::int32_t Store(Save save) {
    if (IsBeingRead()) return kFailure;
    log_.Begin();
    try {
      const std::int32_t result = save();
      log_.Commit();
      return result;
    } catch (const std::exception& error) {
      log_.Rollback();
      return Fail(error.what());
    } catch (...) {  // a picture reader's own
      log_.Rollback();
      throw;
    }
  }
  // Tells so as well.
  bool IsBeingRead() {
    const bool isRead = visiting_ || readings_ > 0;
    if (isRead) Fail("the store is being read, so that nothing can be written");
    return isRead;
  }
  std::int32_t Fail(std::string problem) {
    problem_ = std::move(problem);
    return kFailure;
  }

  void EraseLinks(const std::unordered_set<std::int32_t>& contacts) {
    log_.Add([this, links = links_, counts = linkCounts_] {
      links_ = links;
      linkCounts_ = counts;
    });
    const auto isErased = [&contacts](const auto& link) { return contacts.contains(link.first); };
    std::erase_if(links_, isErased);
    std::erase_if(linkCounts_, [&](const auto& row) { return isErased(row.first); });
  }

  template <class Reading>
  std::int32_t Read(Reading reading) {
    if (visiting_) return Fail("the store is being read already");
    struct Scope {
      bool& flag;
      ~Scope() { flag = false; }
    } const scope{visiting_ = true};
    return reading();
  }
  template <class Record, class Wanted, class Visitor>
  std::int32_t Visit(const RecordTable<Record>& table, Wanted isWanted, Visitor visitor) {
    return Read([&] { return table.Visit(isWanted, visitor); });
  }

  UndoLog log_;
  PictureReader pictures_ = ReadCallerIdPicture;
  FingerprintKey key_ = NewFingerprintKey();
  RecordTable<CContact> contacts_{ContactMap(), log_, pictures_, key_};
  RecordTable<CCalendar> calendars_{CalendarMap(), log_, pictures_, key_};
  GroupTable groups_{log_};
  std::vector<std::pair<std::int32_t, std::int32_t>> links_;  // contact and group
  std::map<std::pair<std::int32_t, std::int32_t>, std::int64_t> linkCounts_;
  bool visiting_ = false;
  int readings_ = 0;
  std::string problem_;
};

MemoryStore::MemoryStore() : MemoryStore(std::make_unique<Impl>()) {}

MemoryStore::MemoryStore(std::unique_ptr<Impl> impl)
    : ForwardingStore(*impl), impl_(std::move(impl)) {}

MemoryStore::~MemoryStore() = default;

void MemoryStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}

}  // namespace pim
