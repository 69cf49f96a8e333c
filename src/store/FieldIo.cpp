// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/FieldIo.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/AsciiRuns.h"
#include "store/StoredForms.h"

namespace pim {

namespace {

constexpr double kInvalid = std::numeric_limits<double>::infinity();

class Binder {
 public:
  Binder(Parameters& row, int index) : row_(row), index_(index) {}

  void operator()(const WideText* text) { BindText(text->view()); }
  void operator()(const PictureName& picture) { BindText(picture.name->view()); }
  void operator()(const std::int32_t* number) { row_.Bind(index_, std::int64_t{*number}); }
  void operator()(const std::uint32_t* number) { row_.Bind(index_, std::int64_t{*number}); }
  void operator()(const std::uint8_t* number) { row_.Bind(index_, std::int64_t{*number}); }
  void operator()(const DESKMATE_IDS::Alarm* kind) { row_.Bind(index_, std::int64_t{*kind}); }

  void operator()(const COleDateTimeNull* time) {
    if (time->status == StatusNull) return row_.BindNull(index_);
    row_.Bind(index_, DaysOf(time->value, time->status));
  }
  void operator()(const COleDateTimeSpan* span) {
    if (span->status == StatusValid && span->value == 0.0) return row_.BindNull(index_);
    const double days = DaysOf(span->value, span->status);
    row_.Bind(index_, span->status == StatusNull ? -days : days);
  }
  void operator()(const WholeSeconds& field) {
    const auto seconds = WholeSecondsOf(*field.time);
    if (!seconds) return row_.BindNull(index_);
    row_.Bind(index_, *seconds);
  }
  void operator()(const ExactDay& field) {
    if (WholeSecondsOf(*field.time)) return row_.BindNull(index_);
    (*this)(field.time);
  }

  void operator()(const std::vector<WideText>* texts) {
    texts->empty() ? row_.BindNull(index_) : BindText(StoredList(*texts));
  }
  void operator()(const RecurrenceList* numbers) {
    if (numbers->empty()) return row_.BindNull(index_);
    AppendStoredNumbers(*numbers, row_.Buffer(index_));
    row_.BindBuffer(index_);
  }
  void operator()(const DerivedNumber& number) {
    if (!number.value) return row_.BindNull(index_);
    row_.Bind(index_, std::int64_t{*number.value});
  }

 private:
  static double DaysOf(double value, DateTimeStatus status) {
    if (status == StatusValid && std::isfinite(value)) return value;
    return kInvalid;
  }
  void BindText(WideStringView text) {
    if (text.empty()) return row_.BindNull(index_);
    AppendStoredText(text, row_.Buffer(index_));
    row_.BindBuffer(index_);
  }

  Parameters& row_;
  int index_;
};

template <class Number>
void Saturate(std::int64_t stored, Number& number) {
  using Limits = std::numeric_limits<Number>;
  number = static_cast<Number>(
      std::clamp(stored, std::int64_t{Limits::min()}, std::int64_t{Limits::max()}));
}

void ReadDays(double stored, COleDateTimeNull& time) {
  time.status = std::isfinite(stored) ? StatusValid : StatusInvalid;
  time.value = std::isfinite(stored) ? stored : 0.0;
}

class Reader {
 public:
  Reader(PreparedStatement& row, int column, WideString& work)
      : row_(row), column_(column), work_(work) {}

  void operator()(WideText* text) {
    const std::string_view stored = row_.Text(column_);
    if (IsAsciiText(stored)) return text->AssignAscii(stored);
    ReadStoredText(stored, work_);
    *text = work_;
  }
  void operator()(const PictureName& picture) {
    const WideStringView name = Text();
    if (IsPlainFileName(name)) *picture.name = name;
  }
  void operator()(std::int32_t* number) { Saturate(row_.Integer(column_), *number); }
  void operator()(std::uint32_t* number) { Saturate(row_.Integer(column_), *number); }
  void operator()(std::uint8_t* number) { Saturate(row_.Integer(column_), *number); }
  void operator()(DESKMATE_IDS::Alarm* kind) {
    std::int32_t number = 0;
    (*this)(&number);
    *kind = static_cast<DESKMATE_IDS::Alarm>(number);
  }
  void operator()(COleDateTimeNull* time) { ReadDays(row_.Real(column_), *time); }
  void operator()(COleDateTimeSpan* span) {
    const double stored = row_.Real(column_);
    span->status = std::isfinite(stored) ? StatusValid : stored > 0 ? StatusInvalid : StatusNull;
    span->value = std::isfinite(stored) ? stored : 0.0;
  }
  void operator()(const WholeSeconds& field) {
    *field.time = TimeFromSeconds(row_.Integer(column_));
  }
  void operator()(const ExactDay& field) { (*this)(field.time); }
  void operator()(std::vector<WideText>* texts) { *texts = ListFromStored(Text()); }
  void operator()(RecurrenceList* numbers) { *numbers = NumbersFromStored(row_.Text(column_)); }
  void operator()(const DerivedNumber&) {}

 private:
  WideStringView Text() {
    ReadStoredText(row_.Text(column_), work_);
    return work_;
  }

  PreparedStatement& row_;
  int column_;
  WideString& work_;
};

}  // namespace

void BindField(Parameters& row, int index, const FieldRef& field) {
  std::visit(Binder(row, index), field);
}

void BindRow(Parameters& row, int index, std::int64_t key, std::span<const FieldMap> fields,
             void* entry) {
  row.Bind(index, key);
  for (const FieldMap& field : fields) BindField(row, ++index, field.field(entry));
}

void FieldReader::Read(PreparedStatement& row, int column, const FieldRef& field) {
  std::visit(Reader(row, column, work_), field);
}

}  // namespace pim
