// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Losses.h"

#include "app/input/PictureStaging.h"
#include "app/output/Account.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"

namespace pim::app {
namespace {

// Reads a text for its account alone.
class LossReading {
 public:
  LossReading(NarrowStringView text, TextForm form)
      : text_(text), form_(form), pictures_(TemporaryFolder()) {}

  Outcome Read(const TakeEntry& entry) {
    if (form_ == TextForm::VCard) {
      return ReadText(
          text_, [this](const CContact& contact) { pictures_.Remove(contact.photo); }, entry);
    }
    return ReadText(
        text_, [](const CCalendar&) {}, entry);
  }
  // Only to see what comes of it.
  Outcome Try() {
    pictures_.LeaveOut(true);
    Outcome outcome = Read({});
    pictures_.LeaveOut(false);
    return outcome;
  }

 private:
  NarrowStringView text_;
  TextForm form_;
  PrivatePictures pictures_;
};

bool IsLoss(const AccountEntry& entry) {
  return entry.verdict == Verdict::Changed || entry.verdict == Verdict::Dropped;
}

// "contact 2: Ann Berg", ahead of the first loss of a record.
std::string Heading(const AccountEntry& entry, TextForm form) {
  std::string heading =
      (form == TextForm::VCard ? "contact " : "item ") + std::to_string(entry.record + 1);
  if (!entry.title.empty()) heading += ": " + ShownInOneLine(entry.title);
  return heading + "\n";
}

class LossPrinter {
 public:
  LossPrinter(const std::string& file, TextForm form) : file_(file), form_(form) {}

  void Take(const AccountEntry& entry) {
    if (!IsLoss(entry) && entry.verdict != Verdict::Rejected) return;
    if (entry.record != record_) Print(Heading(entry, form_));
    record_ = entry.record;
    Print(AccountLine(file_, entry));
  }

 private:
  std::string file_;
  TextForm form_;
  std::int64_t record_ = -1;
};

}  // namespace

int PrintLosses(const std::string& path, NarrowStringView text, TextForm form,
                const Options& options) {
  LossReading reading(text, form);
  AccountTotals totals;
  Outcome outcome;
  if (options.listForm == ListForm::Json) {
    const Outcome tried = reading.Try();
    Print(AccountJson::Head({}, form, tried.result.outcome == TextOutcome::Rejected));
    AccountJson json(form);
    outcome = reading.Read([&](const AccountEntry& entry) {
      totals.Add(entry);
      Print(json.Text(entry));
    });
    Print(AccountJson::Tail(totals));
  } else {
    const std::string file = ShownName(path);
    LossPrinter printer(file, form);
    outcome = reading.Read([&](const AccountEntry& entry) {
      totals.Add(entry);
      printer.Take(entry);
    });
    Print(file + ": " + TotalsText(totals) + "\n");
  }
  // The account tells the dates and rules.
  std::erase_if(outcome.notices, [](const TextNotice& notice) {
    return notice.event != TextEvent::EndsInsideRecord &&
           notice.event != TextEvent::EndsInsideValue;
  });
  const int status = TellOutcome(path, outcome, text, form);
  const bool isLossy = totals.changed + totals.dropped != 0;
  return Worse(status, options.strict && isLossy ? kLossy : kDone);
}

}  // namespace pim::app
