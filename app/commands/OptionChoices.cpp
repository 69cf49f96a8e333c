// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/OptionChoices.h"

#include "app/labels/Labels.h"
#include "app/output/Fields.h"
#include "formats/prepare/PrepareSteps.h"

namespace pim::app {
namespace {

using Words = std::vector<std::string_view>;

constexpr std::string_view kCodePages[] = {
    "UTF-8",       "CP1250", "CP1251",    "CP1252", "CP1253", "CP1254", "ISO-8859-1",
    "ISO-8859-15", "KOI8-R", "Shift_JIS", "EUC-JP", "EUC-KR", "BIG5",   "GBK"};

template <class Rows, class Word>
Words WordsOf(const Rows& rows, Word word) {
  Words words;
  for (const auto& row : rows) words.push_back(row.*word);
  return words;
}

template <class Record>
Words FieldNames() {
  Words names = WordsOf(FieldsOf(static_cast<const Record*>(nullptr)), &FieldRow<Record>::name);
  names.emplace_back(kFieldHelp);
  return names;
}

}  // namespace

std::vector<std::string_view> ChoicesOf(Option option, Family family) {
  switch (option) {
    case Option::As:
      return WordsOf(kFormChoices, &ChoiceRow<TextForm>::word);
    case Option::CodePage:
      return {std::begin(kCodePages), std::end(kCodePages)};
    case Option::Fields:
      return family == Family::Items ? FieldNames<CCalendar>() : FieldNames<CContact>();
    case Option::Lang:
      return WordsOf(LabelFiles(), &LabelFile::language);
    case Option::Sort: {
      Words words = WordsOf(kOrderChoices, &ChoiceRow<ListOrder>::word);
      if (family == Family::Contacts) words.pop_back();  // they have no time
      return words;
    }
    case Option::Steps:
      return WordsOf(PrepareSteps(), &PrepareStepRow::name);
    case Option::To: {
      Words words = WordsOf(kTargetChoices, &ChoiceRow<TargetForm>::word);
      if (family == Family::Contacts) words.pop_back();
      if (family == Family::Items) words.erase(words.begin(), words.end() - 1);
      return family == Family::Store ? Words() : words;
    }
    default:
      return {};
  }
}

std::string Listed(std::span<const std::string_view> words) {
  std::string all;
  for (std::size_t i = 0; i < words.size(); ++i)
    all.append(i == 0 ? "" : i + 1 == words.size() ? " or " : ", ").append(words[i]);
  return all;
}

}  // namespace pim::app
