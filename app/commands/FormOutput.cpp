// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/FormOutput.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "app/commands/OptionChoices.h"
#include "app/commands/OptionValues.h"
#include "app/input/Inputs.h"
#include "app/output/Fields.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"
#include "formats/icalendar/ItemForms.h"
#include "formats/vcard4/ContactForms.h"
#include "pim/platform/Encoding.h"
#include "platform/Files.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

struct TargetRow {
  TargetForm form;
  TextForm records;
  WideStringView extension;
};
constexpr TargetRow kTargets[] = {
    {TargetForm::VCard4, TextForm::VCard, u".vcf"},
    {TargetForm::VCard3, TextForm::VCard, u".vcf"},
    {TargetForm::ICalendar, TextForm::VCalendar, u".ics"},
    {TargetForm::JCard, TextForm::VCard, u".json"},
    {TargetForm::Csv, TextForm::VCard, u".csv"},
};
const TargetRow& TargetRowOf(TargetForm form) {
  return *std::ranges::find(kTargets, form, &TargetRow::form);
}

WideString TitleOfOne(const CContact& contact) { return DisplayName(contact); }
WideString TitleOfOne(const CCalendar& item) { return ItemName(item); }
constexpr std::string_view NounOfOne(const CContact*) { return "contact"; }
constexpr std::string_view NounOfOne(const CCalendar*) { return "item"; }

std::unique_ptr<ContactForm> FormOfRecords(TargetForm target, const Options& options,
                                           const std::string& columns, const CContact*) {
  switch (target) {
    case TargetForm::VCard3:
      return MakeVCardForm(VCardVersion::V3, options.groupCards);
    case TargetForm::JCard:
      return MakeJCardForm(options.groupCards);
    case TargetForm::Csv:
      return MakeCsvForm(columns);
    case TargetForm::VCard4:
    case TargetForm::ICalendar:
      break;
  }
  return MakeVCardForm(VCardVersion::V4, options.groupCards);
}
std::unique_ptr<ItemForm> FormOfRecords(TargetForm, const Options&, const std::string&,
                                        const CCalendar*) {
  return MakeICalendarForm();
}

std::string TextOfColumns(const Options& options) {
  if (!options.csvColumns) return {};
  ByteBuffer bytes;
  ReadInput(*options.csvColumns, ByteOrderMark::Skipped, bytes);
  return std::string(bytes.view());
}

void CheckUse(const Options& options, TargetForm target) {
  if (options.csvColumns && target != TargetForm::Csv)
    throw WrongUsage("--csv-columns goes with --to csv");
  if (options.groupCards && (target == TargetForm::Csv || target == TargetForm::ICalendar))
    throw WrongUsage("--groups goes with --to vcard4, vcard3 or jcard");
}

void MakeTargetFolder(const std::string& folder, bool force) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (!error && !force && !fs::is_empty(folder, error) && !error)
    throw Failure(ShownName(folder) + ": isn't empty; --force adds to it");
  if (error) throw Failure(ShownName(folder) + ": " + error.message());
}

}  // namespace

TextForm RecordsOf(TargetForm target) { return TargetRowOf(target).records; }

template <class Record>
FormOutput<Record>::FormOutput(const Options& options, std::string path)
    : options_(options),
      target_(TargetFormOf(options)),
      path_(std::move(path)),
      account_(NounOfOne(static_cast<const Record*>(nullptr)), *options.to, options.report,
               options.force) {
  CheckUse(options_, target_);
  if (options_.split && path_ == "-") throw WrongUsage("--split needs a folder");
  columns_ = TextOfColumns(options_);
  form_ = NewForm();
  if (options_.split) {
    MakeTargetFolder(path_, options_.force);
  } else if (path_ != "-") {
    file_.emplace(path_, options_.force);
  }
}

template <class Record>
std::unique_ptr<RecordForm<Record>> FormOutput<Record>::NewForm() const {
  try {
    return FormOfRecords(target_, options_, columns_, static_cast<const Record*>(nullptr));
  } catch (const std::invalid_argument& problem) {
    throw Failure(ShownName(*options_.csvColumns) + ": " + problem.what());
  }
}

template <class Record>
void FormOutput<Record>::Add(const Record& record) {
  const TellFormatLoss tell = [&](const FormatLoss& loss) {
    account_.TellOfRecord(count_ + 1, Utf8FromWide(TitleOfOne(record)), loss);
  };
  if (options_.split) {
    WriteOne(record, tell);
  } else {
    if (count_ == 0) form_->Begin(text_);
    form_->Append(record, tell, text_);
    Write(false);
  }
  ++count_;
}

template <class Record>
void FormOutput<Record>::WriteOne(const Record& record, const TellFormatLoss& tell) {
  constexpr std::size_t kLongestName = 200;
  text_.clear();
  form_ = NewForm();
  form_->Begin(text_);
  form_->Append(record, tell, text_);
  form_->End(text_);
  WideString name = CleanFileName(TitleOfOne(record));
  std::erase(name, u'\0');
  if (name.empty()) name = u"NoName";
  name.resize(std::min(name.size(), kLongestName));
  name.append(TargetRowOf(target_).extension);
  NewFile result = NewFile::Taken;
  std::string written;
  names_.Next(name, [&](const std::string& native) {
    written = (fs::path(path_) / native).string();
    result = WriteNewFile(written, text_);
    return result == NewFile::Taken;
  });
  if (result != NewFile::Written)
    throw Failure(ShownName(written) + ": can't be written: " + std::strerror(errno));
}

template <class Record>
void FormOutput<Record>::Write(bool all) {
  constexpr std::size_t kPiece = std::size_t{1} << 18;
  if (!all && text_.size() < kPiece) return;
  file_ ? file_->Append(text_) : Print(text_);
  text_.clear();
}

template <class Record>
int FormOutput<Record>::End() {
  const std::string noun(NounOfOne(static_cast<const Record*>(nullptr)));
  if (count_ == 0) {
    Tell("no " + noun + (options_.split ? "; no file is written" : "; nothing is written"));
  } else if (!options_.split) {
    form_->End(text_);
    Write(true);
    if (file_) file_->Publish();
  }
  account_.Publish();
  if (!account_.isEmpty()) Complain(account_.Summary());
  if (count_ != 0) Tell(Counted(count_, noun) + " written as " + *options_.to);
  return options_.strict && !account_.isEmpty() ? kLossy : kDone;
}

// What is told must not come between the data.
template <class Record>
void FormOutput<Record>::Tell(const std::string& line) const {
  path_ == "-" ? Complain(line) : Print(line + "\n");
}

template class FormOutput<CContact>;
template class FormOutput<CCalendar>;

}  // namespace pim::app
