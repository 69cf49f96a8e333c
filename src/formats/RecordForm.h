// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "formats/FormatLoss.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"

namespace pim {

// Writes records in one of today's forms, one behind another, as one text in UTF-8. What a record
// holds that the form can't is told. One object writes one text; what it keeps doesn't grow with
// the records, but for what its maker says. All of it throws std::bad_alloc.
template <class Record>
class RecordForm {
 public:
  RecordForm() = default;
  RecordForm(const RecordForm&) = delete;
  RecordForm& operator=(const RecordForm&) = delete;
  virtual ~RecordForm() = default;

  // Append to `out` what stands ahead of the first record, a record, and what stands behind the
  // last one. Begin and End are called once, for a text without records too.
  virtual void Begin(std::string& out) = 0;
  virtual void Append(const Record& record, const TellFormatLoss& tell, std::string& out) = 0;
  virtual void End(std::string& out) = 0;
};

using ContactForm = RecordForm<CContact>;
using ItemForm = RecordForm<CCalendar>;

}  // namespace pim
