// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "stream/VObjectParser.h"

namespace pim {

// What the handlers were given for a text in one or several pieces, one event a line:
// "NAME;param=value;param", "[value]", "." for the end of a value, "rejected".
inline std::string EventsOf(std::span<const std::string_view> pieces) {
  std::string events;
  const auto parser = VObjectParser::Create();
  parser->SetUserData(&events);
  parser->SetPropertyHandler([](void* user, const char* name, const ParserParam* params) {
    auto& log = *static_cast<std::string*>(user);
    log += name;
    for (; params->name.text != nullptr; ++params) {
      log.append(";").append(params->name.text);
      if (params->value.text != nullptr) log.append("=").append(params->value.text);
    }
    log += '\n';
  });
  parser->SetDataHandler([](void* user, const char* bytes, std::int32_t length) {
    auto& log = *static_cast<std::string*>(user);
    if (bytes == nullptr) {
      log += ".\n";
    } else {
      log.append("[").append(bytes, static_cast<std::size_t>(length)).append("]\n");
    }
  });
  std::size_t left = pieces.size();
  for (const std::string_view piece : pieces) {
    --left;
    if (!parser->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), left == 0)) {
      events += "rejected\n";
      break;
    }
  }
  return events;
}

inline std::string EventsOf(std::initializer_list<std::string_view> pieces) {
  return EventsOf(std::span(pieces.begin(), pieces.size()));
}

}  // namespace pim
