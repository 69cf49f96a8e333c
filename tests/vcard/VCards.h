// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "pim/platform/Host.h"
#include "pim/support/FileNames.h"
#include "platform/Files.h"
#include "vcard/VCardReader.h"
#include "vcard/VCardWriter.h"

namespace pim {

// An application-data folder of the test's own, with the caller-ID folder in it.
class PicturesFolder {
 public:
  PicturesFolder() {
    std::string root = testing::TempDir() + "pictures-XXXXXX";
    root_ = mkdtemp(root.data());
    SetAppDataFolder(root_);
    std::filesystem::create_directories(path());
  }
  ~PicturesFolder() {
    SetAppDataFolder({});
    std::filesystem::remove_all(root_);
  }
  static std::string path() { return NativePath(GetCallerIdPath()); }

 private:
  std::string root_;
};

inline std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Reads a text and gives all its contacts; a rejected text throws.
inline CContacts ReadCards(std::string_view text) {
  CContacts contacts;
  VObjectBuffer data;
  data.bytes.Assign(text.data(), text.size());
  ParseVCard(contacts, data);
  return contacts;
}

// The one contact of a card with these lines.
inline CContact ReadCard(const std::string& lines) {
  CContacts contacts = ReadCards("BEGIN:VCARD\r\n" + lines + "\r\nEND:VCARD\r\n");
  return std::move(contacts[0]);
}

inline std::string WriteCard(const CContact& contact) {
  VObjectBuffer data;
  WriteVCard(contact, data);
  return std::string(data.bytes.view());
}

// All contacts, one text behind the other.
inline std::string WriteCards(const CContacts& contacts) {
  std::string text;
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
    text.append(WriteCard(contacts[i])).append("\r\n");
  return text;
}

}  // namespace pim
