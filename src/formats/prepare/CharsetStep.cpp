// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "formats/prepare/BlockSteps.h"
#include "formats/prepare/ValueBytes.h"
#include "platform/Iconv.h"

namespace pim {
namespace {

// Those that the readers know (VCardReader.h, VCalendarReader.h).
constexpr std::string_view kKnownCharsets[] = {"UTF-8", "SHIFT_JIS"};

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
std::optional<ValueWriter> Converted(const ValueBytes& value, const std::string& charset,
                                     bool escapes, std::string_view lineEnd) {
  constexpr std::size_t kLongest = 8;  // bytes of a character, with a change of its state
  Iconv converter("UTF-8", charset.c_str());
  ValueWriter writer(escapes, lineEnd);
  for (std::size_t at = 0; at < value.bytes.size();) {
    std::array<char, kLongest> source;
    bool isDone = false;
    for (std::size_t size = 1; !isDone && size <= kLongest && at + size <= value.bytes.size();
         ++size) {
      source[size - 1] = value.bytes[at + size - 1];
      std::array<char, 32> target;
      const char* from = source.data();
      std::size_t fromSize = size;
      char* to = target.data();
      std::size_t room = target.size();
      if (converter.Convert(from, fromSize, to, room) != Iconv::Outcome::Done) continue;
      if (to != target.data()) {
        writer.Add({target.data(), static_cast<std::size_t>(to - target.data())},
                   size == 1 && value.IsEscape(at));
      }
      at += size;
      isDone = true;
    }
    if (!isDone) return std::nullopt;
  }
  // A letter that an accent might have followed.
  std::array<char, 32> rest;
  char* to = rest.data();
  std::size_t room = rest.size();
  if (converter.Finish(to, room) != Iconv::Outcome::Done) return std::nullopt;
  if (to != rest.data())
    writer.Add({rest.data(), static_cast<std::size_t>(to - rest.data())}, false);
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
           return IsWordInText(coding.charset, known, true);
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
  const ValueBytes bytes(value, coding.isQuotedPrintable);
  if (bytes.isDamaged()) return;
  const auto converted = Converted(bytes, charset, coding.isQuotedPrintable, line.lineEnd());
  // What is the same in both reads well under any name.
  if (!converted || converted->plain == bytes.bytes) return;
  const std::string end(line.lineEnd());
  line.text = std::string(head.name) + WithCharset(head.params, coding.charset) + ":" +
              converted->text + end;
  notes.Add(PrepareStep::Charsets, line.first, line.last, charset + " became UTF-8");
}

}  // namespace pim
