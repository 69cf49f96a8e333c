// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/TextReading.h"

#include <algorithm>
#include <memory>

#include "manager/Observe.h"
#include "pim/platform/FileError.h"
#include "platform/Files.h"
#include "support/TextFiles.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

// How each of the two forms is read.
struct ContactForm {
  using Records = CContacts;
  using Record = CContact;
  using Reader = VCardReader;
  static constexpr ByteOrderMark kMark = ByteOrderMark::Skipped;
  static void ShowFailure() { ShowVCardFailure(); }
};
struct CalendarForm {
  using Records = CCalendars;
  using Record = CCalendar;
  using Reader = VCalendarReader;
  static constexpr ByteOrderMark kMark = ByteOrderMark::Kept;
  static void ShowFailure() { ShowVCalendarFailure(); }
};

// Ends a reading from within a call of the reader's.
struct NoMoreWanted {};

// One reading, whose records go one by one to take(std::unique_ptr<Record>), which gives false when
// no more are wanted. The record being read is the only one that it holds.
template <class Form, class Take>
class Reading {
 public:
  Reading(Take take, const TextObserver& observer) : take_(std::move(take)), reader_(open_) {
    Observe(reader_, observer);
    reader_.OnBegin([this] { HandOver(); });
  }

  TextResult Read(NarrowStringView text) {
    try {
      ReadPieces(Form::kMark == ByteOrderMark::Skipped ? WithoutMark(text) : text);
      HandOver();
    } catch (NoMoreWanted) {
      result_.outcome = TextOutcome::Stopped;
    }
    if (result_.outcome == TextOutcome::Read && result_.records == 0)
      result_.outcome = TextOutcome::NothingBegins;
    return result_;
  }

 private:
  // The tokeniser counts a piece's bytes in 31 bits.
  void ReadPieces(NarrowStringView text) {
    constexpr std::size_t kPieceBytes = std::size_t{1} << 30;
    std::size_t done = 0;
    do {
      const NarrowStringView piece = text.substr(done, kPieceBytes);
      if (!reader_.Read(piece, done + piece.size() == text.size())) {
        Form::ShowFailure();
        result_.outcome = TextOutcome::Rejected;
        result_.line = 1 + std::ranges::count(text.substr(0, done + reader_.rejectedAt()), '\n') -
                       std::int64_t{reader_.faultLinesBack()};
        result_.fault = reader_.fault();
        reader_.EndAccount(text.substr(done + piece.size()));
        return;
      }
      done += piece.size();
    } while (done != text.size());
  }

  void HandOver() {
    if (open_.GetCount() == 0) return;
    std::unique_ptr<typename Form::Record> record = open_.TakeLast();
    record->tag = kUnsavedTag;
    ++result_.records;
    if (!take_(std::move(record))) throw NoMoreWanted();
  }

  Take take_;
  typename Form::Records open_;
  typename Form::Reader reader_;
  TextResult result_;
};

template <class Form>
TextResult ReadText(NarrowStringView text, typename Form::Records& records,
                    const TextObserver& observer) {
  const auto keep = [&records](std::unique_ptr<typename Form::Record> record) {
    records.Add(std::move(record));
    return true;
  };
  return Reading<Form, decltype(keep)>(keep, observer).Read(text);
}

template <class Form>
TextResult ReadText(NarrowStringView text, const std::function<bool(typename Form::Record&)>& take,
                    const TextObserver& observer) {
  const auto show = [&take](std::unique_ptr<typename Form::Record> record) {
    return take(*record);
  };
  return Reading<Form, decltype(show)>(show, observer).Read(text);
}

template <class Form, class Target>
TextResult ReadFile(WideStringView path, Target&& target, const TextObserver& observer) {
  InputFile file(NativePath(path));
  std::string problem = file.Problem();
  if (file.IsOpen()) {
    ByteBuffer text;
    try {
      ReadTextFile(file, ByteOrderMark::Kept, text);
    } catch (const FileError& failure) {
      problem = failure.reason();
    }
    if (problem.empty()) return ReadText<Form>(text.view(), target, observer);
  }
  return {.outcome = TextOutcome::Unreadable, .problem = std::move(problem)};
}

}  // namespace

std::span<const NarrowStringView> RecordFields(TextForm form) {
  if (form == TextForm::VCard) return kContactFields;
  return kItemFields;
}

TextResult ReadContacts(NarrowStringView text, CContacts& contacts, const TextObserver& observer) {
  return ReadText<ContactForm>(text, contacts, observer);
}
TextResult ReadContacts(NarrowStringView text, const TakeContact& take,
                        const TextObserver& observer) {
  return ReadText<ContactForm>(text, take, observer);
}
TextResult ReadCalendars(NarrowStringView text, CCalendars& items, const TextObserver& observer) {
  return ReadText<CalendarForm>(text, items, observer);
}
TextResult ReadCalendars(NarrowStringView text, const TakeCalendar& take,
                         const TextObserver& observer) {
  return ReadText<CalendarForm>(text, take, observer);
}

TextResult ReadContactFile(WideStringView path, CContacts& contacts, const TextObserver& observer) {
  return ReadFile<ContactForm>(path, contacts, observer);
}
TextResult ReadContactFile(WideStringView path, const TakeContact& take,
                           const TextObserver& observer) {
  return ReadFile<ContactForm>(path, take, observer);
}
TextResult ReadCalendarFile(WideStringView path, CCalendars& items, const TextObserver& observer) {
  return ReadFile<CalendarForm>(path, items, observer);
}
TextResult ReadCalendarFile(WideStringView path, const TakeCalendar& take,
                            const TextObserver& observer) {
  return ReadFile<CalendarForm>(path, take, observer);
}

}  // namespace pim
