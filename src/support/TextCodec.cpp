// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/TextCodec.h"

#include <algorithm>
#include <array>
#include <memory>

#include "platform/AsciiRuns.h"
#include "platform/CodePages.h"
#include "support/ParameterWords.h"

namespace pim {
namespace {

std::uint32_t CodePageOf(std::int32_t charset) {
  switch (charset) {
    case CHARSET_UTF8:
      return kCodePageUtf8;
    case CHARSET_SHIFT_JIS:
      return kCodePageShiftJis;
    default:
      return kCodePageDefault;
  }
}

NarrowStringView UpToNul(NarrowStringView bytes) { return bytes.substr(0, bytes.find('\0')); }

// The bytes behind a transfer encoding. Short ones, which most are, need no memory of their own.
class Untransferred {
 public:
  Untransferred(const char* bytes, std::int32_t length, std::int32_t encoding)
      : bytes_(bytes, static_cast<std::size_t>(length)) {
    if (encoding == ENCODING_QUOTED_PRINTABLE) {
      char* to = short_.data();
      if (bytes_.size() > short_.size()) {
        long_.reset(new char[bytes_.size()]);
        to = long_.get();
      }
      std::int32_t written = 0;
      bool isExact = true;
      QuotedPrintableDecode(bytes, length, to, written, &isExact);  // a bad escape ends the text
      bytes_ = {to, static_cast<std::size_t>(written)};
      if (!isExact) losses_ = LOSS_BAD_ESCAPE;
    }
  }
  Untransferred(const Untransferred&) = delete;
  Untransferred& operator=(const Untransferred&) = delete;

  NarrowStringView bytes() const { return bytes_; }
  LossMask losses() const { return losses_; }

 private:
  NarrowStringView bytes_;
  LossMask losses_ = 0;
  std::array<char, 512> short_;
  std::unique_ptr<char[]> long_;
};

bool HasOtherThanAscii(NarrowStringView bytes) {
  return std::ranges::any_of(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

LossMask Convert(std::uint32_t codePage, NarrowStringView bytes, WideString& text) {
  return LossIf(!MultiByteToWide(codePage, bytes, text), LOSS_INVALID_BYTES);
}

// What of a value isn't plain ASCII: up to its first NUL.
LossMask ConvertValue(std::int32_t charset, NarrowStringView bytes, WideString& text) {
  const NarrowStringView kept = UpToNul(bytes);
  return Convert(CodePageOf(charset), kept, text) | LossIf(kept.size() != bytes.size(), LOSS_NUL) |
         LossIf(charset == CHARSET_OTHER && HasOtherThanAscii(kept), LOSS_UNKNOWN_CHARSET);
}

}  // namespace

LossMask DecodeText(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, WideString& text) {
  const Untransferred value(bytes, length, encoding);
  return value.losses() | ConvertValue(charset, value.bytes(), text);
}

LossMask DecodeText(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, WideString& work, WideText& text) {
  const Untransferred value(bytes, length, encoding);
  if (IsAsciiText(value.bytes()) && HasAsciiRuns(CodePageOf(charset))) {
    text.AssignAscii(value.bytes());
    return value.losses();
  }
  const LossMask losses = ConvertValue(charset, value.bytes(), work);
  text = work;
  return value.losses() | losses;
}

LossMask WidenText(NarrowStringView bytes, WideString& work, WideText& text) {
  if (IsAsciiText(bytes) && HasAsciiRuns(kCodePageDefault)) {
    text.AssignAscii(bytes);
    return 0;
  }
  const LossMask losses = Convert(kCodePageDefault, bytes, work);
  text = work;
  return losses;
}

void WidenText(NarrowStringView bytes, WideString& text) {
  MultiByteToWide(kCodePageDefault, bytes, text);
}

void NarrowText(WideStringView text, NarrowString& bytes) {
  WideToMultiByte(kCodePageDefault, text, bytes);
}

void AppendParameter(NarrowString& parameters, NarrowStringView name, NarrowStringView value) {
  parameters.append(1, ';').append(name).append(1, '=').append(value);
}

NarrowStringView TextParameters() {
  static const NarrowString text = [] {
    NarrowString parameters;
    AppendParameter(parameters, kCharsetName, kUtf8Word.text);
    AppendParameter(parameters, kEncodingName, kQuotedPrintableWord.text);
    return parameters;
  }();
  return text;
}

void EscapeValue(NarrowString& value) {
  const auto special = std::ranges::count_if(value, [](char c) { return c == '\\' || c == ';'; });
  if (special == 0) return;
  NarrowString escaped;
  escaped.reserve(value.size() + static_cast<std::size_t>(special));
  for (const char c : value) {
    if (c == '\\' || c == ';') escaped.push_back('\\');
    escaped.push_back(c);
  }
  value = std::move(escaped);
}

void UnescapeValue(NarrowString& value) {
  const std::size_t first = value.find('\\');
  if (first == NarrowString::npos) return;
  std::size_t to = first;
  for (std::size_t from = first; from < value.size(); ++from) {
    if (value[from] == '\\' && from + 1 < value.size() &&
        (value[from + 1] == ';' || value[from + 1] == '\\'))
      ++from;
    value[to++] = value[from];
  }
  value.resize(to);
}

bool IsFieldSeparator(NarrowStringView text, std::size_t index) {
  if (text[index] != ';') return false;
  std::size_t run = index;
  while (run > 0 && text[run - 1] == '\\') --run;
  return (index - run) % 2 == 0;
}

void AppendProperty(NarrowString& out, NarrowStringView name, NarrowStringView parameters,
                    NarrowStringView value) {
  out.append(name).append(parameters).append(1, ':').append(value).append("\r\n");
}

}  // namespace pim
