// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "pim/store/ImportHistory.h"
#include "tests/store/StoreFixture.h"

namespace pim::testing {

using Names = std::vector<const char16_t*>;

// A store of either kind, and imports into it.
class HistoryFixture : public StoreFixture {
 protected:
  ImportHistory& history() { return *store->History(); }

  // Saves a contact for each name, which names its picture too.
  CContacts Save(const Names& names, std::int32_t group = 0) {
    CContacts contacts;
    for (const char16_t* name : names) {
      contacts.AddNew().formatted_name = name;
      contacts[contacts.GetCount() - 1].photo = name;
    }
    EXPECT_GE(store->SaveContacts(contacts, group, false), 0) << store->LastError();
    return contacts;
  }
  // Brings what `save` saves as an import of one file.
  template <class Saving>
  std::int32_t Import(NarrowStringView bytes, Saving save) {
    const std::int32_t import = history().BeginImport({"contacts import", {}});
    StoreTransaction transaction(*store);
    EXPECT_TRUE(history().BeginFile("a.vcf", bytes)) << store->LastError();
    save();
    EXPECT_TRUE(history().EndFile({}, true));
    EXPECT_TRUE(transaction.Commit());
    EXPECT_TRUE(history().EndImport());
    return import;
  }
  std::int32_t ImportNames(const Names& names, std::int32_t group = 0) {
    return Import("", [&] { Save(names, group); });
  }
  UndoResult Undo(const UndoOptions& options = {}) {
    UndoResult result;
    EXPECT_EQ(history().Undo(options, result), 0) << store->LastError();
    return result;
  }
  ImportEntry Entry(std::int32_t import) {
    ImportEntry entry;
    EXPECT_GE(history().VisitImports([&](const ImportEntry& each) {
      entry = each;
      return each.number != import;
    }),
              0);
    EXPECT_EQ(entry.number, import);
    return entry;
  }
};

}  // namespace pim::testing
