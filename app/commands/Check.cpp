// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Check.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextKind.h"
#include "app/input/TextReading.h"
#include "app/output/Account.h"
#include "app/output/ExportLimits.h"
#include "app/output/Fields.h"
#include "app/output/ItemText.h"
#include "app/output/Messages.h"
#include "app/output/Output.h"
#include "app/output/RecordDump.h"
#include "pim/manager/TextWriting.h"
#include "platform/CodePages.h"
#include "support/CallerIdPictures.h"

namespace pim::app {
namespace {

// How the records of each form are read and written.
struct Cards {
  using Record = CContact;
  using Records = CContacts;
  static constexpr TextForm kForm = TextForm::VCard;
  static constexpr std::string_view kNoun = "contact";
  static TextResult Read(NarrowStringView text, Records& records, const TextObserver& observer) {
    return ReadContacts(text, records, observer);
  }
  static NarrowString Write(const Records& records) { return WriteContact(records[0]); }
  static WideString TitleOf(const Record& contact) { return DisplayName(contact); }
};
struct Items {
  using Record = CCalendar;
  using Records = CCalendars;
  static constexpr TextForm kForm = TextForm::VCalendar;
  static constexpr std::string_view kNoun = "item";
  static TextResult Read(NarrowStringView text, Records& records, const TextObserver& observer) {
    return ReadCalendars(text, records, observer);
  }
  static NarrowString Write(const Records& records) { return WriteCalendars(records); }
  static WideString TitleOf(const Record& item) { return ItemName(item); }
};

// Pictures get a new name at each reading: what is in them is told in its place.
void NamePicture(CContact& contact, PrivatePictures& pictures) {
  if (contact.photo.empty()) return;
  const WideString name = contact.photo.str();
  const NarrowString bytes = ReadCallerIdPicture(name);
  pictures.Remove(name);
  const std::size_t hash = std::hash<NarrowStringView>{}(bytes);
  contact.photo = u"picture of " + WideFromUtf8(std::to_string(bytes.size())) + u" bytes, " +
                  WideFromUtf8(std::to_string(hash)) +
                  name.substr(std::min(name.rfind(u'.'), name.size()));
}
void NamePicture(CCalendar&, PrivatePictures&) {}

class Checker {
 public:
  Checker(const std::string& path, bool asJson)
      : path_(path), asJson_(asJson), pictures_(TemporaryFolder()) {}

  template <class Form>
  int Check(NarrowStringView text) {
    typename Form::Records read;
    Outcome outcome = ReadInto<Form>(text, read);
    std::vector<std::unique_ptr<typename Form::Record>> reversed;
    while (read.GetCount() > 0) reversed.push_back(read.TakeLast());
    const std::size_t count = reversed.size();
    Begin(Form::kForm, outcome.result.outcome == TextOutcome::Rejected);
    for (; !reversed.empty(); ++number_) {
      CheckInterrupt();
      typename Form::Records one;
      one.Add(std::move(reversed.back()));
      reversed.pop_back();
      CheckRecord<Form>(one);
    }
    End(count, Form::kNoun);
    const int status = TellOutcome(path_, outcome, text, Form::kForm);
    return Worse(status, lossy_ == 0 && isSameText_ ? kDone : kLossy);
  }

 private:
  template <class Form>
  Outcome ReadInto(NarrowStringView text, typename Form::Records& records) {
    Messages messages;
    Outcome outcome;
    outcome.result = Form::Read(text, records, {});
    outcome.messages = messages.Take();
    return outcome;
  }

  template <class Form>
  void CheckRecord(typename Form::Records& one) {
    const WideString title = Form::TitleOf(one[0]);
    const NarrowString written = Form::Write(one);
    typename Form::Records back;
    ReadInto<Form>(written, back);
    const NarrowString again = back.GetCount() == 1 ? Form::Write(back) : NarrowString();
    const bool isSameText = again == written;
    isSameText_ = isSameText_ && isSameText;
    NamePicture(one[0], pictures_);
    const std::string before(dump_.Text(one[0]));
    std::string after = "{}";
    if (back.GetCount() == 1) {
      NamePicture(back[0], pictures_);
      after = dump_.Text(back[0]);
    }
    const std::vector<Difference> differences = DifferencesOf(before, after);
    if (differences.empty() && isSameText) return;
    ++lossy_;
    if (!asJson_) {
      Print(std::string(Form::kNoun) + " " + std::to_string(number_ + 1) +
            (title.empty() ? "" : ": " + ShownInOneLine(title)) + "\n");
    }
    for (const Difference& difference : differences) Tell(difference, Form::kForm);
    if (!isSameText && !asJson_) Print("  a second export of it differs from the first\n");
  }

  void Begin(TextForm form, bool rejected) {
    if (!asJson_) return;
    Print("{\"file\": " + JsonText(path_) + ", \"form\": \"" + std::string(FormName(form)) +
          "\", \"rejected\": " + (rejected ? "true" : "false") + ", \"differences\": [");
  }

  void Tell(const Difference& difference, TextForm form) {
    const std::string_view reason = ReasonOf(form, difference);
    if (!asJson_) {
      Print("  " + difference.field + ": " + InWords(difference.before) + " comes back as " +
            InWords(difference.after) + ": " +
            (reason.empty() ? "no reason is known" : std::string(reason)) + "\n");
      return;
    }
    Print(std::string(isFirst_ ? "" : ", ") + "{\"record\": " + std::to_string(number_) +
          ", \"field\": " + JsonText(difference.field) + ", \"before\": " +
          OrNull(difference.before) + ", \"after\": " + OrNull(difference.after) +
          ", \"reason\": " + (reason.empty() ? "null" : JsonText(reason)) + "}");
    isFirst_ = false;
  }

  void End(std::size_t count, std::string_view noun) {
    const auto total = static_cast<long long>(count);
    if (asJson_) {
      Print("], \"records\": " + std::to_string(total) + ", \"lossy\": " + std::to_string(lossy_) +
            ", \"same_text\": " + (isSameText_ ? "true" : "false") + "}\n");
      return;
    }
    if (total == 0) return;  // what is told of the text says enough
    Print(ShownName(path_) + ": " +
          (lossy_ != 0
               ? std::to_string(lossy_) + " of " + Counted(total, noun) + " come back otherwise"
           : total == 1 ? Counted(total, noun) + ", which comes back as it was"
                        : Counted(total, noun) + ", which come back as they were") +
          (isSameText_ ? "; a second export equals the first\n"
                       : "; a second export differs from the first\n"));
  }

  static std::string InWords(const std::string& json) { return json.empty() ? "nothing" : json; }
  static std::string OrNull(const std::string& json) { return json.empty() ? "null" : json; }

  std::string path_;
  bool asJson_;
  PrivatePictures pictures_;
  RecordJson dump_;
  std::size_t number_ = 0;
  long long lossy_ = 0;  // records
  bool isSameText_ = true;
  bool isFirst_ = true;
};

}  // namespace

int CheckFiles(const Options& options) {
  int status = kDone;
  for (const std::string& path : options.operands) {
    status = Worse(status, ForInput([&] {
                     ByteBuffer text;
                     ReadInput(path, ByteOrderMark::Kept, text);
                     Checker checker(path, options.listForm == ListForm::Json);
                     return FormToRead(options.form, text.view()) == TextForm::VCard
                                ? checker.Check<Cards>(text.view())
                                : checker.Check<Items>(text.view());
                   }));
  }
  return status;
}

}  // namespace pim::app
