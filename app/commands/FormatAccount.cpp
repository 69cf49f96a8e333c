// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/FormatAccount.h"

#include "app/output/Output.h"
#include "pim/platform/Encoding.h"

namespace pim::app {
namespace {

std::string_view WordOf(FormatVerdict verdict) {
  return verdict == FormatVerdict::Changed ? "changed" : "dropped";
}

std::string InWords(const FormatLoss& loss) {
  return Shown(WideFromUtf8(loss.field)) + ": " + std::string(WordOf(loss.verdict)) + ": " +
         std::string(RowOf(loss.reason).text);
}

}  // namespace

FormatAccount::FormatAccount(std::string_view noun, std::string_view form,
                             const std::optional<std::string>& report, bool force)
    : noun_(noun) {
  if (!report) return;
  path_ = *report;
  report_.emplace(*report, force);
  json_.StartObject();
  json_.Utf8Field("form", form);
  json_.Key("losses");
  json_.StartArray();
  report_->Append(json_.text());
  json_.ClearText();
}

void FormatAccount::TellOfRecord(std::int64_t number, std::string_view name,
                                 const FormatLoss& loss) {
  Count(loss);
  if (report_) {
    Begin();
    json_.Field("record", number - 1);
    json_.Utf8Field("name", name);
    End(loss);
    return;
  }
  const std::string shown = name.empty() ? "" : " (" + ShownInOneLine(WideFromUtf8(name)) + ")";
  Complain(noun_ + " " + std::to_string(number) + shown + ": " + InWords(loss));
}

void FormatAccount::TellOfLine(const std::string& file, std::int64_t line, const FormatLoss& loss) {
  Count(loss);
  if (report_) {
    Begin();
    json_.Utf8Field("file", file);
    json_.Field("line", line);
    End(loss);
    return;
  }
  Complain(ShownName(file) + ":" + std::to_string(line) + ": " + InWords(loss));
}

std::string FormatAccount::Summary() const {
  if (count_ == 0) return {};
  std::string parts;
  for (const FormatReasonRow& row : kFormatReasons) {
    const std::int64_t count = counts_[static_cast<std::size_t>(row.code)];
    if (count == 0) continue;
    parts.append(parts.empty() ? "" : ", ")
        .append(std::to_string(count))
        .append(" ")
        .append(row.name);
  }
  std::string text = Counted(count_, "loss") + " (" + parts + ")";
  if (report_) text += "; " + ShownName(path_) + " has them all";
  return text;
}

void FormatAccount::Publish() {
  if (!report_) return;
  json_.EndArray();
  json_.EndObject();
  report_->Append(json_.text());
  report_->Append("\n");
  report_->Publish();
  json_.ClearText();
}

void FormatAccount::Count(const FormatLoss& loss) {
  ++count_;
  ++counts_[static_cast<std::size_t>(loss.reason)];
}

void FormatAccount::Begin() { json_.StartObject(); }

void FormatAccount::End(const FormatLoss& loss) {
  json_.Utf8Field("field", loss.field);
  json_.Utf8Field("verdict", WordOf(loss.verdict));
  json_.Key("why");
  json_.StartArray();
  json_.Utf8(RowOf(loss.reason).name);
  json_.EndArray();
  json_.EndObject();
  report_->Append(json_.text());
  json_.ClearText();
}

}  // namespace pim::app
