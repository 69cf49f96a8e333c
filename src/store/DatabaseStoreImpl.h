// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/store/DatabaseStore.h"

namespace pim {

class Database;

// What a store in a database is made of. The core library knows no more of it, so that it needs no
// database; operations are told where DatabaseStore declares them.
class DatabaseStore::Impl : public RecordStore {
 public:
  virtual Database& database() = 0;

  virtual std::int32_t CountContacts() = 0;
  virtual std::int32_t CountItemsWithoutKind() = 0;
  virtual void SetPictureReader(PictureReader reader) = 0;
  virtual bool KeepsPictures() const = 0;
  virtual void MakePictures(bool makes) = 0;
  virtual std::int64_t PicturesNotMade() const = 0;
  virtual std::string PictureProblem() const = 0;
  virtual std::int32_t NamesPicture(WideStringView name) = 0;
  virtual NarrowString ReadPicture(WideStringView name) = 0;
  virtual bool HasLeftPictures() = 0;
  virtual std::int32_t RemoveLeftPictures() = 0;
  virtual std::int64_t CopyFrom(Impl& source,
                                const std::function<void(std::int64_t rows)>& progress) = 0;
  virtual std::string Name() const = 0;
  virtual bool IsNew() const noexcept = 0;
  virtual bool MayTryAgain() const noexcept = 0;
};

}  // namespace pim
