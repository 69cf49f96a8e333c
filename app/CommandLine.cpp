#include "app/CommandLine.h"

#include <CLI/CLI.hpp>
#include <map>

#include "app/Output.h"
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

  CLI::App* import = AddAction(*contacts, "import", "Read vCard files into the store",
                               Action::Import, RecordKind::Contacts, options);
  import
      ->add_option("PATH", options.paths, "A file, a folder of .vcf files, or - for standard input")
      ->required();
  CLI::Option* noGroups =
      import->add_flag("--no-groups", options.noGroups, "Leave the cards' group names out");
  import->add_option("--group", options.group, "Put every contact into this group instead")
      ->excludes(noGroups)
      ->check([](const std::string& name) {
        return name.empty() ? std::string("a group needs a name") : std::string();
});
import->add_flag("--skip-duplicates", options.skipDuplicates,
                 "Leave out what equals a stored contact");

AddPath(*AddAction(*contacts, "export", "Write one vCard file for each contact", Action::Export,
                   RecordKind::Contacts, options),
        "DIR", "Folder for the files, made if it is missing", options);

AddAction(*contacts, "list", "List the stored contacts", Action::List, RecordKind::Contacts,
          options)
    ->add_flag("--json", options.json, "Print whole records as JSON");
}  // namespace

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

}  // namespace pim::app

std::optional<Options> ReadCommandLine(int argc, const char* const* argv, int& status) {
  Options options;
  CLI::App program("Moves contacts between a record store and vCard 2.1 text.", "pimvobj");
  program.require_subcommand(1);
  AddCommonOptions(program, options);
  AddContactCommands(program, options);
  AddInspect(program, options);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    status = program.exit(error) == 0 ? kDone : kWrongUsage;
    return std::nullopt;
  }
  return options;
}

}  // namespace pim::app
