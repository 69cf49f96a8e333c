// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "pim/support/Strings.h"

namespace pim::app {

enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2, kRejected = 3, kLossy = 4 };

// Ends the command with exit status 1; what() is "FILE: what is wrong".
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Of what the command writes, whatever it reads: no further input mends it.
class OutputFailure : public Failure {
 public:
  using Failure::Failure;
};

// Ends the command with exit status 2; what() says what is wrong with the command line.
class WrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The exit status of two pieces of work: a file or a store that fails weighs more than a text that
// is rejected, and that more than one of which something is lost.
int Worse(int one, int other);

// A name that was typed, of a file or a store, as messages show it: with control characters visible
// and without a password, "-" as standard input.
std::string ShownName(const std::string& path);
std::string Shown(WideStringView text);
// The same with each run of line ends as one blank, for a message in one line.
std::string ShownInOneLine(WideStringView text);

// The first 60 characters of a text in UTF-8, and dots where there are more.
std::string ShownHead(NarrowStringView text);

// Standard error, as "pimvobj: MESSAGE".
void Complain(std::string_view message);

// Standard error, as it stands.
void Warn(std::string_view text);

// Holds back, while it lives, what goes to standard error, until it is sure. One at a time.
class HeldWarnings {
 public:
  HeldWarnings();
  HeldWarnings(const HeldWarnings&) = delete;
  HeldWarnings& operator=(const HeldWarnings&) = delete;
  ~HeldWarnings();  // releases

  // How much is held, in bytes.
  std::size_t size() const { return text_.size(); }
  // Forgets what has come behind the first `size` bytes.
  void Truncate(std::size_t size) { text_.resize(size); }
  void Release();

 private:
  std::string text_;
};

// Nobody reads standard output any more. Ends the program quietly, once all is cleared away.
struct ClosedPipe {};

// Standard output. Throws OutputFailure when it can't be written, ClosedPipe for a pipe that nobody
// reads any more.
void Print(std::string_view text);
void FlushOutput();

// "1 contact", "2 contacts".
std::string Counted(long long count, std::string_view noun);

}  // namespace pim::app
