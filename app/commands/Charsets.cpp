// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Charsets.h"

#include <array>
#include <vector>

#include "app/input/ByteSource.h"
#include "app/input/TextKind.h"
#include "app/input/TextReading.h"
#include "app/output/JsonWriter.h"
#include "app/output/Output.h"
#include "formats/charsets/CharsetGuess.h"
#include "formats/charsets/CharsetLines.h"
#include "pim/platform/Encoding.h"

namespace pim::app {
namespace {

// What the first so many lines look like shows well enough; all of them count for the ranks.
constexpr std::size_t kMostShown = 200;

struct ShownDamage {
  DamagedLine line;
  CharsetGuess::Readings readings;
};

// A file's name as a shell takes it.
std::string ForShell(const std::string& path) {
  constexpr std::string_view kPlain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=.,/:@%";
  if (path.find_first_not_of(kPlain) == std::string::npos) return path;
  std::string quoted = "'";
  for (const char c : path) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

class CharsetReport {
 public:
  explicit CharsetReport(const std::string& path) : path_(path) {
    std::string head;
    CharsetLines lines([this](const DamagedLine& line) { Take(line); });
    FileSource source(path);
    std::vector<char> piece(std::size_t{256} * 1024);
    while (const std::size_t count = source.Read(piece.data(), piece.size())) {
      if (head.size() < piece.size()) head.append(piece.data(), count);
      lines.Append({piece.data(), count});
    }
    lines.Finish();
    ranks_ = guess_.Ranks();
    form_ = FormToRead(std::nullopt, head);
  }

  void PrintLines() const {
    const std::string file = ShownName(path_);
    if (count_ == 0) return Print(file + ": all lines are text in their charset\n");
    for (const ShownDamage& damage : shown_) {
      Print(file + ":" + std::to_string(damage.line.first) + ": " +
            ShownInOneLine(WideFromUtf8(damage.line.name)) +
            (damage.line.isFixed ? " (its own CHARSET isn't that of its bytes)\n" : "\n"));
      for (const std::size_t charset : ranks_) {
        std::string name = kLikelyCharsets[charset];
        name.resize(12, ' ');
        const auto& reading = damage.readings[charset];
        Print("    " + name + (reading ? ShownInOneLine(WideFromUtf8(*reading)) : "(is none)") +
              "\n");
      }
    }
    if (count_ > shown_.size()) {
      Print("and " + Counted(static_cast<long long>(count_ - shown_.size()), "further line") +
            "\n");
    }
    if (open_ != 0) {
      Print("The likeliest charset stands first. To read " + file + " in it:\n    " + Command() +
            "\n");
    } else {
      Print("All of them name a charset, which --code-page doesn't change.\n");
    }
  }

  void PrintJson() const {
    JsonWriter json;
    json.StartObject();
    json.Utf8Field("file", path_);
    json.Key("charsets");
    json.StartArray();
    for (const std::size_t charset : ranks_) json.Utf8(kLikelyCharsets[charset]);
    json.EndArray();
    json.Field("count", static_cast<std::int64_t>(count_));
    json.Array("lines", shown_, [&json](const ShownDamage& damage) {
      json.StartObject();
      json.Field("first", damage.line.first);
      json.Field("last", damage.line.last);
      json.Utf8Field("name", damage.line.name);
      json.Field("fixed", damage.line.isFixed);
      json.Key("readings");
      json.StartObject();
      for (std::size_t i = 0; i < kLikelyCount; ++i) {
        json.Key(kLikelyCharsets[i]);
        damage.readings[i] ? json.Utf8(*damage.readings[i]) : json.Null();
      }
      json.EndObject();
      json.EndObject();
    });
    json.EndObject();
    Print(std::string(json.text()) + "\n");
  }

 private:
  void Take(const DamagedLine& line) {
    ++count_;
    if (!line.isFixed) ++open_;
    CharsetGuess::Readings readings = guess_.Take(line.bytes, !line.isFixed);
    if (shown_.size() < kMostShown) shown_.push_back({line, std::move(readings)});
  }

  std::string Command() const {
    const char* const noun = form_ == TextForm::VCard ? "contacts" : "calendar";
    const bool looksLikeOption = path_.size() > 1 && path_.front() == '-';
    return std::string("pimvobj ") + noun + " import " + (looksLikeOption ? "./" : "") +
           ForShell(path_) + " --code-page " + kLikelyCharsets[ranks_.front()];
  }

  std::string path_;
  CharsetGuess guess_;
  std::vector<ShownDamage> shown_;
  std::vector<std::size_t> ranks_;
  std::size_t count_ = 0;
  std::size_t open_ = 0;  // those whose charset --code-page says
  TextForm form_ = TextForm::VCard;
};

}  // namespace

int TellCharsets(const Options& options) {
  int status = kDone;
  for (const std::string& path : options.operands) {
    status = Worse(status, ForInput([&] {
                     const CharsetReport report(path);
                     options.listForm == ListForm::Json ? report.PrintJson() : report.PrintLines();
                     return kDone;
                   }));
  }
  return status;
}

}  // namespace pim::app
