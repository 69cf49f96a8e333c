#include "app/commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <map>

#include "app/labels/Labels.h"
#include "app/output/Output.h"
#include "pim/platform/Host.h"

namespace pim::app {
namespace {

// Options that every command takes, in front of it or behind.
void AddCommonOptions(CLI::App& program, Options& options) {
  program.add_option("--store", options.store,
                     "Store to work on (default: $PIMVOBJ_STORE, else pimvobj/pim.db in the "
                     "application-data folder)");
  program.add_flag("--quiet", options.quiet, "Show no progress");
  program
      .add_option("--code-page", options.codePage,
                  "Charset of texts that name none, such as CP1252 (default: UTF-8)")
      ->check([](const std::string& name) {
        return SetDefaultCodePage(name) ? std::string() : "unknown code page " + name;
      });
  program.add_flag("--to-the-letter", options.toTheLetter,
                   "Write blanks at the head of a line and line breaks in numbers as they stand, "
                   "though readers lose them (default: written so that they read back)");
  program.set_version_flag("--version", "pimvobj " PIMVOBJ_VERSION);
}

CLI::App* AddCommand(CLI::App& parent, const char* name, const char* text) {
  CLI::App* command = parent.add_subcommand(name, text);
  command->fallthrough();
  return command;
}

CLI::App* AddAction(CLI::App& parent, const char* name, const char* text, Action action,
                    RecordKind kind, Options& options) {
  CLI::App* command = AddCommand(parent, name, text);
  command->parse_complete_callback([action, kind, &options] {
    options.action = action;
    options.kind = kind;
  });
  return command;
}

void AddPath(CLI::App& command, const char* name, const char* text, Options& options) {
  command.add_option(name, options.paths, text)->required()->expected(1);
}

void AddContactCommands(CLI::App& program, Options& options) {
  CLI::App* contacts = AddCommand(program, "contacts", "Contacts, as vCard 2.1");
  contacts->require_subcommand(1);

  CLI::App* importing = AddAction(*contacts, "import", "Read vCard files into the store",
                                  Action::Import, RecordKind::Contacts, options);
  importing
      ->add_option("PATH", options.paths, "A file, a folder of .vcf files, or - for standard input")
      ->required();
  CLI::Option* noGroups =
      importing->add_flag("--no-groups", options.noGroups, "Leave the cards' group names out");
  importing->add_option("--group", options.group, "Put every contact into this group instead")
      ->excludes(noGroups)
      ->check([](const std::string& name) {
        return name.empty() ? std::string("a group needs a name") : std::string();
      });
  importing->add_flag("--skip-duplicates", options.skipDuplicates,
                      "Leave out what equals a stored contact");

  AddPath(*AddAction(*contacts, "export", "Write one vCard file for each contact", Action::Export,
                     RecordKind::Contacts, options),
          "DIR", "Folder for the files, made if it is missing", options);

  AddAction(*contacts, "list", "List the stored contacts", Action::List, RecordKind::Contacts,
            options)
      ->add_flag("--json", options.json, "Print whole records as JSON");
}

// Events, to-dos and memos have the same commands.
void AddCalendarCommands(CLI::App& program, const char* name, const char* noun, RecordKind kind,
                         Options& options) {
  const std::string plural = std::string(noun) + "s";
  CLI::App* items = AddCommand(program, name, (plural + ", as vCalendar 1.0").c_str());
  items->require_subcommand(1);
  CLI::App* importing = AddAction(*items, "import", "Read vCalendar files into the store",
                                  Action::Import, kind, options);
  importing
      ->add_option("PATH", options.paths,
                   "A file, a folder of .vcs or .ics files, or - for standard input")
      ->required();
  importing->add_flag("--skip-duplicates", options.skipDuplicates,
                      "Leave out what equals a stored item");
  AddPath(*AddAction(*items, "export", "Write all of them into one vCalendar file", Action::Export,
                     kind, options),
          "FILE", "The file; an earlier one is replaced", options);
  AddAction(*items, "list", "List the stored ones", Action::List, kind, options)
      ->add_flag("--json", options.json, "Print whole records as JSON");
  AddPath(*AddAction(*items, "count", "Count the items of a file, of all kinds", Action::Count,
                     kind, options),
          "FILE", "A file, or - for standard input", options);
}

void AddInspect(CLI::App& program, Options& options) {
  static const std::map<std::string, TextForm> kForms = {{"vcard", TextForm::VCard},
                                                         {"vcalendar", TextForm::VCalendar}};
  CLI::App* inspect = AddAction(program, "inspect", "Show what a file holds, record by record",
                                Action::Inspect, RecordKind::Contacts, options);
  AddPath(*inspect, "FILE", "A file, or - for standard input", options);
  inspect->add_flag("--json", options.json, "Print whole records as JSON");
  inspect->add_option("--as", options.form, "Read it as vcard or vcalendar, whatever it looks like")
      ->transform(CLI::CheckedTransformer(kForms));
}

void AddShow(CLI::App& program, Options& options) {
  CLI::App* show = AddAction(program, "show", "Show a file's first vObject in a few lines",
                             Action::Show, RecordKind::Contacts, options);
  AddPath(*show, "FILE", "A file, or - for standard input", options);
  show->add_option("--lang", options.language, "Language of the labels, such as de or ja")
      ->check([](const std::string& name) {
        return FindLabels(name) != nullptr ? std::string() : "no labels for language " + name;
      });
  show->add_option("--labels", options.labels,
                   "A file of your own labels, as lines \"key = text\"");
}

std::string TellWrongUsage(const CLI::App*, const CLI::Error& error) {
  return std::string("pimvobj: ") + error.what() + "\nRun with --help for more information.\n";
}

}  // namespace

std::optional<Options> ReadCommandLine(int argc, const char* const* argv, int& status) {
  Options options;
  CLI::App program(
      "Moves contacts, events, to-dos and memos between a record store and vCard 2.1 or "
      "vCalendar 1.0 text.",
      "pimvobj");
  program.require_subcommand(1);
  AddCommonOptions(program, options);
  AddContactCommands(program, options);
  AddCalendarCommands(program, "calendar", "event", RecordKind::Calendar, options);
  AddCalendarCommands(program, "todo", "to-do", RecordKind::Todo, options);
  AddCalendarCommands(program, "memo", "memo", RecordKind::Memo, options);
  AddInspect(program, options);
  AddShow(program, options);
  program.failure_message(TellWrongUsage);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    status = program.exit(error) == 0 ? kDone : kWrongUsage;
    return std::nullopt;
  }
  return options;
}

}  // namespace pim::app
