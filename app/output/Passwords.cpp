// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Passwords.h"

#include <algorithm>
#include <iterator>

namespace pim::app {
namespace {

constexpr std::string_view kSchemes[] = {"postgresql://", "postgres://"};

// The parameters of a URL whose values are nobody's to see.
constexpr std::string_view kSecret[] = {"password", "sslpassword", "oauth_client_secret",
                                        "scram_client_key", "scram_server_key"};

constexpr auto kNone = std::string_view::npos;

// Behind the scheme; kNone for a text without a URL.
std::size_t UrlAt(std::string_view text) {
  for (const std::string_view scheme : kSchemes) {
    const std::size_t at = text.find(scheme);
    if (at != kNone) return at + scheme.size();
  }
  return kNone;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char small = static_cast<char>(c | 0x20);
  return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isCode = text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 &&
                        HexDigit(text[i + 2]) >= 0;
    decoded +=
        isCode ? static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2])) : text[i];
    i += isCode ? 2 : 0;
  }
  return decoded;
}

// The question mark that parameters stand behind: "?name=".
std::size_t ParametersAt(std::string_view text, std::size_t from) {
  constexpr std::string_view kName = "abcdefghijklmnopqrstuvwxyz0123456789_%ABCDEF";
  for (std::size_t at = text.find('?', from); at != kNone; at = text.find('?', at + 1)) {
    const std::size_t end = text.find_first_not_of(kName, at + 1);
    if (end != kNone && end > at + 1 && text[end] == '=') return at;
  }
  return kNone;
}

}  // namespace

bool IsServerUrl(std::string_view text) {
  return std::ranges::any_of(kSchemes,
                             [text](std::string_view scheme) { return text.starts_with(scheme); });
}

std::vector<std::pair<std::size_t, std::size_t>> PasswordsIn(std::string_view text) {
  std::vector<std::pair<std::size_t, std::size_t>> found;
  const std::size_t start = UrlAt(text);
  if (start == kNone) return found;
  const std::size_t colon = text.find(':', start);
  const std::string_view user = text.substr(0, ParametersAt(text, text.find('@', start)));
  const std::size_t userEnd = user.rfind('@');
  if (userEnd != kNone && colon < userEnd) found.emplace_back(colon + 1, userEnd);
  for (std::size_t at = ParametersAt(text, start); at != kNone; at = text.find('&', at + 1)) {
    const std::size_t end = std::min(text.find('&', at + 1), text.size());
    const std::size_t equals = std::min(text.find('=', at), end);
    const std::string name = PercentDecoded(text.substr(at + 1, equals - at - 1));
    if (std::ranges::find(kSecret, name) == std::end(kSecret) || equals == end) continue;
    if (!found.empty() && equals < found.back().second) {  // a @ of its own
      found.back().second = std::max(found.back().second, end);
    } else {
      found.emplace_back(equals + 1, end);
    }
  }
  return found;
}

std::string_view ProblemOfUrl(std::string_view url) {
  const std::size_t start = UrlAt(url);
  std::string_view hosts = url.substr(start, ParametersAt(url, start) - start);
  if (const std::size_t end = hosts.rfind('@'); end != kNone) {
    if (hosts.substr(0, end).find_first_of("/@") != kNone)
      return "a / or @ in a name or password is written as %2F or %40";
    hosts.remove_prefix(end + 1);
  }
  hosts = hosts.substr(0, hosts.find_first_of("/?"));
  while (!hosts.empty()) {
    const std::string_view host = hosts.substr(0, hosts.find(','));
    hosts.remove_prefix(std::min(host.size() + 1, hosts.size()));
    const std::size_t name = host.starts_with('[') ? host.find(']') : 0;
    const std::size_t colon = host.find(':', std::min(name, host.size()));
    if (colon != kNone && host.find_first_not_of("0123456789", colon + 1) != kNone)
      return "a port is no number";
  }
  return {};
}

std::string WithoutPasswords(std::string_view text) {
  std::string shown;
  std::size_t at = 0;
  for (const auto& [first, end] : PasswordsIn(text)) {
    shown.append(text.substr(at, first - at)).append("***");
    at = end;
  }
  return shown.append(text.substr(at));
}

}  // namespace pim::app
