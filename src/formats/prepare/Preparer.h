// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "formats/prepare/BlockLines.h"
#include "formats/prepare/ByteMender.h"
#include "formats/prepare/FrameState.h"
#include "formats/prepare/ParameterCache.h"
#include "formats/prepare/PrepareNotes.h"
#include "formats/vcard4/GroupBook.h"

namespace pim {

// A stretch of a prepared text, good for the call.
struct PreparedPiece {
  std::string_view text;
  // Where it comes from: physical lines, from 1, and how many.
  std::int64_t firstLine = 0;
  std::int64_t lines = 0;
  bool isSame = false;  // as it stands there
};
using TakePrepared = std::function<void(const PreparedPiece& piece)>;

// Gives the groups of all of the text, as long as the preparer lives. Asked for when a card comes
// that may be in one. A book that isn't complete yet takes the cards, which then give nothing.
using FindGroups = std::function<GroupBook*()>;

// Prepares one text of either form, any bytes at all: what of it the readers don't take well comes
// out as something that they do, all else as it stands. To prepare what it gives gives the same.
// The text comes in pieces of any size, and goes on as soon as its records are complete; of it one
// record is kept at a time, and of iCalendar 2.0 what waits for a time zone. Linear in the text.
//
// One thread at a time. Throws std::bad_alloc, and what the calls throw.
class Preparer {
 public:
  // Without `groups`, as for a text that comes once, what cards of groups say is told as dropped.
  Preparer(PrepareStepMask steps, const PrepareObserver& observer, TakePrepared take,
           FindGroups groups = {});
  Preparer(const Preparer&) = delete;
  Preparer& operator=(const Preparer&) = delete;

  // Where the next bytes may be put, at most `size` of them, until Took tells how many there are.
  char* Room(std::size_t size);
  void Took(std::size_t count);
  // Behind the last of them.
  void Finish();

 private:
  // What is looked at as a whole: a card, an item of a calendar, or another component of one.
  enum class BlockKind : std::uint8_t { None, Card, Item, Component };
  struct Block {
    std::size_t begin = 0;  // in the bytes that are here
    std::int64_t line = 1;
    std::string word;  // what its BEGIN says, in capitals
    int depth = 0;     // of cards inside the card
    BlockKind kind = BlockKind::None;
    bool needsWork = false;
    bool hasDisplayAlarm = false;
    bool hasAudioAlarm = false;
  };

  bool Has(PrepareStep step) const { return (steps_ & BitOf(step)) != 0; }
  std::string_view Bytes(std::size_t begin, std::size_t end) const {
    return {text_.get() + begin, end - begin};
  }

  // By lines (Preparer.cpp).
  void Scan(bool isLast);
  void PassPlainLines();
  bool PassesByParameters(const char* params, const char* feed, LineJoints::Tail& tail);
  class NameShapes;
  const NameShapes* SpecialNames() const;
  void TakeLine(std::string_view line);
  void TakeProperty(std::string_view line);
  void TakeBegin(const std::string& word, bool isInAgent);
  void TakeEnd(std::string_view line, const std::string& word);
  bool PartJoined(std::string_view line);
  void TakeFrameLine(std::string_view line, std::string_view name);
  void LookAt(std::string_view line, const LineHead& head);
  void OpenBlock(BlockKind kind, const std::string& word);
  void CloseUnended(const std::string& word);
  void CloseBlock(std::size_t end, std::int64_t endLine, std::string_view missing);
  void CloseFrame();

  // By blocks (PreparerBlocks.cpp).
  void EmitBlock(std::size_t end, std::int64_t endLine, std::string_view missing);
  std::vector<PropertyLine> MendedLines(std::string_view text);
  std::string PreparedCard(std::string_view text);
  std::string PreparedItem(std::string_view text);
  std::string OlderCard(const std::vector<PropertyLine>& lines);
  void TakeComponent(std::string text, std::int64_t lines);
  void ReleaseWaiting(bool all);
  void EmitComponent(const FrameState::Waiting& component);
  void EmitAsItIs(std::size_t end, std::int64_t endLine);
  void Emit(std::string_view text, std::int64_t firstLine, std::int64_t lines, bool isSame = false);
  std::string MissingEnd(const std::string& word);

  PrepareNotes notes_;
  ByteMender bytes_;
  TakePrepared take_;
  FindGroups findGroups_;
  GroupBook* groups_ = nullptr;
  LineJoints joints_;
  ParameterCache parameters_;
  FrameState frame_;
  Block block_;
  std::unique_ptr<char[]> text_;  // what hasn't gone on yet, and room behind it
  std::size_t capacity_ = 0;
  std::size_t size_ = 0;
  std::size_t begin_ = 0;     // of what hasn't gone on
  std::size_t at_ = 0;        // of the line that is next
  std::size_t searched_ = 0;  // no line feed stands between there and here
  std::int64_t beginLine_ = 1;
  std::int64_t line_ = 1;
  std::string mended_;  // bytes that don't pass as they are
  PrepareStepMask steps_;
  bool isBegun_ = false;  // what a byte order mark may be is here
  bool isFrameOpen_ = false;
  bool isFeedAlone_ = false;    // what ends the line ahead
  bool isBehindAgent_ = false;  // a card may begin inside the card
};

}  // namespace pim
