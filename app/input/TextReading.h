// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "pim/manager/TextReading.h"
#include "pim/stream/TextHead.h"

namespace pim::app {

// What came of reading one text.
struct Outcome {
  TextResult result;
  std::vector<std::u16string> messages;  // what the user was to see, the rejection included
  std::vector<TextNotice> notices = {};
};

// Read a whole text and hand over its records one by one; each is gone behind the call. They aren't
// stored. Throw Interrupted between two records.
// `entry`, where given, takes the account.
Outcome ReadText(NarrowStringView text, const std::function<void(CContact&)>& take,
                 const TakeEntry& entry = {});
Outcome ReadText(NarrowStringView text, const std::function<void(CCalendar&)>& take,
                 const TakeEntry& entry = {});

// Tells on standard error what came of reading the file at `path`: the messages, what a text looks
// like that holds no record of the form, and another version. Gives the exit status.
int TellOutcome(const std::string& path, const Outcome& outcome, NarrowStringView text,
                TextForm form);

// Tells what was noticed in a text and a rejection, each with its line, the latter with what
// follows from it and with the head of the line itself.
// The text may be a stretch of the file's, with so many lines ahead of it.
void TellMessages(const std::string& path, const Outcome& outcome, NarrowStringView text,
                  std::string_view consequence, std::int64_t linesAhead = 0);

// Tells when the text says that it is of another version than the one that is read ("3.0").
void TellVersion(const std::string& path, NarrowStringView text, TextForm form);

// Tells that no record ("contact") of the form begins in the file's text, and what it looks like.
void TellNothingBegins(const std::string& path, std::string_view noun, NarrowStringView text,
                       TextForm form);

// Runs `work`, which gives an exit status, for one of several inputs: a failure is told and ends
// nothing but this, unless it is one of what is written (OutputFailure).
int ForInput(const std::function<int()>& work);

}  // namespace pim::app
