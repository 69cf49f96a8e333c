// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"
#include "records/SaveRecords.h"
#include "store/ContentCache.h"
#include "store/ContentTable.h"
#include "store/Digest.h"
#include "store/HistoryRules.h"
#include "store/ImportRecorder.h"
#include "store/KeySequence.h"
#include "store/OtherColumns.h"
#include "store/PictureTable.h"
#include "store/RecordEraser.h"
#include "store/RecordReader.h"
#include "store/RecordWriter.h"
#include "store/StoredForms.h"

namespace pim {

// What the tables of both kinds of record share.
struct TableServices {
  Database& db;
  FingerprintKey key;
  ImportRecorder& recorder;
  PictureTable& pictures;
  std::function<NarrowString(WideStringView name)> pictureOf;  // one that is being saved
  // Has what the store knows of its content follow what programs have done that know nothing of it.
  std::function<void()> followOthers;
};

// The stored records of one kind, with what is known of their content. Runs inside the caller's
// transaction.
template <class Record, class Records>
class RecordTable {
 public:
  RecordTable(TableServices& services, const RecordMap& map)
      : services_(services),
        map_(map),
        writer_(services.db, map),
        eraser_(services.db, map.table),
        reader_(services.db, map),
        others_(services.db, map),
        sequence_(services.db, map.table) {
    constexpr bool kHasPhotos = std::is_same_v<Record, CContact>;
    if (services.db.IsShared()) stored_.emplace(services.db, map, kHasPhotos ? "photo" : "");
  }

  ContentCache& contents() { return contents_; }
  OtherColumns& others() { return others_; }
  RecordReader& reader() { return reader_; }

  bool Holds(std::int32_t key) { return writer_.Holds(key); }
  bool NeedsPrints() const { return stored_ || services_.recorder.IsOpen(); }
  Fingerprint PrintOf(Record& record) const { return FingerprintOf(map_, &record, services_.key); }
  // Of what is stored, the picture included.
  Fingerprint StoredPrintOf(Record& record) {
    const WideStringView photo = PhotoOf(record);
    const auto picture = photo.empty() ? std::nullopt : services_.pictures.DigestUnder(photo);
    return WithPicture(PrintOf(record), photo, picture);
  }

  void Insert(std::span<const FreshRecord<Record>> records) {
    std::vector<KeyedRecord> rows;
    rows.reserve(records.size());
    for (const auto& [record, print] : records) rows.push_back({record->tag, record});
    writer_.Insert(rows);
    if (stored_) {
      StoreContents(records);
    } else {
      ForgetOrigins(records);
    }
    for (const auto& [record, print] : records) {
      given_.Add(record->tag);
      const WideStringView photo = PhotoOf(*record);
      const Fingerprint whole = WithPicture(print, photo, KeepPicture(photo));
      services_.recorder.AddRecord(KindOf(*record), record->tag, whole);
    }
  }
  void Update(std::int32_t key, Record& record) {
    const WideString before = NamedBefore(record);
    writer_.Update(key, &record);
    const WideStringView photo = PhotoOf(record);
    const auto picture = KeepPicture(photo);
    if (before != photo) services_.pictures.Leave({before});
    if (!NeedsPrints()) return;
    const Fingerprint print = PrintOf(record);
    if (stored_) stored_->Change({key, print});
    if (services_.recorder.IsOpen())
      services_.recorder.ChangeRecord(KindOf(record), key, WithPicture(print, photo, picture));
  }
  // Deletes the records from the first key to the last one, and gives how many there were.
  std::int32_t Erase(std::int32_t first, std::int32_t last) {
    // No key of a deleted record is given again.
    if (!services_.db.IsShared()) given_.Add(std::min(last, writer_.HighestKey()));
    const std::int32_t erased = eraser_.Erase(first, last);
    services_.recorder.EraseRecords(first, last);
    contents_.Remove(first, last);
    return erased;
  }

  std::int32_t HighestKey() { return given_.HighestWith(writer_.HighestKey()); }
  const GivenKeys& Given() const { return given_; }
  pim::FreshKeys<RecordTable> FreshKeys(std::size_t wanted) { return {*this, sequence_, wanted}; }
  // All, or where the store looks them up those that hold one of the prints.
  template <class Prints>
  ContentIndex* Contents(bool isWanted, Prints& prints) {
    if (stored_) return isWanted ? &StoredContents(prints.All()) : nullptr;
    return contents_.Get(isWanted, services_.db.OutsideVersion(), [this] {
      ContentIndex index = EmptyIndex();
      VisitSome(reader_, 0, [&](Record& record) {
        if (IsStoredKey(record.tag)) index.Add(record.tag, PrintOf(record), PhotoOf(record));
        return true;
      });
      return index;
    });
  }
  // For a store that looks contents up: another program has changed some.
  void RenewStoredContents();

  // Reads on until `visitor` gives false, some records at a time.
  template <class Visitor>
  static std::int32_t VisitSome(RecordReader& reader, std::int64_t filter, Visitor visitor) {
    reader.StartAll(filter);
    std::int32_t visited = 0;
    for (;;) {
      Records some;
      if (!reader.ReadNext(filter, NewIn(some))) return visited;
      for (std::int32_t i = 0; i < some.GetCount(); ++i) {
        ++visited;
        if (!visitor(some[i])) return visited;
      }
    }
  }

  static NewRecord NewIn(Records& records) {
    return [&records](std::int32_t key) -> void* {
      Record& record = records.AddNew();
      record.tag = key;
      return &record;
    };
  }

 private:
  ContentIndex EmptyIndex() {
    // By their digests, so that the bytes of stored ones needn't be read.
    const auto stored = [this](WideStringView name) {
      const auto digest = services_.pictures.DigestUnder(name);
      return digest ? NarrowString(BytesOf(*digest)) : DigestOfFile(name);
    };
    const auto sought = [this](WideStringView name) { return DigestOfFile(name); };
    return ContentIndex(stored, sought, services_.key);
  }
  // Good until the next call.
  ContentIndex& StoredContents(std::span<const Fingerprint> prints) {
    services_.db.KeepOtherSeekersOut();
    services_.followOthers();
    ContentIndex& index = alike_.emplace(EmptyIndex());
    for (const ContentTable::Found& found : stored_->Find(prints))
      index.Add(found.row.key, found.row.print, found.photo);
    return index;
  }
  void StoreContents(std::span<const FreshRecord<Record>> records) {
    std::vector<ContentTable::Row> rows;
    rows.reserve(records.size());
    for (const auto& [record, print] : records) rows.push_back({record->tag, print});
    stored_->Insert(rows);
  }
  // Keys follow one another but where other programs have left gaps.
  void ForgetOrigins(std::span<const FreshRecord<Record>> records) {
    for (std::size_t i = 0; i < records.size();) {
      const std::int32_t first = records[i].record->tag;
      std::int32_t last = first;
      while (++i < records.size() && records[i].record->tag == std::int64_t{last} + 1) ++last;
      services_.recorder.ForgetKeys(KindOf(*records.front().record), first, last);
    }
  }
  // Nothing for a picture that isn't there.
  NarrowString DigestOfFile(WideStringView name) {
    const NarrowString bytes = services_.pictureOf(name);
    return bytes.empty() ? bytes : NarrowString(BytesOf(DigestOf(bytes)));
  }
  std::optional<Sha256> KeepPicture(WideStringView photo) {
    if (photo.empty() || !IsPlainFileName(photo)) return std::nullopt;  // it reads as none
    const NarrowString bytes = services_.pictureOf(photo);
    const auto kept = bytes.empty() ? std::nullopt : services_.pictures.Put(photo, bytes);
    return kept ? kept : services_.pictures.DigestUnder(photo);
  }
  // Where the store has no bytes, the name tells pictures apart.
  Fingerprint WithPicture(const Fingerprint& print, WideStringView photo,
                          const std::optional<Sha256>& picture) const {
    if (photo.empty() || !IsPlainFileName(photo)) return print;
    std::string name;
    if (!picture) AppendStoredText(photo, name);
    return Joined(print, FingerprintOf(picture ? BytesOf(*picture) : name, services_.key));
  }
  WideString NamedBefore(const CContact& contact) { return services_.pictures.NameOf(contact.tag); }
  WideString NamedBefore(const CCalendar&) { return {}; }

  TableServices& services_;
  const RecordMap& map_;
  RecordWriter writer_;
  RecordEraser eraser_;
  RecordReader reader_;
  OtherColumns others_;
  ContentCache contents_;
  std::optional<ContentTable> stored_;  // instead of `contents_`
  std::optional<ContentIndex> alike_;   // what is stored like records of the last save
  KeySequence sequence_;
  GivenKeys given_;
};

template <class Record, class Records>
void RecordTable<Record, Records>::RenewStoredContents() {
  if (!stored_) return;
  stored_->Sweep();
  reader_.StartAll(0);
  for (;;) {
    Records some;
    if (!reader_.ReadNext(0, NewIn(some))) return;
    const auto known = stored_->Between(some[0].tag, some[some.GetCount() - 1].tag);
    for (std::int32_t i = 0; i < some.GetCount(); ++i) {
      const ContentTable::Row row{some[i].tag, PrintOf(some[i])};
      const auto before = known.find(row.key);
      if (IsStoredKey(row.key) && (before == known.end() || before->second != row.print))
        stored_->Change(row);
    }
  }
}

using ContactTable = RecordTable<CContact, CContacts>;
using ItemTable = RecordTable<CCalendar, CCalendars>;

}  // namespace pim
