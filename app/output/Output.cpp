// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "app/output/Passwords.h"
#include "platform/CodePages.h"
#include "platform/Visible.h"

namespace pim::app {
namespace {

std::string* held = nullptr;  // what standard error gets later

void CheckOutput(bool written) {
  if (written) return;
  if (errno == EPIPE) throw ClosedPipe();
  throw OutputFailure(std::string("standard output: ") + std::strerror(errno));
}

}  // namespace

std::string Shown(WideStringView text) { return VisibleUtf8(text); }

std::string ShownInOneLine(WideStringView text) {
  WideString line;
  for (const char16_t unit : text) {
    const bool isEnd = unit == u'\n' || unit == u'\r';
    if (!isEnd) line += unit;
    if (isEnd && !line.empty() && line.back() != u' ') line += u' ';
  }
  return Shown(line);
}

std::string ShownHead(NarrowStringView text) {
  constexpr std::size_t kMost = 60;
  constexpr std::size_t kLongestCharacter = 4;
  const WideString wide = WideFromUtf8(text.substr(0, (kMost + 1) * kLongestCharacter));
  std::size_t end = 0;
  for (std::size_t count = 0; end < wide.size() && count < kMost; ++count)
    end += wide[end] >= 0xD800 && wide[end] < 0xDC00 ? 2 : 1;  // a pair is one
  return end < wide.size() ? Shown(WideStringView(wide).substr(0, end)) + "..." : Shown(wide);
}

std::string ShownName(const std::string& path) {
  return path == "-" ? "standard input" : VisibleUtf8(WideFromUtf8(WithoutPasswords(path)));
}

int Worse(int one, int other) {
  for (const int status : {kFailed, kRejected})
    if (one == status || other == status) return status;
  return std::max(one, other);
}

void Complain(std::string_view message) {
  Warn(std::string("pimvobj: ").append(message).append("\n"));
}

void Warn(std::string_view text) {
  if (held != nullptr) {
    held->append(text);
    return;
  }
  std::fflush(stdout);
  std::fwrite(text.data(), 1, text.size(), stderr);
}

HeldWarnings::HeldWarnings() { held = &text_; }

HeldWarnings::~HeldWarnings() {
  held = nullptr;
  Warn(text_);
}

void HeldWarnings::Release() {
  held = nullptr;
  Warn(text_);
  held = &text_;
  text_.clear();
}

void Print(std::string_view text) {
  CheckOutput(std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

void FlushOutput() { CheckOutput(std::fflush(stdout) == 0); }

std::string Counted(long long count, std::string_view noun) {
  const std::string_view ending = count == 1 ? "" : noun.ends_with('s') ? "es" : "s";
  return std::to_string(count).append(" ").append(noun).append(ending);
}

}  // namespace pim::app
