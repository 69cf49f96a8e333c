// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// What a preparer does with a record that needs work, and what it gives.
#include <algorithm>
#include <utility>

#include "formats/prepare/BlockSteps.h"
#include "formats/prepare/Preparer.h"
#include "formats/vcard4/VCardDown.h"
#include "platform/CodePages.h"

namespace pim {
namespace {

// A text that names no charset is in the default page, and becomes UTF-8.
std::string FromDefaultPage(std::string text) {
  if (DefaultCodePageName() == "UTF-8") return text;
  std::u16string wide;
  MultiByteToWide(kCodePageDefault, text, wide);
  return Utf8FromWide(wide);
}

}  // namespace

void Preparer::EmitBlock(std::size_t end, std::int64_t endLine, std::string_view missing) {
  EmitAsItIs(block_.begin, block_.line);
  std::string text(Bytes(block_.begin, end));
  text += missing;
  const std::int64_t lines = endLine - block_.line;
  begin_ = end;
  beginLine_ = endLine;
  if (frame_.down && block_.kind != BlockKind::Card)
    return TakeComponent(FromDefaultPage(std::move(text)), lines);
  const std::string prepared =
      block_.kind == BlockKind::Card ? PreparedCard(text) : PreparedItem(text);
  Emit(prepared, block_.line, lines, prepared == text && missing.empty());
}

// The properties of the open block, after the steps that are those of both forms.
std::vector<PropertyLine> Preparer::MendedLines(std::string_view text) {
  std::vector<PropertyLine> lines = PropertyLinesOf(text, block_.line, Has(PrepareStep::Base64));
  for (PropertyLine& line : lines) {
    if (line.isIndented)
      notes_.Add(PrepareStep::Base64, line.first, line.last, "lines of base64 indented");
    if (Has(PrepareStep::Charsets)) MendCharset(line, notes_);
  }
  return lines;
}

std::string Preparer::PreparedCard(std::string_view text) {
  std::vector<PropertyLine> lines = MendedLines(text);
  if (Has(PrepareStep::VCard) && IsModernCard(lines)) {
    for (PropertyLine& line : lines) {
      if (LineCoding::Of(line.head().params).charset.empty())
        line.text = FromDefaultPage(std::move(line.text));
    }
    return OlderCard(lines);
  }
  if (Has(PrepareStep::Prefixes)) TakePrefixesOff(lines, notes_);
  if (Has(PrepareStep::Types))
    for (PropertyLine& line : lines) PartTypes(line, notes_);
  return TextOf(lines);
}

// Losses are told by the lines of what is converted, which may have been made of others.
std::string Preparer::OlderCard(const std::vector<PropertyLine>& lines) {
  if (groups_ == nullptr && findGroups_) groups_ = findGroups_();
  if (groups_ != nullptr && !groups_->IsComplete()) {
    groups_->Take(TextOf(lines));
    return {};
  }
  std::vector<std::int64_t> origins;
  for (const PropertyLine& line : lines) {
    const auto count = std::ranges::count(line.text, '\n');
    for (std::int64_t i = 0; i < std::max<std::int64_t>(count, 1); ++i)
      origins.push_back(std::min(line.first + i, line.last));
  }
  std::vector<FormatLoss> losses;
  std::string older;
  VCardDown(
      TextOf(lines), [&](const FormatLoss& loss) { losses.push_back(loss); }, older, groups_);
  notes_.Add(PrepareStep::VCard, lines.front().first, lines.back().last,
             older.empty() ? "the card of a group left out" : "the card became vCard 2.1");
  for (const FormatLoss& loss : losses)
    notes_.AddLoss(origins[std::min(loss.line, origins.size() - 1)], loss);
  return older;
}

std::string Preparer::PreparedItem(std::string_view text) {
  std::vector<PropertyLine> lines = MendedLines(text);
  if (Has(PrepareStep::Alarms)) RaiseAlarm(lines, notes_);
  if (Has(PrepareStep::Times) && frame_.zone.isKnown()) BringToUtc(frame_.zone, lines, notes_);
  return TextOf(lines);
}

// A component of iCalendar 2.0. An item whose zone isn't known yet waits for it, and all behind it
// for the item, so that their order stays.
void Preparer::TakeComponent(std::string text, std::int64_t lines) {
  const FrameState::Waiting component{std::move(text), block_.line, lines, true, false};
  if (block_.word == "VTIMEZONE") {
    frame_.down->TakeZone(component.text);
    return ReleaseWaiting(false);
  }
  if (frame_.waiting.empty()) {
    frame_.missing = frame_.down->UnknownZones(component.text);
    if (frame_.missing.empty()) return EmitComponent(component);
  }
  frame_.waiting.push_back(component);
}

// A zone may be one of many, and what waits long: each is looked at once.
void Preparer::ReleaseWaiting(bool all) {
  std::vector<std::string>& missing = frame_.missing;
  while (!missing.empty() && frame_.down->Knows(missing.back())) missing.pop_back();
  if (!all && !missing.empty()) return;
  std::deque<FrameState::Waiting> waiting = std::exchange(frame_.waiting, {});
  for (bool isFirst = true; !waiting.empty(); isFirst = false) {
    const FrameState::Waiting& next = waiting.front();
    if (!all && !isFirst && next.isComponent) {
      missing = frame_.down->UnknownZones(next.text);
      if (!missing.empty()) break;
    }
    if (next.isComponent) {
      EmitComponent(next);
    } else {
      Emit(next.text, next.firstLine, next.lines, next.isSame);
    }
    waiting.pop_front();
  }
  frame_.waiting = std::move(waiting);
}

void Preparer::EmitComponent(const FrameState::Waiting& component) {
  std::string older;
  // Another preparing would bring them to that zone.
  if (frame_.zone.isKnown()) frame_.down->KeepNoLocalTimes();
  frame_.down->Convert(
      component.text,
      [&](const FormatLoss& loss) {
        notes_.AddLoss(component.firstLine + static_cast<std::int64_t>(loss.line), loss);
      },
      older);
  if (!older.empty()) {
    notes_.Add(PrepareStep::ICalendar, component.firstLine,
               component.firstLine + component.lines - 1, "the item became vCalendar 1.0");
  }
  Emit(older, component.firstLine, component.lines);
}

void Preparer::EmitAsItIs(std::size_t end, std::int64_t endLine) {
  if (end != begin_) Emit(Bytes(begin_, end), beginLine_, endLine - beginLine_, true);
  begin_ = end;
  beginLine_ = endLine;
}

void Preparer::Emit(std::string_view text, std::int64_t firstLine, std::int64_t lines,
                    bool isSame) {
  if (!frame_.waiting.empty()) {
    frame_.waiting.push_back({std::string(text), firstLine, lines, false, isSame});
    return;
  }
  take_({text, firstLine, lines, isSame});
}

// Ends like the line ahead.
std::string Preparer::MissingEnd(const std::string& word) {
  notes_.Add(PrepareStep::MissingEnd, line_, line_, "END:" + word + " put in ahead");
  return "END:" + word + (isFeedAlone_ ? "\n" : "\r\n");
}

}  // namespace pim
