// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "pim/support/Strings.h"

namespace pim {

// A parameter as it stands: quotes and lists are taken apart by ForEachWord.
struct CardParameter {
  NarrowStringView name;
  NarrowStringView value;
  bool hasValue = false;  // else a bare word, as vCard 2.1 has them
};

// One property of a card, its folds undone.
struct CardLine {
  NarrowStringView group;  // "item1" of item1.TEL
  NarrowStringView name;   // empty for a line that is no property
  NarrowStringView value;
  std::vector<CardParameter> parameters;
  std::size_t line = 0;  // its first physical line, from 0

  // The first one of that name, or null.
  const CardParameter* Find(NarrowStringView parameter) const;
  bool IsQuotedPrintable() const;
  bool IsBase64() const;
};

// The properties of a card of vCard 3.0 or 4.0, also with what careless programs write: lines of
// base64 without a blank ahead, and quoted-printable with its soft line breaks.
class CardText {
 public:
  explicit CardText(NarrowStringView card);
  CardText(const CardText&) = delete;
  CardText& operator=(const CardText&) = delete;

  const std::vector<CardLine>& lines() const { return lines_; }

 private:
  void Take(NarrowStringView physical, std::size_t number);
  bool GoesOn(NarrowStringView physical);
  void EndLine();

  NarrowString unfolded_;  // of all lines; as large as the card from the beginning
  std::vector<CardLine> lines_;
  std::size_t start_ = 0;   // of the line that is being put together
  std::size_t number_ = 0;  // its first physical line
  enum class Continues { NotKnown, Never, AsBase64, BehindSoftBreak } continues_ = Continues::Never;
};

// Gives each word of a parameter's value, which may be a list, quoted as a whole or word by word.
template <class Take>
void ForEachWord(NarrowStringView value, Take take) {
  while (!value.empty()) {
    const std::size_t end = value.find_first_of(",\"");
    if (end != 0) take(value.substr(0, end));
    if (end == NarrowStringView::npos) return;
    value.remove_prefix(end + 1);
  }
}

// The value behind its transfer encoding, which may stand in `decoded`. What is no
// quoted-printable makes `isExact` false.
NarrowStringView ValueOf(const CardLine& line, NarrowString& decoded, bool& isExact);

// Where `mark` stands first without a backslash ahead of it.
std::size_t FindUnescaped(NarrowStringView text, char mark);

// Replaces `text` by the value with its escapes undone. A line end becomes CR LF.
void UnescapeText(NarrowStringView value, NarrowString& text);

}  // namespace pim
