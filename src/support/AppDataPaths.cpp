// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/support/FileNames.h"
#include "platform/AppData.h"

namespace pim {

void GetAppDataDir(WideString& dir) { dir = AppDataFolder() + u'\\'; }

WideString GetCallerIdPath() {
  WideString path;
  GetAppDataDir(path);
  return path += u"Tessaly Works\\Tessaly Deskmate IV\\CallerId";
}

}  // namespace pim
