// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/ImportPreview.h"

#include <algorithm>
#include <vector>

#include "app/commands/RefusedRecords.h"
#include "app/output/Fields.h"
#include "app/output/ItemText.h"
#include "app/output/JsonWriter.h"
#include "app/output/Output.h"

namespace pim::app {
namespace {

enum class Fate : std::uint8_t { New, Stored, Refused };

// What would become of one record.
struct Row {
  std::int64_t firstLine = 0;
  std::int64_t lastLine = 0;
  Fate fate = Fate::New;
  std::int32_t key = 0;  // of the one that is there already
  WideString name;
};

std::string FateText(const Row& row) {
  switch (row.fate) {
    case Fate::New:
      return "new";
    case Fate::Stored:
      return "already there as " + std::to_string(row.key);
    case Fate::Refused:
      break;
  }
  return "refused";
}

class Preview final : public ImportDiary {
 public:
  Preview(Session& session, const Options& options, TextForm form, Progress& progress)
      : isJson_(options.listForm == ListForm::Json), form_(form), progress_(progress) {
    session.preview()->OnSaved(
        [this](const CContact& contact, bool isNew) { AddRow(DisplayName(contact), isNew); },
        [this](const CCalendar& item, bool isNew) { AddRow(ItemName(item), isNew); });
  }

  void Begin() override {}
  void AddRejected(NarrowStringView text, const std::vector<RejectedPart>& parts) override {
    VisitRejected(text, form_, parts,
                  [this](std::int64_t first, std::int64_t last, WideStringView name) {
                    rows_.push_back({first, last, Fate::Refused, 0, WideString(name)});
                  });
  }
  void EndFile(const ImportCounts& counts) override {
    std::ranges::stable_sort(rows_, {}, &Row::firstLine);
    for (const Row& row : rows_) PrintRow(row);
    rows_.clear();
    totals_ += counts;
  }
  void Refuse(const std::string& path, NarrowStringView, NarrowStringView text,
              const ImportCounts& counts) override {
    path_ = path;
    rows_.clear();
    totals_ += counts;
    VisitRefused(text, form_, [this](std::int64_t first, std::int64_t last, WideStringView name) {
      PrintRow({first, last, Fate::Refused, 0, WideString(name)});
    });
  }
  void End() override {
    if (!isJson_) return;
    if (!hasBegun_) Print("{\"records\":[");
    json_.Clear();
    json_.StartObject();
    json_.Field("in_file", totals_.inFile);
    json_.Field("new", totals_.stored);
    json_.Field("already_there", totals_.AlreadyThere());
    json_.Field("refused", totals_.refused);
    json_.Field("other_kind", totals_.otherKind);
    json_.EndObject();
    Print("],\"totals\":" + std::string(json_.text()) + "}\n");
  }

 private:
  void StartFile(const std::string& path, NarrowStringView) override {
    path_ = path;
    rows_.clear();
    told_ = 0;
  }
  // The rows that the preview has told since come from these lines.
  void AddSaved(std::span<const RecordLines> records) override {
    for (const RecordLines& record : records) {
      if (told_ >= rows_.size()) return;
      Row& row = rows_[told_++];
      row.firstLine = record.firstLine;
      row.lastLine = record.lastLine;
      row.key = record.key;
    }
  }
  void AddRow(WideString name, bool isNew) {
    rows_.push_back({0, 0, isNew ? Fate::New : Fate::Stored, 0, std::move(name)});
  }

  void PrintRow(const Row& row) {
    progress_.Clear();
    if (isJson_) return PrintJson(row);
    std::string line =
        ShownName(path_) + ":" + std::to_string(row.firstLine) + ": " + FateText(row);
    if (!row.name.empty()) line += ": " + ShownInOneLine(row.name);
    Print(line + "\n");
  }
  void PrintJson(const Row& row) {
    Print(hasBegun_ ? ",\n" : "{\"records\":[\n");
    hasBegun_ = true;
    json_.Clear();
    json_.StartObject();
    json_.Utf8Field("file", path_);
    json_.Field("first_line", row.firstLine);
    json_.Field("last_line", row.lastLine);
    json_.Field("name", WideStringView(row.name));
    json_.Utf8Field("fate", row.fate == Fate::Stored ? "already there" : FateText(row));
    json_.Key("key");
    if (row.fate == Fate::Stored) {
      json_.Value(row.key);
    } else {
      json_.Null();
    }
    json_.EndObject();
    Print(json_.text());
  }

  bool isJson_;
  TextForm form_;
  Progress& progress_;
  std::string path_;       // of the file
  std::vector<Row> rows_;  // of the file, until it is sure that it isn't refused
  std::size_t told_ = 0;   // of them, those whose lines are told
  ImportCounts totals_;
  JsonWriter json_;
  bool hasBegun_ = false;
};

}  // namespace

std::unique_ptr<ImportDiary> PreviewDiary(Session& session, const Options& options, TextForm form,
                                          Progress& progress) {
  return std::make_unique<Preview>(session, options, form, progress);
}

}  // namespace pim::app
