// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"
#include "records/SaveRecords.h"
#include "store/ContentCache.h"
#include "store/Digest.h"
#include "store/HistoryRules.h"
#include "store/ImportRecorder.h"
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
  std::function<std::int64_t()> dataVersion;
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
        others_(services.db, map) {}

  ContentCache& contents() { return contents_; }
  OtherColumns& others() { return others_; }
  RecordReader& reader() { return reader_; }

  bool Holds(std::int32_t key) { return writer_.Holds(key); }
  bool NeedsPrints() const { return services_.recorder.IsOpen(); }
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
    ForgetOrigins(records);
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
    if (NeedsPrints()) {
      services_.recorder.ChangeRecord(KindOf(record), key,
                                      WithPicture(PrintOf(record), photo, picture));
    }
  }
  // Deletes the records from the first key to the last one, and gives how many there were.
  std::int32_t Erase(std::int32_t first, std::int32_t last) {
    // No key of a deleted record is given again.
    given_.Add(std::min(last, writer_.HighestKey()));
    const std::int32_t erased = eraser_.Erase(first, last);
    services_.recorder.EraseRecords(first, last);
    contents_.Remove(first, last);
    return erased;
  }

  std::int32_t HighestKey() { return given_.HighestWith(writer_.HighestKey()); }
  const GivenKeys& Given() const { return given_; }
  ContentIndex* Contents(bool isWanted) {
    return contents_.Get(isWanted, services_.dataVersion(), [this] {
      // By their digests, so that the bytes of stored ones needn't be read.
      const auto stored = [this](WideStringView name) {
        const auto digest = services_.pictures.DigestUnder(name);
        return digest ? NarrowString(BytesOf(*digest)) : DigestOfFile(name);
      };
      const auto sought = [this](WideStringView name) { return DigestOfFile(name); };
      ContentIndex index(stored, sought, services_.key);
      VisitSome(reader_, 0, [&](Record& record) {
        if (IsStoredKey(record.tag)) index.Add(record.tag, PrintOf(record), PhotoOf(record));
        return true;
      });
      return index;
    });
  }

  // Reads on until `visitor` gives false, some records at a time.
  template <class Visitor>
  static std::int32_t VisitSome(RecordReader& reader, std::int64_t filter, Visitor visitor) {
    constexpr std::int32_t kVisitedAtOnce = 1024;
    reader.Restart();
    std::int32_t visited = 0;
    for (;;) {
      Records some;
      if (!reader.ReadSome(filter, kVisitedAtOnce, NewIn(some))) return visited;
      for (std::int32_t i = 0; i < some.GetCount(); ++i) {
        ++visited;
        if (!visitor(some[i])) return visited;
      }
    }
  }

  static RecordReader::NewRecord NewIn(Records& records) {
    return [&records](std::int32_t key) -> void* {
      Record& record = records.AddNew();
      record.tag = key;
      return &record;
    };
  }

 private:
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
  GivenKeys given_;
};

using ContactTable = RecordTable<CContact, CContacts>;
using ItemTable = RecordTable<CCalendar, CCalendars>;

}  // namespace pim
