// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresProblems.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>

#include "pim/store/DatabaseStore.h"

namespace pim {
namespace {

// By SQLSTATE (appendix A of PostgreSQL's manual), or by its class, the first two characters. A row
// that stands ahead counts more.
struct ProblemRow {
  std::string_view state;
  const char* meaning;
  bool endsConnection = false;
  bool mayPass = false;
};
constexpr bool kEnds = true;
constexpr bool kMayPass = true;
constexpr ProblemRow kProblems[] = {
    {"40001", "another program was in the way", false, kMayPass},
    {"40P01", "another program was in the way", false, kMayPass},
    {"40", "the transaction was undone", false, kMayPass},
    {"23505", "another program was in the way", false, kMayPass},
    {"23P01", "another program was in the way", false, kMayPass},
    {"55P03", "locked by another program", false, kMayPass},
    {"57014", "the server ended the work"},
    {"57P01", "the connection was lost", kEnds, kMayPass},
    {"57P02", "the connection was lost", kEnds, kMayPass},
    {"57P03", "the server isn't ready", kEnds, kMayPass},
    {"57P05", "the connection was lost", kEnds, kMayPass},
    {"25P03", "the connection was lost", kEnds, kMayPass},
    {"08", "the connection was lost", kEnds, kMayPass},
    {"53100", "no space left on the server"},
    {"53300", "the server has too many clients"},
    {"53", "the server is short of something"},
    {"58", "the server can't read or write its files"},
    {"25006", "can't be written: the server is read-only"},
    {"28", "the server doesn't let in"},
    {"3D000", "no such database"},
    // Statements that another one's transactions have taken away or brought.
    {"26000", "the connection isn't this program's alone: a pool must work by sessions"},
    {"42P05", "the connection isn't this program's alone: a pool must work by sessions"},
    {"42501", "not allowed"},
    {"42P01", "damaged"},  // our statements are right: a table or column isn't as it was made
    {"42703", "damaged"},
    {"XX001", "damaged"},
    {"XX002", "damaged"},
};

// The same for what libpq tells of a connection, where it gives no SQLSTATE, by its English words.
constexpr struct {
  std::string_view words;
  const char* meaning;
} kConnectProblems[] = {
    {"password authentication failed", "the server doesn't let in: wrong name or password"},
    {"no password supplied", "the server wants a password; .pgpass or PGPASSWORD gives it"},
    {"too many clients", "the server has too many clients"},
    {"too many connections", "the server has too many clients"},
    {"remaining connection slots", "the server has too many clients"},
    {"session is read-only", "can't be written: the server is read-only"},
    {"server is in hot standby mode", "can't be written: the server is read-only"},
    {"could not translate host name", "no such host"},
    {"FATAL:  database \"", "no such database"},
    {"FATAL:  role \"", "the server doesn't let in: no such role"},
};

std::string Joined(const char* meaning, std::string_view detail) {
  std::string text = meaning;
  if (text.empty()) return std::string(detail);
  return text + InBrackets(detail);
}

}  // namespace

std::string InBrackets(std::string_view text) {
  return text.empty() ? std::string() : " (" + std::string(text) + ")";
}

std::string FirstLineOf(std::string_view text) {
  return std::string(text.substr(0, text.find('\n')));
}

Problem ProblemOf(const PGresult* result) {
  const auto field = [&](int name) -> std::string_view {
    const char* text = result != nullptr ? PQresultErrorField(result, name) : nullptr;
    return text != nullptr ? text : std::string_view();
  };
  const std::string_view state = field(PG_DIAG_SQLSTATE);
  const std::string detail(field(PG_DIAG_MESSAGE_PRIMARY));
  for (const ProblemRow& row : kProblems) {
    if (state.starts_with(row.state))
      return {Joined(row.meaning, detail), row.endsConnection, row.mayPass};
  }
  return {detail.empty() ? "the server gave no answer that makes sense" : detail, false, false};
}

bool MayPass(const PGconn& connection) {
  const std::string_view words = PQerrorMessage(&connection);
  return words.find("password") == std::string_view::npos &&
         words.find("\" does not exist") == std::string_view::npos;
}

std::string ProblemOf(const PGconn& connection, bool mayRepeat) {
  const std::string_view words = PQerrorMessage(&connection);
  // A line for each host that was tried, and advice behind a tab.
  std::string lines;
  for (std::size_t at = 0; at < words.size();) {
    const std::string line = FirstLineOf(words.substr(at));
    at += line.size() + 1;
    if (line.empty() || line.front() == '\t') continue;
    lines.append(lines.empty() ? "" : "; ").append(line);
  }
  // Names of hosts and databases may hold what isn't to be seen.
  if (!mayRepeat) lines = "a password's special characters are written as %40 and the like";
  for (const auto& row : kConnectProblems)
    if (words.find(row.words) != std::string_view::npos) return Joined(row.meaning, lines);
  return Joined("there is no connection", lines);
}

namespace {

struct FreeOptions {
  void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
};

using Given = std::map<std::string_view, std::string_view>;

std::string ValueIn(const Given& given, std::string_view name) {
  const auto found = given.find(name);
  return found == given.end() ? std::string() : std::string(found->second);
}

// A password with characters that mean something in a URL may have become part of another value.
bool MayHoldSecrets(const Given& given) {
  for (const std::string_view name : {"host", "hostaddr", "port", "dbname", "user"})
    if (ValueIn(given, name).find('@') != std::string::npos) return true;
  return ValueIn(given, "port").find_first_not_of("0123456789,") != std::string::npos;
}

// Addresses with colons (IPv6) stand in brackets.
std::string HostsIn(std::string_view hosts) {
  std::string shown;
  while (!hosts.empty()) {
    const std::string_view host = hosts.substr(0, hosts.find(','));
    const bool isAddress = host.find(':') != std::string_view::npos;
    shown.append(shown.empty() ? "" : ",").append(isAddress ? "[" : "").append(host);
    if (isAddress) shown += ']';
    hosts.remove_prefix(std::min(host.size() + 1, hosts.size()));
  }
  return shown;
}

std::string Shown(const Given& given) {
  const auto value = [&](std::string_view name) { return ValueIn(given, name); };
  std::string shown = "postgresql://";
  if (given.contains("user")) shown += value("user") + "@";
  // A socket's folder doesn't stand in a URL's place of hosts as it is.
  const bool isFolder = value("host").find('/') != std::string::npos;
  if (!isFolder) shown += HostsIn(given.contains("host") ? value("host") : value("hostaddr"));
  // Of several hosts each may have one, or none.
  const bool isOnePort = value("port").find(',') == std::string::npos;
  if (!isFolder && isOnePort && given.contains("port")) shown += ":" + value("port");
  shown += "/" + value("dbname");
  std::string_view mark = "?";
  const auto add = [&](std::string_view name) {
    if (!given.contains(name)) return;
    shown.append(mark).append(name).append("=").append(value(name));
    mark = "&";
  };
  if (isFolder) add("host");
  const bool hasPorts = value("port").find_first_not_of(',') != std::string::npos;
  if ((isFolder || !isOnePort) && hasPorts) add("port");
  add("service");
  add("options");
  return shown;
}

}  // namespace

std::string ShownConnection(const std::string& connection) {
  // What libpq finds wrong may repeat a password.
  const std::unique_ptr<PQconninfoOption, FreeOptions> parsed(
      PQconninfoParse(connection.c_str(), nullptr));
  if (!parsed) throw StoreError(kHiddenConnection, "isn't a connection that libpq takes");
  Given given;
  for (const PQconninfoOption* option = parsed.get(); option->keyword != nullptr; ++option)
    if (option->val != nullptr && *option->val != '\0') given.emplace(option->keyword, option->val);
  return MayHoldSecrets(given) ? kHiddenConnection : Shown(given);
}

bool HasService(const std::string& connection) {
  const char* named = std::getenv("PGSERVICE");
  if (named != nullptr && *named != '\0') return true;
  const std::unique_ptr<PQconninfoOption, FreeOptions> parsed(
      PQconninfoParse(connection.c_str(), nullptr));
  for (const PQconninfoOption* option = parsed.get();
       option != nullptr && option->keyword != nullptr; ++option) {
    if (std::string_view(option->keyword) == "service" && option->val != nullptr) return true;
  }
  return false;
}

}  // namespace pim
