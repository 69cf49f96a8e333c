// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Account.h"

#include <bit>
#include <charconv>

#include "app/output/JsonWriter.h"
#include "app/output/Output.h"
#include "pim/manager/TextReading.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

bool IsPlainJson(NarrowStringView text) {
  for (const char c : text)
    if (c < ' ' || c > '~' || c == '"' || c == '\\') return false;
  return true;
}

}  // namespace

std::string_view FormName(TextForm form) { return form == TextForm::VCard ? "vcard" : "vcalendar"; }

std::string AccountJson::Head(std::string_view file, TextForm form, bool rejected) {
  std::string head = "{";
  if (!file.empty()) head += "\"file\": " + JsonText(file) + ", ";
  return head.append("\"form\": \"")
      .append(FormName(form))
      .append("\", \"rejected\": ")
      .append(rejected ? "true" : "false")
      .append(", \"lines\": [");
}

AccountJson::AccountJson(TextForm form) : fields_(RecordFields(form)) {}

std::string_view AccountJson::Text(const AccountEntry& entry) {
  text_.assign(empty_ ? "{" : ",{");
  empty_ = false;
  text_ += "\"first\":";
  AppendNumber(entry.first);
  text_ += ",\"last\":";
  AppendNumber(entry.last);
  text_ += ",\"record\":";
  if (entry.record < 0) {
    text_ += "null";
  } else {
    AppendNumber(entry.record);
  }
  text_ += ",\"name\":";
  AppendName(entry.name);
  text_.append(",\"verdict\":\"").append(NameOf(entry.verdict)).append("\",\"into\":[");
  const char* mark = "\"";
  for (std::uint32_t left = entry.into; left != 0; left &= left - 1) {
    const auto field = static_cast<std::size_t>(std::countr_zero(left));
    text_.append(std::exchange(mark, ",\"")).append(fields_[field]).append("\"");
  }
  text_ += "],\"why\":[";
  mark = "\"";
  for (LossMask left = entry.why; left != 0; left &= left - 1)
    text_.append(std::exchange(mark, ",\"")).append(FirstOf(left).name).append("\"");
  return text_.append("],\"same\":").append(entry.same ? "true}" : "false}");
}

std::string AccountJson::Tail(const AccountTotals& totals) {
  const auto count = [](std::string_view name, std::int64_t number) {
    return std::string("\"").append(name).append("\": ").append(std::to_string(number));
  };
  return "], \"totals\": {" + count("lines", totals.lines) + ", " + count("frame", totals.frame) +
         ", " + count("kept", totals.kept) + ", " + count("changed", totals.changed) + ", " +
         count("dropped", totals.dropped) + ", " + count("unread", totals.unread) + "}}\n";
}

void AccountJson::AppendNumber(std::int64_t number) {
  char digits[24];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  text_.append(digits, end);
}

void AccountJson::AppendName(NarrowStringView name) {
  if (IsPlainJson(name)) {
    text_.append("\"").append(name).append("\"");
  } else {
    text_ += JsonText(name);
  }
}

std::string ReasonsOf(const AccountEntry& entry) {
  std::string reasons(TextOf(entry.fault));
  for (LossMask left = entry.why; left != 0; left &= left - 1) {
    const LossRow& loss = FirstOf(left);
    reasons.append(reasons.empty() ? "" : "; ").append(loss.text);
    if (loss.code == LOSS_TYPE_IGNORED && !entry.ignored.empty())
      reasons.append(" (").append(Shown(WideFromUtf8(entry.ignored))).append(")");
  }
  return reasons;
}

std::string AccountLine(std::string_view file, const AccountEntry& entry) {
  std::string line = std::string(file) + ":" + std::to_string(entry.first);
  if (entry.last != entry.first) line += "-" + std::to_string(entry.last);
  line += ": ";
  if (!entry.name.empty()) line += Shown(WideFromUtf8(entry.name)) + ": ";
  line += NameOf(entry.verdict);
  const std::string reasons = ReasonsOf(entry);
  if (!reasons.empty()) line.append(": ").append(reasons);
  return line += '\n';
}

std::string TotalsText(const AccountTotals& totals) {
  std::string text = Counted(totals.lines, "line") + ": " + std::to_string(totals.kept) +
                     " kept, " + std::to_string(totals.changed) + " changed, " +
                     std::to_string(totals.dropped) + " dropped, " + std::to_string(totals.frame) +
                     " frame";
  if (totals.unread != 0) text += ", " + std::to_string(totals.unread) + " unread";
  return text;
}

}  // namespace pim::app
