// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/commands/Options.h"

namespace pim::app {

// All that a command line may hold. What is read, what help prints and what is suggested for an
// unknown word come from here.

enum class Option : std::uint8_t {
  All,
  As,
  CodePage,
  Csv,
  CsvColumns,
  Delete,
  DryRun,
  Fields,
  Force,
  From,
  Group,
  Groups,
  Help,
  Import,
  Json,
  JsonLines,
  KeepDuplicates,
  Labels,
  Lang,
  Losses,
  NoGroups,
  NoName,
  NoOriginals,
  Output,
  Prepare,
  Quiet,
  Rejects,
  Report,
  SkipDuplicates,
  Sort,
  Split,
  Steps,
  Store,
  Strict,
  To,
  ToTheLetter,
  Version,
};

struct OptionRow {
  Option id;
  char letter;        // behind one hyphen; NUL for none
  const char* name;   // behind two
  const char* value;  // what help calls its value; null for an option without one
  const char* help;   // {choices} stands for the words that the value may be
};

// In the order of their numbers.
std::span<const OptionRow> OptionRows();
inline const OptionRow& RowOf(Option option) {
  return OptionRows()[static_cast<std::size_t>(option)];
}

// As it is typed.
inline std::string DashedName(const OptionRow& row) { return std::string("--") + row.name; }

// Those that every command takes.
std::span<const Option> CommonOptions();

// Pairs of which a command line holds one at most.
std::span<const std::pair<Option, Option>> EitherOr();

// Commands that belong together.
enum class Family : std::uint8_t { Contacts, Items, Original, Store, NoNoun };

// The first word of most commands.
struct NounRow {
  const char* word;
  Family family;
  std::optional<RecordKind> kind;  // of the stored records that its commands are about
  const char* one;                 // "contact"
  const char* summary;
};
std::span<const NounRow> Nouns();
const NounRow& NounOf(RecordKind kind);

inline constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

// A command. In its texts {noun} stands for the noun's word and {one} for one of its records.
struct CommandRow {
  Family family;
  Action action;
  const char* verb;
  const char* operands;  // as help shows them; empty for none
  std::size_t fewest;    // operands
  std::size_t most;
  const char* summary;
  std::span<const Option> options;
  const char* examples;  // one a line
  const char* remarks;   // what else help says; may be empty
};
std::span<const CommandRow> Commands();

// What help calls an option's value, of a command or of all; null for an option without one.
const char* ValueOf(Option option, const CommandRow* command);
// What help says of an option, of a command that may have more to say of it, or of all.
std::string HelpOf(Option option, const CommandRow* command);

// The text with {noun} and {one} filled in.
std::string Filled(std::string_view text, const NounRow& noun);

}  // namespace pim::app
