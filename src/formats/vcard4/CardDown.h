// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "formats/FormatLoss.h"
#include "formats/vcard4/CardText.h"
#include "formats/vcard4/CardWords.h"
#include "formats/vcard4/ContactNaming.h"
#include "formats/vcard4/GroupBook.h"
#include "formats/vcard4/OldLines.h"

namespace pim {

// Words of types as 2.1 has them among its parameters: ";PREF;CELL" of "PREF CELL".
NarrowString OldParameters(NarrowStringView words);

// Makes vCard 2.1 of one card. The card's text and `out` must outlive it.
class CardDown {
 public:
  // The groups may be null.
  CardDown(NarrowStringView card, const TellFormatLoss& tell, GroupBook* groups, NarrowString& out)
      : card_(card), tell_(tell), groups_(groups), lines_(out) {}
  CardDown(const CardDown&) = delete;
  CardDown& operator=(const CardDown&) = delete;

  void Run();

 private:
  using WordOf = NarrowStringView (*)(std::uint32_t code);
  struct Label {
    const CardLine* line;
    NarrowStringView text;
    bool isUsed;
  };

  void DropGroup();
  bool SaysName(const CardLine& line, NarrowStringView name);
  void CollectLabels();
  void ConvertLines();
  void Convert(const CardLine& line);
  void ConvertKnown(const CardLine& line, CardProperty property);
  void ConvertOther(const CardLine& line);
  void ConvertUnknown(const CardLine& line);

  void ConvertText(const CardLine& line, CardProperty property);
  void ConvertOnce(const CardLine& line, CardProperty property);
  void ConvertList(const CardLine& line, CardProperty property);
  void ConvertName(const CardLine& line);
  void ConvertTelephone(const CardLine& line);
  void ConvertCoded(const CardLine& line, const TypeWords& words, CardProperty property,
                    WordOf wordOf);
  void ConvertAddress(const CardLine& line);
  void ConvertOrganization(const CardLine& line);
  void ConvertMessenger(const CardLine& line);
  void ConvertDay(const CardLine& line, CardProperty property);
  void ConvertPhoto(const CardLine& line);
  void ConvertPronunciation(const CardLine& line, CardProperty property);
  void ConvertBlood(const CardLine& line);
  void ConvertFavorite(const CardLine& line);
  void AppendPronunciation();
  void AppendGroups();

  // What stands behind the transfer encoding, the same with its escapes undone, and the parts of
  // that between `mark`. Each holds until the next one is asked for.
  NarrowStringView Value(const CardLine& line);
  const NarrowString& Text(const CardLine& line);
  std::vector<NarrowString>& Parts(const CardLine& line, char mark);

  void AppendText(const CardLine& line, CardProperty property, NarrowStringView parameters,
                  NarrowStringView text);
  void AppendParts(const CardLine& line, CardProperty property, NarrowStringView parameters,
                   std::size_t count);
  TypesRead Types(const CardLine& line, const TypeWords& words);
  Label* LabelOf(const CardLine& line);
  // Whether what has one place in 2.1 is already there; that is told then.
  bool IsTaken(const CardLine& line, CardProperty property);
  void Tell(const CardLine& line, FormatVerdict verdict, FormatReason reason) const;
  void Drop(const CardLine& line, FormatReason reason) const {
    Tell(line, FormatVerdict::Dropped, reason);
  }
  void Change(const CardLine& line, FormatReason reason) const {
    Tell(line, FormatVerdict::Changed, reason);
  }

  const CardText card_;
  const TellFormatLoss& tell_;
  GroupBook* const groups_;
  OldLines lines_;
  NarrowString decoded_;
  NarrowString text_;
  std::vector<NarrowString> parts_;
  std::unordered_map<NarrowStringView, Label> labels_;  // by their groups
  std::array<NarrowString, kPersonNameParts.size()> pronunciation_;
  std::unordered_set<NarrowString> named_;  // groups, where some may come by the book
  std::uint64_t taken_ = 0;                 // by the numbers of properties
};

}  // namespace pim
