// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/Floors.h"

#include <array>
#include <cstring>

#include "support/Base64.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace pim::bench {
namespace {

// Calls take(value) with what stands behind the first colon of each line.
template <class Take>
void ForEachValue(std::string_view text, Take take) {
  const char* from = text.data();
  const char* const end = from + text.size();
  while (from != end) {
    const auto* line =
        static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
    if (line == nullptr) line = end;
    const auto* colon =
        static_cast<const char*>(std::memchr(from, ':', static_cast<std::size_t>(line - from)));
    if (colon != nullptr)
      take(std::string_view(colon + 1, static_cast<std::size_t>(line - colon - 1)));
    from = line == end ? end : line + 1;
  }
}

constexpr std::array<std::uint32_t, 256> MakePlace(unsigned shift) {
  std::array<std::uint32_t, 256> place{};
  for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i)
    place[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<std::uint32_t>(i) << shift;
  return place;
}
constexpr std::array<std::array<std::uint32_t, 256>, 4> kPlaces = {MakePlace(18), MakePlace(12),
                                                                   MakePlace(6), MakePlace(0)};

// Narrows eight units a step; what the step writes beyond the text is overwritten.
char* Narrow(WideStringView text, char* to) {
#if defined(__SSE2__)
  for (std::size_t i = 0; i < text.size(); i += 8) {
    __m128i units = _mm_setzero_si128();
    if (text.size() - i >= 8) {
      units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
    } else {
      std::memcpy(&units, text.data() + i, (text.size() - i) * sizeof(char16_t));
    }
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to + i), _mm_packus_epi16(units, units));
  }
#else
  for (std::size_t i = 0; i < text.size(); ++i) to[i] = static_cast<char>(text[i]);
#endif
  return to + text.size();
}

// Copies a field as a line of its own into a buffer that is large enough.
class FieldCopier {
 public:
  explicit FieldCopier(char* to) : to_(to) {}

  template <std::size_t Size>
  void Copy(const char (&head)[Size], WideStringView text) {
    if (text.empty()) return;
    std::memcpy(to_, head, Size - 1);
    to_ = Narrow(text, to_ + Size - 1);
    std::memcpy(to_, "\r\n", 2);
    to_ += 2;
  }
  char* end() const { return to_; }

 private:
  char* to_;
};

}  // namespace

std::size_t FindLinesAndColons(std::string_view text) {
  std::size_t count = 0;
  ForEachValue(text, [&](std::string_view) { ++count; });
  return count;
}

std::vector<std::u16string> MakeStrings(std::string_view text) {
  std::vector<std::u16string> strings;
  ForEachValue(text,
               [&](std::string_view value) { strings.emplace_back(value.begin(), value.end()); });
  return strings;
}

std::size_t DecodeBase64(std::string_view text, std::string& out) {
  if (out.size() < text.size()) out.resize(text.size());
  char* to = out.data();
  const char* from = text.data();
  const char* const end = from + text.size();
  while (from != end) {
    const auto* line =
        static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
    if (line == nullptr) line = end;
    if (*from == ' ') ++from;
    for (; line - from >= 4; from += 4, to += 3) {
      const auto digit = [from](std::size_t i) { return static_cast<unsigned char>(from[i]); };
      const std::uint32_t bits =
          kPlaces[0][digit(0)] | kPlaces[1][digit(1)] | kPlaces[2][digit(2)] | kPlaces[3][digit(3)];
      to[0] = static_cast<char>(bits >> 16);
      to[1] = static_cast<char>(bits >> 8);
      to[2] = static_cast<char>(bits);
    }
    from = line == end ? end : line + 1;
  }
  return static_cast<std::size_t>(to - out.data());
}

std::size_t CopyStrings(const CContact& contact, char* out) {
  FieldCopier copier(out);
  for (const CName* name : {&contact.name, &contact.phonetic}) {
    for (const WideText* text : {&name->family_name, &name->given_name, &name->additional_name,
                                 &name->prefix_name, &name->suffix_name})
      copier.Copy("N:", *text);
  }
  copier.Copy("FN:", contact.formatted_name);
  copier.Copy("X-HOBBY:", contact.hobby);
  copier.Copy("TITLE:", contact.org_title);
  copier.Copy("ROLE:", contact.org_role);
  for (const auto& entry : contact.telephones()) copier.Copy("TEL;CELL:", entry.number);
  for (const auto& entry : contact.emails()) copier.Copy("EMAIL;Work:", entry.email_address);
  for (const auto& entry : contact.urls()) copier.Copy("URL;Work:", entry.url_address);
  for (const auto& entry : contact.addresses()) {
    for (const WideText* text :
         {&entry.street, &entry.locality, &entry.region, &entry.postal_code, &entry.country})
      copier.Copy("ADR;HOME:", *text);
  }
  for (const auto& entry : contact.organizations()) {
    copier.Copy("ORG;Work:", entry.org_name);
    copier.Copy("ORG;Work:", entry.org_position);
  }
  for (const auto& entry : contact.comments()) copier.Copy("NOTE:", entry);
  for (const auto& entry : contact.groups()) copier.Copy("X-GROUP:", entry);
  return static_cast<std::size_t>(copier.end() - out);
}

std::size_t CopyStrings(const CCalendar& item, char* out) {
  FieldCopier copier(out);
  copier.Copy("SUMMARY:", item.summary);
  copier.Copy("DESCRIPTION:", item.description);
  copier.Copy("LOCATION:", item.location);
  copier.Copy("X-COLOR:", item.color);
  for (const auto& category : item.categories) copier.Copy("CATEGORIES:", category.category_name);
  return static_cast<std::size_t>(copier.end() - out);
}

}  // namespace pim::bench
