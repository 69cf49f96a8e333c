#include "app/commands/ContactCommands.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>

#include "app/commands/Importer.h"
#include "app/commands/Session.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"
#include "app/output/RecordDump.h"
#include "app/output/Table.h"
#include "pim/manager/ContactExport.h"
#include "pim/manager/ContactImport.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

// The key of the group of that name, made when it is missing.
std::int32_t GroupIdOf(Session& session, const std::string& name) {
  CContactGroups groups;
  CContactGroup& group = groups.AddNew();
  group.group_name = WideFromUtf8(name);
  if (groups.SaveToDB(session.db(), true) < 0) session.Fail();
  return group.group_id;
}

class ContactImporter : public Importer {
 public:
  explicit ContactImporter(const Options& options)
      : Importer(options, {".vcf"}, "contact", TextForm::VCard, ByteOrderMark::Skipped) {}

 private:
  FileCounts StoreText(NarrowStringView text, const ProgressCall& progress) override {
    std::int32_t saveOption = options().noGroups ? 0 : -1;
    if (options().group) saveOption = GroupIdOf(session(), *options().group);
    ContactImportCounts counts;
    const auto report = [&](const ContactImportCounts& soFar) {
      progress({soFar.inText, soFar.stored});
    };
    std::int32_t stored = 0;
    try {
      stored = ImportContactText(session().db(), text, saveOption, !options().skipDuplicates,
                                 counts, report);
    } catch (ParseFailure) {
      report(counts);  // how many stood ahead of what was rejected
      throw;
    }
    if (stored < 0 || !counts.linked) session().Fail();
    return {counts.inText, counts.stored, 0, std::move(counts.pictures)};
  }
};

void LoadGroups(Session& session, CContactGroups& groups, CContactGroupPairs& pairs) {
  if (groups.OpenFromDB(session.db()) < 0 || pairs.OpenFromDB() < 0) session.Fail();
}

std::string DisplayName(const CContact& contact) {
  if (!contact.formatted_name.empty()) return Shown(contact.formatted_name);
  WideString name = contact.name.given_name.str();
  if (!name.empty() && !contact.name.family_name.empty()) name += u' ';
  return Shown(name.append(contact.name.family_name.view()));
}

// One cell for a list: its entries, joined.
template <class List, class TextOfEntry>
std::string Joined(const List& list, TextOfEntry textOf) {
  std::string cell;
  for (const auto& entry : list) {
    const std::string text = Shown(textOf(entry));
    if (text.empty()) continue;
    cell.append(cell.empty() ? "" : ", ").append(text);
  }
  return cell;
}

// A column of the list: its title, and what stands in it for a contact.
struct ContactColumn {
  const char* title;
  std::string (*cell)(const CContact& contact);
};

constexpr ContactColumn kColumns[] = {
    {"ID", [](const CContact& contact) { return std::to_string(contact.tag); }},
    {"NAME", DisplayName},
    {"TELEPHONE",
     [](const CContact& contact) {
       return Joined(contact.telephones(), [](const auto& entry) { return entry.number.view(); });
     }},
    {"E-MAIL",
     [](const CContact& contact) {
       return Joined(contact.emails(),
                     [](const auto& entry) { return entry.email_address.view(); });
     }},
    {"ORGANISATION",
     [](const CContact& contact) {
       return Joined(contact.organizations(),
                     [](const auto& entry) { return entry.org_name.view(); });
     }},
    {"GROUPS",
     [](const CContact& contact) {
       return Joined(contact.groups(), [](const WideText& entry) { return entry.view(); });
     }},
};

std::vector<std::string> Titles() {
  std::vector<std::string> titles;
  for (const ContactColumn& column : kColumns) titles.emplace_back(column.title);
  return titles;
}

std::vector<std::string> RowOf(const CContact& contact) {
  std::vector<std::string> row;
  row.reserve(std::size(kColumns));
  for (const ContactColumn& column : kColumns) row.push_back(column.cell(contact));
  return row;
}

template <class Visitor>
void VisitContacts(Session& session, Visitor visitor) {
  const std::int32_t visited = session.store().VisitContacts([&](CContact& contact) {
    CheckInterrupt();
    visitor(contact);
    return true;
  });
  if (visited < 0) session.Fail();
}

}  // namespace

int ImportContacts(const Options& options) { return ContactImporter(options).Run(); }

int ExportContacts(const Options& options) {
  const std::string& folder = options.paths.front();
  Session session(options);
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  // From inside the folder, so that the length of its path costs no name its letters. A picture's
  // folder is absolute by then.
  if (error || chdir(folder.c_str()) != 0)
    throw Failure(ShownName(folder) + ": " + (error ? error.message() : std::strerror(errno)));
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  CContactGroups groups;
  CContactGroupPairs pairs;
  LoadGroups(session, groups, pairs);
  ContactExport files(u"./", groups, pairs);
  Progress progress(options.quiet);
  long long written = 0;
  try {
    VisitContacts(session, [&](CContact& contact) {
      files.AttachGroupNames(contact);
      if (!files.WriteContactFile(contact))
        throw FileError(Utf8FromWide(files.LastPath()), std::strerror(errno));
      ++written;
      progress.Show(written, written);
    });
  } catch (const FileError& failure) {
    progress.Clear();
    throw Failure(ShownName(folder + failure.path().substr(1)) + ": " + failure.reason() +
                  "; this contact isn't exported, " + Counted(written, "file") + " before it stay");
  }
  progress.Clear();
  Print(Counted(written, "contact") + " exported\n");
  return kDone;
}

int ListContacts(const Options& options) {
  Session session(options);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  CContactGroups groups;
  CContactGroupPairs pairs;
  LoadGroups(session, groups, pairs);
  if (options.json) {
    ContactExport names({}, groups, pairs);
    JsonList list("contacts");
    VisitContacts(session, [&](CContact& contact) {
      names.AttachGroupNames(contact);
      list.Add(contact);
    });
    list.End();
    return kDone;
  }
  constexpr std::size_t kWidestColumn = 32;
  Table table(Titles(), kWidestColumn);
  VisitContacts(session, [&](CContact& contact) { table.Measure(RowOf(contact)); });
  ContactExport names({}, groups, pairs);
  Print(table.TitleLine());
  VisitContacts(session, [&](CContact& contact) {
    names.AttachGroupNames(contact);
    Print(table.Line(RowOf(contact)));
  });
  return kDone;
}

}  // namespace pim::app
