#include "pim/stream/TextHead.h"

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
