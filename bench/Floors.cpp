#include "bench/Floors.h"

#include <array>
#include <cstring>

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
  constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::array<std::uint32_t, 256> place{};
  for (std::size_t i = 0; i < kAlphabet.size(); ++i)
    place[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint32_t>(i) << shift;
  return place;
}
constexpr std::array<std::array<std::uint32_t, 256>, 4> kPlaces = {MakePlace(18), MakePlace(12),
                                                                   MakePlace(6), MakePlace(0)};

void Copy(WideStringView text, std::string& out) {
  for (const char16_t unit : text) out += static_cast<char>(unit);
}

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

void CopyStrings(const CContact& contact, std::string& out) {
  const auto copy = [&out](WideStringView text) { Copy(text, out); };
  for (const CName* name : {&contact.name, &contact.phonetic}) {
    for (const WideText* text : {&name->family_name, &name->given_name, &name->additional_name,
                                 &name->prefix_name, &name->suffix_name})
      copy(*text);
  }
  for (const WideText* text :
       {&contact.formatted_name, &contact.hobby, &contact.org_title, &contact.org_role})
    copy(*text);
  for (const auto& entry : contact.telephones()) copy(entry.number);
  for (const auto& entry : contact.emails()) copy(entry.email_address);
  for (const auto& entry : contact.urls()) copy(entry.url_address);
  for (const auto& entry : contact.addresses()) {
    for (const WideText* text :
         {&entry.street, &entry.locality, &entry.region, &entry.postal_code, &entry.country})
      copy(*text);
  }
  for (const auto& entry : contact.organizations()) {
    copy(entry.org_name);
    copy(entry.org_position);
  }
  for (const auto& entry : contact.comments()) copy(entry);
  for (const auto& entry : contact.groups()) copy(entry);
}

void CopyStrings(const CCalendar& item, std::string& out) {
  for (const WideText* text : {&item.summary, &item.description, &item.location, &item.color})
    Copy(*text, out);
  for (const auto& category : item.categories) Copy(category.category_name, out);
}

}  // namespace pim::bench
