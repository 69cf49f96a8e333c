// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/output/JsonWriter.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"

namespace pim::app {

// One record as JSON in one line, without a line end. The text is good until the next call.
class RecordJson {
 public:
  std::string_view Text(const CContact& contact);
  std::string_view Text(const CCalendar& item);

 private:
  JsonWriter json_;
};

// Prints records as one JSON object on standard output, one record at a time. Keys, their order and
// their forms are those of docs/record-dump.md.
class JsonList {
 public:
  // Stored records: {"contacts": [...]}.
  explicit JsonList(std::string_view name);
  // Those of a parsed text, with what came of the parse.
  JsonList(std::string_view name, bool rejected, const std::vector<std::u16string>& messages);

  void Add(const CContact& contact);
  void Add(const CCalendar& item);
  // A record that RecordJson has written.
  void AddText(std::string_view record);
  void End();

 private:
  RecordJson record_;
  bool empty_ = true;
};

}  // namespace pim::app
