// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/ContactCsv.h"

#include <algorithm>

#include "formats/vcard4/ContactForms.h"
#include "formats/vcard4/RecordLosses.h"
#include "support/Ascii.h"

namespace pim {
namespace {

constexpr NarrowStringView kJoin = " ::: ";

void AppendCell(NarrowStringView cell, NarrowString& out) {
  const bool isBare = cell.find_first_of("\",\r\n") == NarrowStringView::npos &&
                      !cell.starts_with(' ') && !cell.ends_with(' ');
  if (isBare) {
    out.append(cell);
    return;
  }
  out += '"';
  for (const char c : cell) out.append(c == '"' ? 2 : 1, c);
  out += '"';
}

std::size_t CountOf(const CsvList& list, const CContact& contact) {
  return list.count == nullptr ? 1 : list.count(contact);
}

class CsvForm final : public ContactForm {
 public:
  explicit CsvForm(std::vector<CsvColumn> columns)
      : columns_(std::move(columns)), told_(CsvLists().size()) {}

  void Begin(std::string& out) override {
    for (const CsvColumn& column : columns_) {
      if (&column != &columns_.front()) out += ',';
      AppendCell(column.name, out);
    }
    out.append("\r\n");
  }

  void Append(const CContact& contact, const TellFormatLoss& tell, std::string& out) override {
    const RecordLosses losses(tell);
    for (std::size_t i = 0; i < told_.size(); ++i)
      told_[i].assign(CountOf(CsvLists()[i], contact), 0);
    for (const CsvColumn& column : columns_) {
      if (&column != &columns_.front()) out += ',';
      cell_.clear();
      bool isFirst = true;
      for (const CsvTerm& term : column.terms) {
        MakeTerm(contact, term, losses);
        if (value_.empty()) continue;
        if (!isFirst) cell_.append(kJoin);
        cell_.append(term.text ? *term.text : value_);
        isFirst = false;
      }
      AppendCell(cell_, out);
    }
    out.append("\r\n");
    TellDays(contact, losses);
    for (std::size_t i = 0; i < told_.size(); ++i) TellRest(contact, i, losses);
  }

  void End(std::string&) override {}

 private:
  // What a term gives; empty when all of its entries are.
  void MakeTerm(const CContact& contact, const CsvTerm& term, const RecordLosses& losses) {
    const CsvList& list = CsvLists()[term.list];
    value_.clear();
    bool isEmpty = true;
    std::size_t left = term.first;
    bool isFirst = true;
    for (std::size_t i = 0; i < told_[term.list].size(); ++i) {
      if (!term.word.empty() && !list.hasType(contact, i, term.word)) continue;
      if (left > 0) {
        --left;
        continue;
      }
      if (!isFirst) value_.append(kJoin);
      isFirst = false;
      const std::size_t start = value_.size();
      if (!list.members[term.member].append(contact, i, value_)) {
        losses.Tell(Field(term.list, i, term.member), FormatVerdict::Changed,
                    FormatReason::BadCharacter);
      }
      isEmpty = isEmpty && value_.size() == start;
      told_[term.list][i] |= 1U << term.member;
      if (!term.word.empty()) TakeTypeAsTold(contact, term, i);
      if (term.isOne) break;
    }
    if (isEmpty) value_.clear();
  }

  // A column of the entries with one word tells the type of those that have no other.
  void TakeTypeAsTold(const CContact& contact, const CsvTerm& term, std::size_t index) {
    const CsvList& list = CsvLists()[term.list];
    for (std::size_t member = 0; member < list.members.size(); ++member) {
      if (list.members[member].kind != MemberKind::Type) continue;
      label_.clear();
      list.members[member].append(contact, index, label_);
      if (EqualsIgnoringCase(label_, term.word)) told_[term.list][index] |= 1U << member;
    }
  }

  // Days that are none, and times of day.
  static void TellDays(const CContact& contact, const RecordLosses& losses) {
    for (std::size_t i = 0; i < contact.contactEvents().size(); ++i) {
      const auto day = contact.contactEvents()[i].event_date.GetFields();
      losses.TellDay({"events", i, "event_date"}, day);
    }
  }

  // What no column has.
  void TellRest(const CContact& contact, std::size_t listIndex, const RecordLosses& losses) {
    const CsvList& list = CsvLists()[listIndex];
    for (std::size_t i = 0; i < told_[listIndex].size(); ++i) {
      for (std::size_t member = 0; member < list.members.size(); ++member) {
        if ((told_[listIndex][i] >> member & 1) != 0) continue;
        value_.clear();
        list.members[member].append(contact, i, value_);
        if (value_.empty()) continue;
        const bool isType = list.members[member].kind == MemberKind::Type;
        losses.Tell(Field(listIndex, i, member),
                    isType ? FormatVerdict::Changed : FormatVerdict::Dropped,
                    isType ? FormatReason::TypeIgnored : FormatReason::NoProperty);
      }
    }
  }

  static FieldName Field(std::size_t listIndex, std::size_t index, std::size_t member) {
    const CsvList& list = CsvLists()[listIndex];
    return {list.name, list.count == nullptr ? FieldName::kNoIndex : index,
            list.members[member].name};
  }

  const std::vector<CsvColumn> columns_;
  std::vector<std::vector<std::uint32_t>> told_;  // by lists and entries: bits of members
  NarrowString cell_;
  NarrowString value_;
  NarrowString label_;
};

}  // namespace

std::unique_ptr<ContactForm> MakeCsvForm(std::string_view columns) {
  return std::make_unique<CsvForm>(columns.empty() ? UsualCsvColumns() : ReadCsvColumns(columns));
}

}  // namespace pim
