#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "pim/stream/TextWatch.h"
#include "stream/VObjectParser.h"

namespace pim {

// Keeps what a host is told of one text: where each thing stood, and of which record it was. Lines
// are counted once, up to the places that are told and to the end of each piece.
class TextWatcher {
 public:
  // `parser` must outlive this.
  TextWatcher(WatchText watch, const VObjectParser& parser)
      : watch_(std::move(watch)), parser_(parser) {}

  // Runs parse(), which takes the next piece of the text and gives false when it is rejected.
  // nameOfLast() tells how the last record is called. Gives what parse() gives.
  template <class Parse, class NameOfLast>
  bool Around(NarrowStringView piece, bool final, Parse parse, NameOfLast nameOfLast) {
    StartPiece(piece);
    const bool accepted = parse();
    EndPiece();
    if (!accepted || final) Complete(nameOfLast);
    if (accepted && final && EndsInside()) TellEnd(nameOfLast());
    return accepted;
  }

  // At the value of a BEGIN or END, with the words of the records that a text can hold; a frame
  // holds records and is none. What the END of a frame or record ends is closed.
  void BeginRecord() { openRecord_ = CurrentLine(); }
  void BeginFrame() { openFrame_ = CurrentLine(); }
  void EndRecord() { openRecord_ = 0; }
  void EndFrame() { openFrame_ = openRecord_ = 0; }
  // Notes a BEGIN in the value of an END, and gives the word ahead of it.
  NarrowStringView WordOfEnd(NarrowStringView value);
  void Note(TextEvent event, NarrowStringView property, NarrowStringView value);

  // Tells what was noted of a record, now that all of it is known, its name too.
  template <class NameOfLast>
  void Complete(NameOfLast nameOfLast) {
    if (!noted_.empty()) TellNoted(nameOfLast());
  }

 private:
  void StartPiece(NarrowStringView piece);
  void EndPiece();
  void TellNoted(WideStringView record);
  // At the end of the text: whether it breaks off.
  bool EndsInside() const { return openRecord_ != 0 || openFrame_ != 0 || parser_.endsInGroup; }
  void TellEnd(WideStringView record);
  // Of the line that the parser is at.
  std::int64_t CurrentLine();
  void CountUpTo(const char* place);

  WatchText watch_;
  const VObjectParser& parser_;
  const char* counted_ = nullptr;  // up to here, in the piece
  const char* end_ = nullptr;
  std::int64_t line_ = 1;        // at `counted_`
  std::int64_t openLine_ = 1;    // where the line began that the piece before left open
  std::int64_t openRecord_ = 0;  // where one begins that has no END yet, or 0
  std::int64_t openFrame_ = 0;
  std::vector<TextNotice> noted_;
};

}  // namespace pim
