// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "pim/Export.h"
#include "pim/records/ForwardingStore.h"

namespace pim {

// The store in an SQLite file. Stores on one thread each may work at once, on one file too: they
// wait for each other as programs do. The message sink, the application-data folder and what else
// Host.h sets are shared by all.

// Why a store can't be opened: "PATH: what is wrong".
class PIM_STORE_EXPORT StoreError : public std::runtime_error {
 public:
  // `path` is the operating system's own form of it, `problem` an English text. Control characters
  // of the path become visible.
  StoreError(const std::string& path, const std::string& problem);
  StoreError(const StoreError&) = default;
  StoreError& operator=(const StoreError&) = default;
  ~StoreError() override;
};

// There is no store at that path, and none was to be made.
class PIM_STORE_EXPORT NoStoreError : public StoreError {
 public:
  // `path` is the operating system's own form of it.
  explicit NoStoreError(const std::string& path) : StoreError(path, "there is no store") {}
  NoStoreError(const NoStoreError&) = default;
  NoStoreError& operator=(const NoStoreError&) = default;
  ~NoStoreError() override;
};

// What an opened store is for.
enum class StoreAccess : std::uint8_t {
  Create,    // a store is made where there is no file or an empty one
  Existing,  // there must be a store
  // There must be a store, and nothing can be written; where neither the file nor its folder can be
  // written, as on a read-only medium, no file is made beside the store.
  ReadOnly,
};

// Records in one SQLite file. Several programs may have it open: who writes makes the others wait,
// who reads sees one state of it.
//
// One object is used by one thread at a time, which may change between calls: SQLite is used
// without locks of its own. What fails while it is open, memory too, comes as -1 or false; a text
// that is given throws std::bad_alloc.
class PIM_STORE_EXPORT SqliteStore final : public ForwardingStore {
 public:
  // Opens the store at `path` (the operating system's own form), or makes one where there is no
  // file or an empty one; its folder must exist. A file that isn't a store of this program, or that
  // a newer version has written, is left as it is. `lockWait` is how long all waiting for other
  // programs may take between two successes; it ends early once `givesUp`, asked a hundred times a
  // second or more, gives true, and so does what the store is working on. Throws StoreError.
  explicit SqliteStore(const std::string& path,
                       std::chrono::milliseconds lockWait = std::chrono::seconds(30),
                       std::function<bool()> givesUp = {});
  // The same for another access than Create. Throws NoStoreError where it must be there and isn't.
  SqliteStore(const std::string& path, StoreAccess access,
              std::chrono::milliseconds lockWait = std::chrono::seconds(30),
              std::function<bool()> givesUp = {});
  ~SqliteStore() override;

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

 private:
  class PIM_HIDDEN Impl;
  PIM_HIDDEN explicit SqliteStore(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
