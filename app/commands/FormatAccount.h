// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "app/output/JsonWriter.h"
#include "app/output/ReportFile.h"
#include "formats/FormatLoss.h"

namespace pim::app {

// What records or texts lose on their way into another form: each loss on standard error, or with a
// report in that alone, and their numbers at the end.
class FormatAccount {
 public:
  // `noun` is what loses something ("contact"), `form` the form's name ("vcard4"). The report is a
  // file with one JSON object; throws Failure where it can't be made.
  FormatAccount(std::string_view noun, std::string_view form,
                const std::optional<std::string>& report, bool force);

  // A loss of the record with that number, from 1 in the output, whose name is in UTF-8.
  void TellOfRecord(std::int64_t number, std::string_view name, const FormatLoss& loss);
  // A loss of the property in that line of a file, from 1.
  void TellOfLine(const std::string& file, std::int64_t line, const FormatLoss& loss);

  bool isEmpty() const { return count_ == 0; }
  // "12 losses (3 types ignored, ...)"; empty without one.
  std::string Summary() const;
  // Puts the report in its place.
  void Publish();

 private:
  void Count(const FormatLoss& loss);
  void Begin();
  void End(const FormatLoss& loss);

  std::string noun_;
  std::string path_;
  std::optional<ReportFile> report_;
  JsonWriter json_;
  std::int64_t count_ = 0;
  std::array<std::int64_t, std::size(kFormatReasons)> counts_{};
};

}  // namespace pim::app
