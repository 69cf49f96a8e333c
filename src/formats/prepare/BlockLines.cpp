// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/BlockLines.h"

#include <algorithm>

#include "formats/prepare/ValueBytes.h"

namespace pim {

LineJoints::Kind LineJoints::Take(std::string_view line, bool joins64) {
  const std::string_view bare = WithoutLineEnd(line);
  // A line feed alone is passed over by the tokeniser; behind a carriage return, the line is over.
  if (bare.empty()) {
    if (isOpenHead_) return Kind::GoesOn;
    const bool isOver = !line.starts_with('\n');
    isPicture_ = isPicture_ && !isOver;
    isSoftBreak_ = isSoftBreak_ && !isOver;
    return Kind::Blank;
  }
  if (IsBlank(bare.front()) && bare.front() != '\r') {
    if (isSoftBreak_ || coding_.isQuotedPrintable) isSoftBreak_ = BreaksSoftly(bare);
    if (isOpenHead_) Look(line);
    return Kind::GoesOn;
  }
  if (isSoftBreak_) {
    isSoftBreak_ = BreaksSoftly(bare);
    return Kind::GoesOn;
  }
  if (isOpenHead_) {
    Look(line);
    return Kind::GoesOn;
  }
  if (isPicture_ && joins64 && IsBase64Line(bare)) return Kind::Base64;
  head_ = LineHead::Of(line);
  coding_ = head_.params.empty() ? LineCoding() : LineCoding::Of(head_.params);
  isOpenHead_ = head_.GoesOn();
  isSoftBreak_ =
      coding_.isQuotedPrintable && head_.hasColon() && BreaksSoftly(bare.substr(head_.colon + 1));
  isPicture_ = coding_.isBase64;
  return Kind::Begins;
}

// A further line of an open head: what it brings counts, to the colon.
void LineJoints::Look(std::string_view line) {
  const std::size_t colon = line.find(':');
  std::string params = ";";
  params += line.substr(0, colon);
  const LineCoding more = LineCoding::Of(params);
  if (more.isQuotedPrintable || more.isBase64) {
    coding_.isQuotedPrintable = more.isQuotedPrintable;
    coding_.isBase64 = more.isBase64;
  }
  isOpenHead_ = colon == std::string_view::npos;
  isSoftBreak_ = !isOpenHead_ && coding_.isQuotedPrintable && BreaksSoftly(line.substr(colon + 1));
  isPicture_ = !isOpenHead_ && coding_.isBase64;
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
