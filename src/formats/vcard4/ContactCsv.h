// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "formats/vcard4/CsvFields.h"
#include "pim/support/Strings.h"

namespace pim {

// The columns of a CSV of contacts. A text says them, a column a line; blank lines and those that
// begin with '#' say nothing:
//
//   Column name = TERM + TERM ...
//
// A TERM is a field as record dumps call it:
//
//   name.given_name          a part of the name; a plain text by its name alone: hobby
//   telephones[0].number     of a list's entry, from 0
//   telephones[4..].number   of that entry and all behind it
//   telephones.number        of all entries
//   telephones.work.number   of those whose type has the word; telephones.work[0].number is the
//                            first of them. Words are 2.1's, in any letter case; days have
//                            birthday, anniversary and other.
//   nicknames[0]             lists of plain texts have no member
//
// or a text in quotes ahead of a field, which stands there where the field isn't empty:
// "Hobby" hobby. A type is told as address books label it. What several entries and terms give is
// joined by " ::: ".

struct CsvTerm {
  std::size_t list = 0;    // in CsvLists()
  std::size_t member = 0;  // in its members
  std::size_t first = 0;   // of the entries that the word leaves
  bool isOne = false;      // else all of them from there
  NarrowString word;       // empty for any type
  std::optional<NarrowString> text;
};

struct CsvColumn {
  NarrowString name;
  std::vector<CsvTerm> terms;
};

// Throws std::invalid_argument, with what is wrong and in which line.
std::vector<CsvColumn> ReadCsvColumns(NarrowStringView text);

// The columns that address books import.
std::vector<CsvColumn> UsualCsvColumns();

}  // namespace pim
