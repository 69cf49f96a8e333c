// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/store/DatabaseStore.h"

#include <utility>

#include "platform/CodePages.h"
#include "platform/Visible.h"
#include "store/DatabaseStoreImpl.h"

namespace pim {

StoreError::StoreError(const std::string& name, const std::string& problem)
    : std::runtime_error(VisibleUtf8(WideFromUtf8(name)) + ": " + problem) {}
StoreError::~StoreError() = default;
NoStoreError::~NoStoreError() = default;

DatabaseStore::DatabaseStore(std::unique_ptr<Impl> impl)
    : ForwardingStore(*impl), impl_(std::move(impl)) {}

DatabaseStore::~DatabaseStore() = default;

std::string DatabaseStore::Name() const { return impl_->Name(); }

bool DatabaseStore::IsNew() const noexcept { return impl_->IsNew(); }

bool DatabaseStore::MayTryAgain() const noexcept { return impl_->MayTryAgain(); }

std::int32_t DatabaseStore::CountContacts() { return impl_->CountContacts(); }

std::int32_t DatabaseStore::CountItemsWithoutKind() { return impl_->CountItemsWithoutKind(); }

void DatabaseStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}

bool DatabaseStore::KeepsPictures() const { return impl_->KeepsPictures(); }

void DatabaseStore::MakePictures(bool makes) { impl_->MakePictures(makes); }

std::int64_t DatabaseStore::PicturesNotMade() const { return impl_->PicturesNotMade(); }

std::string DatabaseStore::PictureProblem() const { return impl_->PictureProblem(); }

std::int32_t DatabaseStore::NamesPicture(WideStringView name) { return impl_->NamesPicture(name); }

NarrowString DatabaseStore::ReadPicture(WideStringView name) { return impl_->ReadPicture(name); }

bool DatabaseStore::HasLeftPictures() { return impl_->HasLeftPictures(); }

std::int32_t DatabaseStore::RemoveLeftPictures() { return impl_->RemoveLeftPictures(); }

std::int64_t DatabaseStore::CopyFrom(DatabaseStore& source,
                                     const std::function<void(std::int64_t rows)>& progress) {
  return impl_->CopyFrom(*source.impl_, progress);
}

}  // namespace pim
