// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/album/LineMarks.h"
#include "app/commands/Album.h"
#include "app/commands/AlbumOutput.h"
#include "app/commands/FormatAccount.h"
#include "app/commands/ImportAccount.h"
#include "app/commands/Prepare.h"
#include "app/input/Inputs.h"
#include "app/input/PeekedSource.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextReading.h"
#include "app/input/TextWindows.h"
#include "app/output/Account.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"
#include "platform/CodePages.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

struct ExtensionRow {
  std::string_view extension;
  TextForm form;
};
// Of the files of a folder that are read.
constexpr ExtensionRow kExtensions[] = {
    {".vcf", TextForm::VCard}, {".vcs", TextForm::VCalendar}, {".ics", TextForm::VCalendar}};

// "contacts, and the page is of a calendar; --as vcard makes one of contacts": of what holds the
// other form than a page.
std::string WhyNotOn(TextForm page) {
  constexpr const char* kContacts = "contacts";
  constexpr const char* kCalendar = "a calendar";
  const bool isContacts = page == TextForm::VCard;
  const TextForm other = isContacts ? TextForm::VCalendar : TextForm::VCard;
  const std::string what = isContacts ? kCalendar : kContacts;
  return what + ", and the page is of " + (isContacts ? kContacts : kCalendar) + "; --as " +
         std::string(FormName(other)) + " makes one of " + what;
}

// Whether it is one of a folder's files of the other form.
bool IsOfOtherForm(const std::string& path, TextForm form) {
  const std::string extension = fs::path(path).extension().string();
  return std::ranges::none_of(kExtensions, [&](const ExtensionRow& row) {
    return row.form == form && EqualsIgnoringCase(row.extension, extension);
  });
}

struct InputText {
  std::string path;
  bool isOfFolder;
};

std::vector<InputText> TextsOf(const std::vector<std::string>& paths, int& status) {
  std::vector<std::string_view> extensions;
  for (const ExtensionRow& row : kExtensions) extensions.push_back(row.extension);
  std::vector<InputText> texts;
  for (const std::string& path : paths) {
    const auto find = [&] {
      for (const std::string& file : FilesOf(path, extensions))
        texts.push_back({file, file != path});
      return kDone;
    };
    status = Worse(status, ForInput(find));
  }
  return texts;
}

std::vector<std::string> PathsOf(const std::vector<InputText>& texts) {
  std::vector<std::string> paths;
  paths.reserve(texts.size());
  for (const InputText& text : texts) paths.push_back(text.path);
  return paths;
}

// A page of what files hold, with what of their lines isn't kept.
class FileAlbum {
 public:
  FileAlbum(const Options& options, const std::vector<InputText>& texts)
      : options_(options),
        texts_(texts),
        output_(options, PathsOf(texts)),
        prepared_("record", "prepared", std::nullopt, false),
        pictures_(TemporaryFolder()),
        progress_(options.quiet),
        marks_(output_.words()) {
    if (options.form) Decide(*options.form);
  }

  int Run(int status) {
    for (const InputText& text : texts_)
      status = Worse(status, ForInput([&] { return Add(text); }));
    progress_.Clear();
    if (left_ != 0) status = Worse(status, TellFilesLeft());
    if (!prepared_.isEmpty()) Complain(prepared_.Summary());
    if (!account_) return status;
    const std::string lost = account_->Summary(options_.prepare);
    if (!lost.empty()) Warn(lost);
    return Worse(status, output_.End());
  }

 private:
  // What the page is of: the option says it, else the first file in which anything begins.
  void Decide(TextForm form) {
    form_ = form;
    account_.emplace(form, std::nullopt, false);
    const bool isOne = texts_.size() == 1 && texts_.front().path != "-";
    output_.SetHead(form,
                    isOne ? ShownName(fs::path(texts_.front().path).filename().string()) : "");
  }

  int Add(const InputText& text) {
    const std::string& path = text.path;
    if (account_ && text.isOfFolder && IsOfOtherForm(path, form_)) {
      ++left_;
      return kDone;
    }
    PeekedSource source(SourceOf(path, options_, prepared_));
    const auto first = TextHeadOf(source.head());
    if (!account_ && (first || !source.isWhole()))
      Decide(first ? FormOf(first->object) : TextForm::VCard);
    if (!account_ || (first && FormOf(first->object) != form_ && !options_.form)) {
      TellNothing(path, source.head());
      return kRejected;
    }
    return AddText(path, source);
  }

  int AddText(const std::string& path, ByteSource& source) {
    TextWindows windows(source, form_);
    account_->BeginFile(path);
    marks_ = MarkKeeper(output_.words());
    read_ = 0;
    int status = kDone;
    while (status == kDone && windows.Next()) status = AddStretch(path, windows);
    account_->EndFile();
    if (read_ != 0) {
      account_->CountFile();
      output_.AddFile(NameOnPage(path), marks_.TakeFile());
    } else if (status == kDone) {
      TellNothing(path, windows.text());
      status = kRejected;
    }
    return status;
  }

  int AddStretch(const std::string& path, const TextWindows& windows) {
    const std::string name = NameOnPage(path);
    marks_.BeginText(form_, windows.text(), windows.linesAhead());
    const TakeEntry entry = [this](const AccountEntry& told) {
      account_->Take(told);
      marks_.Take(told);
    };
    const auto take = [&](const auto& record) {
      LineMarks marks = marks_.TakeRecord();
      const PlaceInFile place{path, name, marks};
      output_.Add(record, &place);
      progress_.Show(output_.count(), [this] { return Counted(output_.count(), "record"); });
    };
    Outcome outcome = form_ == TextForm::VCard
                          ? ReadText(
                                windows.text(),
                                [&](const CContact& contact) {
                                  take(contact);
                                  pictures_.Remove(contact.photo);
                                },
                                entry)
                          : ReadText(
                                windows.text(), [&](const CCalendar& item) { take(item); }, entry);
    read_ += outcome.result.records;
    return TellStretch(path, outcome, windows, form_, [this] { progress_.Clear(); });
  }

  // Nobody meant them where the option says what the page is of.
  int TellFilesLeft() const {
    Complain(Counted(left_, "file") + " of folders left out: " +
             (left_ == 1 ? "it holds " : "they hold ") + WhyNotOn(form_));
    return options_.form ? kDone : kRejected;
  }

  // A page is for others too: as it was typed, but for the folder that has the user's name.
  std::string NameOnPage(const std::string& path) const {
    if (path == "-") return Utf8FromWide(output_.words().Of("standard-input"));
    const char* const home = std::getenv("HOME");
    std::string_view folder = home == nullptr ? "" : home;
    while (folder.ends_with('/')) folder.remove_suffix(1);
    const std::size_t size = folder.size();
    const bool isInside = size != 0 && path.starts_with(folder) && path[size] == '/';
    return isInside ? "~" + path.substr(size) : path;
  }

  void TellNothing(const std::string& path, NarrowStringView text) {
    progress_.Clear();
    const auto head = TextHeadOf(text);
    if (account_ && head && FormOf(head->object) != form_) {
      Complain(ShownName(path) + ": left out: it holds " + WhyNotOn(form_));
      return;
    }
    const char* noun = !account_ ? "record" : form_ == TextForm::VCard ? "contact" : "item";
    TellNothingBegins(path, noun, text, form_);
  }

  const Options& options_;
  const std::vector<InputText>& texts_;
  AlbumOutput output_;
  FormatAccount prepared_;
  PrivatePictures pictures_;
  Progress progress_;
  MarkKeeper marks_;
  std::optional<ImportAccount> account_;  // once the form is decided
  std::int64_t read_ = 0;                 // records of the file
  std::int64_t left_ = 0;                 // files of folders that are of the other form
  TextForm form_ = TextForm::VCard;
};

}  // namespace

int WriteFileAlbum(const Options& options) {
  if (!options.output) throw WrongUsage("nothing says where to: -o FILE names the page");
  int status = kDone;
  const std::vector<InputText> texts = TextsOf(options.operands, status);
  return FileAlbum(options, texts).Run(status);
}

}  // namespace pim::app
