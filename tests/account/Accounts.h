// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/output/Account.h"
#include "app/output/RecordDump.h"
#include "pim/platform/Host.h"
#include "pim/stream/TextRejects.h"
#include "pim/support/FileNames.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
#include "support/ByteOrderMark.h"
#include "support/CallerIdPictures.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim::testing {

struct KeptEntry : AccountEntry {
  std::string text;  // as JSON
};

// All that came of a text.
struct Reading {
  std::vector<std::string> records;  // as JSON; a picture's name is what is in it
  std::vector<KeptEntry> entries;
  AccountTotals totals;
};

inline void NamePicture(CContact& contact) {
  if (contact.photo.empty()) return;
  const WideString name = contact.photo.str();
  const std::string bytes = ReadCallerIdPicture(name);
  std::filesystem::remove(NativePath(GetCallerIdPath() + u"\\" + name));
  contact.photo = name.substr(std::min(name.rfind(u'.'), name.size())) + WideFromUtf8(bytes);
}
inline void NamePicture(CCalendar&) {}

// Reads a text as a host would that wants its account, in pieces of a size, or as a whole.
template <class Reader, class Records>
Reading ReadAs(TextForm form, std::string_view text, std::size_t pieceSize, bool withAccount) {
  Reading reading;
  Records records;
  Reader reader(records);
  app::AccountJson json(form);
  if (withAccount) {
    reader.Account([&](const AccountEntry& entry) {
      reading.entries.push_back({entry, std::string(json.Text(entry))});
      reading.totals.Add(entry);
    });
  }
  for (bool more = true; more;) {
    const std::string_view piece = text.substr(0, pieceSize);
    text.remove_prefix(piece.size());
    more = reader.Read(piece, text.empty());
    if (!more) reader.EndAccount(text);
    more = more && !text.empty();
  }
  app::RecordJson dump;
  for (std::int32_t i = 0; i < records.GetCount(); ++i) {
    NamePicture(records[i]);
    reading.records.emplace_back(dump.Text(records[i]));
  }
  return reading;
}

inline Reading Read(TextForm form, std::string_view text,
                    std::size_t pieceSize = std::string_view::npos, bool withAccount = true) {
  if (form == TextForm::VCalendar)
    return ReadAs<VCalendarReader, CCalendars>(form, text, pieceSize, withAccount);
  return ReadAs<VCardReader, CContacts>(form, WithoutMark(text), pieceSize, withAccount);
}

inline std::int64_t LinesOf(std::string_view text) {
  return std::ranges::count(text, '\n') + (text.empty() || text.ends_with('\n') ? 0 : 1);
}

// The text without some of its lines, from 1.
inline std::string WithoutLines(std::string_view text, std::int64_t first, std::int64_t last) {
  std::string rest;
  for (std::int64_t line = 1; !text.empty(); ++line) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    if (line < first || line > last) rest += text.substr(0, size);
    text.remove_prefix(size);
  }
  return rest;
}

// What is wrong with the account of a text by itself; empty for nothing.
inline std::string FaultOf(const Reading& reading, std::string_view text) {
  std::int64_t last = 0;
  for (const KeptEntry& entry : reading.entries) {
    if (entry.first != last + 1 || entry.last < entry.first) return "gap at " + entry.text;
    last = entry.last;
  }
  const AccountTotals& totals = reading.totals;
  if (last != LinesOf(text) || totals.lines != last) return "not all lines";
  if (totals.frame + totals.kept + totals.changed + totals.dropped + totals.unread != last)
    return "totals";
  return {};
}

// What is wrong with an entry, by the text without its lines; empty for nothing.
inline std::string FaultOf(const Reading& reading, const KeptEntry& entry, TextForm form,
                           std::string_view text) {
  const bool isHeld = entry.verdict == Verdict::Kept || entry.verdict == Verdict::Changed;
  if (!isHeld && entry.verdict != Verdict::Dropped) return {};
  const Reading without =
      Read(form, WithoutLines(text, entry.first, entry.last), text.size(), false);
  const bool isSame = without.records == reading.records;
  if (isSame == (!isHeld || entry.same)) return {};
  return (isSame ? "the same without " : "others without ") + entry.text;
}

}  // namespace pim::testing
