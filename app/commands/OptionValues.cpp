// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/OptionValues.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <vector>

#include "app/commands/Nearest.h"
#include "app/commands/OptionChoices.h"
#include "app/labels/Labels.h"
#include "app/output/Output.h"
#include "pim/platform/Host.h"

namespace pim::app {
namespace {

// One of the words that an option's value may be, of a command of the family.
template <class Value>
Value Choice(const OptionRow& row, const std::string& value,
             std::span<const ChoiceRow<Value>> choices, Family family = Family::NoNoun) {
  const auto words = ChoicesOf(row.id, family);
  const auto found = std::ranges::find(choices, value, &ChoiceRow<Value>::word);
  if (found != choices.end() && std::ranges::find(words, value) != words.end())
    return found->meaning;
  throw WrongUsage(DashedName(row) + " takes " + Listed(words) + ", not '" + ShownName(value) +
                   "'" + Suggestion(value, words));
}

std::vector<std::string> Parted(const std::string& list) {
  std::vector<std::string> parts;
  for (std::size_t at = 0;;) {
    const std::size_t comma = list.find(',', at);
    parts.push_back(list.substr(at, comma - at));
    if (comma == std::string::npos) return parts;
    at = comma + 1;
  }
}

void CheckLanguage(const std::string& name) {
  if (FindLabels(name) != nullptr) return;
  std::string all;
  for (const LabelFile& file : LabelFiles())
    all.append(all.empty() ? "" : ", ").append(file.language);
  throw WrongUsage("no labels for language '" + ShownName(name) + "'; there are " + all);
}

PrepareStepMask StepsNamed(const OptionRow& row, const std::vector<std::string>& names) {
  PrepareStepMask steps = 0;
  for (const std::string& name : names) {
    const auto found = std::ranges::find(PrepareSteps(), name, &PrepareStepRow::name);
    if (found == PrepareSteps().end()) {
      const auto words = ChoicesOf(row.id, Family::NoNoun);
      throw WrongUsage(DashedName(row) + " takes " + Listed(words) + ", not '" + ShownName(name) +
                       "'" + Suggestion(name, words));
    }
    steps |= BitOf(found->step);
  }
  return steps;
}

}  // namespace

TargetForm TargetFormOf(const Options& options) {
  const Family family = options.action == Action::Convert      ? Family::NoNoun
                        : options.kind == RecordKind::Contacts ? Family::Contacts
                                                               : Family::Items;
  return Choice<TargetForm>(RowOf(Option::To), *options.to, kTargetChoices, family);
}

void SetOption(Options& options, const GivenOption& given) {
  const OptionRow& row = RowOf(given.id);
  const std::string& value = given.value;
  if (row.value != nullptr && value.empty()) throw WrongUsage(DashedName(row) + " is empty");
  if ((given.id == Option::Rejects || given.id == Option::Report) && value == "-")
    throw WrongUsage(DashedName(row) + " takes the name of a file");
  switch (given.id) {
    case Option::All:
      options.all = true;
      break;
    case Option::As:
      options.form = Choice<TextForm>(row, value, kFormChoices);
      break;
    case Option::CodePage:
      if (!SetDefaultCodePage(value))
        throw WrongUsage("unknown code page '" + ShownName(value) + "'");
      break;
    case Option::Csv:
      options.listForm = ListForm::Csv;
      break;
    case Option::CsvColumns:
      options.csvColumns = value;
      break;
    case Option::Delete:
      options.deletes = true;
      break;
    case Option::DryRun:
      options.dryRun = true;
      break;
    case Option::Fields:
      options.fields = Parted(value);
      break;
    case Option::Force:
      options.force = true;
      break;
    case Option::From:
      options.from = value;
      break;
    case Option::Group:
      options.group = value;
      break;
    case Option::Groups:
      options.groupCards = true;
      break;
    case Option::Import:
      options.import = PositiveNumber(value);
      if (!options.import) {
        throw WrongUsage(DashedName(row) + " takes the number of an import, not '" +
                         ShownName(value) + "'");
      }
      break;
    case Option::Json:
      options.listForm = ListForm::Json;
      break;
    case Option::JsonLines:
      options.listForm = ListForm::JsonLines;
      break;
    case Option::KeepDuplicates:
      options.keepDuplicates = true;
      break;
    case Option::Labels:
      options.labels = value;
      break;
    case Option::Lang:
      CheckLanguage(value);
      options.language = value;
      break;
    case Option::Losses:
      options.losses = true;
      break;
    case Option::NoGroups:
      options.noGroups = true;
      break;
    case Option::NoName:
      options.noName = true;
      break;
    case Option::NoOriginals:
      options.noOriginals = true;
      break;
    case Option::Output:
      options.output = value;
      break;
    case Option::Prepare:
      options.prepare = true;
      break;
    case Option::Quiet:
      options.quiet = true;
      break;
    case Option::Rejects:
      options.rejects = value;
      break;
    case Option::Report:
      options.report = value;
      break;
    case Option::Sort:
      options.order = Choice<ListOrder>(row, value, kOrderChoices);
      break;
    case Option::Split:
      options.split = true;
      break;
    case Option::Steps:
      options.steps = StepsNamed(row, Parted(value));
      break;
    case Option::Store:
      options.store = value;
      break;
    case Option::Strict:
      options.strict = true;
      break;
    case Option::To:
      options.to = value;
      break;
    case Option::ToTheLetter:
      options.toTheLetter = true;
      break;
    case Option::Help:
    case Option::SkipDuplicates:
    case Option::Version:
      break;
  }
}

std::optional<std::int32_t> PositiveNumber(const std::string& text) {
  std::int32_t number = 0;
  const char* end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || behind != end || number <= 0) return std::nullopt;
  return number;
}

}  // namespace pim::app
