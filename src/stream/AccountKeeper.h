// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "pim/stream/TextAccount.h"
#include "stream/PieceLines.h"

namespace pim {

// Code that tells an account is made twice, so that reading without one pays nothing for it.
enum class Telling : bool { None, Account };

// What a reader does to a property by its name.
enum class PropertyKind : std::uint8_t { Frame, Known, Unknown };

// How a value came into its place in a record.
struct Written {
  bool same = false;     // as it was there before
  bool says = true;      // the line holds it: it isn't empty, or what the line says is that it is
  bool follows = false;  // it only follows from the line: without it nothing of the line is lost
  bool isJoint = false;  // which lines it needs is told by OtherStates
};

// Keeps the account of one text while a reader reads it. The reader tells each property, what of it
// had no effect, and which place of the record each of its values went to; the verdict follows when
// the record is complete, from what is left of the values then.
//
// A place is what one value fills; several can be parts of one field. Of each, the lines are known
// whose value it holds, and the one line without which it would hold another.
class AccountKeeper {
 public:
  // What the record that is being read is called.
  using NameOfRecord = std::function<WideString()>;

  // `fields` names, for each place, its field by the number of its bit; both must outlive this.
  AccountKeeper(TakeEntry take, VObjectParser& parser, std::span<const std::uint8_t> fields,
                NameOfRecord nameOfLast);
  AccountKeeper(const AccountKeeper&) = delete;
  AccountKeeper& operator=(const AccountKeeper&) = delete;
  virtual ~AccountKeeper() = default;

  // Runs parse(), which takes the next piece of the text and gives false when it is rejected, and
  // gives what it gives.
  template <class Parse>
  bool Around(NarrowStringView piece, bool final, Parse parse) {
    lines_.StartPiece(piece);
    const bool accepted = parse();
    if (!accepted) Reject(piece);
    if (accepted && final) EndOpen();
    lines_.EndPiece();
    if (accepted && final) Finish();
    return accepted;
  }
  // Ends the account of a text that was rejected; `rest` stands behind the last piece.
  void EndRejected(NarrowStringView rest);

  // At a property's header; `known(name)` tells whether a name without its prefix is known.
  template <class IsKnown>
  void BeginProperty(NarrowStringView name, PropertyKind kind, IsKnown known) {
    LossMask why = 0;
    if (kind == PropertyKind::Unknown) {
      const std::size_t dot = name.rfind('.');
      const bool hasPrefix = dot != NarrowStringView::npos && known(name.substr(dot + 1));
      why = hasPrefix ? LOSS_GROUP_PREFIX : LOSS_UNKNOWN_PROPERTY;
    }
    Begin(name, kind, why);
  }
  // At its value.
  void TakeValue() { hasValue_ = true; }
  void Tell(LossMask losses) { entries_.back().why |= losses; }
  // Of one of its parameters, ahead of the value.
  void TellParameter(LossMask losses, NarrowStringView name, NarrowStringView value);
  // That something is lost of a property of the frame, which else has nothing to keep.
  void TellFrame(LossMask losses);
  // The value went to a place of the record, or was added to a list of its own.
  void Write(std::uint8_t place, Written written);
  void Add(std::uint8_t field);
  void EndProperty();
  // At the end of a line without a colon.
  void TakeJunk();

  // At the value of its BEGIN or END.
  void BeginRecord();
  void EndRecord() { isOpen_ = false; }

  // The property's number among those of the record.
  std::uint32_t Current() const { return static_cast<std::uint32_t>(entries_.size() - 1); }
  // That the field would not be the same without that property.
  void NeedsEntry(std::uint32_t entry, std::uint8_t field) {
    ++entries_[entry].needed;
    entries_[entry].into |= 1U << field;
  }
  void TellOf(std::uint32_t entry, LossMask losses) { entries_[entry].why |= losses; }

 protected:
  // Called ahead of the verdicts of a record.
  virtual void CompleteRecord() {}

 private:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  // One entry, or several alike one behind the other that are decided: a text may be all such.
  struct Entry {
    std::uint32_t count = 1;
    std::uint32_t lines = 1;  // of each; the first one of all follows from the entries ahead
    std::uint32_t name = 0;   // where it stands among the names
    std::uint32_t nameSize = 0;
    std::uint32_t ignoredSize = 0;  // of a parameter, which stands behind the name
    LossMask why = 0;
    std::uint32_t into = 0;
    std::uint32_t written = 0;  // fields that it wrote to
    std::uint32_t held = 0;     // places that hold a value of it
    std::uint32_t needed = 0;   // places that would hold another value without it
    PropertyKind kind = PropertyKind::Frame;
    Verdict verdict = Verdict::Frame;  // when it is decided already
    bool isDecided = false;
    bool isReplaced = false;  // in a place at least
  };
  struct Holder {
    std::uint32_t entry;
    bool follows;
  };
  struct Place {
    std::vector<Holder> holders;
    std::uint32_t needs = kNone;
  };

  void Begin(NarrowStringView name, PropertyKind kind, LossMask why);
  void Reject(NarrowStringView piece);
  // Ends what the end of the text cuts; then the rest of it.
  void EndOpen();
  void Finish();
  // Blank lines up to `next`, which isn't one.
  void TakeBlankLines(std::int64_t next);
  void Append(std::int64_t lines, Verdict verdict, LossMask why, NarrowStringView name = {});
  // Where the line stands, for one that isn't the frame's.
  LossMask PlaceOfLine() const;
  // Joins the last entry with the one ahead, if they are alike and nothing can change them.
  void JoinAlike();
  void Flush();
  void HandOut(std::size_t count);
  void Decide(Entry& entry) const;

  TakeEntry take_;
  VObjectParser& parser_;
  std::span<const std::uint8_t> fields_;
  PieceLines lines_;
  std::vector<Entry> entries_;  // of the record being read
  NarrowString names_;          // theirs, one behind the other
  std::vector<Place> places_;
  NameOfRecord nameOfLast_;
  std::int64_t lastLine_ = 0;  // of the entry that ended last
  std::int64_t handedTo_ = 0;  // the last line of those handed out
  std::int64_t record_ = -1;
  bool isOpen_ = false;        // the record has no END yet
  bool inProperty_ = false;    // the last entry is a property that hasn't ended
  bool beginsRecord_ = false;  // that property does
  bool hasValue_ = false;
};

// The states that a part of a record would be in without one of the lines, each as long as it
// differs from the true one: for what follows from several lines together.
template <class State>
class OtherStates {
 public:
  // The property `entry` has made `now` out of `before`; apply(State&) does the same to any state.
  template <class Apply>
  void Take(std::uint32_t entry, const State& before, const State& now, Apply apply) {
    for (Other& other : others_) apply(other.state);
    std::erase_if(others_, [&now](const Other& other) { return other.state == now; });
    now_ = now;
    if (before == now) return;
    if (others_.size() == kMost) Settle(others_.front().entry);
    others_.push_back({entry, before});
  }
  // Calls needed(entry) for each line without which the record would be another, by
  // isOther(state, now), and forgets all.
  template <class Needed, class IsOther>
  void Complete(Needed needed, IsOther isOther) {
    for (const Other& other : others_)
      if (isOther(other.state, now_)) needed(other.entry);
    for (const std::uint32_t entry : settled_) needed(entry);
    others_.clear();
    settled_.clear();
    now_ = {};
  }
  const State& now() const { return now_; }

 private:
  struct Other {
    std::uint32_t entry;
    State state;
  };
  // Texts that make more differ than this are made for it; the first one then counts as different
  // for good.
  static constexpr std::size_t kMost = 64;
  void Settle(std::uint32_t entry) {
    settled_.push_back(entry);
    others_.erase(others_.begin());
  }

  State now_{};
  std::vector<Other> others_;
  std::vector<std::uint32_t> settled_;
};

}  // namespace pim
