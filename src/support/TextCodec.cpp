#include "support/TextCodec.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

#include "platform/AsciiRuns.h"
#include "platform/CodePages.h"
#include "support/Ascii.h"

namespace pim {
namespace {

constexpr int kNotHex = -1;

constexpr int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : kNotHex;
}

// Reads up to the first character that is no hexadecimal digit; no digit at all gives 0.
constexpr char HexPair(char high, char low) {
  const int first = HexValue(high);
  if (first == kNotHex) return 0;
  const int second = HexValue(low);
  return static_cast<char>(second == kNotHex ? first : first * 16 + second);
}

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
      QuotedPrintableDecode(bytes, length, to, written);  // a bad escape ends the text
      bytes_ = {to, static_cast<std::size_t>(written)};
    }
  }
  Untransferred(const Untransferred&) = delete;
  Untransferred& operator=(const Untransferred&) = delete;

  NarrowStringView bytes() const { return bytes_; }

 private:
  NarrowStringView bytes_;
  std::array<char, 512> short_;
  std::unique_ptr<char[]> long_;
};

void Convert(std::uint32_t codePage, NarrowStringView bytes, WideString& work, WideText& text) {
  MultiByteToWide(codePage, bytes, work);
  text = work;
}

}  // namespace

void DecodeText(const char* bytes, std::int32_t length, std::int32_t charset, std::int32_t encoding,
                WideString& text) {
  const Untransferred value(bytes, length, encoding);
  MultiByteToWide(CodePageOf(charset), UpToNul(value.bytes()), text);
}

void DecodeText(const char* bytes, std::int32_t length, std::int32_t charset, std::int32_t encoding,
                WideString& work, WideText& text) {
  const std::uint32_t codePage = CodePageOf(charset);
  const Untransferred value(bytes, length, encoding);
  if (IsAsciiText(value.bytes()) && HasAsciiRuns(codePage)) {
    text.AssignAscii(value.bytes());
  } else {
    Convert(codePage, UpToNul(value.bytes()), work, text);
  }
}

void WidenText(NarrowStringView bytes, WideString& work, WideText& text) {
  if (IsAsciiText(bytes) && HasAsciiRuns(kCodePageDefault)) {
    text.AssignAscii(bytes);
  } else {
    Convert(kCodePageDefault, bytes, work, text);
  }
}

void WidenText(NarrowStringView bytes, WideString& text) {
  MultiByteToWide(kCodePageDefault, bytes, text);
}

void NarrowText(WideStringView text, NarrowString& bytes) {
  WideToMultiByte(kCodePageDefault, text, bytes);
}

namespace {

constexpr int kSoftBreakColumn = 68;  // a line of at least so many columns is broken
constexpr int kBlankColumns = 64;     // from here on a blank is escaped

constexpr bool IsLiteral(char c) { return c > 32 && c < 127 && c != '='; }

// Whether a value encodes to itself, as most do: it is short and plain.
bool EncodesToItself(NarrowStringView value) {
  return value.size() <= kBlankColumns &&
         std::ranges::all_of(value, [](char c) { return IsLiteral(c) || c == ' ' || c == '\t'; });
}

}  // namespace

std::int32_t QuotedPrintableEncodedSize(std::int32_t length) {
  const std::int64_t tripled = std::int64_t{3} * length;
  const std::int64_t size = tripled + 3 * (tripled / kSoftBreakColumn) + 3;
  if (size > std::numeric_limits<std::int32_t>::max()) throw SizeOverflow();
  return static_cast<std::int32_t>(size);
}

void QuotedPrintableEncode(const char* bytes, std::int32_t length, NarrowString& out) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  const std::int32_t bound = QuotedPrintableEncodedSize(length);
  const char* const end = bytes + length;
  out.resize(static_cast<std::size_t>(bound));
  char* to = out.data();
  int column = 0;
  for (const char* from = bytes; from != end; ++from) {
    const char c = *from;
    if (IsLiteral(c) || ((c == ' ' || c == '\t') && column < kBlankColumns)) {
      *to++ = c;
      ++column;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      *to++ = '=';
      *to++ = kDigits[byte >> 4];
      *to++ = kDigits[byte & 15];
      column += 3;
    }
    if (column >= kSoftBreakColumn && from + 1 != end) {
      to = std::copy_n("=\r\n", 3, to);
      column = 0;
    }
  }
  out.resize(static_cast<std::size_t>(to - out.data()));
}

void EncodeText(WideStringView text, NarrowString& encoded) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() / 4))
    throw SizeOverflow();
  encoded.clear();
  AppendUtf8(text, encoded);
  if (EncodesToItself(encoded)) return;
  const NarrowString utf8 = encoded;
  QuotedPrintableEncode(utf8.data(), static_cast<std::int32_t>(utf8.size()), encoded);
}

bool QuotedPrintableDecode(const char* bytes, std::int32_t length, char* out,
                           std::int32_t& written) {
  const char* from = bytes;
  const char* const end = bytes + length;
  char* to = out;
  bool whole = true;
  while (from != end) {
    const char c = *from++;
    if (c != '=') {
      if (c != '\r' && c != '\n') *to++ = c;
    } else if (from != end && (IsDigit(*from) || IsLetter(*from))) {
      if (end - from < 2) break;  // a pair cut short by the end gives no byte
      *to++ = HexPair(from[0], from[1]);
      from += 2;
    } else if (end - from >= 2 && from[0] == '\r' && from[1] == '\n') {
      from += 2;
    } else {
      whole = false;
      break;
    }
  }
  written = static_cast<std::int32_t>(to - out);
  return whole;
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
