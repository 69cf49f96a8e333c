// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "pim/records/Calendar.h"
#include "stream/TextWatcher.h"
#include "stream/VObjectParser.h"
#include "support/ByteBuffer.h"
#include "vcalendar/VCalendarAccount.h"

namespace pim {

// The tokeniser's user data during one reading: the property whose value comes next.
struct VCalReadContext {
  CCalendars* calendars = nullptr;  // not owned; the item being read is the last one
  std::int32_t propertyId = 0;      // VCalPropertyId, 0 outside a property
  std::int32_t charset = 0;         // CharsetCode
  std::int32_t encoding = 0;        // EncodingCode
  std::uint32_t alarmFormat = 0;    // of an AALARM: ReminderType and ReminderValueType bits
  WideString text;                  // the value's text; one piece of memory for the whole reading
  bool isEnd = false;               // the property is an END; told only for one of those below
  TextWatcher* watcher = nullptr;   // for a host that watches; not owned
  VCalendarAccount* account = nullptr;  // for a host that wants one; not owned
  std::function<void()> onBegin;        // called ahead of each item, the one before being complete
};

// Reads one vCalendar text in pieces into a collection, whose last item stays open between them.
// A thread may read only one text at a time: all its readers share AllDayPending.
class VCalendarReader {
 public:
  // `calendars` must outlive the reader. Throws std::bad_alloc when there is no parser.
  explicit VCalendarReader(CCalendars& calendars);
  VCalendarReader(const VCalendarReader&) = delete;
  VCalendarReader& operator=(const VCalendarReader&) = delete;
  ~VCalendarReader() = default;

  // Has `begin` called ahead of each item that begins, when the one before is complete. What it
  // throws ends the reading.
  void OnBegin(std::function<void()> begin) { context_.onBegin = std::move(begin); }

  // Has a host told of what happens.
  void Watch(WatchText watch);

  // Gives a host the account of the text, entry by entry.
  void Account(TakeEntry take);
  // Ends the account of a text that was rejected; `rest` stands behind the last piece.
  void EndAccount(NarrowStringView rest) {
    if (account_) account_->EndRejected(rest);
  }

  // Takes the next piece; `final` ends the text. False when it is rejected.
  [[nodiscard]] bool Read(NarrowStringView piece, bool final);
  // Where in the piece that was rejected: the start of a part of a line, and how many lines ahead
  // of that one the byte stands that is no good.
  std::size_t rejectedAt() const { return parser_->rejectedRun; }
  std::uint32_t faultLinesBack() const { return parser_->faultLinesBack; }
  TextFault fault() const { return parser_->fault; }

 private:
  VCalReadContext context_;
  std::unique_ptr<VObjectParser> parser_;
  std::optional<TextWatcher> watcher_;
  std::optional<VCalendarAccount> account_;
};

// Shows the message of a rejected vCalendar text; the second one throws kParseFailure behind that.
void ShowVCalendarFailure();
[[noreturn]] void RaiseVCalendarFailure();

// Reads a whole vCalendar text of any number of items, of all kinds, into `calendars`, which may
// hold some already, and gives all of them the key in `tag` of `data`. For a rejected text it shows
// a message and throws kParseFailure; what was read until then stays in `calendars`. A bad repeat
// rule shows a message of its own and costs its item that rule alone.
void ParseVCalendar(CCalendars& calendars, const VObjectBuffer& data);

// The tokeniser's handlers; `context` is a VCalReadContext.
void OnVCalProperty(void* context, const char* name, const ParserParam* params);
void OnVCalData(void* context, const char* bytes, std::int32_t length);

}  // namespace pim
