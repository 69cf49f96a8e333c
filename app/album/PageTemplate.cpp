// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/PageTemplate.h"

#include <nettle/sha2.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "app/album/PageFiles.h"
#include "support/Base64.h"

namespace pim::app {
namespace {

struct Place {
  std::string_view name;
  std::string_view text;
};

// One pass, so that what stands in for a place is never taken for another one.
std::string Filled(std::string_view text, std::span<const Place> places) {
  std::string filled;
  for (;;) {
    const std::size_t next = std::min(text.find("{{"), text.size());
    filled += text.substr(0, next);
    text.remove_prefix(next);
    if (text.empty()) return filled;
    const auto place = std::ranges::find_if(
        places, [text](const Place& candidate) { return text.starts_with(candidate.name); });
    const bool isPlace = place != places.end();
    filled += isPlace ? place->text : text.substr(0, 1);
    text.remove_prefix(isPlace ? place->name.size() : 1);
  }
}

std::string EscapedAsHtml(std::string_view text) {
  static constexpr Place kEscapes[] = {
      {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&#39;"}};
  std::string escaped;
  for (const char& c : text) {
    const auto* const row = std::ranges::find(kEscapes, std::string_view(&c, 1), &Place::name);
    escaped += row == std::end(kEscapes) ? std::string_view(&c, 1) : row->text;
  }
  return escaped;
}

// As a policy names what stands between the tags of an element.
std::string HashSource(std::string_view text) {
  sha256_ctx context;
  std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_init(&context);
  sha256_update(&context, text.size(), reinterpret_cast<const std::uint8_t*>(text.data()));
  sha256_digest(&context, digest.size(), digest.data());
  return "'sha256-" + Base64Encode(reinterpret_cast<const char*>(digest.data()), digest.size()) +
         "'";
}

constexpr std::string_view kContactStyles[] = {"album.css"};
constexpr std::string_view kCalendarStyles[] = {"album.css", "calendar.css"};
constexpr std::string_view kContactScripts[] = {"shared.js", "links.js", "list.js", "cards.js",
                                                "contacts.js"};
constexpr std::string_view kCalendarScripts[] = {"shared.js", "links.js", "list.js",    "days.js",
                                                 "items.js",  "views.js", "calendar.js"};

std::string Joined(std::span<const std::string_view> names) {
  std::string joined;
  for (const std::string_view name : names) joined += PageFileText(name);
  return joined;
}

}  // namespace

PageFrame FilledPage(TextForm form, std::string_view language, std::string_view title) {
  const bool isContacts = form == TextForm::VCard;
  const std::string style = isContacts ? Joined(kContactStyles) : Joined(kCalendarStyles);
  const std::string script = isContacts ? Joined(kContactScripts) : Joined(kCalendarScripts);
  const std::string policy =
      "default-src 'none'; img-src data:; style-src " + HashSource(style) + "; script-src " +
      HashSource(script) +
      "; base-uri 'none'; form-action 'none'; require-trusted-types-for 'script'; trusted-types "
      "'none'";
  const std::string shownTitle = EscapedAsHtml(title);
  const Place places[] = {
      {"{{lang}}", language},
      {"{{kind}}", isContacts ? "contacts" : "calendar"},
      {"{{main}}", PageFileText(isContacts ? "contacts.html" : "calendar.html")},
      {"{{title}}", shownTitle},
      {"{{policy}}", policy},
      {"{{style}}", style},
      {"{{script}}", script}};
  constexpr std::string_view kData = "{{data}}";
  const std::string_view page = PageFileText("page.html");
  const std::size_t data = page.find(kData);
  return {Filled(page.substr(0, data), places), Filled(page.substr(data + kData.size()), places)};
}

}  // namespace pim::app
