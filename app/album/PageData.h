// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/labels/Labels.h"
#include "app/output/JsonWriter.h"
#include "pim/stream/TextHead.h"

namespace pim::app {

// What a page is of, besides its records.
struct PageHead {
  TextForm form = TextForm::VCard;
  bool isOfFiles = false;   // else of a store
  std::int64_t madeAt = 0;  // in seconds since 1970, UTC
  std::string zone = {};    // that times without one were written in; may be empty
  std::string from = {};    // the days for which repeats are followed; empty for none
  std::string to = {};
};

// An element that no browser runs, in which the page's script finds JSON; the attribute tells
// which.
std::string DataElement(std::string_view attribute, std::string_view json);

// The one that tells of the page, with all words of the language that it has.
std::string HeadElement(const PageHead& head, const LabelFile& labels);

// The records of a page and their pictures on their way out, in stretches: no more than one of them
// is in memory.
class RecordStretches {
 public:
  using Write = std::function<void(std::string_view)>;

  explicit RecordStretches(Write write) : write_(std::move(write)), json_(JsonPlace::Page) {}

  // What takes the next record, as one object.
  JsonWriter& Next();
  // The picture of that record.
  void AddPicture(std::string_view media, std::string_view bytes);
  // The record is whole. From here on its number is given.
  void EndRecord();
  // Writes the last stretch.
  void End();

  std::int64_t count() const { return count_; }

 private:
  Write write_;
  JsonWriter json_;
  std::string pictures_;  // of the stretch, as elements
  std::int64_t count_ = 0;
};

}  // namespace pim::app
