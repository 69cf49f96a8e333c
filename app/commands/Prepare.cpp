// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Prepare.h"

#include <algorithm>
#include <utility>

#include "app/commands/FileTarget.h"
#include "app/output/Output.h"
#include "formats/prepare/TextGroups.h"
#include "pim/platform/Encoding.h"

namespace pim::app {
namespace {

// Less than a pipe holds would cost calls, more would only cost memory.
constexpr std::size_t kReadSize = std::size_t{256} * 1024;

// The groups of a file, which is read for them; none of what can be read once.
FindGroups GroupsOfFile(const std::string& path, PrepareStepMask steps) {
  if (IsStream(path)) return {};
  return [path, steps, groups = std::make_shared<GroupBook>()] {
    *groups = GroupsOfText(
        [&path](const std::function<void(std::string_view)>& take) {
          FileSource source(path);
          std::string piece(kReadSize, '\0');
          while (const std::size_t count = source.Read(piece.data(), piece.size()))
            take({piece.data(), count});
        },
        steps);
    return groups.get();
  };
}

class PreparedSource final : public ByteSource {
 public:
  PreparedSource(const std::string& path, PrepareStepMask steps, FormatAccount& account)
      : source_(path),
        preparer_(
            steps, TellPreparing(path, account),
            [this](const PreparedPiece& piece) { ready_ += piece.text; },
            GroupsOfFile(path, steps)) {}

  std::size_t Read(char* to, std::size_t room) override {
    while (taken_ == ready_.size() && !isOver_) {
      ready_.clear();
      taken_ = 0;
      const std::size_t count = source_.Read(preparer_.Room(kReadSize), kReadSize);
      isOver_ = count == 0;
      isOver_ ? preparer_.Finish() : preparer_.Took(count);
    }
    const std::size_t count = std::min(room, ready_.size() - taken_);
    std::copy_n(ready_.data() + taken_, count, to);
    taken_ += count;
    return count;
  }

 private:
  FileSource source_;
  Preparer preparer_;
  std::string ready_;
  std::size_t taken_ = 0;
  bool isOver_ = false;
};

}  // namespace

PrepareObserver TellPreparing(const std::string& path, FormatAccount& account) {
  const std::string file = ShownName(path);
  return {[file](const PrepareNote& note) {
            std::string place = file + ":" + std::to_string(note.first);
            if (note.last != note.first) place += "-" + std::to_string(note.last);
            Complain(place + ": " + std::string(RowOf(note.step).name) + ": " +
                     ShownInOneLine(WideFromUtf8(note.what)));
          },
          [path, &account](std::int64_t line, const FormatLoss& loss) {
            account.TellOfLine(path, line, loss);
          }};
}

std::unique_ptr<ByteSource> SourceOf(const std::string& path, const Options& options,
                                     FormatAccount& account) {
  if (!options.prepare) return std::make_unique<FileSource>(path);
  return std::make_unique<PreparedSource>(path, options.steps, account);
}

int PrepareFile(const Options& options) {
  const std::string& path = options.operands.front();
  FileSource source(path);
  FileTarget target(options, {path});
  FormatAccount account("record", "prepared", options.report, options.force);
  Preparer preparer(
      options.steps, TellPreparing(path, account),
      [&](const PreparedPiece& piece) { target.Append(piece.text); },
      GroupsOfFile(path, options.steps));
  while (const std::size_t count = source.Read(preparer.Room(kReadSize), kReadSize))
    preparer.Took(count);
  preparer.Finish();
  target.Publish();
  account.Publish();
  if (!account.isEmpty()) Complain(account.Summary());
  return options.strict && !account.isEmpty() ? kLossy : kDone;
}

}  // namespace pim::app
