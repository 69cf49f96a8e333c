// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/ContactExport.h"

#include "manager/GroupLinks.h"
#include "platform/Files.h"
#include "support/FileNames.h"
#include "support/TextFiles.h"
#include "vcard/VCardWriter.h"

namespace pim {
namespace {

constexpr WideStringView kNameless = u"NoName";
constexpr WideStringView kExtension = u".vcf";
constexpr std::size_t kLongestPath = 200;  // without the extension

}  // namespace

struct ContactExport::Parts {
  WideString folder;
  GroupNames groupNames;
  UniqueNames paths;
  VObjectBuffer text;  // one piece of memory for all contacts
};

ContactExport::ContactExport(WideString folder, const CContactGroups& groups,
                             const CContactGroupPairs& pairs)
    : parts_(new Parts{std::move(folder), GroupNames(groups, pairs), {}, {}}) {}
ContactExport::~ContactExport() = default;

void ContactExport::AttachGroupNames(CContact& contact) { parts_->groupNames.AttachTo(contact); }

bool ContactExport::WriteContactFile(const CContact& contact) {
  WideString name =
      CleanFileName(contact.name.given_name.str().append(contact.name.family_name.view()));
  std::erase(name, u'\0');  // no file system takes it
  if (name.empty()) name = kNameless;
  WideString path = parts_->folder + name;
  path.resize(std::min(path.size(), kLongestPath));
  path.append(kExtension);
  WriteVCard(contact, parts_->text);
  NewFile result = NewFile::Taken;
  lastPath_ = parts_->paths.Next(path, [&](const std::string& native) {
    result = WriteNewFile(native, parts_->text.bytes.view());
    return result == NewFile::Taken;
  });
  return result == NewFile::Written;
}

}  // namespace pim
