// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/BlockLines.h"

#include <algorithm>
#include <utility>

#include "formats/prepare/ValueBytes.h"

namespace pim {

LineJoints::Kind LineJoints::Take(std::string_view line, bool joins64) {
  const std::string_view bare = WithoutLineEnd(line);
  if (bare.empty()) {
    // A line feed alone is passed over by the tokeniser; behind a carriage return, the line is
    // over.
    if (isOpenHead_ || line.front() == '\n' || std::exchange(isFoldOpen_, false))
      return Kind::GoesOn;
    isPicture_ = false;
    isSoftBreak_ = false;
    return Kind::Blank;
  }
  const bool isFold = IsBlank(bare.front()) && bare.front() != '\r';
  if (std::exchange(isFoldOpen_, false) || isFold) {
    // A blank that the line feed follows at once leaves the fold open for the next line.
    isFoldOpen_ = isFold && line.size() == 2 && line.back() == '\n';
    if (coding_.isQuotedPrintable) isSoftBreak_ = BreaksSoftly(bare);
    if (isOpenHead_) TakeHeadLine(line);
    return Kind::GoesOn;
  }
  if (isSoftBreak_) {
    isSoftBreak_ = BreaksSoftly(bare);
    return Kind::GoesOn;
  }
  if (isOpenHead_) {
    TakeHeadLine(line);
    return Kind::GoesOn;
  }
  if (isPicture_ && joins64 && IsBase64Line(bare)) return Kind::Base64;
  head_ = LineHead::Of(line);
  coding_ = head_.params.empty() ? LineCoding() : LineCoding::Of(head_.params);
  isOpenHead_ = head_.GoesOn();
  if (isOpenHead_) openParams_ = head_.params;
  isSoftBreak_ =
      coding_.isQuotedPrintable && head_.hasColon() && BreaksSoftly(bare.substr(head_.colon + 1));
  isPicture_ = coding_.isBase64;
  return Kind::Begins;
}

// A further line of an open head: all of it counts, up to its colon.
void LineJoints::TakeHeadLine(std::string_view line) {
  const std::size_t colon = line.find(':');
  openParams_ += line.substr(0, colon);
  if (colon == std::string_view::npos) return;
  isOpenHead_ = false;
  coding_ = LineCoding::Of(openParams_);
  isSoftBreak_ = coding_.isQuotedPrintable && BreaksSoftly(line.substr(colon + 1));
  isPicture_ = coding_.isBase64;
}

std::vector<PropertyLine> PropertyLinesOf(std::string_view text, std::int64_t firstLine,
                                          bool mends64) {
  std::vector<PropertyLine> lines;
  LineJoints joints;
  for (std::int64_t number = firstLine; !text.empty(); ++number) {
    const std::string_view line = TakeLine(text);
    const LineJoints::Kind kind = joints.Take(line, mends64);
    if ((kind == LineJoints::Kind::GoesOn || kind == LineJoints::Kind::Base64) && !lines.empty()) {
      PropertyLine& property = lines.back();
      if (kind == LineJoints::Kind::Base64) {
        property.text += ' ';
        property.isIndented = true;
      }
      property.text += line;
      property.last = number;
    } else {
      lines.push_back({std::string(line), number, number});
    }
  }
  return lines;
}

std::string TextOf(const std::vector<PropertyLine>& lines) {
  std::string text;
  for (const PropertyLine& line : lines) text += line.text;
  return text;
}

}  // namespace pim
