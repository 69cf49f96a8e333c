#include "pim/store/SqliteStore.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <optional>
#include <span>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"
#include "platform/CodePages.h"
#include "platform/Visible.h"
#include "records/SaveRecords.h"
#include "store/GroupTables.h"
#include "store/RecordEraser.h"
#include "store/RecordReader.h"
#include "store/RecordWriter.h"
#include "store/SqlText.h"
#include "store/StoreFile.h"
#include "support/CallerIdPictures.h"

namespace pim {

namespace {

constexpr std::int32_t kFailure = -1;
constexpr std::int32_t kVisitedAtOnce = 1024;

// The contents of stored records, as far as this process knows them.
class ContentCache {
 public:
  // The index, or null where none is wanted and there is none. `dataVersion` changes when another
  // program has changed the store.
  template <class Fill>
  ContentIndex* Get(bool isWanted, std::int64_t dataVersion, const PictureReader& pictures,
                    Fill fill) {
    if (dataVersion != dataVersion_) Drop();
    if (!index_ && isWanted) {
      index_.emplace(pictures);
      try {
        fill(*index_);
      } catch (...) {
        Drop();
        throw;
      }
    }
    dataVersion_ = dataVersion;
    return index_ ? &*index_ : nullptr;
  }
  void Drop() {
    changesOfDropped_ = changes() + 1;
    index_.reset();
  }

  // Grows with each change to the contents, the dropping of all of them included.
  std::size_t changes() const { return changesOfDropped_ + (index_ ? index_->changes() : 0); }
  // Forgets what is no longer so, if anything has changed since `changes` was taken.
  void Undo(std::size_t changesBefore) {
    if (changes() != changesBefore) Drop();
  }

 private:
  std::optional<ContentIndex> index_;
  std::size_t changesOfDropped_ = 0;
  std::int64_t dataVersion_ = 0;
};

}  // namespace

class SqliteStore::Impl final : public RecordStore {
 public:
  Impl(const std::string& path, StoreAccess access, std::chrono::milliseconds lockWait,
       std::function<bool()> givesUp)
      : db_(OpenStoreFile(path, access, {lockWait, std::move(givesUp)})) {}

  std::int32_t CountContacts() { return Count(storedContacts_); }
  std::int32_t CountItemsWithoutKind() { return Count(itemsWithoutKind_); }
  void SetPictureReader(PictureReader reader) {
    pictures_ = std::move(reader);
    contacts_.contents.Drop();
  }

  std::int32_t LoadContacts(CContacts& contacts) override {
    return Append(contacts, [&] { contacts_.all.ReadAll(0, NewIn<CContact>(contacts)); });
  }
  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    return Append(groups, [&] { groups_.Load(groups); });
  }
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override {
    return Append(pairs, [&] { links_.Load(pairs); });
  }
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override {
    return Append(items, [&] {
      calendarsOfKind_.ReadAll(static_cast<std::int64_t>(kind), NewIn<CCalendar>(items));
    });
  }
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override {
    return VisitStored<CContact, CContacts>(contacts_.all, 0, visitor);
  }
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return VisitStored<CCalendar, CCalendars>(calendarsOfKind_, static_cast<std::int64_t>(kind),
                                              visitor);
  }
  std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                             const std::function<bool(CContact&)>& visitor) override {
    return VisitKeys<CContact, CContacts>(contacts_.all, keys, visitor);
  }
  std::int32_t VisitCalendars(std::span<const std::int32_t> keys,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return VisitKeys<CCalendar, CCalendars>(calendars_.all, keys, visitor);
  }

  std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                              std::vector<WideString>& pictures) override {
    std::vector<WideString> unnamed;
    const std::int32_t deleted = Store([&] {
      const std::vector<WideString> named = pictureNames_.Of(keys);
      const std::int32_t count = contacts_.Erase(keys);
      unnamed = pictureNames_.WithoutStored(named);
      return count;
    });
    if (deleted >= 0) std::ranges::move(unnamed, std::back_inserter(pictures));
    return deleted;
  }
  std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) override {
    return Store([&] { return calendars_.Erase(keys); });
  }

  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return SaveGuarded(contacts, [&](KeyGuard<CContacts>& keys) {
      return Store([&] {
        if (saveOption > 0 && !groups_.Holds(saveOption)) db_->Fail(NoSuchGroup(saveOption));
        const std::int32_t saved = SaveRecords(contacts, ContactMap(), saveFlag, contacts_, keys);
        if (saveOption > 0) LinkContacts(contacts, saveOption, links_);
        return saved;
      });
    });
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) override {
    return SaveGuarded(groups, [&](auto&) {
      return Store([&] {
        FoldGroupNames();
        return SaveGroups(groups, groups_);
      });
    });
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return Store([&] { return SaveLinks(pairs, links_); });
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return SaveGuarded(items, [&](KeyGuard<CCalendars>& keys) {
      return Store([&] { return SaveRecords(items, CalendarMap(), saveFlag, calendars_, keys); });
    });
  }

  bool Begin() override {
    return Succeeds([&] { BeginTransaction(); });
  }
  bool Commit() override {
    return Succeeds([&] { CommitTransaction(); });
  }
  bool Rollback() noexcept override {
    if (marks_.empty()) return false;
    contacts_.contents.Undo(marks_.back().contacts);
    calendars_.contents.Undo(marks_.back().calendars);
    foldedAt_ = 0;
    marks_.pop_back();
    return db_->Rollback();
  }
  bool BeginReading() override {
    return Succeeds([&] { db_->BeginReading(); });
  }
  void EndReading() noexcept override { db_->EndReading(); }
  std::string LastError() const override { return problem_; }

 private:
  // One kind of record: its tables and what is known of their content.
  template <class Record, class Records>
  struct Kind {
    Kind(Impl& impl, const RecordMap& recordMap)
        : store(impl),
          map(recordMap),
          writer(*impl.db_, recordMap),
          eraser(*impl.db_, recordMap),
          all(*impl.db_, recordMap) {}

    bool Holds(std::int32_t key) { return writer.Holds(key); }
    void Insert(std::span<Record* const> records) {
      std::vector<KeyedRecord> rows;
      rows.reserve(records.size());
      for (Record* record : records) rows.push_back({record->tag, record});
      writer.Insert(rows);
      for (const Record* record : records) given.Add(record->tag);
    }
    void Update(std::int32_t key, Record& record) { writer.Update(key, &record); }
    // Gives how many records there were. What is known of the others' content is learnt anew.
    std::int32_t Erase(std::span<const std::int32_t> keys) {
      given.Add(writer.HighestKey());  // no key of a deleted record is given again
      std::int32_t erased = 0;
      for (const std::int32_t key : keys) erased += eraser.Erase(key) ? 1 : 0;
      contents.Drop();
      return erased;
    }
    std::int32_t HighestKey() { return given.HighestWith(writer.HighestKey()); }
    const GivenKeys& Given() const { return given; }
    ContentIndex* Contents(bool isWanted) {
      return contents.Get(isWanted, store.DataVersion(), store.pictures_,
                          [this](ContentIndex& index) { Fill(index); });
    }
    void Fill(ContentIndex& index) {
      Visit<Record, Records>(all, 0, [&](Record& record) {
        if (IsStoredKey(record.tag))
          index.Add(record.tag, FingerprintOf(map, &record), PhotoOf(record));
        return true;
      });
    }

    Impl& store;
    const RecordMap& map;
    RecordWriter writer;
    RecordEraser eraser;
    RecordReader all;
    ContentCache contents;
    GivenKeys given;
  };

  // Reads on until `visitor` gives false, some records at a time.
  template <class Record, class Records, class Visitor>
  static std::int32_t Visit(RecordReader& reader, std::int64_t filter, Visitor visitor) {
    reader.Restart();
    std::int32_t visited = 0;
    for (;;) {
      Records some;
      if (!reader.ReadSome(filter, kVisitedAtOnce, NewIn<Record>(some))) return visited;
      for (std::int32_t i = 0; i < some.GetCount(); ++i) {
        ++visited;
        if (!visitor(some[i])) return visited;
      }
    }
  }

  template <class Record, class Records>
  static RecordReader::NewRecord NewIn(Records& records) {
    return [&records](std::int32_t key) -> void* {
      Record& record = records.AddNew();
      record.tag = key;
      return &record;
    };
  }

  // Appends what `load` reads, or nothing.
  template <class Records, class Load>
  std::int32_t Append(Records& records, Load load) {
    const std::int32_t before = records.GetCount();
    const std::int32_t result = Try([&] {
      const ReadTransaction reading(*db_);
      load();
      return records.GetCount() - before;
    });
    while (result == kFailure && records.GetCount() > before) records.TakeLast();
    return result;
  }

  // Runs `save` in a transaction of its own, after which a failure leaves nothing.
  template <class Save>
  std::int32_t Store(Save save) {
    return Try([&] {
      BeginTransaction();
      try {
        const std::int32_t result = save();
        CommitTransaction();
        return result;
      } catch (...) {
        Rollback();
        throw;
      }
    });
  }

  void BeginTransaction() {
    marks_.push_back({contacts_.contents.changes(), calendars_.contents.changes()});
    try {
      db_->Begin();
    } catch (...) {
      marks_.pop_back();
      throw;
    }
  }
  void CommitTransaction() {
    db_->Commit();
    marks_.pop_back();
  }

  // What the visitor throws is the caller's, and no failure of the store.
  template <class Record, class Records>
  std::int32_t VisitStored(RecordReader& reader, std::int64_t filter,
                           const std::function<bool(Record&)>& visitor) {
    std::exception_ptr thrown;
    const std::int32_t visited = Try([&] {
      const ReadTransaction reading(*db_);
      return Visit<Record, Records>(reader, filter, [&](Record& record) {
        try {
          return visitor(record);
        } catch (...) {
          thrown = std::current_exception();
          return false;
        }
      });
    });
    if (thrown) std::rethrow_exception(thrown);
    return visited;
  }

  template <class Record, class Records>
  std::int32_t VisitKeys(RecordReader& reader, std::span<const std::int32_t> keys,
                         const std::function<bool(Record&)>& visitor) {
    std::exception_ptr thrown;
    const std::int32_t visited = Try([&] {
      const ReadTransaction reading(*db_);
      std::int32_t count = 0;
      for (const std::int32_t key : keys) {
        Records one;
        if (!reader.ReadOne(key, NewIn<Record>(one))) continue;
        ++count;
        try {
          if (!visitor(one[0])) return count;
        } catch (...) {
          thrown = std::current_exception();
          return count;
        }
      }
      return count;
    });
    if (thrown) std::rethrow_exception(thrown);
    return visited;
  }

  // Gives what `operation` gives, or -1 with the problem kept.
  template <class Operation>
  std::int32_t Try(Operation operation) {
    try {
      return operation();
    } catch (const StoreError& error) {
      problem_ = error.what();
    } catch (const std::exception& error) {
      problem_ = StoreError(db_->path(), error.what()).what();
    }
    return kFailure;
  }

  template <class Operation>
  bool Succeeds(Operation operation) {
    return Try([&] {
             operation();
             return 0;
           }) != kFailure;
  }

  std::int32_t Count(Statement& counting) {
    return Try([&] {
      Rows rows(counting);
      return rows.Next() ? static_cast<std::int32_t>(counting.Integer(0)) : 0;
    });
  }

  // Another program may have renamed a group without knowing of the column that finds it.
  void FoldGroupNames() {
    const std::int64_t version = DataVersion();
    if (version == foldedAt_) return;
    groups_.FoldNames();
    foldedAt_ = version;
  }

  std::int64_t DataVersion() {
    Rows rows(dataVersion_);
    return rows.Next() ? dataVersion_.Integer(0) : 0;
  }

  std::unique_ptr<Database> db_;
  Statement dataVersion_{*db_, "PRAGMA data_version"};
  PictureReader pictures_ = ReadCallerIdPicture;
  Kind<CContact, CContacts> contacts_{*this, ContactMap()};
  Kind<CCalendar, CCalendars> calendars_{*this, CalendarMap()};
  PictureNames pictureNames_{*db_};
  RecordReader calendarsOfKind_{*db_, CalendarMap(), "calendar_type"};
  Statement storedContacts_{*db_, CountSql(ContactMap().table, {})};
  Statement itemsWithoutKind_{*db_,
                              CountOthersSql("Calendars", "calendar_type",
                                             {static_cast<std::int32_t>(CalendarType::Event),
                                              static_cast<std::int32_t>(CalendarType::Todo),
                                              static_cast<std::int32_t>(CalendarType::Memo)})};
  GroupTable groups_{*db_};
  std::int64_t foldedAt_ = 0;  // the data version for which all names are folded
  LinkTable links_{*db_};
  struct Mark {
    std::size_t contacts;
    std::size_t calendars;
  };
  std::vector<Mark> marks_;  // one for each open transaction
  std::string problem_;
};

StoreError::StoreError(const std::string& path, const std::string& problem)
    : std::runtime_error(VisibleUtf8(WideFromUtf8(path)) + ": " + problem) {}

SqliteStore::SqliteStore(const std::string& path, std::chrono::milliseconds lockWait,
                         std::function<bool()> givesUp)
    : SqliteStore(path, StoreAccess::Create, lockWait, std::move(givesUp)) {}

SqliteStore::SqliteStore(const std::string& path, StoreAccess access,
                         std::chrono::milliseconds lockWait, std::function<bool()> givesUp)
    : SqliteStore(std::make_unique<Impl>(path, access, lockWait, std::move(givesUp))) {}

SqliteStore::SqliteStore(std::unique_ptr<Impl> impl)
    : ForwardingStore(*impl), impl_(std::move(impl)) {}

SqliteStore::~SqliteStore() = default;

std::int32_t SqliteStore::CountContacts() { return impl_->CountContacts(); }

std::int32_t SqliteStore::CountItemsWithoutKind() { return impl_->CountItemsWithoutKind(); }

void SqliteStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}

void SqliteStore::MakePictures(bool) {}
std::int64_t SqliteStore::PicturesNotMade() const { return 0; }
std::string SqliteStore::PictureProblem() const { return {}; }
std::int32_t SqliteStore::NamesPicture(WideStringView) { return 0; }
std::int32_t SqliteStore::RemoveLeftPictures() { return 0; }

}  // namespace pim
