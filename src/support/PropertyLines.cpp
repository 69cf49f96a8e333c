// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/PropertyLines.h"

#include <algorithm>
#include <limits>

#include "platform/CodePages.h"
#include "support/PlainText.h"
#include "support/TextCodec.h"

namespace pim {
namespace {

// Up to here blanks stand for themselves and no line is broken.
constexpr std::size_t kShortText = 64;

char* Copy(NarrowStringView text, char* to) { return std::copy(text.begin(), text.end(), to); }

}  // namespace

bool PropertyLines::IsShort(WideStringView text) const {
  if (text.size() > kShortText) return false;
  const bool headBlank = !text.empty() && (text.front() == u' ' || text.front() == u'\t');
  return !headBlank || !readsBack_;
}

// The start of a short line, which its value ends; the header must fit with room for that.
char* PropertyLines::StartLine(NarrowStringView name, NarrowStringView parameters) {
  char* to = Copy(parameters, Copy(name, line_.data()));
  *to++ = ':';
  return to;
}

void PropertyLines::EndLine(char* end) {
  end[0] = '\r';
  end[1] = '\n';
  out_.append(line_.data(), static_cast<std::size_t>(end + 2 - line_.data()));
}

bool PropertyLines::AppendPlain(NarrowStringView name, NarrowStringView parameters,
                                WideStringView text) {
  if (!IsShort(text) || name.size() + parameters.size() + kShortText + 3 > line_.size())
    return false;
  char* const value = StartLine(name, parameters);
  if (NarrowPlain(text, value) != text.size()) return false;
  EndLine(value + text.size());
  return true;
}

bool PropertyLines::AppendPlainComponents(NarrowStringView name, NarrowStringView parameters,
                                          std::span<const WideStringView> components) {
  if (name.size() + parameters.size() + components.size() * (kShortText + 1) + 3 > line_.size())
    return false;
  char* to = StartLine(name, parameters);
  for (const WideStringView component : components) {
    if (!IsShort(component) ||
        NarrowPlain<RunStops::AtSeparators>(component, to) != component.size())
      return false;
    to += component.size();
    *to++ = ';';
  }
  EndLine(to - 1);
  return true;
}

void PropertyLines::Encode(WideStringView text) {
  EncodeText(text, encoded_, readsBack_ ? HeadBlank::Escaped : HeadBlank::Bare);
}

void PropertyLines::AppendText(NarrowStringView name, NarrowStringView parameters,
                               WideStringView text) {
  if (AppendPlain(name, parameters, text)) return;
  Encode(text);
  parameters_ = parameters;
  if (NeedsTextParameters(encoded_)) parameters_.append(TextParameters());
  Append(name, parameters_, encoded_);
}

void PropertyLines::AppendComponents(NarrowStringView name, NarrowStringView parameters,
                                     std::span<const WideStringView> components) {
  if (AppendPlainComponents(name, parameters, components)) return;
  const auto encode = [this](WideStringView component) -> NarrowString& {
    Encode(component);
    return encoded_;
  };
  const bool needsParameters = JoinComponents(components, encode, value_);
  parameters_ = parameters;
  if (needsParameters) parameters_.append(TextParameters());
  Append(name, parameters_, value_);
}

void PropertyLines::AppendRaw(NarrowStringView name, NarrowStringView parameters,
                              WideStringView text) {
  if (HasAsciiRuns(kCodePageDefault) && AppendPlain(name, parameters, text)) return;
  NarrowText(text, encoded_);
  if (readsBack_) {
    std::ranges::replace_if(
        encoded_, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  }
  Append(name, parameters, encoded_);
}

void PropertyLines::Append(NarrowStringView name, NarrowStringView parameters,
                           NarrowStringView value) {
  AppendProperty(out_, name, parameters, value);
}

}  // namespace pim
