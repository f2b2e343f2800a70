#include "cli.h"

#include <memory>
#include <string>

namespace tools {

const Program kProgram = {
    .name = "vexorcfg",
    .title = "check, show and convert configuration files of the power-management test suite",
    .environment =
        ".TP\n.B NO_COLOR\nWhen set and not empty, the findings of a check are not coloured. They "
        "never are unless standard output is a terminal.\n"
        ".TP\n.B VEXOR_HOST_IP_FILE\nThe file that the default of Host_IP_Config is read from.\n",
};

namespace vexorcfg {
namespace {

constexpr const char* kTopExamples =
    "A first session:\n"
    "  vexorcfg check lab.xml               what is wrong with a file, line by line\n"
    "  vexorcfg explain ActiveTime          what an option means and takes\n"
    "  vexorcfg explain time msec:80-120    what a text means, or what is wrong with it\n"
    "  vexorcfg show lab.xml                all settings, and where they come from\n"
    "  vexorcfg convert old.xml new.xml     an older file in the current form\n"
    "\n"
    "vexorcfg COMMAND --help shows the options of a command, with examples.\n"
    "\n"
    "Exit status: 0 all is well, 1 warnings or differences, 2 errors, 3 could not run.";

constexpr const char* kCheckExamples =
    "A finding is one line: FILE:LINE: error: ELEMENT: \"TEXT\": what is wrong, what was "
    "expected [CODE].\n"
    "vexorcfg explain CODE says more.\n"
    "An error is a text that is not read, or not as it was meant. A warning is a text in an older\n"
    "form or without effect, or XML that other programs refuse. The last line is the result.\n"
    "\n"
    "A comment in the file allows findings by their codes, in the element that follows it and in\n"
    "all below that; as the first content of the root element, in the whole file:\n"
    "  <!-- vexorcfg: allow VX019, VX054 -->\n"
    "\n"
    "In a folder, all *.xml files in it and below it are checked, except in hidden folders and\n"
    "links to folders. Wildcards (* and ?) that the shell did not expand are expanded here.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg check lab.xml\n"
    "  vexorcfg check --strict *.xml      for an automatic check: warnings fail, too\n"
    "  vexorcfg check configurations      every file in a folder and below it\n"
    "  vexorcfg check --json - <lab.xml   for a program\n"
    "  vexorcfg check --format sarif configurations >findings.sarif\n"
    "\n"
    "Exit status: 0 no faults, 1 warnings, 2 errors, 3 a file could not be read.";

constexpr const char* kShowExamples =
    "Each setting is one line: the line in the file, the name and the value, and in parentheses "
    "the\n"
    "origin of a value that is not simply the text of its element. Elements that the file does "
    "not\n"
    "have, and whose tests do not run, are listed only by name.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg show lab.xml\n"
    "  vexorcfg show --tests lab.xml      the settings of the tests that run\n"
    "  vexorcfg show --changed lab.xml    the settings that differ from the defaults\n"
    "  vexorcfg show --summary lab.xml    the summary that the tests write to their logs\n"
    "  vexorcfg show lab.xml -- /cstate -at msec:80 /all -ftol 3\n"
    "                                     what these options change\n"
    "\n"
    "Exit status: 0 success, 2 mistakes in the options of a command line, 3 could not run.";

constexpr const char* kDefaultsExamples =
    "Comments in the file list the valid values.\n"
    "\n"
    "Editors with XML support complete and check a file that names its schema, by a path that is\n"
    "relative to the file, or by a URI. The installed XML catalog resolves "
    "urn:vexorutils:vexor.xsd "
    "to\n"
    "the installed schema.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg defaults lab.xml\n"
    "  vexorcfg defaults --schema vexor.xsd lab.xml\n"
    "  vexorcfg defaults | less";

constexpr const char* kConvertExamples =
    "Compares the meaning of the new file with that of the old one, and lists what was lost: "
    "texts\n"
    "that the reader does not read, or not as they are written, and parts that a written file "
    "does\n"
    "not have, such as workloads and comments. If IN and OUT are the same file, it is not "
    "replaced\n"
    "when something would be lost, unless --lossy is given.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg convert old.xml new.xml\n"
    "  vexorcfg convert --diff old.xml    what would change, line by line\n"
    "\n"
    "Exit status: 0 nothing was lost, 1 something was (with --diff: there are differences),\n"
    "3 could not run.";

constexpr const char* kGetExamples =
    "A path is that of the command show, or the end of it if that is unique. The path of a list\n"
    "prints an entry on each line, that of a section PATH=VALUE for each of its options.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg get lab.xml CSTATES/ActiveTime\n"
    "  vexorcfg get lab.xml TestTraceCfg/Name    the trace entries\n"
    "\n"
    "Exit status: 0 printed, 1 nothing is set at a path, 3 no such path, or the file could not be "
    "read.";

constexpr const char* kSetExamples =
    "Only the option's text changes: comments, blanks, the order of elements and line ends stay.\n"
    "A missing element is added in its place. If one of the options cannot be set, the file stays\n"
    "as it is.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg set lab.xml CSTATES/ActiveTime=msec:80 AutoRunCfg/CSTATES=true\n"
    "  vexorcfg set lab.xml TestTraceCfg/Name[3]=CSTATES_Core_Con:10   the third of two entries: "
    "adds it\n"
    "  vexorcfg set --diff lab.xml CSTATES/ActiveTime=msec:80          what would change\n"
    "\n"
    "Exit status: 0 done (with --diff: nothing to change), 1 with --diff: there are differences,\n"
    "3 not done.";

constexpr const char* kUnsetExamples =
    "Examples:\n"
    "  vexorcfg unset lab.xml CSTATES/SubStates      the option then reads as empty\n"
    "  vexorcfg unset lab.xml TestTraceCfg/Name[2]   an entry of a list\n"
    "  vexorcfg unset lab.xml GLOBALPM/CORE/CSTATES  a section, whose options are defaults then\n"
    "\n"
    "Exit status: as for set.";

constexpr const char* kFixExamples =
    "Mends what the command check makes a sure suggestion for: mistyped names and words, wrong "
    "case,\n"
    "wrong separators, unescaped characters, misplaced elements. Prints each change, and then what "
    "is\n"
    "left. All else in the file stays as it is.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg fix --diff lab.xml   what would change\n"
    "  vexorcfg fix lab.xml\n"
    "\n"
    "Exit status: 0 nothing is left to mend, 1 warnings are left (with --diff: there are\n"
    "differences), 2 errors are left, 3 a file could not be read or written.";

constexpr const char* kMigrateExamples =
    "Renames elements with older names, brings trace entries and settings of older versions to "
    "their\n"
    "current form, and sets the version. Comments, the order of elements and all else stay. A file "
    "of\n"
    "which any setting would change is left as it is.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg migrate --diff old.xml   what would change\n"
    "  vexorcfg migrate old.xml\n"
    "\n"
    "Exit status: 0 done, 1 with --diff: there are differences, 3 not done.";

constexpr const char* kDiffExamples =
    "Defaults, older names and other ways to write the same (sec:1 and msec:1000) do not count as\n"
    "differences, nor do options of tests that run in neither file. An entry of a list that only\n"
    "one file has is one difference; the other entries are compared with their counterparts.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg diff friday.xml monday.xml\n"
    "  vexorcfg diff --all friday.xml monday.xml   options of tests that do not run, too\n"
    "\n"
    "Exit status: 0 they mean the same, 1 they differ, 3 could not run.";

constexpr const char* kExplainExamples =
    "A NAME that is several things, such as a test and an element, is explained as each of them.\n"
    "option NAME explains it only as an option or an element, and error NAME only as errors.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg explain                            the syntaxes, with an example of each\n"
    "  vexorcfg explain ActiveTime                 an option: meaning, syntax, default\n"
    "  vexorcfg explain option GSTATES             all options of a test\n"
    "  vexorcfg explain -- -exeCycles              a name that begins with \"-\"\n"
    "  vexorcfg explain time msec:80-120           what a text means, or what is wrong with it\n"
    "  vexorcfg explain CSTATES/CoreAffinity 0,2   the same for a text of an option\n"
    "  vexorcfg explain error CSTATES              the error tags of a test, with their bits\n"
    "  vexorcfg explain error CSTATES 0x80000004   an error code, tag by tag\n"
    "  vexorcfg explain error CSTATES EC_C6        the bits of a tag\n"
    "  vexorcfg explain VX019                      a code of the checker; codes lists them\n"
    "  vexorcfg explain --json CSTATES/ActiveTime  for a program\n"
    "\n"
    "Exit status: 0 success, 1 a text is doubtful, 2 a text is wrong, 3 nothing of that name.";

constexpr const char* kReferenceExamples =
    "Every element that a file may hold, with its meaning, syntax, default and valid words.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg reference options.md\n"
    "  vexorcfg reference | less";

constexpr const char* kSchemaExamples =
    "For editors that complete and check elements as they are typed, and for validators. It knows\n"
    "elements and words; vexorcfg check also knows what the texts mean.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg schema vexor.xsd\n"
    "  xmllint --noout --schema vexor.xsd lab.xml";

constexpr const char* kServerExamples =
    "Editors start it and speak the Language Server Protocol with it on standard input and "
    "output.\n"
    "It reports findings while you type, completes elements and words, explains what is under the\n"
    "cursor, and offers fixes. It knows the files that are open in the editor, and writes none.\n"
    "With initializationOptions {\"notes\": true}, notes are reported, too. docs/editors.md has\n"
    "settings for several editors.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg lsp           the command line for an editor\n"
    "  vexorcfg lsp --stdio   the same; editors that let a server choose its channel add this\n"
    "\n"
    "Exit status: 0 the editor shut it down, 1 it went away without that, 3 could not run.";

constexpr const char* kManualExamples =
    "Example:\n"
    "  vexorcfg manual | man -l -";

void AddCheck(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<CheckArguments>(
      app, status, "check", "List the mistakes in configuration files, with their lines.",
      kCheckExamples, Check);
  command
      ->add_option("FILE", arguments->files,
                   "Configuration files, or folders of them; - is standard input")
      ->required();
  command->add_flag("--strict", arguments->strict, "Count warnings as errors");
  command->add_flag("--notes", arguments->notes,
                    "Print notes, too, such as options that are missing and so read as empty");
  CLI::Option* const format =
      command
          ->add_option(
              "--format", arguments->format,
              "text, json for programs, sarif for code scanning, or github for the log of a "
              "workflow")
          ->type_name("FORMAT")
          ->check(OneOf(GetCheckFormats()));
  command->add_flag("--json", arguments->json, "The same as --format json")->excludes(format);
  command->add_flag("-q,--quiet", arguments->quiet, "Print only the last line");
  command
      ->add_option("--max-size", arguments->max_size,
                   "Largest file to check, in MiB; 64 without the option")
      ->type_name("MIB")
      ->check(CLI::Range(1, 65536));
}

void AddShow(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<ShowArguments>(
      app, status, "show", "Print every setting of a file and where its value comes from.",
      kShowExamples, Show);
  command->add_option("FILE", arguments->file, "Configuration file; - is standard input")
      ->required();
  CLI::Option* const overrides = command->add_option(
      "ARGUMENT", arguments->overrides,
      "Test options of a command line, after --: print what they change, and their mistakes");
  CLI::Option* const tests =
      command->add_flag("--tests", arguments->tests, "Print only the tests that run");
  CLI::Option* const all =
      command->add_flag("--all", arguments->all, "Print also elements that the file does not have");
  CLI::Option* const changed =
      command->add_flag("--changed", arguments->changed,
                        "Print only settings that differ from the defaults, with the defaults");
  changed->excludes(all);
  CLI::Option* const summary =
      command->add_flag("--summary", arguments->summary, "Print the summary lines of the library");
  CLI::Option* const json =
      command->add_flag("--json", arguments->json, "Print JSON for programs, with all settings");
  summary->excludes(all)->excludes(changed)->excludes(json);
  for (CLI::Option* const flag : {tests, all, changed, summary}) overrides->excludes(flag);
}

void AddTarget(CLI::App& command, WriteArguments& arguments) {
  command.add_option("FILE", arguments.file, "File to write; standard output without one");
  command.add_flag("-f,--force", arguments.force, "Replace a file that exists");
}

void AddWriter(CLI::App& app, Status& status, const char* name, const char* about,
               const char* examples, Status (*write)(const WriteArguments&)) {
  const auto [command, arguments] =
      AddCommand<WriteArguments>(app, status, name, about, examples, write);
  AddTarget(*command, *arguments);
}

void AddDefaults(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<DefaultsArguments>(
      app, status, "defaults", "Write a configuration file of all defaults.", kDefaultsExamples,
      WriteDefaults);
  AddTarget(*command, *arguments);
  command
      ->add_option("--schema", arguments->schema,
                   "Path or URI of the schema, which the file names for XML editors")
      ->type_name("SCHEMA");
}

void AddConvert(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<ConvertArguments>(
      app, status, "convert", "Convert a file to the current form.", kConvertExamples, Convert);
  command->add_option("IN", arguments->in, "Configuration file, of any version")->required();
  command->add_option("OUT", arguments->out, "File to write");
  command->add_flag("--diff", arguments->diff, "Print what would change, and write nothing");
  command->add_flag("-f,--force", arguments->force, "Replace a file that exists");
  command->add_flag("--lossy", arguments->lossy, "Replace IN itself even if a part of it is lost");
}

void AddGet(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<GetArguments>(
      app, status, "get", "Print the values of options.", kGetExamples, Get);
  command->add_option("FILE", arguments->file, "Configuration file; - is standard input")
      ->required();
  command->add_option("PATH", arguments->paths, "Paths of options, of lists or of sections")
      ->required();
  command->add_flag("--json", arguments->json, "Print JSON for programs");
}

void AddEdit(CLI::App& app, Status& status, const char* name, const char* about,
             const char* examples, Status (*edit)(const EditArguments&), const char* operand,
             const char* about_operand, const char* about_force) {
  const auto [command, arguments] =
      AddCommand<EditArguments>(app, status, name, about, examples, edit);
  command
      ->add_option("FILE", arguments->file,
                   "Configuration file; - changes standard input into standard output")
      ->required();
  command->add_option(operand, arguments->edits, about_operand)->required();
  command->add_flag("--diff", arguments->diff, "Print what would change, and write nothing");
  command->add_flag("-f,--force", arguments->force, about_force);
}

void AddRewrite(CLI::App& app, Status& status, const char* name, const char* about,
                const char* examples, Status (*rewrite)(const RewriteArguments&)) {
  const auto [command, arguments] =
      AddCommand<RewriteArguments>(app, status, name, about, examples, rewrite);
  command
      ->add_option("FILE", arguments->files,
                   "Configuration files; - changes standard input into standard output")
      ->required();
  command->add_flag("--diff", arguments->diff, "Print what would change, and write nothing");
}

void AddDiff(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<DiffArguments>(
      app, status, "diff", "Compare two files by what they mean.", kDiffExamples, Diff);
  command->add_option("A", arguments->a, "Configuration file; - is standard input")->required();
  command->add_option("B", arguments->b, "Configuration file; - is standard input")->required();
  command->add_flag("--all", arguments->all, "Compare tests that run in neither file, too");
  command->add_flag("--json", arguments->json, "Print JSON for programs");
}

void AddExplain(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<ExplainArguments>(
      app, status, "explain", "Explain an option, a text, a test, a word, or an error code.",
      kExplainExamples, Explain);
  command->add_option("NAME", arguments->subject,
                      "An option, element, syntax, test, word, error tag or code; or option "
                      "or error before such a name");
  command->add_option("TEXT", arguments->texts,
                      "Texts to judge by the syntax or the option; after error and a test, error "
                      "codes and tags");
  command->add_flag("--json", arguments->json, "Print JSON for programs");
}

void AddServer(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand<ServerArguments>(app, status, "lsp", "Check, complete and explain in an editor.",
                                  kServerExamples, ServeEditor);
  command->add_flag("--stdio", arguments->stdio, "Use standard input and output, as always");
}

}  // namespace

std::unique_ptr<CLI::App> MakeCommandLine(Status& status) {
  auto app =
      MakeApp("Checks, shows and converts configuration files of the test suite.", kTopExamples);
  AddCheck(*app, status);
  AddShow(*app, status);
  AddDefaults(*app, status);
  AddConvert(*app, status);
  AddGet(*app, status);
  AddEdit(*app, status, "set", "Set options in a file and leave everything else as it is.",
          kSetExamples, Set, "PATH=VALUE", "Paths of options, each with its new text",
          "Set texts that the options' grammars refuse, too");
  AddEdit(*app, status, "unset", "Remove options, list entries or sections from a file.",
          kUnsetExamples, Unset, "PATH", "Paths of what to remove",
          "Remove an element with the comments in it");
  AddRewrite(*app, status, "fix", "Mend the mistakes in files that leave no doubt.", kFixExamples,
             Fix);
  AddRewrite(*app, status, "migrate", "Bring older files to the current form, in place.",
             kMigrateExamples, Migrate);
  AddDiff(*app, status);
  AddExplain(*app, status);
  AddWriter(*app, status, "reference", "Write a reference of all options, as Markdown.",
            kReferenceExamples, WriteReference);
  AddWriter(*app, status, "schema", "Write an XML schema of configuration files.", kSchemaExamples,
            WriteSchema);
  AddServer(*app, status);
  AddCompletion(*app, status, ListCompletionWords);
  AddPrinter(*app, status, "manual", "Print the manual page.", kManualExamples, PrintManual);
  return app;
}

}  // namespace vexorcfg
}  // namespace tools
