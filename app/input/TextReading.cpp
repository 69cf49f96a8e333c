#include "app/input/TextReading.h"

#include "app/input/Interrupt.h"
#include "app/input/TextKind.h"
#include "app/output/Messages.h"
#include "app/output/Output.h"
#include "platform/Visible.h"

namespace pim::app {

Outcome ReadText(NarrowStringView text, const std::function<void(const CContact&)>& take) {
  Messages messages;
  TextResult result = ReadContacts(text, [&take](const CContact& contact) {
    CheckInterrupt();
    take(contact);
    return true;
  });
  return {std::move(result), messages.Take()};
}

Outcome ReadText(NarrowStringView text, const std::function<void(const CCalendar&)>& take) {
  Messages messages;
  TextResult result = ReadCalendars(text, [&take](const CCalendar& item) {
    CheckInterrupt();
    take(item);
    return true;
  });
  return {std::move(result), messages.Take()};
}

int TellOutcome(const std::string& path, const Outcome& outcome, NarrowStringView text,
                TextForm form) {
  const std::string file = ShownName(path);
  for (const std::u16string& message : outcome.messages)
    Complain(file + ": " + VisibleUtf8(message, LineFeeds::Kept));
  if (outcome.result.outcome == TextOutcome::Rejected) return kRejected;
  if (outcome.result.outcome == TextOutcome::NothingBegins) {
    const std::string hint = LooksLike(text, form);
    Complain(file + ": no record begins in it" + (hint.empty() ? "" : ": " + hint));
  }
  return kDone;
}

}  // namespace pim::app
