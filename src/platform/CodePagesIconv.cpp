// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pim/platform/Host.h"
#include "platform/AsciiRuns.h"
#include "platform/CodePages.h"
#include "platform/Iconv.h"
#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace pim {
namespace {

// With the byte order in the name, iconv neither writes nor expects a byte order mark.
constexpr const char* kUtf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

// The end of a string as the room for a converter's output, which grows as it's needed.
template <class String>
class IconvOutput {
 public:
  IconvOutput(String& text, std::size_t expected) : text_(text), used_(text.size()) {
    text_.resize(used_ + expected);
  }
  IconvOutput(const IconvOutput&) = delete;
  IconvOutput& operator=(const IconvOutput&) = delete;
  ~IconvOutput() { text_.resize(used_); }

  // `step` is called with the room, as `char*& to, std::size_t& room` in bytes, until there was
  // enough of it.
  template <class Step>
  Iconv::Outcome Run(Step step) {
    constexpr std::size_t kLongestOutput = 64;  // of one character, shift sequences included
    for (;;) {
      const std::size_t before = (text_.size() - used_) * kUnit;
      std::size_t room = before;
      char* to = reinterpret_cast<char*>(text_.data() + used_);
      const Iconv::Outcome outcome = step(to, room);
      used_ = text_.size() - room / kUnit;
      if (outcome != Iconv::Outcome::NoRoom) return outcome;
      // A converter that asks for more than a character can need would ask for ever.
      if (room == before && room >= kLongestOutput) return Iconv::Outcome::Invalid;
      text_.resize(text_.size() + text_.size() / 2 + kLongestOutput);
    }
  }

  Iconv::Outcome Convert(Iconv& converter, const char*& from, std::size_t& size) {
    return Run(
        [&](char*& to, std::size_t& room) { return converter.Convert(from, size, to, room); });
  }

  void Finish(Iconv& converter) {
    Run([&](char*& to, std::size_t& room) { return converter.Finish(to, room); });
  }

  void Append(typename String::value_type unit) {
    if (used_ == text_.size()) text_.resize(text_.size() + text_.size() / 2 + 1);
    text_[used_++] = unit;
  }

 private:
  static constexpr std::size_t kUnit = sizeof(typename String::value_type);

  String& text_;
  std::size_t used_;
};

// A charset of iconv's, with what its converters show of themselves.
class Page {
 public:
  explicit Page(const std::string& name)
      : name_(name), decoder_(kUtf16, name.c_str()), encoder_(name.c_str(), kUtf16) {
    if (!IsKnown()) return;
    has_ascii_runs_ = FindAsciiRuns();
    unit_size_ = std::max<std::size_t>(Encoded(u"AA").size() - Encoded(u"A").size(), 1);
  }

  const std::string& name() const noexcept { return name_; }
  bool IsKnown() const noexcept { return decoder_ && encoder_; }
  bool HasAsciiRuns() const noexcept { return has_ascii_runs_; }

  bool Decode(std::string_view bytes, std::u16string& wide) {
    if (!has_ascii_runs_) {
      wide.clear();
    } else {
      wide.resize(bytes.size());
      wide.resize(WidenAscii(bytes, wide.data()));
      bytes.remove_prefix(wide.size());
      if (bytes.empty()) return true;
    }
    decoder_.Reset();
    IconvOutput output(wide, bytes.size());
    const char* from = bytes.data();
    std::size_t size = bytes.size();
    bool isValid = true;
    while (size > 0 && output.Convert(decoder_, from, size) != Iconv::Outcome::Done) {
      isValid = false;
      output.Append(kReplacementCharacter);
      const std::size_t skipped = std::min(size, unit_size_);
      from += skipped;
      size -= skipped;
    }
    output.Finish(decoder_);
    return isValid;
  }

  void Encode(std::u16string_view wide, std::string& bytes) {
    if (!has_ascii_runs_) {
      bytes.clear();
    } else {
      bytes.resize(wide.size());
      bytes.resize(NarrowAscii(wide, bytes.data()));
      wide.remove_prefix(bytes.size());
      if (wide.empty()) return;
    }
    encoder_.Reset();
    IconvOutput output(bytes, 2 * wide.size());
    while (!wide.empty() && EncodeSome(wide, output) != Iconv::Outcome::Done) {
      std::u16string_view replacement = u"\uFFFD";
      if (!IsSurrogate(wide.front()) || IsPairAt(wide, 0) ||
          EncodeSome(replacement, output) != Iconv::Outcome::Done) {
        replacement = u"?";
        EncodeSome(replacement, output);
      }
      wide.remove_prefix(IsPairAt(wide, 0) ? 2 : 1);
    }
    output.Finish(encoder_);
  }

 private:
  std::string Encoded(std::u16string_view wide) {
    std::string bytes;
    Encode(wide, bytes);
    return bytes;
  }

  // Moves `wide` on to what the page can't encode.
  Iconv::Outcome EncodeSome(std::u16string_view& wide, IconvOutput<std::string>& output) {
    const char* from = reinterpret_cast<const char*>(wide.data());
    const std::size_t before = wide.size() * sizeof(char16_t);
    std::size_t size = before;
    const Iconv::Outcome outcome = output.Convert(encoder_, from, size);
    wide.remove_prefix((before - size) / sizeof(char16_t));
    return outcome;
  }

  // Whether each ASCII character stands for itself at the start of a text and at once. A page with
  // shift states fails by the character that shifts (ESC, SO, the tilde or the plus sign), one that
  // composes characters by holding a letter back.
  bool FindAsciiRuns() {
    for (char16_t unit = 0; unit < 0x80; ++unit) {
      const char byte = static_cast<char>(unit);
      std::array<char, 16> wide{};
      std::array<char, 16> narrow{};
      if (ConvertOne(decoder_, &byte, 1, wide) != sizeof unit ||
          std::memcmp(wide.data(), &unit, sizeof unit) != 0 ||
          ConvertOne(encoder_, reinterpret_cast<const char*>(&unit), sizeof unit, narrow) != 1 ||
          narrow.front() != byte)
        return false;
    }
    return true;
  }

  // Gives the number of bytes written, 0 on failure.
  static std::size_t ConvertOne(Iconv& converter, const char* from, std::size_t size,
                                std::array<char, 16>& output) {
    converter.Reset();
    char* to = output.data();
    std::size_t room = output.size();
    const bool done = converter.Convert(from, size, to, room) == Iconv::Outcome::Done;
    return done ? output.size() - room : 0;
  }

  std::string name_;
  Iconv decoder_;
  Iconv encoder_;
  bool has_ascii_runs_ = false;
  std::size_t unit_size_ = 1;  // bytes to skip behind an invalid sequence: 2 for UTF-16
};

// Looked at for each text, and so kept beside the name.
constinit bool defaultIsUtf8 = true;

// The name of the default page when it isn't UTF-8.
std::string& DefaultPageName() {
  static std::string name;
  return name;
}

// Unknown pages are kept as well, so that asking for one again costs nothing. Opening a converter
// costs more than most conversions, and one converter can't serve two threads.
Page& PageNamed(const std::string& name) {
  thread_local std::vector<std::unique_ptr<Page>> opened;
  for (const auto& page : opened)
    if (page->name() == name) return *page;
  return *opened.emplace_back(std::make_unique<Page>(name));
}

bool IsUtf8Page(std::uint32_t codePage) noexcept {
  return codePage == kCodePageUtf8 || (codePage == kCodePageDefault && defaultIsUtf8);
}

// Null for what is converted as UTF-8: UTF-8 itself and a page that this system lacks.
Page* PageOf(std::uint32_t codePage) {
  if (IsUtf8Page(codePage)) return nullptr;
  Page& page =
      PageNamed(codePage == kCodePageDefault ? DefaultPageName() : "CP" + std::to_string(codePage));
  return page.IsKnown() ? &page : nullptr;
}

bool IsAsciiLetterOrDigit(char c) noexcept {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Iconv reads more into a name: none is the locale's charset, a slash starts an option.
bool IsPlainName(std::string_view name) {
  constexpr std::size_t kLongestName = 64;
  return !name.empty() && name.size() <= kLongestName && std::ranges::all_of(name, [](char c) {
    return IsAsciiLetterOrDigit(c) || std::string_view("-_.:+()").find(c) != std::string_view::npos;
  });
}

// In any spelling: utf8, UTF-8, utf_8.
bool IsUtf8Name(std::string_view name) {
  std::string letters;
  for (const char c : name)
    if (c != '-' && c != '_') letters += c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
  return letters == "utf8";
}

}  // namespace

bool MultiByteToWide(std::uint32_t codePage, std::string_view bytes, std::u16string& wide) {
  if (Page* page = PageOf(codePage)) return page->Decode(bytes, wide);
  return Utf8ToWide(bytes, wide);
}

void WideToMultiByte(std::uint32_t codePage, std::u16string_view wide, std::string& bytes) {
  if (Page* page = PageOf(codePage)) {
    page->Encode(wide, bytes);
  } else {
    bytes.clear();
    AppendUtf8(wide, bytes);
  }
}

std::string_view DefaultCodePageName() {
  return defaultIsUtf8 ? std::string_view("UTF-8") : std::string_view(DefaultPageName());
}

bool HasAsciiRuns(std::uint32_t codePage) {
  if (IsUtf8Page(codePage)) return true;
  const Page* page = PageOf(codePage);
  return page == nullptr || page->HasAsciiRuns();
}

bool SetDefaultCodePage(std::string_view name) {
  if (IsUtf8Name(name)) {
    defaultIsUtf8 = true;
    return true;
  }
  std::string kept(name);
  if (!IsPlainName(name) || !PageNamed(kept).IsKnown()) return false;
  DefaultPageName() = std::move(kept);
  defaultIsUtf8 = false;
  return true;
}

}  // namespace pim
