// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pim::app {

// What help tells of besides commands.
struct TopicRow {
  const char* word;     // as 'pimvobj help' takes it
  const char* summary;  // what it is about
};
std::span<const TopicRow> Topics();

// Null when there is none of that name.
const TopicRow* FindTopic(std::string_view word);

// A paragraph, or, where it has a term, a row of a table.
struct TopicBlock {
  std::string term;
  std::string text;
};
std::vector<TopicBlock> BlocksOf(const TopicRow& topic);

// As it is printed, without its summary and with it.
std::string TopicBody(const TopicRow& topic);
std::string TopicText(const TopicRow& topic);

}  // namespace pim::app
