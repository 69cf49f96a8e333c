// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Show.h"

#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "app/commands/Kinds.h"
#include "app/commands/StoredRecords.h"
#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextKind.h"
#include "app/input/TextReading.h"
#include "app/labels/Labels.h"
#include "app/output/LocalTimes.h"
#include "app/output/Messages.h"
#include "app/output/Output.h"
#include "pim/manager/TextWriting.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/support/ParseFailure.h"
#include "platform/CodePages.h"
#include "platform/Visible.h"
#include "support/ByteOrderMark.h"
#include "support/TextCodec.h"

namespace pim::app {
namespace {

constexpr NarrowStringView kLittleEndianMark = "\xFF\xFE";
constexpr NarrowStringView kBigEndianMark = "\xFE\xFF";

WideString FromUtf16(NarrowStringView bytes, bool littleEndian) {
  WideString text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<char16_t>(littleEndian ? second << 8 | first : first << 8 | second);
  }
  return text;
}

// By the byte order mark, else by the default code page (--code-page).
WideString Decode(NarrowStringView bytes) {
  if (bytes.starts_with(kUtf8Mark)) return WideFromUtf8(bytes.substr(kUtf8Mark.size()));
  if (bytes.starts_with(kLittleEndianMark)) return FromUtf16(bytes.substr(2), true);
  if (bytes.starts_with(kBigEndianMark)) return FromUtf16(bytes.substr(2), false);
  WideString text;
  WidenText(bytes, text);
  return text;
}

void Feed(VObjectMgr& manager, std::string_view labels) {
  for (auto& [key, text] : ReadLabels(labels)) manager.MakeMapString(key, text);
}

// The user's own words stand ahead: the first text of a key is the one that stays.
void FeedLabels(VObjectMgr& manager, const Options& options) {
  if (options.labels) {
    ByteBuffer own;
    ReadInput(*options.labels, ByteOrderMark::Skipped, own);
    std::string bad;
    ReadLabels(own.view(), &bad);
    if (!bad.empty()) {
      throw Failure(ShownName(*options.labels) +
                    ": not \"key = text\": " + VisibleUtf8(WideFromUtf8(bad)));
    }
    Feed(manager, own.view());
  }
  Feed(manager, LabelsOf(options.language).text);
}

// On a terminal, what clocks here show at the times of the preview, which are UTC.
void TellLocalTimes(const CCalendar& item, const LocalTimes& times) {
  if (isatty(STDOUT_FILENO) != 1 || item.allday == 1) return;
  const bool isTodo = item.calendar_type == static_cast<std::uint8_t>(CalendarType::Todo);
  const std::string local =
      isTodo ? times.Moment(item.due) : times.Span(item.start_time, item.end_time);
  if (!local.empty()) Print("times are UTC; in " + times.ZoneName() + " " + local + "\n");
}

// A lone VEVENT or VMEMO has no layout of its own: it shows as one in a calendar does.
WideString Render(const VObjectMgr& manager, TextObject object, WideString text) {
  switch (object) {
    case TextObject::Contact:
      return manager.VCardToString(std::move(text));
    case TextObject::Todo:
      return manager.VTodoToString(std::move(text));
    case TextObject::Calendar:
    case TextObject::Event:
    case TextObject::Memo:
      break;
  }
  return manager.VCalendarToString(std::move(text));
}

// By what the readers see begin. Empty for a text in which nothing begins.
WideString Render(const VObjectMgr& manager, WideString text) {
  NarrowString narrow;
  NarrowText(text, narrow);
  const auto head = TextHeadOf(narrow);
  if (!head) return {};
  return Render(manager, head->object, std::move(text));
}

// A record must not steer a terminal; a file or a pipe gets the text as it is.
void PrintPreview(const WideString& preview) {
  Print(isatty(STDOUT_FILENO) == 1 ? VisibleUtf8(preview, LineFeeds::Kept) : Utf8FromWide(preview));
}

// Previews of several records, with a blank line between.
class Previews {
 public:
  explicit Previews(const Options& options) { FeedLabels(manager_, options); }

  void Print(const CContact& contact) { PrintText(WriteContact(contact)); }
  // Takes the item's content.
  void Print(CCalendar& item) {
    CCalendars items;
    items.AddNew() = std::move(item);
    PrintText(WriteCalendars(items));
    TellLocalTimes(items[0], times_);
  }
  // Of a whole text, as its first vObject shows.
  WideString Of(NarrowStringView bytes) { return Render(manager_, Decode(bytes)); }
  // Of one vObject as it shows where it stands, its text being in the default code page.
  WideString OfPart(NarrowStringView bytes, const TextPart& part) {
    WideString text;
    WidenText(bytes, text);
    return Render(manager_, part.isFramed ? TextObject::Calendar : part.object, std::move(text));
  }
  void PrintDone(const WideString& preview) {
    if (!isFirst_) app::Print("\n");
    isFirst_ = false;
    PrintPreview(preview);
  }

 private:
  void PrintText(const NarrowString& text) {
    WideString wide;  // a telephone number may be in the default code page
    WidenText(text, wide);
    PrintDone(Render(manager_, std::move(wide)));
  }

  VObjectMgr manager_;
  LocalTimes times_;
  bool isFirst_ = true;
};

void TellAll(const std::string& path, Messages& messages) {
  for (const std::u16string& message : messages.Take())
    Complain(ShownName(path) + ": " + ShownInOneLine(message));
}

// The local times of the item that the preview shows.
void TellLocalTimesOf(NarrowStringView text) {
  const auto head = TextHeadOf(text);
  if (isatty(STDOUT_FILENO) != 1 || !head || FormOf(head->object) != TextForm::VCalendar) return;
  const LocalTimes times;
  static_cast<void>(ReadCalendars(text, [&times](const CCalendar& item) {
    TellLocalTimes(item, times);
    return false;
  }));
}

// With the line, which only reading the bytes themselves tells.
void TellRejection(const std::string& path, NarrowStringView text, Messages& messages) {
  const Outcome outcome = FormToRead({}, text) == TextForm::VCard
                              ? ReadText(text, [](const CContact&) {})
                              : ReadText(text, [](const CCalendar&) {});
  if (outcome.result.outcome == TextOutcome::Rejected) return TellMessages(path, outcome, text, {});
  TellAll(path, messages);
}

int ShowFirst(const std::string& path, NarrowStringView text, Previews& previews) {
  Messages messages;
  WideString preview;
  try {
    preview = previews.Of(text);
  } catch (ParseFailure) {
    TellRejection(path, text, messages);
    return kRejected;
  }
  TellAll(path, messages);
  if (preview.empty()) {
    TellNothingBegins(path, "record", text, TextForm::VCard);
    return kRejected;
  }
  previews.PrintDone(preview);
  TellLocalTimesOf(text);
  TellVersion(path, text, FormToRead({}, text));
  return kDone;
}

// What reading the whole text tells, in each form that stands in it, or of one in which nothing
// begins.
int TellReading(const std::string& path, NarrowStringView text,
                const std::vector<TextPart>& parts) {
  int status = kDone;
  for (const TextForm form : {TextForm::VCard, TextForm::VCalendar}) {
    const bool isThere = std::ranges::any_of(parts, [form](const TextPart& part) {
      return FormOf(part.object) == form && part.object != TextObject::Calendar;
    });
    if (!isThere && (!parts.empty() || form != TextForm::VCard)) continue;
    const Outcome outcome = form == TextForm::VCard ? ReadText(text, [](const CContact&) {})
                                                    : ReadText(text, [](const CCalendar&) {});
    status = TellOutcome(path, outcome, text, form);
    if (status != kDone) break;  // the other form is rejected there too
  }
  return status;
}

// Each vObject as it shows alone.
int ShowAll(const std::string& path, NarrowStringView bytes, Previews& previews) {
  NarrowString text;
  NarrowText(Decode(bytes), text);
  const std::vector<TextPart> parts = PartsOf(text);
  int status = kDone;
  for (const TextPart& part : parts) {
    CheckInterrupt();
    const NarrowStringView own = NarrowStringView(text).substr(part.offset, part.size);
    const Messages unheard;  // of a rule; it is told below, with its line
    const WideString preview = previews.OfPart(own, part);
    if (preview.empty()) {
      TellNothingBegins(path, "record", own, TextForm::VCard);
      status = kRejected;
      continue;
    }
    previews.PrintDone(preview);
    TellLocalTimesOf(own);
  }
  return Worse(status, TellReading(path, text, parts));
}

// Tells of those that aren't there.
template <class Record>
int PrintStored(StoredRecords<Record>& records, const Options& options) {
  int status = kDone;
  Previews previews(options);
  for (const std::int32_t key : KeysOf(options.operands)) {
    bool isThere = false;
    records.VisitKeys({&key, 1}, [&](Record& record) {
      isThere = true;
      previews.Print(record);
    });
    if (isThere) continue;
    TellNoSuchKey(options.kind, key);
    status = kFailed;
  }
  return status;
}

}  // namespace

int ShowFiles(const Options& options) {
  Previews previews(options);
  const PrivatePictures pictures(TemporaryFolder());
  int status = kDone;
  for (const std::string& path : options.operands) {
    status = Worse(status, ForInput([&] {
                     ByteBuffer bytes;
                     ReadInput(path, ByteOrderMark::Kept, bytes);
                     return options.all ? ShowAll(path, bytes.view(), previews)
                                        : ShowFirst(path, bytes.view(), previews);
                   }));
  }
  return status;
}

int ShowRecords(const Options& options) {
  KeysOf(options.operands);  // wrong ones are told ahead of everything else
  Session session(options, StoreAccess::ReadOnly);
  session.store().MakePictures(false);
  PrivatePictures pictures(TemporaryFolder());
  pictures.LeaveOut(true);  // none is shown
  if (options.kind == RecordKind::Contacts) {
    StoredContacts contacts(session, {});
    return PrintStored(contacts, options);
  }
  StoredItems items(session, CalendarKindOf(options.kind), {});
  return PrintStored(items, options);
}

}  // namespace pim::app
