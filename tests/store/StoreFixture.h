// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "examples/OwnStore.h"
#include "pim/platform/Host.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/MemoryStore.h"
#include "pim/store/PostgresStore.h"
#include "pim/store/SqliteStore.h"
#include "tests/store/SampleRecords.h"
#include "tests/store/TemporaryFolder.h"
#include "tests/store/TestSchema.h"

namespace pim::testing {

enum class StoreKind { Sqlite, Memory, Own, Postgres };

// A store of each kind, for what every store promises.
class StoreFixture : public ::testing::TestWithParam<StoreKind> {
 protected:
  StoreFixture() {
    SetAppDataFolder(folder_.path());
    Open();
  }
  ~StoreFixture() override { SetAppDataFolder(""); }

  // Opens the store anew where it is kept somewhere.
  void Open() {
    const auto reader = [this](WideStringView name) {
      if (picturesBreak) throw 7;
      if (const auto own = pictureBytes.find(WideString(name)); own != pictureBytes.end())
        return own->second;
      return name == u"gone" ? NarrowString{} : NarrowString(1, static_cast<char>(name.back()));
    };
    if (IsKept()) store.reset();
    if (store != nullptr) return;
    switch (GetParam()) {
      case StoreKind::Sqlite:
        store = WithReader(std::make_unique<SqliteStore>(StorePath()), reader);
        break;
      case StoreKind::Memory:
        store = WithReader(std::make_unique<MemoryStore>(), reader);
        break;
      case StoreKind::Own:
        store = WithReader(std::make_unique<OwnStore>(), reader);
        break;
      case StoreKind::Postgres:
        if (!schema_) schema_.emplace();
        store = WithReader(std::make_unique<PostgresStore>(schema_->Url()), reader);
        break;
    }
  }
  template <class Store>
  static std::unique_ptr<RecordStore> WithReader(std::unique_ptr<Store> store,
                                                 const PictureReader& reader) {
    store->SetPictureReader(reader);
    return store;
  }
  static bool IsFile() { return GetParam() == StoreKind::Sqlite; }
  static bool IsKept() { return IsFile() || GetParam() == StoreKind::Postgres; }
  std::string StorePath() const { return folder_.File("store.db"); }

  std::int32_t CountContacts() {
    CContacts contacts;
    return store->LoadContacts(contacts);
  }
  std::int32_t CountLinks() {
    CContactGroupPairs pairs;
    return store->LoadContactGroupPairs(pairs);
  }
  // Stores a new contact and gives the result of that.
  std::int32_t SaveOne(const char16_t* name, bool saveFlag = false) {
    CContacts contacts;
    contacts.AddNew().formatted_name = name;
    return store->SaveContacts(contacts, 0, saveFlag);
  }
  std::int32_t SaveGroup(WideStringView name) {
    CContactGroups groups;
    groups.AddNew().group_name = name;
    EXPECT_GE(store->SaveContactGroups(groups, true), 0);
    return groups[0].group_id;
  }
  static void Link(CContactGroupPairs& pairs, std::int32_t contact, std::int32_t group) {
    CContactGroupPair& pair = pairs.AddNew();
    pair.contact_id = contact;
    pair.group_id = group;
  }

  TemporaryFolder folder_;
  std::optional<TestSchema> schema_;
  std::map<WideString, NarrowString> pictureBytes;  // other ones hold the last letter of their name
  bool picturesBreak = false;                       // reading one throws
  std::unique_ptr<RecordStore> store;
};

// Those that remember their imports, and all.
inline auto StoresWithHistory() {
  return ::testing::Values(StoreKind::Sqlite, StoreKind::Memory, StoreKind::Postgres);
}
inline auto AllStores() {
  return ::testing::Values(StoreKind::Sqlite, StoreKind::Memory, StoreKind::Own,
                           StoreKind::Postgres);
}

inline std::string NameOfStore(const ::testing::TestParamInfo<StoreKind>& store) {
  constexpr const char* kNames[] = {"Sqlite", "Memory", "Own", "Postgres"};
  return kNames[static_cast<std::size_t>(store.param)];
}

}  // namespace pim::testing
