// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/stream/TextRejects.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "stream/ObjectWords.h"
#include "stream/TextWatcher.h"
#include "stream/VObjectParser.h"

namespace pim {
namespace {

// Finds what is rejected with one parser after the other: each begins behind the line that the one
// before has rejected.
class RejectScan {
 public:
  RejectScan(NarrowStringView text, TextForm form) : text_(text), form_(form) {}

  RejectedParts Run() {
    while (at_ < text_.size()) ScanOn();
    EndPart(text_.size());
    return std::move(found_);
  }

 private:
  enum class Property : std::uint8_t { Begin, End, Version, Other };

  void ScanOn() {
    parser_ = VObjectParser::Create();
    if (parser_ == nullptr) throw std::bad_alloc();
    parser_->SetPropertyHandler([](void* user, const char* name, const ParserParam*) {
      static_cast<RejectScan*>(user)->TakeName(name);
    });
    parser_->SetDataHandler([](void* user, const char* bytes, std::int32_t length) {
      static_cast<RejectScan*>(user)->TakeValue(bytes, length);
    });
    parser_->SetUserData(this);
    constexpr std::size_t kPiece = std::size_t{1} << 30;  // the parser counts in 31 bits
    for (bool more = true; more;) {
      const NarrowStringView piece = text_.substr(at_, kPiece);
      const bool final = at_ + piece.size() == text_.size();
      if (!parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final))
        return Reject();
      lineStart_ = LineStart();
      at_ += piece.size();
      more = !final;
    }
  }

  void TakeName(const char* name) {
    name_ = name;
    hasName_ = true;
    property_ = EqualsIgnoringCase(name_, kBeginWord)     ? Property::Begin
                : EqualsIgnoringCase(name_, kEndWord)     ? Property::End
                : EqualsIgnoringCase(name_, kVersionWord) ? Property::Version
                                                          : Property::Other;
  }

  void TakeValue(const char* bytes, std::int32_t length) {
    if (bytes == nullptr) {
      hasName_ = false;
      return;
    }
    const NarrowStringView value(bytes, static_cast<std::size_t>(length));
    if (property_ == Property::Begin) {
      TakeBegin(value);
    } else if (property_ == Property::End) {
      TakeEnd(value);
    } else if (property_ == Property::Other && isRejected_ && partEnd_ != 0) {
      partEnd_ = BehindLine();  // it would land on the record
    }
  }

  void TakeBegin(NarrowStringView value) {
    const bool isFrame =
        form_ == TextForm::VCalendar && EqualsIgnoringCase(value, kCalendarObject.text);
    const auto object = ObjectOf(value);
    if (!isFrame && !object) return;
    EndPart(LineStart());
    if (!object) return;
    ++found_.records;
    object_ = object;
    recordStart_ = LineStart();
    isOpen_ = true;
  }

  void TakeEnd(NarrowStringView value) {
    const NarrowStringView word = WordOfEnd(value).word;
    if (ObjectOf(word)) {
      isOpen_ = false;
      if (isRejected_) partEnd_ = BehindLine();
    } else if (form_ == TextForm::VCalendar && IsStartOf(kCalendarObject.text, word)) {
      EndPart(LineStart());
      isOpen_ = false;
    }
  }

  std::optional<TextObject> ObjectOf(NarrowStringView word) const {
    if (form_ == TextForm::VCard) {
      if (IsStartOf(kContactObject.text, word)) return TextObject::Contact;
    } else if (const auto code = CodeOfStart(kItemObjects, word)) {
      return static_cast<TextObject>(*code);
    }
    return std::nullopt;
  }

  void Reject() {
    const std::size_t run = at_ + parser_->rejectedRun;
    const std::size_t start = LineStart();
    const std::size_t next = BehindFolds(run);
    if (!isRejected_) {
      RejectedPart part;
      part.offset = isOpen_ ? recordStart_ : start;
      part.lineOffset = start;
      part.fault = parser_->fault;
      part.property = hasName_ ? name_ : parser_->rejectedName;
      if (isOpen_) part.object = object_;
      part.firstLine = LineAt(part.offset);
      part.line = LineAt(run) - std::int64_t{parser_->faultLinesBack};
      found_.parts.push_back(std::move(part));
    }
    isRejected_ = true;
    if (isOpen_) {
      partEnd_ = 0;  // as far as it goes
    } else {
      partEnd_ = next;
      if (!found_.parts.back().object) EndPart(next);
    }
    hasName_ = false;
    at_ = lineStart_ = next;
  }

  // Ends the part that is being found, if there is one, at the latest at `end`.
  void EndPart(std::size_t end) {
    if (!isRejected_) return;
    RejectedPart& part = found_.parts.back();
    const std::size_t partEnd = partEnd_ == 0 ? end : std::min(partEnd_, end);
    part.size = partEnd - part.offset;
    part.lastLine = LineAt(partEnd - 1);
    isRejected_ = false;
    isOpen_ = false;
    partEnd_ = 0;
  }

  // The line behind the one that holds `place`, and those that are folded onto it: a blank at their
  // head, or on a line of its own ahead of them.
  std::size_t BehindFolds(std::size_t place) const {
    for (;;) {
      place = std::min(text_.find('\n', place), text_.size() - 1) + 1;
      std::size_t next = std::min(text_.find_first_not_of('\n', place), text_.size());
      if (next == text_.size() || (text_[next] != ' ' && text_[next] != '\t')) return place;
      next = text_.find_first_not_of('\n', next + 1);
      if (next == NarrowStringView::npos) return text_.size();
      place = next;
    }
  }
  // Behind the lines of the property being read.
  std::size_t BehindLine() const {
    if (parser_->contentEnd == nullptr) return at_;
    const auto last = static_cast<std::size_t>(parser_->contentEnd - text_.data());
    return std::min(text_.find('\n', last), text_.size() - 1) + 1;
  }
  std::size_t LineStart() const {
    if (parser_->lineStart == nullptr) return lineStart_;
    return static_cast<std::size_t>(parser_->lineStart - text_.data());
  }
  // Places come in order, but for the start of a record that is rejected further on.
  std::int64_t LineAt(std::size_t place) {
    if (place >= counted_) {
      line_ += std::ranges::count(text_.substr(counted_, place - counted_), '\n');
      counted_ = place;
      return line_;
    }
    return line_ - std::ranges::count(text_.substr(place, counted_ - place), '\n');
  }

  NarrowStringView text_;
  TextForm form_;
  std::unique_ptr<VObjectParser> parser_;
  std::size_t at_ = 0;         // where the parser's piece begins
  std::size_t lineStart_ = 0;  // of the line that the piece before left open
  NarrowString name_;
  bool hasName_ = false;  // its property hasn't ended
  Property property_ = Property::Other;
  std::optional<TextObject> object_;
  std::size_t recordStart_ = 0;
  bool isOpen_ = false;      // a record without its END yet
  bool isRejected_ = false;  // a part is being found
  std::size_t partEnd_ = 0;  // where it ends unless it goes on; 0 while it does
  std::size_t counted_ = 0;
  std::int64_t line_ = 1;
  RejectedParts found_;
};

}  // namespace

RejectedParts RejectedPartsOf(NarrowStringView text, TextForm form) {
  return RejectScan(text, form).Run();
}

NarrowString WithoutParts(NarrowStringView text, const std::vector<RejectedPart>& parts) {
  NarrowString rest;
  rest.reserve(text.size());
  std::size_t done = 0;
  for (const RejectedPart& part : parts) {
    rest += text.substr(done, part.offset - done);
    done = part.offset + part.size;
  }
  return rest += text.substr(done);
}

}  // namespace pim
