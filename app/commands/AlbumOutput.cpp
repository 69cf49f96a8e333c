// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/AlbumOutput.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/album/PageTemplate.h"
#include "app/commands/CommandTable.h"
#include "app/labels/Labels.h"
#include "app/output/Fields.h"
#include "app/output/LocalTimes.h"
#include "app/output/Output.h"
#include "formats/vcard4/UriText.h"
#include "platform/CodePages.h"
#include "support/Ascii.h"
#include "support/CallerIdPictures.h"

namespace pim::app {
namespace {

// What browsers show; the type of anything else is none of a picture's.
constexpr std::string_view kPictures = "image/";

std::string TitleOfPage(const LabelFile& labels, TextForm form, const std::string& of) {
  const WideStringView key = form == TextForm::VCard ? u"ALBUM_contacts" : u"ALBUM_calendar";
  const auto words = ReadLabels(labels.text);
  const auto row = std::ranges::find(words, key, [](const auto& word) { return word.first; });
  const std::string title = row == words.end() ? std::string() : Utf8FromWide(row->second);
  return of.empty() || title.empty() ? title + of : of + " - " + title;
}

// What an option names of days; nothing without it.
std::optional<DayRange> DaysOf(Option option, const std::optional<std::string>& value) {
  if (!value) return std::nullopt;
  const auto days = DaysNamed(*value);
  if (!days) {
    throw WrongUsage(DashedName(RowOf(option)) +
                     " takes a day, such as 2010-03-01, 2010-03 or 2010, not '" +
                     ShownName(*value) + "'");
  }
  return days;
}

ShownDays DaysOf(const Options& options, std::int64_t now) {
  const auto from = DaysOf(Option::From, options.from);
  const auto to = DaysOf(Option::To, options.to);
  if (from && to && to->last < from->first) throw WrongUsage("--from is behind --to");
  const auto today = std::chrono::floor<std::chrono::days>(std::chrono::seconds(now)).count();
  return {from ? std::optional(from->first) : std::nullopt,
          to ? std::optional(to->last) : std::nullopt, today};
}

// A word to choose by that stands where the page's name was to be is no page's name.
const Options& CheckedName(const Options& options) {
  constexpr std::string_view kEndings[] = {".html", ".htm"};
  const std::string& name = *options.output;
  const std::string ending = std::filesystem::path(name).extension().string();
  const bool isPage = std::ranges::any_of(
      kEndings, [&](std::string_view row) { return EqualsIgnoringCase(row, ending); });
  if (isPage || name == "-" || options.force) return options;
  throw WrongUsage("'" + ShownName(name) +
                   "' doesn't end in .html; a page goes there with --force alone");
}

}  // namespace

AlbumOutput::AlbumOutput(const Options& options, const std::vector<std::string>& inputs)
    : options_(CheckedName(options)),
      labels_(LabelsOf(options.language)),
      words_(labels_),
      head_{.isOfFiles = options.action == Action::FileAlbum,
            .madeAt = std::time(nullptr),
            .zone = LocalTimes::NameInDatabase()},
      days_(DaysOf(options, head_.madeAt)),
      target_(options, inputs),
      records_([this](std::string_view text) { target_.Append(text); }),
      files_(JsonPlace::Page) {}

void AlbumOutput::SetHead(TextForm form, std::string of) {
  if (form == TextForm::VCard && (options_.from || options_.to))
    throw WrongUsage("--from and --to go with a calendar");
  head_.form = form;
  of_ = std::move(of);
}

JsonWriter& AlbumOutput::NextRecord() {
  if (behind_.empty()) {
    PageFrame frame =
        FilledPage(head_.form, labels_.language, TitleOfPage(labels_, head_.form, of_));
    target_.Append(frame.ahead);
    behind_ = std::move(frame.behind);
  }
  return records_.Next();
}

void AlbumOutput::Add(const CContact& contact, const PlaceInFile* place) {
  JsonWriter& json = NextRecord();
  bool isShown = false;
  if (!contact.photo.empty()) {
    const NarrowString bytes = ReadCallerIdPicture(contact.photo);
    // By the bytes alone, as browsers do: a name may say anything.
    const NarrowStringView media = MediaOf({}, bytes).media;
    isShown = media.starts_with(kPictures);
    if (isShown) {
      records_.AddPicture(media, bytes);
    } else {
      TellOfPicture(contact, bytes.empty(), place);
    }
  }
  WriteRecord(json, contact, isShown, place);
  records_.EndRecord();
}

// The picture's own name says something of a store's alone: that of a text is a temporary file's.
void AlbumOutput::TellOfPicture(const CContact& contact, bool isMissing, const PlaceInFile* place) {
  constexpr const char* kUnknown = "is none that a page shows";
  if (place != nullptr) {
    Complain(ShownName(place->path) + ":" + std::to_string(place->marks.line()) +
             ": the picture of '" + ShownInOneLine(DisplayName(contact)) + "' " +
             (isMissing ? "is missing" : kUnknown) + "; the contact goes without");
    if (isMissing) missing_.Note();
    place->marks.AddPicture(isMissing ? "picture-missing" : "picture-unknown");
  } else if (isMissing) {
    missing_.Tell(contact, contact.tag);
  } else {
    app::TellOfPicture(contact, contact.tag, kUnknown);
  }
}

void AlbumOutput::Add(const CCalendar& item, const PlaceInFile* place) {
  const auto times = days_.TimesOf(item);
  if (!times) return;
  WriteRecord(NextRecord(), item, *times, days_.finder(), place);
  records_.EndRecord();
}

void AlbumOutput::AddFile(std::string_view file, const LineMarks& marks) {
  constexpr std::size_t kMostBytes = std::size_t{4} << 20;
  if (marks.empty()) return;
  if (files_.text().size() >= kMostBytes) {
    linesLeft_ += marks.count();
    return;
  }
  if (files_.text().empty()) files_.StartArray();
  files_.StartObject();
  files_.Utf8Field("file", file);
  files_.Key("marks");
  marks.Write(files_);
  files_.EndObject();
}

void AlbumOutput::WriteLinesLeft() {
  files_.StartObject();
  files_.Field("file", WideStringView(words_.More(linesLeft_)));
  files_.Key("marks");
  LineMarks(words_).Write(files_);
  files_.EndObject();
  Complain("the page has no room for " + std::to_string(linesLeft_) +
           " more of the lines that no record has");
}

void AlbumOutput::EndPage() {
  records_.End();
  if (!files_.text().empty()) {
    if (linesLeft_ != 0) WriteLinesLeft();
    files_.EndArray();
    target_.Append(DataElement("id=\"files\"", files_.text()));
  }
  if (head_.form == TextForm::VCalendar) {
    head_.from = days_.First();
    head_.to = days_.Last();
  }
  target_.Append(HeadElement(head_, labels_));
  target_.Append(behind_);
  target_.Publish();
}

int AlbumOutput::End() {
  const std::string_view noun = head_.form == TextForm::VCard ? "contact" : "item";
  const bool isToOutput = options_.output == "-";
  const std::string shown = isToOutput ? "standard output" : ShownName(*options_.output);
  const auto tell = [isToOutput](const std::string& line) {
    isToOutput ? Complain(line) : Print(line + "\n");
  };
  if (count() == 0) {
    tell("no " + std::string(noun) + " is chosen; nothing is written to " + shown);
    return kDone;
  }
  EndPage();
  tell(Counted(count(), noun) + (isToOutput ? " written" : " in " + shown));
  return missing_.Status();
}

}  // namespace pim::app
