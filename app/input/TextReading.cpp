#include "app/input/TextReading.h"

#include "app/input/Interrupt.h"
#include "app/input/TextKind.h"
#include "app/output/Messages.h"
#include "app/output/Output.h"
#include "pim/platform/FileError.h"
#include "platform/CodePages.h"

namespace pim::app {

Outcome ReadText(NarrowStringView text, const std::function<void(CContact&)>& take) {
  Messages messages;
  TextResult result = ReadContacts(text, [&take](CContact& contact) {
    CheckInterrupt();
    take(contact);
    return true;
  });
  return {std::move(result), messages.Take()};
}

Outcome ReadText(NarrowStringView text, const std::function<void(CCalendar&)>& take) {
  Messages messages;
  TextResult result = ReadCalendars(text, [&take](CCalendar& item) {
    CheckInterrupt();
    take(item);
    return true;
  });
  return {std::move(result), messages.Take()};
}

int TellOutcome(const std::string& path, const Outcome& outcome, NarrowStringView text,
                TextForm form) {
  TellMessages(path, outcome, {});
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

// A rejection is shown last, and where it was is known.
void TellMessages(const std::string& path, const Outcome& outcome, std::string_view consequence) {
  for (const std::u16string& message : outcome.messages) {
    const bool isRejection =
        outcome.result.outcome == TextOutcome::Rejected && &message == &outcome.messages.back();
    std::string place = ShownName(path);
    if (isRejection) place += ":" + std::to_string(outcome.result.line);
    Complain(place + ": " + ShownInOneLine(message) +
             (isRejection ? std::string(consequence) : std::string()));
  }
}

void TellVersion(const std::string& path, NarrowStringView text, TextForm form) {
  const auto head = TextHeadOf(text);
  const NarrowStringView own = form == TextForm::VCard ? "2.1" : "1.0";
  if (!head || head->version.empty() || head->version == own) return;
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
