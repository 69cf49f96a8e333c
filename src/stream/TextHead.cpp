// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/stream/TextHead.h"

#include <memory>
#include <new>
#include <utility>

#include "stream/ObjectWords.h"
#include "stream/VObjectParser.h"
#include "support/ByteOrderMark.h"

namespace pim {
namespace {

// What of the head has been seen so far.
struct HeadScan {
  enum class Property : std::uint8_t { Begin, End, Version, Other };
  Property property = Property::Other;
  std::optional<TextHead> head;
  bool complete = false;
};

std::optional<TextObject> ObjectOf(NarrowStringView word) {
  if (IsStartOf(kContactObject.text, word)) return TextObject::Contact;
  if (EqualsIgnoringCase(kCalendarObject.text, word)) return TextObject::Calendar;
  if (const auto code = CodeOfStart(kItemObjects, word)) return static_cast<TextObject>(*code);
  return std::nullopt;
}

HeadScan::Property PropertyOf(NarrowStringView name) {
  if (EqualsIgnoringCase(name, kBeginWord)) return HeadScan::Property::Begin;
  if (EqualsIgnoringCase(name, kEndWord)) return HeadScan::Property::End;
  if (EqualsIgnoringCase(name, kVersionWord)) return HeadScan::Property::Version;
  return HeadScan::Property::Other;
}

void OnProperty(void* user, const char* name, const ParserParam*) {
  auto& scan = *static_cast<HeadScan*>(user);
  scan.property = PropertyOf(name);
  const bool ends =
      scan.property == HeadScan::Property::Begin || scan.property == HeadScan::Property::End;
  if (scan.head && ends) scan.complete = true;
}

void OnValue(void* user, const char* bytes, std::int32_t length) {
  auto& scan = *static_cast<HeadScan*>(user);
  if (bytes == nullptr || scan.complete) return;
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  if (scan.property == HeadScan::Property::Begin) {
    if (const auto object = ObjectOf(value)) scan.head = TextHead{*object, {}};
  } else if (scan.property == HeadScan::Property::Version && scan.head) {
    scan.head->version = Trim(value);
    scan.complete = true;
  }
}

}  // namespace

namespace {

// Finds where the objects of a text begin.
class PartScan {
 public:
  explicit PartScan(NarrowStringView text) : text_(text), parser_(VObjectParser::Create()) {
    if (parser_ == nullptr) throw std::bad_alloc();
    parser_->SetPropertyHandler([](void* user, const char* name, const ParserParam*) {
      static_cast<PartScan*>(user)->property_ = PropertyOf(name);
    });
    parser_->SetDataHandler([](void* user, const char* bytes, std::int32_t length) {
      if (bytes != nullptr)
        static_cast<PartScan*>(user)->Take({bytes, static_cast<std::size_t>(length)});
    });
    parser_->SetUserData(this);
  }

  std::vector<TextPart> Run() {
    constexpr std::size_t kPiece = std::size_t{1} << 30;  // the parser counts in 31 bits
    bool accepted = true;
    for (std::size_t done = text_.size() - WithoutMark(text_).size(); accepted;) {
      const NarrowStringView piece = text_.substr(done, kPiece);
      done += piece.size();
      const bool final = done == text_.size();
      accepted = parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final);
      lineStart_ = LineStart();
      if (final) break;
    }
    LimitParts(accepted ? text_.size() : lineStart_);
    return std::move(parts_);
  }

 private:
  void Take(NarrowStringView value) {
    if (property_ == HeadScan::Property::End) {
      if (EqualsIgnoringCase(kCalendarObject.text, Trim(value))) inFrame_ = false;
    } else if (property_ == HeadScan::Property::Begin) {
      if (const auto object = ObjectOf(value)) Begin(*object);
    }
  }
  // A frame shows in its items; one that holds any is no part of its own.
  void Begin(TextObject object) {
    const bool isItem = object != TextObject::Calendar && object != TextObject::Contact;
    if (object == TextObject::Calendar) inFrame_ = true;
    if (isItem && inFrame_ && !parts_.empty() && parts_.back().object == TextObject::Calendar)
      parts_.pop_back();
    parts_.push_back({LineStart(), 0, object, isItem && inFrame_});
  }
  void LimitParts(std::size_t end) {
    for (std::size_t i = parts_.size(); i > 0; --i) {
      TextPart& part = parts_[i - 1];
      part.size = end - part.offset;
      end = part.offset;
    }
  }
  // Of the line that is being read.
  std::size_t LineStart() const {
    if (parser_->lineStart == nullptr) return lineStart_;
    return static_cast<std::size_t>(parser_->lineStart - text_.data());
  }

  NarrowStringView text_;
  std::unique_ptr<VObjectParser> parser_;
  HeadScan::Property property_ = HeadScan::Property::Other;
  std::vector<TextPart> parts_;
  std::size_t lineStart_ = 0;  // of the line that the piece before left open
  bool inFrame_ = false;
};

}  // namespace

std::vector<TextPart> PartsOf(NarrowStringView text) { return PartScan(text).Run(); }

std::optional<TextHead> TextHeadOf(NarrowStringView text) {
  constexpr std::size_t kPiece = 4096;
  text = WithoutMark(text);
  HeadScan scan;
  const auto parser = VObjectParser::Create();
  if (parser == nullptr) return std::nullopt;
  parser->SetPropertyHandler(OnProperty);
  parser->SetDataHandler(OnValue);
  parser->SetUserData(&scan);
  for (bool more = true; more && !scan.complete;) {
    const NarrowStringView piece = text.substr(0, kPiece);
    text.remove_prefix(piece.size());
    more = parser->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), text.empty()) &&
           !text.empty();
  }
  return scan.head;
}

}  // namespace pim
