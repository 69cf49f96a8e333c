#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/output/JsonWriter.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"

namespace pim::app {

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
  void End();

 private:
  template <class Record>
  void AddRecord(const Record& record);

  JsonWriter json_;
  bool empty_ = true;
};

}  // namespace pim::app
