// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <libpq-fe.h>

#include <string>
#include <string_view>

namespace pim {

// What a server's failure means to the user.
struct Problem {
  std::string text;             // with the server's own words behind
  bool endsConnection = false;  // nothing more comes
  bool mayPass = false;         // when the transaction is done again
};
Problem ProblemOf(const PGresult* result);
// Why there is no connection. With `mayRepeat` in libpq's words, which name hosts and databases.
std::string ProblemOf(const PGconn& connection, bool mayRepeat);

// Whether a server may let in later that doesn't now.
bool MayPass(const PGconn& connection);

// "" for nothing, else " (TEXT)".
std::string InBrackets(std::string_view text);
std::string FirstLineOf(std::string_view text);

// The connection without its passwords. Throws StoreError for what libpq doesn't take.
std::string ShownConnection(const std::string& connection);
// What is shown of one that may hold a password where none belongs.
inline constexpr const char* kHiddenConnection = "postgresql://...";
// Whether the connection is that of a service, whose file may say more than the text does.
bool HasService(const std::string& connection);

}  // namespace pim
