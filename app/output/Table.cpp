// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Table.h"

#include <utf8proc.h>

#include <algorithm>

namespace pim::app {
namespace {

struct Cut {
  std::size_t bytes = 0;
  std::size_t cells = 0;
};

// As much of the text as fits into `cells`, not dividing a character.
Cut Fit(const std::string& text, std::size_t cells) {
  Cut cut;
  while (cut.bytes < text.size()) {
    utf8proc_int32_t character = 0;
    const auto* from = reinterpret_cast<const utf8proc_uint8_t*>(text.data()) + cut.bytes;
    const auto left = static_cast<utf8proc_ssize_t>(text.size() - cut.bytes);
    const utf8proc_ssize_t size = utf8proc_iterate(from, left, &character);
    const auto width = size > 0 ? static_cast<std::size_t>(utf8proc_charwidth(character)) : 1;
    if (cut.cells + width > cells) break;
    cut.cells += width;
    cut.bytes += size > 0 ? static_cast<std::size_t>(size) : 1;
  }
  return cut;
}

}  // namespace

Table::Table(std::vector<std::string> titles, std::size_t widest)
    : titles_(std::move(titles)), widths_(titles_.size()), widest_(widest) {
  Measure(titles_);
}

void Table::Measure(const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < widths_.size(); ++i)
    widths_[i] = std::max(widths_[i], Fit(cells[i], widest_).cells);
}

std::string Table::Line(const std::vector<std::string>& cells) const {
  std::string line;
  for (std::size_t i = 0; i + 1 < widths_.size(); ++i) {
    Cut cut = Fit(cells[i], widths_[i]);
    const bool whole = cut.bytes == cells[i].size();
    if (!whole) cut = Fit(cells[i], widths_[i] - 1);
    line.append(cells[i], 0, cut.bytes).append(whole ? "" : "\u2026");
    line.append(widths_[i] - cut.cells - (whole ? 0 : 1) + 2, ' ');
  }
  line.append(cells.back());
  line.erase(line.find_last_not_of(' ') + 1);
  return line.append("\n");
}

}  // namespace pim::app
