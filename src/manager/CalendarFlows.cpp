// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/CalendarImport.h"
#include "pim/manager/VObjectMgr.h"
#include "platform/Files.h"
#include "support/TextFiles.h"
#include "vcalendar/VCalendarReader.h"
#include "vcalendar/VCalendarWriter.h"

namespace pim {
namespace {

// A mark at the start stays: it spoils no more than the line of the frame.
bool ReadItemsFile(WideStringView path, ByteBuffer& text) {
  return !path.empty() && ReadTextFile(path, ByteOrderMark::Kept, text);
}

std::int32_t ImportItems(std::int32_t db, CalendarType flow, WideStringView path, bool saveFlag) {
  ByteBuffer text;
  if (!ReadItemsFile(path, text)) return -1;
  CalendarImportCounts counts;
  return ImportCalendarText(db, flow, text.view(), saveFlag, counts);
}

std::int32_t CountItems(WideStringView path) {
  VObjectBuffer data;
  if (!ReadItemsFile(path, data.bytes)) return -1;
  CCalendars items;
  ParseVCalendar(items, data);
  return items.GetCount();
}

std::int32_t ExportItems(std::int32_t db, CalendarType kind, WideStringView path) {
  if (path.empty()) return -1;
  CCalendars items;
  if (items.OpenFromDB(db, kind, 0) < 0) return -1;
  if (items.GetCount() == 0) return 0;
  VObjectBuffer data;
  WriteVCalendar(items, data);
  return ReplaceFile(NativePath(path), data.bytes.view()) ? items.GetCount() : -1;
}

}  // namespace

std::int32_t VObjectMgr::Import_Calendar(std::int32_t db, WideString path, bool saveFlag) {
  return ImportItems(db, CalendarType::Event, path, saveFlag);
}
std::int32_t VObjectMgr::Import_Todo(std::int32_t db, WideString path, bool saveFlag) {
  return ImportItems(db, CalendarType::Todo, path, saveFlag);
}
std::int32_t VObjectMgr::Import_Memo(std::int32_t db, WideString path, bool saveFlag) {
  return ImportItems(db, CalendarType::Memo, path, saveFlag);
}

std::int32_t VObjectMgr::Count_Calendar(std::int32_t, WideString path) { return CountItems(path); }
std::int32_t VObjectMgr::Count_Todo(std::int32_t, WideString path) { return CountItems(path); }
std::int32_t VObjectMgr::Count_Memo(std::int32_t, WideString path) { return CountItems(path); }

std::int32_t VObjectMgr::Export_Calendar(std::int32_t db, WideString path) {
  return ExportItems(db, CalendarType::Event, path);
}
std::int32_t VObjectMgr::Export_Todo(std::int32_t db, WideString path) {
  return ExportItems(db, CalendarType::Todo, path);
}
std::int32_t VObjectMgr::Export_Memo(std::int32_t db, WideString path) {
  return ExportItems(db, CalendarType::Memo, path);
}

}  // namespace pim
