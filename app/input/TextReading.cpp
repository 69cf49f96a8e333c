// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/TextReading.h"

#include <algorithm>

#include "app/input/Interrupt.h"
#include "app/input/TextKind.h"
#include "app/output/Messages.h"
#include "app/output/Output.h"
#include "pim/platform/FileError.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

std::string NoticeText(const TextNotice& notice) {
  constexpr std::size_t kLongestValue = 60;
  const std::string name =
      notice.record.empty() ? "" : " of '" + ShownInOneLine(notice.record) + "'";
  const std::string value =
      Shown(WideFromUtf8(NarrowStringView(notice.value).substr(0, kLongestValue)));
  switch (notice.event) {
    case TextEvent::DateNotUnderstood:
      return notice.property + name + ": not a date that is understood; the rest stays: " + value;
    case TextEvent::RuleNotUnderstood:
      return notice.property + name +
             ": not a rule that is understood; the item stays, without it: " + value;
    case TextEvent::RecordsJoined:
      return "texts are joined without a line end: " + value +
             "; what begins in this line isn't seen as a record of its own";
    case TextEvent::EndsInsideValue:
      return "the text ends inside a picture" + name + "; it may have been cut";
    case TextEvent::EndsInsideRecord:
      return "the text ends inside a record; it may have been cut" +
             (name.empty() ? "" : ": no END" + name);
  }
  return {};
}

// The head of a physical line.
std::string HeadOfLine(NarrowStringView text, std::int64_t line) {
  for (; line > 1; --line) text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  text = text.substr(0, text.find('\n'));
  if (text.ends_with('\r')) text.remove_suffix(1);
  return ShownHead(text);
}

// Calls read(take, observer) so that it can be interrupted and all that is told is kept.
template <class Guarded, class Read, class Take>
Outcome ReadWith(Read read, const Take& take, const TakeEntry& entry) {
  Messages messages;
  Outcome outcome;
  const Guarded guarded = [&take](auto& record) {
    CheckInterrupt();
    take(record);
    return true;
  };
  const TextObserver observer{
      [&outcome](const TextNotice& notice) { outcome.notices.push_back(notice); }, entry};
  outcome.result = read(guarded, observer);
  outcome.messages = messages.Take();
  return outcome;
}

}  // namespace

Outcome ReadText(NarrowStringView text, const std::function<void(CContact&)>& take,
                 const TakeEntry& entry) {
  return ReadWith<TakeContact>(
      [text](const auto& guarded, const auto& observer) {
        return ReadContacts(text, guarded, observer);
      },
      take, entry);
}

Outcome ReadText(NarrowStringView text, const std::function<void(CCalendar&)>& take,
                 const TakeEntry& entry) {
  return ReadWith<TakeCalendar>(
      [text](const auto& guarded, const auto& observer) {
        return ReadCalendars(text, guarded, observer);
      },
      take, entry);
}

int TellOutcome(const std::string& path, const Outcome& outcome, NarrowStringView text,
                TextForm form) {
  TellMessages(path, outcome, text, {});
  switch (outcome.result.outcome) {
    case TextOutcome::Rejected:
      return kRejected;
    case TextOutcome::NothingBegins:
      TellNothingBegins(path, "record", text, form);
      return kRejected;
    default:
      TellVersion(path, text, form);
      return kDone;
  }
}

// A message that isn't the rejection, which comes last, says of a rule what a notice says better.
void TellMessages(const std::string& path, const Outcome& outcome, NarrowStringView text,
                  std::string_view consequence, std::int64_t linesAhead) {
  const std::string file = ShownName(path) + ":";
  for (const TextNotice& notice : outcome.notices)
    Complain(file + std::to_string(linesAhead + notice.line) + ": " + NoticeText(notice));
  if (outcome.result.outcome != TextOutcome::Rejected || outcome.messages.empty()) return;
  Complain(file + std::to_string(linesAhead + outcome.result.line) + ": " +
           ShownInOneLine(outcome.messages.back()) + std::string(consequence));
  Warn("    " + HeadOfLine(text, outcome.result.line) + "\n");
}

void TellVersion(const std::string& path, NarrowStringView text, TextForm form) {
  const auto head = TextHeadOf(text);
  const NarrowStringView own = form == TextForm::VCard ? "2.1" : "1.0";
  if (!head || FormOf(head->object) != form || head->version.empty() || head->version == own)
    return;
  const std::string name = form == TextForm::VCard  ? "vCard "
                           : head->version == "2.0" ? "iCalendar "
                                                    : "vCalendar ";
  Complain(ShownName(path) + ": this is " + name + Shown(WideFromUtf8(head->version)) +
           ", read as far as it is like " + (form == TextForm::VCard ? "vCard " : "vCalendar ") +
           std::string(own));
}

void TellNothingBegins(const std::string& path, std::string_view noun, NarrowStringView text,
                       TextForm form) {
  const std::string hint = LooksLike(text, form);
  Complain(ShownName(path) + ": no " + std::string(noun) + " begins in it" +
           (hint.empty() ? "" : ": " + hint));
}

int ForInput(const std::function<int()>& work) {
  try {
    return work();
  } catch (const OutputFailure&) {
    throw;
  } catch (const Failure& failure) {
    CheckInterrupt();
    Complain(failure.what());
  } catch (const FileError& failure) {
    CheckInterrupt();
    Complain(failure.what());
  }
  return kFailed;
}

}  // namespace pim::app
