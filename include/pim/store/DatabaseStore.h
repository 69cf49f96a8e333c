// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "pim/Export.h"
#include "pim/records/ForwardingStore.h"

namespace pim {

// What the stores in databases have in common: the one in an SQLite file and the one in a
// PostgreSQL server. Stores of several threads may work at once, on one database too. The message
// sink, the application-data folder and what else Host.h sets are shared by all.

// Why a store can't be opened: "NAME: what is wrong", where the name is a file's path or a
// connection without its secrets.
class PIM_EXPORT StoreError : public std::runtime_error {
 public:
  // `name` is that of the store, in the operating system's own form; `problem` is an English text.
  // Control characters of the name become visible.
  StoreError(const std::string& name, const std::string& problem);
  StoreError(const StoreError&) = default;
  StoreError& operator=(const StoreError&) = default;
  ~StoreError() override;
};

// There is no store there, and none was to be made.
class PIM_EXPORT NoStoreError : public StoreError {
 public:
  // `name` is that of the store, as above.
  explicit NoStoreError(const std::string& name) : StoreError(name, "there is no store") {}
  NoStoreError(const NoStoreError&) = default;
  NoStoreError& operator=(const NoStoreError&) = default;
  ~NoStoreError() override;
};

// What an opened store is for.
enum class StoreAccess : std::uint8_t {
  Create,    // a store is made where there is none, in an empty file or a database without one
  Existing,  // there must be a store
  // There must be a store, and nothing can be written; where a file can't be written, nor its
  // folder, as on a read-only medium, no other is made beside it.
  ReadOnly,
};

// A store in a database. One object is used by one thread at a time, which may change between
// calls. What fails while it is open, memory too, comes as -1 or false; a text that is given throws
// std::bad_alloc.
class PIM_EXPORT DatabaseStore : public ForwardingStore {
 public:
  class PIM_HIDDEN Impl;  // what the stores of this library are made of
  ~DatabaseStore() override;

  // What messages call the store: the path of its file, or the connection without its secrets.
  [[nodiscard]] std::string Name() const;
  // Whether opening it made it.
  [[nodiscard]] bool IsNew() const noexcept;
  // Whether the last failure may pass when all since the outermost transaction's beginning, which
  // is undone, is done again: the connection was lost, or another program was in the way.
  [[nodiscard]] bool MayTryAgain() const noexcept;

  // The number of stored contacts, or -1 when the store fails.
  [[nodiscard]] std::int32_t CountContacts();
  // The number of stored items whose type is no CalendarType, as another program may write them:
  // no operation gives them out. -1 when the store fails.
  [[nodiscard]] std::int32_t CountItemsWithoutKind();

  // Replaces the way to the picture of a contact that is being saved; by default it lies in
  // GetCallerIdPath(). The store keeps the bytes themselves.
  void SetPictureReader(PictureReader reader);

  // Whether the store keeps pictures' bytes: not one of an earlier version that is only read.
  [[nodiscard]] bool KeepsPictures() const;
  // Whether a picture that the store keeps and GetCallerIdPath() lacks is made there, the folder
  // too, when its contact is loaded or visited. True at first.
  void MakePictures(bool makes);
  // How many couldn't be made, and why the last one, as "PATH: what is wrong".
  [[nodiscard]] std::int64_t PicturesNotMade() const;
  [[nodiscard]] std::string PictureProblem() const;

  // Whether a stored contact names the picture: 1 or 0, or -1 when the store fails.
  [[nodiscard]] std::int32_t NamesPicture(WideStringView name);
  // The bytes that the store keeps of the picture of that name; nothing where it keeps none.
  [[nodiscard]] NarrowString ReadPicture(WideStringView name);
  // Whether RemoveLeftPictures has something to do.
  [[nodiscard]] bool HasLeftPictures();
  // Removes from GetCallerIdPath() the pictures of contacts that have been deleted or taken back,
  // once that is committed; a program that ended in between leaves them to the next call. A file
  // that holds other bytes than the store had is left alone; one that can't be removed is told by
  // PictureProblem and tried again by the next call. Gives how many files were removed, or -1 when
  // the store fails.
  [[nodiscard]] std::int32_t RemoveLeftPictures();

  // Copies all that another store holds into this one, which must be empty: records with their
  // keys, groups, links, pictures, the history and the originals, and what other programs keep in
  // the columns that no field goes to. `progress` is told how many rows have been copied, now and
  // then; what it throws passes to the caller. In one transaction. Gives the number of rows, or -1
  // when one of the two fails, and LastError tells why.
  [[nodiscard]] std::int64_t CopyFrom(DatabaseStore& source,
                                      const std::function<void(std::int64_t rows)>& progress = {});

 protected:
  explicit DatabaseStore(std::unique_ptr<Impl> impl);

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
