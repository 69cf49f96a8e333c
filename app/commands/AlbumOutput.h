// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/album/AlbumRecords.h"
#include "app/album/LineMarks.h"
#include "app/album/PageData.h"
#include "app/album/ShownDays.h"
#include "app/commands/FileTarget.h"
#include "app/commands/Options.h"
#include "app/output/MissingPictures.h"

namespace pim::app {

// Records on their way into a page, which is there as a whole or not at all. All of it throws
// Failure.
class AlbumOutput {
 public:
  // Looks at the target first, so that nothing is done in vain: `options.output`, "-" for standard
  // output, which must be none of the inputs. Throws WrongUsage for days that are none, and for a
  // name that isn't a page's.
  AlbumOutput(const Options& options, const std::vector<std::string>& inputs);

  // What the page is of, ahead of its first record. `of` is what its title names, in UTF-8; may be
  // empty. Throws WrongUsage where days were asked for of contacts.
  void SetHead(TextForm form, std::string of);

  // `place` is null for a record of a store.
  void Add(const CContact& contact, const PlaceInFile* place);
  // Leaves out an item that the days don't show.
  void Add(const CCalendar& item, const PlaceInFile* place);
  // Lines of a file that no record has, behind all records. Of very many the rest is a number.
  void AddFile(std::string_view file, const LineMarks& marks);
  // Ends the page and tells how many records there are. A page without any isn't written. Gives the
  // exit status.
  int End();

  std::int64_t count() const { return records_.count(); }
  // Of the page's language.
  const ReasonWords& words() const { return words_; }

 private:
  JsonWriter& NextRecord();
  // Tells that the page has none of the contact, on standard error and with its lines.
  void TellOfPicture(const CContact& contact, bool isMissing, const PlaceInFile* place);
  void WriteLinesLeft();
  void EndPage();

  const Options& options_;
  const LabelFile& labels_;
  ReasonWords words_;
  PageHead head_;
  ShownDays days_;
  FileTarget target_;
  std::string of_;
  std::string behind_;  // what ends the page
  RecordStretches records_;
  JsonWriter files_;
  std::int64_t linesLeft_ = 0;  // of files, beyond what there is room for
  MissingPictures missing_;
};

}  // namespace pim::app
