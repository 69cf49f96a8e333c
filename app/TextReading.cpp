#include "app/TextReading.h"

#include "app/Interrupt.h"
#include "app/Output.h"
#include "app/Session.h"
#include "app/TextKind.h"
#include "pim/support/ParseFailure.h"
#include "platform/Visible.h"
#include "support/TextFiles.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim::app {
namespace {

// Small enough that an interrupt is seen soon.
constexpr std::size_t kPieceBytes = std::size_t{1} << 20;

// `raise` tells the reader's failure.
template <class Reader, class Records>
Outcome ReadText(NarrowStringView text, Records& records, void (*raise)()) {
  Messages messages;
  Reader reader(records);
  Outcome outcome;
  try {
    do {
      CheckInterrupt();
      const NarrowStringView piece = text.substr(0, kPieceBytes);
      text.remove_prefix(piece.size());
      if (!reader.Read(piece, text.empty())) raise();
    } while (!text.empty());
  } catch (ParseFailure) {
    outcome.rejected = true;
  }
  for (std::int32_t i = 0; i < records.GetCount(); ++i) records[i].tag = kUnsavedTag;
  outcome.messages = messages.Take();
  return outcome;
}

}  // namespace

Outcome ReadContacts(NarrowStringView text, CContacts& contacts) {
  return ReadText<VCardReader>(text, contacts, RaiseVCardFailure);
}

Outcome ReadItems(NarrowStringView text, CCalendars& items) {
  return ReadText<VCalendarReader>(text, items, RaiseVCalendarFailure);
}

NarrowStringView WithoutMark(NarrowStringView text) {
  const bool marked = text.size() > kUtf8Mark.size() && text.starts_with(kUtf8Mark);
  return text.substr(marked ? kUtf8Mark.size() : 0);
}

int TellOutcome(const std::string& path, const Outcome& outcome, std::int32_t count,
                NarrowStringView text, TextForm form) {
  const std::string file = ShownName(path);
  for (const std::u16string& message : outcome.messages)
    Complain(file + ": " + VisibleUtf8(message, LineFeeds::Kept));
  if (outcome.rejected) return kRejected;
  if (count == 0) {
    const std::string hint = LooksLike(text, form);
    Complain(file + ": no record begins in it" + (hint.empty() ? "" : ": " + hint));
  }
  return kDone;
}

}  // namespace pim::app
