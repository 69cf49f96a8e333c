// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pim::app {

// Whether a text names a store in a server: "postgresql://" or "postgres://" in front.
bool IsServerUrl(std::string_view text);

// Where the passwords stand in the URL that a text holds, such as "--store=postgresql://...", as
// offsets from the first to behind the last character, in order. One that isn't written as it
// should be, with a @ or ? of the password as it stands, hides more rather than less.
std::vector<std::pair<std::size_t, std::size_t>> PasswordsIn(std::string_view text);

// What is wrong with a URL so that libpq would take a part of the password for something else, and
// name it; empty where nothing is.
std::string_view ProblemOfUrl(std::string_view url);

// The text with *** in the place of each.
std::string WithoutPasswords(std::string_view text);

}  // namespace pim::app
