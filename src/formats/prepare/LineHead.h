// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "support/Ascii.h"

namespace pim {

// No property in use has a longer name. What is longer is none that stands behind a slipped line
// end, nor one with a prefix.
inline constexpr std::size_t kLongestName = 64;

// A name as the tokeniser hands it on: without blanks, and up to a NUL.
inline std::string AsTokenised(std::string_view text) {
  std::string token;
  for (const char c : text.substr(0, text.find('\0')))
    if (!IsWhiteSpace(c)) token += c;
  return token;
}
// Whether that is the word, in any letter case. In the value of a parameter (`isValue`) a backslash
// behind its first character says nothing by itself.
constexpr bool IsWordInText(std::string_view text, std::string_view word, bool isValue = false) {
  bool isFirst = true;
  bool isEscaped = false;
  for (const char c : text) {
    if (c == '\0') break;
    if (IsWhiteSpace(c)) continue;
    if (isValue && c == '\\' && !isFirst && !std::exchange(isEscaped, !isEscaped)) continue;
    isFirst = false;
    if (word.empty() || ToUpper(c) != ToUpper(word.front())) return false;
    word.remove_prefix(1);
  }
  return word.empty();
}

// The head of a property as the tokeniser takes it: the name ends at the first colon or semicolon,
// the parameters at the first colon, whatever quotes stand around it.
struct LineHead {
  std::string_view name;    // without blanks around it
  std::string_view params;  // from the first semicolon on; empty without one
  std::size_t colon;  // its place in the line; npos where the head goes on or is no property's

  // Of the text of a line, with or without its line end.
  static LineHead Of(std::string_view line) {
    std::size_t end = 0;
    while (end < line.size() && line[end] != ':' && line[end] != ';') ++end;
    LineHead head{line.substr(0, end), {}, end};
    if (end == line.size()) {
      head.colon = std::string_view::npos;
    } else if (line[end] == ';') {
      head.colon = line.find(':', end);
      head.params =
          line.substr(end, head.colon == std::string_view::npos ? head.colon : head.colon - end);
    }
    if (!head.name.empty() && (IsBlank(head.name.front()) || IsBlank(head.name.back())))
      head.name = Trim(head.name);
    return head;
  }

  bool hasColon() const { return colon != std::string_view::npos; }
  // Whether a further line belongs to the head.
  bool GoesOn() const { return !hasColon() && !params.empty(); }
};

// Calls take(name, value, whole) for each parameter of a head, as the tokeniser parts them: what
// stands first behind a semicolon or an equals sign is a part of the name or value, whatever it is,
// and a semicolon behind a backslash is one of the value. The value is empty for a word alone.
template <class Take>
void ForEachParameter(std::string_view params, Take take) {
  const auto pastBlanks = [params](std::size_t at) {
    while (at < params.size() && IsWhiteSpace(params[at])) ++at;
    return at;
  };
  for (std::size_t at = pastBlanks(1); at < params.size(); at = pastBlanks(at + 1)) {
    const std::size_t begin = at;
    at = std::min(params.find_first_of(";=", begin + 1), params.size());
    const std::string_view name = params.substr(begin, at - begin);
    std::string_view value;
    if (at < params.size() && params[at] == '=') {
      const std::size_t first = pastBlanks(at + 1);
      bool isEscaped = false;
      for (at = std::min(first + 1, params.size()); at < params.size(); ++at) {
        if (params[at] == ';' && !std::exchange(isEscaped, false)) break;
        if (params[at] == '\\') isEscaped = !isEscaped;
      }
      value = params.substr(std::min(first, at), at - std::min(first, at));
    }
    take(Trim(name), Trim(value), params.substr(begin, at - begin));
  }
}

// How the value is put into bytes.
struct LineCoding {
  bool isQuotedPrintable = false;
  bool isBase64 = false;
  bool isB = false;               // as 3.0 says base64, which the readers don't know
  std::string_view charset = {};  // as it is named; empty without one

  static LineCoding Of(std::string_view params) {
    LineCoding coding;
    ForEachParameter(params,
                     [&coding](std::string_view name, std::string_view value, std::string_view) {
                       if (IsWordInText(name, "CHARSET")) coding.charset = value;
                       const bool isEncoding = IsWordInText(name, "ENCODING");
                       const std::string_view word = isEncoding ? value : name;
                       if (IsWordInText(word, "QUOTED-PRINTABLE", isEncoding)) {
                         coding.isQuotedPrintable = true;
                         coding.isBase64 = false;
                       } else if (IsWordInText(word, "BASE64", isEncoding) ||
                                  (isEncoding && IsWordInText(word, "B", isEncoding))) {
                         coding.isBase64 = true;
                         coding.isB = IsWordInText(word, "B", isEncoding);
                         coding.isQuotedPrintable = false;
                       } else if (IsWordInText(word, "8BIT", isEncoding)) {
                         coding.isBase64 = coding.isQuotedPrintable = false;
                       }
                     });
    return coding;
  }
};

// The line without what ends it.
constexpr std::string_view WithoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  while (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// Takes the first line off a text that isn't empty, with its line end.
inline std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
  text.remove_prefix(line.size());
  return line;
}

// Whether a line is base64 and nothing else, as one that lost the blank at its head.
constexpr bool IsBase64Line(std::string_view line) {
  line = WithoutLineEnd(line);
  if (line.empty()) return false;
  for (const char c : line)
    if (!IsLetter(c) && !IsDigit(c) && c != '+' && c != '/' && c != '=') return false;
  return true;
}

}  // namespace pim
