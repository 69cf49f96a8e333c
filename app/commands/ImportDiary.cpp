// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/ImportDiary.h"

namespace pim::app {
namespace {

class History final : public ImportDiary {
 public:
  History(Session& session, const Options& options)
      : session_(session), options_(options), history_(*session.records().History()) {}

  void Begin() override {
    Check(history_.BeginImport({options_.command, options_.given}) > 0);
    keeps_ = !options_.noOriginals && history_.KeepsOriginals();
  }
  void EndFile(const ImportCounts& counts) override { Check(history_.EndFile(counts, keeps_)); }
  void Refuse(const std::string& path, NarrowStringView bytes, NarrowStringView,
              const ImportCounts& counts) override {
    Check(history_.AddRefusedFile(path, bytes, counts));
  }
  void End() override { Check(history_.EndImport()); }

 private:
  void StartFile(const std::string& path, NarrowStringView bytes) override {
    Check(history_.BeginFile(path, bytes));
  }
  void AddSaved(std::span<const RecordLines> records) override {
    Check(history_.AddLines(records));
  }
  void Check(bool done) const {
    if (!done) session_.Fail();
  }

  Session& session_;
  const Options& options_;
  ImportHistory& history_;
  bool keeps_ = true;
};

}  // namespace

void ImportDiary::BeginFile(const std::string& path, NarrowStringView bytes, const LineMap& lines) {
  lines_ = &lines;
  recordLines_.Clear();
  StartFile(path, bytes);
}

void ImportDiary::Take(std::span<const SavedRecord> records) {
  saved_.clear();
  for (const SavedRecord& record : records) {
    const LinesOfRecords::Lines lines = recordLines_.Of(record.record);
    saved_.push_back(
        {record.key, lines_->Original(lines.first), lines_->OriginalLast(lines.first, lines.last)});
  }
  AddSaved(saved_);
}

std::unique_ptr<ImportDiary> HistoryDiary(Session& session, const Options& options) {
  return std::make_unique<History>(session, options);
}

}  // namespace pim::app
