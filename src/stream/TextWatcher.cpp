#include "stream/TextWatcher.h"

#include <algorithm>

#include "stream/ObjectWords.h"
#include "support/Ascii.h"

namespace pim {

void TextWatcher::StartPiece(NarrowStringView piece) {
  counted_ = piece.data();
  end_ = piece.data() + piece.size();
}

void TextWatcher::EndPiece() {
  openLine_ = CurrentLine();
  CountUpTo(end_);
}

std::int64_t TextWatcher::CurrentLine() {
  if (parser_.lineStart == nullptr) return openLine_;
  CountUpTo(parser_.lineStart);
  return line_;
}

void TextWatcher::CountUpTo(const char* place) {
  if (place <= counted_) return;
  line_ += std::count(counted_, place, '\n');
  counted_ = place;
}

NarrowStringView TextWatcher::WordOfEnd(NarrowStringView value) {
  for (std::size_t at = 0; at < value.size(); ++at) {
    const NarrowStringView rest = value.substr(at);
    if (rest.size() <= kBeginWord.size() || rest[kBeginWord.size()] != ':') continue;
    if (!EqualsIgnoringCase(rest.substr(0, kBeginWord.size()), kBeginWord)) continue;
    Note(TextEvent::RecordsJoined, kEndWord, value);
    return Trim(value.substr(0, at));
  }
  return Trim(value);
}

void TextWatcher::Note(TextEvent event, NarrowStringView property, NarrowStringView value) {
  noted_.push_back({event, CurrentLine(), NarrowString(property), NarrowString(value), {}});
}

void TextWatcher::TellNoted(WideStringView record) {
  for (TextNotice& notice : std::exchange(noted_, {})) {
    notice.record = record;
    watch_(notice);
  }
}

void TextWatcher::TellEnd(WideStringView record) {
  if (openRecord_ != 0) {
    watch_({TextEvent::EndsInsideRecord, openRecord_, {}, {}, WideString(record)});
  } else if (openFrame_ != 0) {
    watch_({TextEvent::EndsInsideRecord, openFrame_, {}, {}, {}});
  } else {
    watch_({TextEvent::EndsInsideValue, openLine_, {}, {}, WideString(record)});
  }
}

}  // namespace pim
