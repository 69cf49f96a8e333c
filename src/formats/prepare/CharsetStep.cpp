// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "formats/prepare/BlockSteps.h"
#include "platform/Iconv.h"

namespace pim {
namespace {

// Those that the readers know (VCardReader.h, VCalendarReader.h).
constexpr std::string_view kKnownCharsets[] = {"UTF-8", "SHIFT_JIS"};

// A byte of a value, and whether it was written as an escape.
struct ValueByte {
  char byte;
  bool wasEscaped;
};

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

// The value unfolded, soft breaks and escapes undone; nothing for an escape that isn't one.
std::optional<std::vector<ValueByte>> BytesOf(std::string_view value, bool isQuotedPrintable) {
  std::vector<ValueByte> bytes;
  bytes.reserve(value.size());
  bool isAtStart = false;
  while (!value.empty()) {
    const char c = value.front();
    if (c == '\r' || c == '\n') {
      value.remove_prefix(1);
      isAtStart = isAtStart || c == '\n';
      continue;
    }
    const bool isFold = isAtStart && IsBlank(c);
    isAtStart = false;
    if (isFold) {
      value.remove_prefix(1);
      continue;
    }
    if (!isQuotedPrintable || c != '=') {
      bytes.push_back({c, false});
      value.remove_prefix(1);
      continue;
    }
    const std::string_view rest = value.substr(1);
    if (rest.empty() || rest.front() == '\n' || rest.starts_with("\r\n")) {
      value = rest;
      continue;
    }
    if (rest.size() < 2) return std::nullopt;
    const int high = HexDigit(rest[0]);
    const int low = HexDigit(rest[1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back({static_cast<char>(high * 16 + low), true});
    value = rest.substr(2);
  }
  return bytes;
}

// Writes a value in UTF-8 with the escapes that it needs, and breaks its lines.
class ValueWriter {
 public:
  ValueWriter(bool escapes, std::string_view lineEnd) : lineEnd_(lineEnd), escapes_(escapes) {}

  // A character; an escaped one of ASCII stays one, since a semicolon that divides fields doesn't.
  void Add(std::string_view character, bool isEscaped) {
    constexpr std::size_t kLine = 64;
    plain += character;
    if (!escapes_) {
      text += character;
      return;
    }
    const char c = character.front();
    const bool isPlain = character.size() == 1 && c >= ' ' && c <= '~' && c != '=' && !isEscaped;
    if (column_ >= kLine) {
      text.append("=").append(lineEnd_);
      column_ = 0;
    }
    if (isPlain && (c != ' ' || column_ > 0)) {
      text += c;
      ++column_;
      return;
    }
    constexpr std::string_view kHex = "0123456789ABCDEF";
    for (const char one : character) {
      const auto byte = static_cast<unsigned char>(one);
      text.append({'=', kHex[byte >> 4], kHex[byte & 15]});
      column_ += 3;
    }
  }

  std::string text;   // as it is written
  std::string plain;  // without escapes

 private:
  std::string_view lineEnd_;
  std::size_t column_ = 0;
  bool escapes_;
};

// The text of the bytes, character by character; nothing where some are no text.
std::optional<ValueWriter> Converted(const std::vector<ValueByte>& bytes,
                                     const std::string& charset, bool escapes,
                                     std::string_view lineEnd) {
  constexpr std::size_t kLongest = 8;  // bytes of a character, with a change of its state
  Iconv converter("UTF-8", charset.c_str());
  ValueWriter writer(escapes, lineEnd);
  for (std::size_t at = 0; at < bytes.size();) {
    std::array<char, kLongest> source;
    bool isDone = false;
    for (std::size_t size = 1; !isDone && size <= kLongest && at + size <= bytes.size(); ++size) {
      source[size - 1] = bytes[at + size - 1].byte;
      std::array<char, 32> target;
      const char* from = source.data();
      std::size_t fromSize = size;
      char* to = target.data();
      std::size_t room = target.size();
      if (converter.Convert(from, fromSize, to, room) != Iconv::Outcome::Done) continue;
      if (to != target.data()) {
        writer.Add({target.data(), static_cast<std::size_t>(to - target.data())},
                   size == 1 && bytes[at].wasEscaped);
      }
      at += size;
      isDone = true;
    }
    if (!isDone) return std::nullopt;
  }
  return writer;
}

// The parameters with another charset's name.
std::string WithCharset(std::string_view params, std::string_view charset) {
  std::string changed(params);
  changed.replace(static_cast<std::size_t>(charset.data() - params.data()), charset.size(),
                  "UTF-8");
  return changed;
}

}  // namespace

bool MayNeedCharset(const LineCoding& coding) {
  return !coding.charset.empty() && !coding.isBase64 &&
         std::ranges::none_of(kKnownCharsets, [&](std::string_view known) {
           return EqualsIgnoringCase(known, coding.charset);
         });
}

void MendCharset(PropertyLine& line, PrepareNotes& notes) {
  const LineHead head = line.head();
  if (!head.hasColon()) return;
  const LineCoding coding = LineCoding::Of(head.params);
  if (!MayNeedCharset(coding)) return;
  const std::string charset(coding.charset);
  if (charset.find('\0') != std::string::npos || !Iconv("UTF-8", charset.c_str())) return;
  std::string_view value = line.value();
  // Blanks there are no part of it.
  value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
  const auto bytes = BytesOf(value, coding.isQuotedPrintable);
  if (!bytes) return;
  const auto converted = Converted(*bytes, charset, coding.isQuotedPrintable, line.lineEnd());
  // What is the same in both reads well under any name.
  if (!converted || std::ranges::equal(*bytes, converted->plain, {}, &ValueByte::byte)) return;
  const std::string end(line.lineEnd());
  line.text = std::string(head.name) + WithCharset(head.params, coding.charset) + ":" +
              converted->text + end;
  notes.Add(PrepareStep::Charsets, line.first, line.last, charset + " became UTF-8");
}

}  // namespace pim
