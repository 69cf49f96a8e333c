// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "app/output/ExportLimits.h"
#include "formats/FormatLoss.h"
#include "pim/manager/TextReading.h"
#include "pim/manager/TextWriting.h"
#include "pim/platform/Host.h"
#include "pim/support/FileNames.h"
#include "platform/Files.h"
#include "records/RecordMap.h"
#include "support/ParameterTable.h"
#include "tools/CodedWords.h"
#include "tools/MadeFile.h"
#include "vcalendar/VCalendarFields.h"
#include "vcard/VCardFields.h"

namespace pim {
namespace {

// What stands on the page of each property follows from reading one line of it: the fields from the
// account, the columns from the record that comes of it, and how it is written from that record.
struct Sample {
  std::int32_t property;
  std::string_view line;
  std::string_view ahead = {};  // lines that it needs
};

constexpr Sample kCardSamples[] = {
    {VCARD_FN, "FN:Ann Berg"},
    {VCARD_N, "N:Berg;Ann;B.;Dr.;Jr."},
    {VCARD_NICKNAME, "NICKNAME:Annie"},
    {VCARD_SOUND, "SOUND;X-IRMC-N:a;b;c;d;e"},
    {VCARD_BDAY, "BDAY:1970-01-31"},
    {VCARD_X_BLOOD, "X-BLOOD:AB"},
    {VCARD_TEL, "TEL;TYPE=CELL:+1 555 0100"},
    {VCARD_EMAIL, "EMAIL;Work:ann@example.org"},
    {VCARD_URL, "URL;Private:http://example.org"},
    {VCARD_ADR, "ADR;HOME:1;2;Main Street 3;Town;Land;12345;Country"},
    {VCARD_NOTE, "NOTE:a note"},
    {VCARD_TITLE, "TITLE:Engineer"},
    {VCARD_ROLE, "ROLE:Lead"},
    {VCARD_ORG, "ORG;Work:Example;Sales;North"},
    {VCARD_X_HOBBY, "X-HOBBY:chess"},
    {VCARD_PHOTO, "PHOTO;JPEG;BASE64:QUJD\n"},
    {VCARD_X_GROUP, "X-GROUP:Family"},
    {VCARD_X_CHATID, "X-CHATID;ICQ:12345"},
    {VCARD_X_ANNI, "X-ANNI:20000101"},
    {VCARD_X_EVENTDAY, "X-EVENTDAY:20000101"},
    {VCARD_X_FAVORITE, "X-FAVORITE:YES"},
};

constexpr Sample kItemSamples[] = {
    {VCAL_TZ, "TZ:+09:00"},
    {VCAL_DAYLIGHT, "DAYLIGHT:TRUE;-04;20100314T020000Z;20101107T020000Z;EST;EDT"},
    {VCAL_CATEGORIES, "CATEGORIES:APPOINTMENT"},
    {VCAL_CLASS, "CLASS:PRIVATE"},
    {VCAL_AALARM, "AALARM;TYPE=WAVE;VALUE=CONTENT-ID:20100105T110000Z;PT5M;3;Meet",
     "DTSTART:20100105T120000Z\n"},
    {VCAL_DTCREATE, "DTCREATE:20100105T120000Z"},
    {VCAL_LAST_MODIFIED, "LAST-MODIFIED:20100105T120000Z"},
    {VCAL_X_MODIFIED, "X-MODIFIED:20100105T120000Z"},
    {VCAL_DTSTART, "DTSTART:20100105", "DTEND:20100105\n"},
    {VCAL_DTEND, "DTEND:20100105T130000Z"},
    {VCAL_DUE, "DUE:20100105T120000Z"},
    {VCAL_COMPLETED, "COMPLETED:20100105T120000Z"},
    {VCAL_SUMMARY, "SUMMARY:Lunch"},
    {VCAL_DESCRIPTION, "DESCRIPTION:with Ann"},
    {VCAL_LOCATION, "LOCATION:Room 4"},
    {VCAL_RRULE, "RRULE:MP2 1+ MO #4 20101231T000000Z"},
    {VCAL_XRULE, "XRULE:MP2 1+ MO #4 20101231T000000Z", "RRULE:D1\n"},
    {VCAL_PRIORITY, "PRIORITY:1"},
    {VCAL_STATUS, "STATUS:CONFIRMED"},
    {VCAL_X_COLOR, "X-COLOR:red"},
    {VCAL_X_HOLIDAY, "X-HOLIDAY:YES"},
};

// No property lacks one.
template <class Samples, class Rows>
constexpr bool CoversAll(const Samples& samples, const Rows& rows) {
  return std::ranges::all_of(rows, [&samples](const auto& row) {
    return std::ranges::count(samples, row.property, &Sample::property) == 1;
  });
}
static_assert(CoversAll(kCardSamples, kVCardFields) && CoversAll(kItemSamples, kVCalendarFields));

// By the numbers of VCardValue and VCalendarValue.
constexpr std::string_view kCardValues[] = {"text",
                                            "text in the default code page",
                                            "five parts",
                                            "seven parts",
                                            "any number of parts",
                                            "a day, YYYYMMDD or YYYY-MM-DD",
                                            "a word",
                                            "YES or NO",
                                            "base64"};
constexpr std::string_view kItemValues[] = {
    "text",
    "a date-time, YYYYMMDD, YYYYMMDDTHHMMSS or YYYYMMDDTHHMMSSZ",
    "a word",
    "a number",
    "YES or NO",
    "+HH or +HH:MM",
    "TRUE;offset;start;end;name;name",
    "time;snooze;count;text",
    "words",
    "a rule in vCalendar's basic grammar"};

// Whether a column holds something else than in a new record.
bool IsSet(const FieldRef& field) {
  struct {
    bool operator()(const WideText* text) const { return !text->empty(); }
    bool operator()(const std::int32_t* number) const { return *number != 0; }
    bool operator()(const std::uint32_t* number) const { return *number != 0; }
    bool operator()(const std::uint8_t* number) const { return *number != 0; }
    bool operator()(const DESKMATE_IDS::Alarm* alarm) const {
      return *alarm != DESKMATE_IDS::ALARM_NONE;
    }
    bool operator()(const COleDateTimeNull* date) const { return date->status != StatusNull; }
    bool operator()(const COleDateTimeSpan* span) const { return span->value != 0; }
    bool operator()(const std::vector<WideText>* list) const { return !list->empty(); }
    bool operator()(const RecurrenceList* list) const { return !list->empty(); }
    bool operator()(const PictureName& picture) const { return !picture.name->empty(); }
    bool operator()(const WholeSeconds& seconds) const {
      return seconds.time->status != StatusNull;
    }
    bool operator()(const ExactDay&) const { return false; }  // beside whole seconds
    bool operator()(const DerivedNumber& number) const { return number.value.has_value(); }
  } visitor;
  return std::visit(visitor, field);
}

using Columns = std::vector<std::string>;

Columns ColumnsOf(const RecordMap& map, void* record) {
  Columns columns;
  const auto add = [&columns](std::string_view table, const FieldMap& field, void* entry) {
    if (IsSet(field.field(entry)))
      columns.push_back(std::string(table) + "." + std::string(field.column));
  };
  for (const FieldMap& field : map.fields) add(map.table, field, record);
  for (const ListMap& list : map.lists) {
    RuleRow work;
    for (std::size_t i = 0; i < list.count(record); ++i) {
      void* const entry = list.at(record, i, work);
      for (const FieldMap& field : list.fields) add(list.table, field, entry);
    }
  }
  return columns;
}

// What of `all` isn't in `some`.
Columns Without(Columns all, const Columns& some) {
  std::erase_if(
      all, [&some](const std::string& one) { return std::ranges::find(some, one) != some.end(); });
  return all;
}

// The lines of `text` that aren't in `other`, joined by blanks.
std::string NewLines(std::string text, const std::string& other) {
  std::string lines;
  std::erase(text, '\r');
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string line = text.substr(at, end - at);
    const bool isLast = end == text.size();  // the END of the text
    if (!line.empty() && !isLast && other.find(line + "\r\n") == std::string::npos)
      lines += (lines.empty() ? "" : " ") + line;
    at = end + 1;
  }
  return lines;
}

struct Read {
  Columns columns;
  std::vector<std::string> fields;  // of the last line
  std::string written;
};

template <class Records>
Read ReadSample(const std::string& text, std::int64_t line, const RecordMap& map) {
  constexpr bool kIsCard = std::is_same_v<Records, CContacts>;
  const auto names = RecordFields(kIsCard ? TextForm::VCard : TextForm::VCalendar);
  Read read;
  const TextObserver observer{{}, [&](const AccountEntry& entry) {
                                if (entry.first != line) return;
                                for (std::size_t i = 0; i < names.size(); ++i) {
                                  if ((entry.into >> i & 1U) != 0)
                                    read.fields.emplace_back(names[i]);
                                }
                              }};
  Records records;
  if constexpr (kIsCard) {
    static_cast<void>(ReadContacts(text, records, observer));
    read.written = WriteContact(records[0]);
  } else {
    static_cast<void>(ReadCalendars(text, records, observer));
    read.written = WriteCalendars(records);
  }
  read.columns = ColumnsOf(map, &records[0]);
  return read;
}
Read ReadCard(const std::string& text, std::int64_t line) {
  return ReadSample<CContacts>(text, line, ContactMap());
}
Read ReadItem(const std::string& text, std::int64_t line) {
  return ReadSample<CCalendars>(text, line, CalendarMap());
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "`" : ", `") + word + "`";
  return text;
}

class Page {
 public:
  std::string Make() {
    text_ =
        "<!--\nSPDX-FileCopyrightText: 2026 The PimVobjMgr authors\nSPDX-License-Identifier: "
        "Apache-2.0\n-->\n\n"
        "# Where each property goes\n\n"
        "For who wants to know what becomes of a property, or what a number in JSON or in a store "
        "means.\n\n"
        "Made by `pim_mapping` from the tables that the readers and writers work by;\n"
        "`cmake --build --preset dev --target mapping` makes it anew. Fields are those of\n"
        "[record-dump.md](record-dump.md), columns those of [store.md](store.md). What is written "
        "is what comes of\nthe example; what is lost on either way stands at the end.\n";
    AppendCards();
    AppendItems();
    AppendParameters();
    AppendWords();
    AppendLosses();
    AppendLimits();
    AppendFormatReasons();
    return std::move(text_);
  }

 private:
  void AppendHead(std::string_view title) {
    text_.append("\n## ").append(title).append(
        "\n\n| Property | Read as | Example | Field | Column | Written "
        "|\n|---|---|---|---|---|---|\n");
  }

  void AppendRow(std::string_view property, std::string_view value, const Sample& sample,
                 const std::vector<std::string>& fields, const Columns& columns,
                 const std::string& written) {
    std::string example(sample.line);
    std::erase(example, '\n');
    text_.append("| ").append(property).append(" | ").append(value).append(" | `").append(example);
    text_.append("` | ").append(Joined(fields)).append(" | ");
    // Groups are no part of a contact's own rows.
    text_.append(columns.empty()
                     ? "`" + std::string(kGroupTable) + "`, by `" + std::string(kLinkTable) + "`"
                     : Joined(columns));
    text_.append(" | ").append(written.empty() ? "no" : written).append(" |\n");
  }

  void AppendCards() {
    AppendHead("vCard 2.1");
    for (const Sample& sample : kCardSamples) {
      const std::string head = "BEGIN:VCARD\n" + std::string(sample.ahead);
      const auto line = 1 + std::ranges::count(head, '\n');
      const Read without = ReadCard(head, line);
      const Read with = ReadCard(head + std::string(sample.line) + "\n", line);
      const VCardFieldRow& row = pim::RowOf(static_cast<VCardPropertyId>(sample.property));
      AppendRow(pim::TextOf(kVCardProperties, static_cast<std::uint32_t>(sample.property)),
                kCardValues[static_cast<std::size_t>(row.value)], sample, with.fields,
                Without(with.columns, without.columns),
                "`" + NewLines(with.written, without.written) + "`");
    }
  }

  void AppendItems() {
    AppendHead("vCalendar 1.0");
    for (const Sample& sample : kItemSamples) {
      const VCalendarFieldRow& row = pim::RowOf(static_cast<VCalPropertyId>(sample.property));
      Columns columns;
      std::vector<std::string> fields;
      std::map<std::string, std::string> kinds;  // by the lines that are written of them
      for (const Word& kind : kItemObjects) {
        const std::string head =
            "BEGIN:" + std::string(kind.text) + "\n" + std::string(sample.ahead);
        const auto line = 1 + std::ranges::count(head, '\n');
        const Read without = ReadItem(head, line);
        const Read with = ReadItem(head + std::string(sample.line) + "\n", line);
        fields = with.fields;
        columns = Without(with.columns, without.columns);
        const std::string lines = NewLines(with.written, without.written);
        if (lines.empty()) continue;
        std::string& of = kinds[lines];
        of.append(of.empty() ? "" : ", ").append(kind.text);
      }
      std::string written;
      for (const auto& [lines, of] : kinds) {
        written.append(written.empty() ? "`" : " `").append(lines).append("`");
        if (std::ranges::count(of, ',') != 2) written.append(" (").append(of).append(")");
      }
      AppendRow(pim::TextOf(kVCalendarProperties, static_cast<std::uint32_t>(sample.property)),
                kItemValues[static_cast<std::size_t>(row.value)], sample, fields, columns, written);
    }
  }

  void AppendWordRow(std::string_view what, std::span<const Word> words) {
    text_.append("| ").append(what).append(" |");
    const char* mark = " ";
    for (const Word& word : words)
      text_.append(std::exchange(mark, ", ")).append("`").append(word.text).append("`");
    text_ += " |\n";
  }

  void AppendParameters() {
    text_ +=
        "\n## Parameters of every text\n\nWithout regard to letter case; any other word but `8BIT` "
        "and "
        "`7BIT` is told as without effect.\n\n| Parameter | Words |\n|---|---|\n";
    AppendWordRow("`CHARSET=`; any other one is read in the default code page", kCharsets);
    AppendWordRow("`ENCODING=`, or the bare word", kEncodings);
  }

  void AppendWords() {
    text_ +=
        "\n## Words and their codes\n\nIn the order in which a writer puts them. The values of "
        "X-BLOOD, CLASS and STATUS may be cut short. Behind\na word stands the code that records, "
        "JSON and the store have for it (`pim/records/TypeCodes.h`), which stays for "
        "ever;\nwithout "
        "a word it is 0.\n\n| Where | JSON key | Words |\n|---|---|---|\n";
    for (const CodedWords& row : kCodedWords) {
      text_.append("| ").append(row.where).append(" | ");
      text_.append(row.key.empty() ? "" : "`" + std::string(row.key) + "`").append(row.remark);
      const char* mark = " | ";
      for (const Word& word : row.words) {
        text_.append(std::exchange(mark, ", ")).append("`").append(word.text).append("`");
        if (!row.key.empty()) text_.append(" ").append(std::to_string(word.code));
      }
      text_ += " |\n";
    }
  }

  void AppendLosses() {
    text_ +=
        "\n## What isn't kept when a text is read\n\n`pimvobj inspect --losses` tells each line; "
        "[account.md](account.md) has the form for programs.\n\n| Code | What happened "
        "|\n|---|---|\n";
    for (const LossRow& loss : kLosses)
      text_.append("| `").append(loss.name).append("` | ").append(loss.text).append(" |\n");
  }

  void AppendFormatReasons() {
    text_ +=
        "\n## What other forms can't hold\n\n`pimvobj convert`, exports with `--to` and `pimvobj "
        "prepare` tell it of each record or line; [formats.md](formats.md) has more.\n\n| Code | "
        "Why |\n|---|---|\n";
    for (const FormatReasonRow& row : kFormatReasons)
      text_.append("| `").append(row.name).append("` | ").append(row.text).append(" |\n");
  }

  void AppendLimits() {
    text_ +=
        "\n## What doesn't come back from an export\n\n`pimvobj check` tells each field.\n\n"
        "| Form | Field | Reason |\n|---|---|---|\n";
    for (const app::ExportLimit& limit : app::ExportLimits()) {
      text_.append(limit.form == TextForm::VCard ? "| vCard | " : "| vCalendar | ");
      text_.append(limit.field.empty() ? "any" : "`" + std::string(limit.field) + "`");
      text_.append(" | ").append(limit.text).append(" |\n");
    }
  }

  std::string text_;
};

int Run(int argc, char** argv) {
  const bool check = argc == 3 && std::string_view(argv[1]) == "--check";
  if (argc != 2 && !check) return 2;
  const std::filesystem::path pictures = std::filesystem::temp_directory_path() /
                                         ("pim-mapping-" + std::to_string(std::random_device()()));
  SetAppDataFolder(pictures.string());
  std::filesystem::create_directories(NativePath(GetCallerIdPath()));
  setenv("TZ", "UTC0", 1);
  const std::string page = Page().Make();
  std::filesystem::remove_all(pictures);
  return WriteOrCheck(argv[argc - 1], page, check, "mapping");
}

}  // namespace
}  // namespace pim

int main(int argc, char** argv) { return pim::Run(argc, argv); }
