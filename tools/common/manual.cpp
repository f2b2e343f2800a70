#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>

#include "common/program.h"
#include "release.h"
#include "vexor/util/version.h"

namespace tools {
namespace {

// Escapes the text for roff: backslashes, dashes, and points at the beginning of a line would
// otherwise be interpreted.
std::string Escape(std::string_view text) {
  std::string escaped;
  bool starts_line = true;
  for (const char c : text) {
    if (starts_line && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-";
    } else {
      escaped += c;
    }
    starts_line = c == '\n';
  }
  return escaped;
}

void PrintLiteral(std::string_view text) { std::cout << ".PP\n.nf\n" << Escape(text) << "\n.fi\n"; }

// Returns the forms of an option, such as "-f, --force", or the name of an argument.
std::string NamesOf(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : option.get_snames()) names += "-" + name + ", ";
  for (const std::string& name : option.get_lnames()) names += "--" + name + ", ";
  if (names.empty()) return option.get_name();
  return names.substr(0, names.size() - 2);
}

std::string SynopsisOf(const CLI::App& command) {
  std::string synopsis = "[OPTION]...";
  for (const CLI::Option* const option : command.get_options()) {
    if (!option->get_positional()) continue;
    std::string argument = option->get_name();
    if (!option->get_required()) argument = "[" + argument + "]";
    if (option->get_items_expected_max() > 1) argument += "...";
    synopsis += " " + argument;
  }
  return synopsis;
}

void PrintCommand(const CLI::App& command) {
  std::cout << ".SS " << kProgram.name << ' ' << command.get_name() << ' '
            << Escape(SynopsisOf(command)) << '\n'
            << Escape(command.get_description()) << '\n';
  for (const CLI::Option* const option : command.get_options()) {
    if (option == command.get_help_ptr()) continue;
    std::cout << ".TP\n.B " << Escape(NamesOf(*option) + NameValue(*option)) << '\n'
              << Escape(option->get_description()) << '\n';
  }
  PrintLiteral(command.get_footer());
}

}  // namespace

Status PrintManual(const CLI::App& app) {
  std::string upper(kProgram.name);
  std::ranges::transform(upper, upper.begin(), [](char c) { return c >= 'a' ? c - 'a' + 'A' : c; });
  std::cout << ".TH " << upper << " 1 \"" << kReleaseDate << "\" \"VexorUtils "
            << vexor::GetVersionText() << "\" \"User Commands\"\n"
            << ".SH NAME\n"
            << kProgram.name << " \\- " << kProgram.title << '\n'
            << ".SH SYNOPSIS\n.B " << kProgram.name << "\n.I COMMAND\n[OPTION]... [ARGUMENT]...\n"
            << ".SH DESCRIPTION\n"
            << Escape(app.get_description()) << '\n';
  PrintLiteral(app.get_footer());
  std::cout << ".SH COMMANDS\n";
  for (const CLI::App* const command : app.get_subcommands(nullptr)) PrintCommand(*command);
  if (!kProgram.examples.empty()) {
    std::cout << ".SH EXAMPLES\n.nf\n" << Escape(kProgram.examples) << ".fi\n";
  }
  std::cout << ".SH ENVIRONMENT\n" << kProgram.environment;
  return kClean;
}

}  // namespace tools
