// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "tests/store/PostgresFixture.h"

namespace pim {
namespace {

using testing::ServerProgram;

class PostgresFailures : public testing::PostgresFixture {
 protected:
  // Ends the connection that is named after the schema.
  void Cut() {
    EXPECT_EQ(other_.Ask("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE "
                         "application_name = current_schema()"),
              "t");
  }
};

// A transaction goes as a whole with its connection; the next one has another.
TEST_F(PostgresFailures, GoesOnBehindALostConnection) {
  PostgresStore store(schema_.Url("&application_name=" + schema_.name()));
  ASSERT_EQ(Save(store, u"before"), 1);
  Cut();
  EXPECT_EQ(Save(store, u"behind"), 1) << store.LastError();
  {
    StoreTransaction transaction(store);
    ASSERT_EQ(Save(store, u"lost"), 1);
    {
      const StoreTransaction inner(store);
      Cut();
      EXPECT_EQ(Save(store, u"lost too"), -1);
      EXPECT_TRUE(store.MayTryAgain()) << store.LastError();
    }
    EXPECT_EQ(Save(store, u"of no transaction"), -1);
    EXPECT_FALSE(transaction.Commit());
    EXPECT_TRUE(store.MayTryAgain());
  }
  EXPECT_EQ(Save(store, u"last"), 1);
  EXPECT_FALSE(store.MayTryAgain());
  EXPECT_EQ(store.CountContacts(), 3);
}

// The host's wish ends what the server works on.
TEST_F(PostgresFailures, MayBeGivenUp) {
  { const PostgresStore made(schema_.Url()); }
  std::atomic<bool> givesUp = false;
  PostgresWaits waits;
  waits.givesUp = [&] { return givesUp.load(); };
  PostgresStore store(schema_.Url(), StoreAccess::Existing, waits);
  ServerProgram holder(schema_.Url());
  holder.Run("BEGIN; LOCK TABLE contacts");
  givesUp = true;
  EXPECT_EQ(Save(store, u"waits"), -1);
  EXPECT_NE(store.LastError().find("given up"), std::string::npos) << store.LastError();
  EXPECT_FALSE(store.MayTryAgain());
  givesUp = false;
  holder.Run("ROLLBACK");
  EXPECT_EQ(Save(store, u"goes on"), 1) << store.LastError();
}

// The server tells some failures only when an inner transaction is committed: what goes back then
// is that one, and all of it.
TEST_F(PostgresFailures, UndoTheTransactionThatTheyBelongTo) {
  PostgresStore store(schema_.Url());
  other_.Run(
      "CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN RAISE 'refused'; END "
      "$$; CREATE TRIGGER refuse BEFORE INSERT ON contactcontents FOR EACH ROW WHEN "
      "(NEW.contact_id % 100 = 0) EXECUTE FUNCTION refuse()");
  const auto saveSome = [&store](int count) {
    CContacts contacts;
    for (int i = 0; i < count; ++i) contacts.AddNew();
    return store.SaveContacts(contacts, 0, true);
  };
  for (const int count : {1, 200}) {  // by a statement, and by many rows at once
    SCOPED_TRACE(count);
    other_.Run("SELECT setval(pg_get_serial_sequence('contacts', 'contact_id'), 1)");
    PostgresStore fresh(schema_.Url());
    StoreTransaction outer(store);
    ASSERT_GT(Save(store, u"of another file"), 0);
    {
      StoreTransaction file(store);
      ASSERT_GT(saveSome(50), 0);
      bool isDone = true;
      for (int i = 0; isDone && i < 60; ++i) {
        StoreTransaction inner(store);
        isDone = saveSome(count) >= 0 && inner.Commit();
      }
      const std::string problem = store.LastError();
      EXPECT_FALSE(file.Commit()) << "an inner one that was told as committed is gone";
      EXPECT_NE(problem.find(isDone ? "" : "refused"), std::string::npos) << problem;
    }
    EXPECT_GT(Save(store, u"behind it"), 0) << store.LastError();
    EXPECT_TRUE(outer.Commit()) << store.LastError();
    EXPECT_EQ(other_.Ask("DELETE FROM contacts RETURNING formatted_name"),
              "of another filebehind it");
  }
}

// A failure that passes leaves the store as good as it was.
TEST_F(PostgresFailures, LeaveTheStoreUsable) {
  PostgresWaits waits;
  waits.lock = std::chrono::milliseconds(100);
  PostgresStore store(schema_.Url(), StoreAccess::Create, waits);
  CContacts contacts;
  contacts.AddNew().formatted_name = u"Ann";
  ASSERT_EQ(store.SaveContacts(contacts, 0, true), 1);
  other_.Run("BEGIN; UPDATE contacts SET hobby = 'chess'");
  EXPECT_EQ(store.SaveContacts(contacts, 0, true), -1);
  EXPECT_NE(store.LastError().find("locked by another program"), std::string::npos)
      << store.LastError();
  other_.Run("ROLLBACK");
  EXPECT_EQ(store.SaveContacts(contacts, 0, true), 1) << store.LastError();
}

// A reading that is cut short is none.
TEST_F(PostgresFailures, EndAReading) {
  PostgresStore store(schema_.Url("&application_name=" + schema_.name()));
  CContacts contacts;
  for (int i = 0; i < 5000; ++i) contacts.AddNew().NewTelephone(u"1", 0, false, -1);
  ASSERT_EQ(store.SaveContacts(contacts, 0, true), 5000);
  int visited = 0;
  EXPECT_EQ(store.VisitContacts([&](CContact&) {
    if (++visited == 10) Cut();
    return true;
  }),
            -1);
  EXPECT_LT(visited, 5000);
  EXPECT_EQ(store.VisitContacts([](CContact&) { return true; }), 5000) << store.LastError();
}

// Pictures of the same bytes: what one contact lets go another has taken meanwhile.
TEST_F(PostgresFailures, AreNoneWherePicturesAreShared) {
  const auto reader = [](WideStringView name) {
    return NarrowString(name == u"other" ? "other bytes" : "the same bytes");
  };
  PostgresStore first(schema_.Url());
  PostgresStore second(schema_.Url());
  first.SetPictureReader(reader);
  second.SetPictureReader(reader);
  CContacts had;
  had.AddNew().photo = u"one";
  ASSERT_EQ(first.SaveContacts(had, 0, true), 1);
  std::thread letsGo;
  {
    StoreTransaction taking(second);
    CContacts takes;
    takes.AddNew().photo = u"two";
    ASSERT_EQ(second.SaveContacts(takes, 0, true), 1);
    had[0].photo = u"other";
    letsGo = std::thread([&] { EXPECT_EQ(first.SaveContacts(had, 0, true), 1); });
    while (other_.Ask("SELECT count(*) FROM pg_locks WHERE NOT granted") == "0") {
    }
    ASSERT_TRUE(taking.Commit());
  }
  letsGo.join();
  EXPECT_EQ(first.ReadPicture(u"two"), "the same bytes");
  EXPECT_EQ(first.ReadPicture(u"other"), "other bytes");
}

}  // namespace
}  // namespace pim
