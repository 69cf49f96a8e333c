// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/StoreSettings.h"

#include <cstring>

namespace pim {
namespace {

constexpr std::string_view kOriginals = "originals";
constexpr std::string_view kOff = "off";
constexpr std::string_view kKey = "fingerprint_key";

}  // namespace

StoreSettings::StoreSettings(Database& db)
    : get_(db, "SELECT value FROM StoreSettings WHERE name = ?"),
      insert_(db, "INSERT INTO StoreSettings (name, value) VALUES (?, ?)"),
      update_(db, "UPDATE StoreSettings SET value = ?2 WHERE name = ?1") {}

std::optional<std::string> StoreSettings::Get(std::string_view name) {
  get_.BindText(1, name);
  Rows rows(get_);
  if (!rows.Next()) return std::nullopt;
  return std::string(get_.Bytes(0));
}

void StoreSettings::Set(std::string_view name, std::string_view value) {
  for (Statement* statement : {&update_, &insert_}) {
    statement->BindText(1, name);
    statement->BindBytes(2, value);
    if (statement->RunChanging() > 0) return;
  }
}

bool StoreSettings::KeepsOriginals() { return Get(kOriginals) != kOff; }

void StoreSettings::SetKeepsOriginals(bool keeps) { Set(kOriginals, keeps ? "on" : kOff); }

bool StoreSettings::HasKey() { return Get(kKey).has_value(); }

FingerprintKey StoreSettings::Key(bool mayMake) {
  FingerprintKey key = NewFingerprintKey();
  std::string bytes(sizeof key, '\0');
  if (const auto stored = Get(kKey); stored && stored->size() == sizeof key) {
    std::memcpy(&key, stored->data(), sizeof key);
  } else if (mayMake) {
    std::memcpy(bytes.data(), &key, sizeof key);
    Set(kKey, bytes);
  }
  return key;
}

}  // namespace pim
