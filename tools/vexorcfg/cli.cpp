#include "cli.h"

#include <memory>
#include <string>

namespace tools {

const Program kProgram = {
    .name = "vexorcfg",
    .title = "keep configuration files of the power-management test suite in order",
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
    "  vexorcfg explain option ActiveTime   what an option means and takes\n"
    "  vexorcfg explain time msec:80-120    what a text means, or what is wrong with it\n"
    "  vexorcfg show lab.xml                what the file amounts to, and from which line\n"
    "  vexorcfg convert old.xml new.xml     an older file in the current form\n"
    "\n"
    "vexorcfg COMMAND --help shows the options of a command, with examples.\n"
    "\n"
    "Exit status: 0 all is well, 1 warnings or differences, 2 errors, 3 could not run.";

constexpr const char* kCheckExamples =
    "A finding is one line: FILE:LINE: error: ELEMENT: \"TEXT\": what is wrong, what was "
    "expected.\n"
    "An error is not read, or not as it was meant; a warning is, but is written in an older form,\n"
    "has no effect, or is XML that other programs refuse. The last line is the verdict.\n"
    "\n"
    "Of a folder, every *.xml file in it and below it is checked, but for hidden folders and "
    "links\n"
    "to folders. Wildcards (* and ?) that the shell did not expand are expanded here.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg check lab.xml\n"
    "  vexorcfg check --strict *.xml      for a gate: warnings fail, too\n"
    "  vexorcfg check configurations      every file in a folder and below it\n"
    "  vexorcfg check --json - <lab.xml   for a program\n"
    "\n"
    "Exit status: 0 no faults, 1 warnings, 2 errors, 3 a file could not be read.";

constexpr const char* kShowExamples =
    "A setting is one line: the file's line, the name and the value; in parentheses where a value\n"
    "comes from that does not simply stand there. Elements that the file does not have, and whose\n"
    "tests do not run, are listed by name alone.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg show lab.xml\n"
    "  vexorcfg show --tests lab.xml      the settings of the tests that run\n"
    "  vexorcfg show --summary lab.xml    as the tests' logs tell it";

constexpr const char* kDefaultsExamples =
    "Comments in the file list the valid values.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg defaults lab.xml\n"
    "  vexorcfg defaults | less";

constexpr const char* kConvertExamples =
    "It reads the new file, compares what the two mean, and lists what was not carried over: what\n"
    "the reader does not read, or not as it is written, and what the written form has no place "
    "for,\n"
    "such as workloads and comments. Where IN and OUT are one file and that list is not empty, "
    "the\n"
    "file is left as it is, unless --lossy is given.\n"
    "\n"
    "Examples:\n"
    "  vexorcfg convert old.xml new.xml\n"
    "  vexorcfg convert --diff old.xml    what would change, line by line\n"
    "\n"
    "Exit status: 0 all was carried over, 1 some was not (with --diff: there are differences),\n"
    "3 could not run.";

constexpr const char* kDiffExamples =
    "Defaults, older names and other ways to write the same (sec:1 and msec:1000) are no\n"
    "difference.\n"
    "\n"
    "Example:\n"
    "  vexorcfg diff friday.xml monday.xml\n"
    "\n"
    "Exit status: 0 they mean the same, 1 they differ, 3 could not run.";

constexpr const char* kExplainExamples =
    "Examples:\n"
    "  vexorcfg explain                            the syntaxes, with an example of each\n"
    "  vexorcfg explain time msec:80-120           what a text means, or what is wrong with it\n"
    "  vexorcfg explain affinity Specific:0,2-4\n"
    "  vexorcfg explain option CSTATES/ActiveTime  an option: meaning, syntax, default\n"
    "  vexorcfg explain option GSTATES             all options of a test\n"
    "  vexorcfg explain option -- -exeCycles       a name that begins with \"-\"\n"
    "  vexorcfg explain error CSTATES 0x80000004   an error code, tag by tag\n"
    "\n"
    "Exit status: 0 the texts are good, 2 one is wrong, 3 nothing of that name.";

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

constexpr const char* kCompletionExamples =
    "Example, for the current shell:\n"
    "  source <(vexorcfg completion)";

constexpr const char* kManualExamples =
    "Example:\n"
    "  vexorcfg manual | man -l -";

void AddCheck(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<CheckArguments>(
      app, status, "check", "Tell every mistake in configuration files, with its line.",
      kCheckExamples, Check);
  command
      ->add_option("FILE", arguments->files,
                   "Configuration files, or folders of them; - is standard input")
      ->required();
  command->add_flag("--strict", arguments->strict, "Count warnings as errors");
  command->add_flag("--notes", arguments->notes,
                    "Tell also what reads as empty because it is missing");
  command->add_flag("--json", arguments->json, "Print JSON for programs");
  command->add_flag("-q,--quiet", arguments->quiet, "Print the verdict alone");
  command
      ->add_option("--max-size", arguments->max_size,
                   "Largest file to check, in MiB; 64 without the option")
      ->type_name("MIB")
      ->check(CLI::Range(1, 65536));
}

void AddShow(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<ShowArguments>(
      app, status, "show", "Print what a file amounts to: every setting, and where it comes from.",
      kShowExamples, Show);
  command->add_option("FILE", arguments->file, "Configuration file; - is standard input")
      ->required();
  command->add_flag("--tests", arguments->tests, "Print the tests that run, nothing else");
  CLI::Option* const all =
      command->add_flag("--all", arguments->all, "Print also elements that the file does not have");
  command->add_flag("--summary", arguments->summary, "Print the summary lines of the library")
      ->excludes(all);
}

void AddWriter(CLI::App& app, Status& status, const char* name, const char* about,
               const char* examples, Status (*write)(const WriteArguments&)) {
  const auto [command, arguments] =
      AddCommand<WriteArguments>(app, status, name, about, examples, write);
  command->add_option("FILE", arguments->file, "File to write; standard output without one");
  command->add_flag("-f,--force", arguments->force, "Replace a file that exists");
}

void AddConvert(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<ConvertArguments>(
      app, status, "convert", "Write a file anew, in the current form.", kConvertExamples, Convert);
  command->add_option("IN", arguments->in, "Configuration file, of any version")->required();
  command->add_option("OUT", arguments->out, "File to write");
  command->add_flag("--diff", arguments->diff, "Print what would change, and write nothing");
  command->add_flag("-f,--force", arguments->force, "Replace a file that exists");
  command->add_flag("--lossy", arguments->lossy,
                    "Replace IN itself even where something in it is not carried over");
}

void AddDiff(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<DiffArguments>(
      app, status, "diff", "Compare two files by what they mean.", kDiffExamples, Diff);
  command->add_option("A", arguments->a, "Configuration file; - is standard input")->required();
  command->add_option("B", arguments->b, "Configuration file; - is standard input")->required();
}

void AddExplain(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand<ExplainArguments>(
      app, status, "explain", "Explain an option, an option's text, or an error code.",
      kExplainExamples, Explain);
  command->add_option(
      "SUBJECT", arguments->subject,
      "A syntax such as time, affinity, cstates, ratios or sleep; option; or error");
  command->add_option("TEXT", arguments->texts,
                      "Texts of the syntax; the option's NAME; or the TEST and the CODE");
}

}  // namespace

std::unique_ptr<CLI::App> MakeCommandLine(Status& status) {
  auto app = MakeApp("Keeps the configuration files of the power-management test suite in order.",
                     kTopExamples);
  AddCheck(*app, status);
  AddShow(*app, status);
  AddWriter(*app, status, "defaults", "Write a configuration file of all defaults.",
            kDefaultsExamples, WriteDefaults);
  AddConvert(*app, status);
  AddDiff(*app, status);
  AddExplain(*app, status);
  AddWriter(*app, status, "reference", "Write a reference of all options, as Markdown.",
            kReferenceExamples, WriteReference);
  AddWriter(*app, status, "schema", "Write an XML schema of configuration files.", kSchemaExamples,
            WriteSchema);
  AddPrinter(*app, status, "completion", "Print a completion script for bash.", kCompletionExamples,
             PrintCompletion);
  AddPrinter(*app, status, "manual", "Print the manual page.", kManualExamples, PrintManual);
  return app;
}

}  // namespace vexorcfg
}  // namespace tools
