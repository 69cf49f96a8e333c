// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "pim/records/Contacts.h"
#include "stream/TextWatcher.h"
#include "stream/VObjectParser.h"
#include "support/ByteBuffer.h"
#include "vcard/VCardAccount.h"

namespace pim {

// The tokeniser's user data during one reading: the property whose value comes next.
struct VCardReadContext {
  CContacts* contacts = nullptr;    // not owned; the card being read is the last one
  std::int32_t propertyId = 0;      // VCardPropertyId, 0 outside a property
  std::int32_t charset = 0;         // CharsetCode
  std::int32_t encoding = 0;        // EncodingCode
  std::int32_t mediaType = 0;       // MediaCode
  std::uint32_t typeFlags = 0;      // a mask or a code, by the property
  WideString text;                  // the value's text; one piece of memory for the whole reading
  bool isEnd = false;               // the property is an END; told only for one of those below
  TextWatcher* watcher = nullptr;   // for a host that watches; not owned
  VCardAccount* account = nullptr;  // for a host that wants one; not owned
  std::function<void()> onBegin;    // called ahead of each card, the one before being complete
};

// Reads one vCard text in pieces into a collection, whose last card stays open between them.
class VCardReader {
 public:
  // `contacts` must outlive the reader. Throws std::bad_alloc when there is no parser.
  explicit VCardReader(CContacts& contacts);
  VCardReader(const VCardReader&) = delete;
  VCardReader& operator=(const VCardReader&) = delete;
  ~VCardReader() = default;

  // Has `begin` called ahead of each card that begins, when the one before is complete. What it
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
  VCardReadContext context_;
  std::unique_ptr<VObjectParser> parser_;
  std::optional<TextWatcher> watcher_;
  std::optional<VCardAccount> account_;
};

// Shows the message of a rejected vCard text; the second one throws kParseFailure behind that.
void ShowVCardFailure();
[[noreturn]] void RaiseVCardFailure();

// Reads a whole vCard text of any number of cards into `contacts`, which may hold some already, and
// gives all of them the key in `tag` of `data`. For a rejected text it shows a message and throws
// kParseFailure; what was read until then stays in `contacts`.
void ParseVCard(CContacts& contacts, const VObjectBuffer& data);

// The tokeniser's handlers; `context` is a VCardReadContext.
void OnVCardProperty(void* context, const char* name, const ParserParam* params);
void OnVCardData(void* context, const char* bytes, std::int32_t length);

}  // namespace pim
