// Runs the tools as a user runs them: each file in "sessions" is what a person types, and what a
// tool answers.
//
//   @ a.xml               a file, and its folder, of the lines that follow
//   <VEXOR/>
//   @@ a.csv              the same, where "\xHH" is a byte, "\xHH{512}" many of it, and a backslash
//   Time,Notes\x0D        at the end of a line joins it with the next one
//   $ vexorcfg check a.xml
//   a.xml: ...            what is printed, on standard output and standard error
//   [0]                   the exit status
//
// In what is printed, "<N>" stands for any number, "<...>" for any text within a line, and for any
// lines where it is a line of its own: for what grows with the tables and is not the session's
// subject.
//
// A command is words, of which one in double quotes may be empty or hold blanks, then "<FILE",
// ">FILE" or ">&-" (standard output closed), and "|" before another command. A line that begins
// with "#" is a remark, outside of files. All files were written an hour ago. The examples of the
// sources lie in the folder from the start. Sessions of names that end in ".posix.txt" use what
// Windows does not have.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "placeholders.h"
#include "platform/child_process.h"
#include "source_dir.h"
#include "temporary_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr bool kIsWindows = fs::path::preferred_separator == '\\';

const fs::path& Sources() {
  static const fs::path folder = fs::absolute(VEXOR_SOURCE_DIR);  // found before the folder changes
  return folder;
}

// Sets a variable for the programs that are run; the environment keeps the text.
void SetVariable(const std::string& text) {
  static std::vector<std::string> texts;
  texts.reserve(8);
  putenv(texts.emplace_back(text).data());
}

std::string ReadText(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

// Takes the word, in quotes or not, off the front of the command, and the blanks behind it.
std::string TakeWord(std::string& command) {
  const bool is_quoted = command.starts_with('"');
  const std::size_t end = is_quoted ? command.find('"', 1) + 1 : command.find(' ');
  std::string word = command.substr(0, end);
  if (is_quoted) word = word.substr(1, word.size() - 2);
  command.erase(0, std::min(command.find_first_not_of(' ', end), command.size()));
  return word;
}

// Lets a file look as if it had been written an hour ago.
void Age(const fs::path& file) {
  fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
}

// The bytes of a line of a file in a session, with its end.
std::string Unescape(std::string_view line) {
  std::string bytes;
  while (!line.empty()) {
    if (line == "\\") return bytes;
    if (!line.starts_with("\\x")) {
      bytes += line.front();
      line.remove_prefix(1);
      continue;
    }
    const auto byte = static_cast<char>(std::stoi(std::string(line.substr(2, 2)), nullptr, 16));
    line.remove_prefix(4);
    std::size_t count = 1;
    if (line.starts_with('{')) {
      count = static_cast<std::size_t>(std::stoi(std::string(line.substr(1))));
      line.remove_prefix(line.find('}') + 1);
    }
    bytes.append(count, byte);
  }
  return bytes + '\n';
}

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
  text.remove_prefix(line.size());
  return line;
}

// The written text with its placeholders filled in from the output, where that is as written.
std::string FillIn(std::string_view written, std::string_view output) {
  std::string filled;
  while (!written.empty()) {
    const std::string_view pattern = TakeLine(written);
    if (pattern == "<...>\n") {
      std::string_view behind = written;
      const std::string_view next = TakeLine(behind);
      for (std::string_view rest = output; !output.empty(); output = rest) {
        const std::string_view line = TakeLine(rest);
        if (IsLike(line, next)) break;
        filled += line;
      }
    } else {
      const std::string_view line = TakeLine(output);
      filled += IsLike(line, pattern) ? line : pattern;
    }
  }
  return filled;
}

struct Answer {
  std::string output;
  int status = 0;
};

// A folder of its own, in which the tool is found by its name.
class Tool : public testing::Test {
 protected:
  Tool() : former_(fs::current_path()) {
    static const bool is_found = [] {
      const char* const path = std::getenv("PATH");
      SetVariable("PATH=" + fs::absolute(VEXOR_TOOL_FOLDER).string() + (kIsWindows ? ";" : ":") +
                  (path == nullptr ? "" : path));
      SetVariable("VEXOR_HOST_IP_FILE=none");
      return true;
    }();
    static_cast<void>(is_found);
    for (const char* const name : {"lab.xml", "broken.xml", "legacy.xml"}) {
      fs::copy_file(Sources() / "examples" / name, folder_ / name);
    }
    fs::copy(Sources() / "examples/night", folder_ / "night");
    for (const auto& entry : fs::directory_iterator(folder_ / "night")) Age(entry.path());
    fs::current_path(folder_.path());
  }
  ~Tool() override { fs::current_path(former_); }

  static Answer Run(std::string command) {
    for (const char* const file : {"output.txt", "pipe.txt"}) std::ofstream(file, std::ios::trunc);
    Answer answer;
    std::vector<std::string> words;
    Streams streams = {.output = "output.txt", .errors = "output.txt"};
    while (!command.empty()) {
      const bool is_quoted = command.starts_with('"');
      const std::string word = TakeWord(command);
      if (is_quoted || word.find_first_of("<>|") != 0) {
        words.push_back(word);
      } else if (word == "|") {
        streams.output = "pipe.txt";
        ChildProcess(words, streams).Wait();
        words.clear();
        streams = {.input = "pipe.txt", .output = "output.txt", .errors = "output.txt"};
      } else {
        std::string& file = word.starts_with('<') ? streams.input : streams.output;
        file = word == ">&-" ? "" : word.substr(1);
      }
    }
    answer.status = ChildProcess(words, streams).Wait();
    answer.output = ReadText("output.txt");
    return answer;
  }

 private:
  fs::path former_;
  TemporaryFolder folder_;
};

class Session : public Tool, public testing::WithParamInterface<std::string> {};

TEST_P(Session, AnswersAsWritten) {
  if (kIsWindows && GetParam().ends_with(".posix.txt")) GTEST_SKIP() << "needs devices";
  std::ifstream session(Sources() / "tests/tools/sessions" / GetParam());
  std::string line;
  std::ofstream file;
  std::string name;
  bool has_escapes = false;
  const auto close = [&] {
    if (!file.is_open()) return;
    file.close();
    Age(std::u8string(name.begin(), name.end()));  // as streams take it, on Windows, too
  };
  std::string command;
  std::string expected;
  int commands = 0;
  while (std::getline(session, line)) {
    if (line.starts_with("@ ") || line.starts_with("@@ ")) {
      close();
      has_escapes = line.starts_with("@@");
      name = line.substr(line.find(' ') + 1);
      const std::size_t folder = name.rfind('/');
      if (folder != std::string::npos) fs::create_directories(name.substr(0, folder));
      file.open(name, std::ios::binary);
    } else if (line.starts_with("$ ")) {
      close();
      command = line.substr(2);
      expected.clear();
    } else if (file.is_open()) {
      file << (has_escapes ? Unescape(line) : line + '\n');
    } else if (line.starts_with('[') && line.ends_with(']') && !command.empty()) {
      const Answer answer = Run(command);
      EXPECT_EQ(answer.output, FillIn(expected, answer.output)) << command;
      EXPECT_EQ("[" + std::to_string(answer.status) + "]", line) << command << answer.output;
      command.clear();
      ++commands;
    } else if (!command.empty()) {
      expected += line + "\n";
    }
  }
  EXPECT_GT(commands, 0);
  EXPECT_EQ(command, "") << "a command without its status";
}

std::vector<std::string> ListSessions() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Sources() / "tests/tools/sessions")) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
}

std::string NameSession(const testing::TestParamInfo<std::string>& session) {
  return session.param.substr(0, session.param.find('.'));
}

INSTANTIATE_TEST_SUITE_P(All, Session, testing::ValuesIn(ListSessions()), NameSession);

// Logs as the library writes them while "vexorlog follow" looks on.
class Followed : public Tool {
 protected:
  Followed() { fs::create_directory("logs"); }

  static std::string Row(int second, const std::string& note) {
    return "2024-03-07 21:00:" + std::to_string(second) + ".000,HWP," + note + ",Information\n";
  }

  static void Append(const std::string& file, const std::string& text) {
    std::ofstream(file, std::ios::binary | std::ios::app) << text;
  }

  // Waits for what the follower prints. It never ends by itself.
  static void ExpectOutput(const std::string& expected) {
    const auto start = std::chrono::steady_clock::now();
    while (ReadText("follow.txt") != expected &&
           std::chrono::steady_clock::now() - start < std::chrono::seconds(20)) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(ReadText("follow.txt"), expected);
  }
};

TEST_F(Followed, LogsGoOnInNewFilesAndAreWrittenAnew) {
  const std::string header = "Time,TestType,Notes, Level\n";
  std::ofstream("follow.txt").close();
  const ChildProcess follower({"vexorlog", "follow", "--columns", "Time,Notes", "logs"},
                              {.output = "follow.txt", .errors = "follow.txt"});
  ASSERT_TRUE(follower.started());
  std::string expected = "Time                     Notes\n";
  const auto expect = [&expected](int second, const std::string& note) {
    expected += "2024-03-07 21:00:" + std::to_string(second) + ".000  " + note + "\n";
    ExpectOutput(expected);
  };
  ExpectOutput(expected);  // the folder holds no log yet
  Append("logs/HWP_0.csv", header + Row(10, "first"));
  expect(10, "first");
  Append("logs/HWP_0.csv", "2024-03-07 21:00:11.000,HWP,in");  // a row appears when it is whole
  Append("logs/HWP_1.csv", header + Row(12, "split"));
  expect(12, "split");
  Append("logs/HWP_0.csv", " two pieces,Information\n");
  expect(11, "in two pieces");
  Append("logs/CSTATES.csv", header + Row(13, "another series"));
  expect(13, "another series");
  Append("logs/HWP_1.csv", header + Row(14, "appended by the next run"));
  expect(14, "appended by the next run");
  std::ofstream("logs/HWP_1.csv", std::ios::trunc).close();
  Append("logs/HWP_1.csv", header + Row(15, "anew"));
  expect(15, "anew");
}

TEST_F(Tool, HasCurrentDocuments) {
  const struct {
    const char* command;
    const char* document;
  } kDocuments[] = {{"vexorcfg manual", "vexorcfg.1"},
                    {"vexorcfg schema", "vexor.xsd"},
                    {"vexorcfg reference", "options.md"},
                    {"vexorlog manual", "vexorlog.1"}};
  for (const auto& [command, document] : kDocuments) {
    const std::string expected = ReadText(Sources() / "docs" / document);
    const Answer answer = Run(command);
    EXPECT_EQ(answer.status, 0) << command;
    EXPECT_TRUE(answer.output == expected) << document << " is stale: scripts/renew.sh";
  }
}

// The commands of the README that show their output: those of vexorlog run in the folder of the
// examples, the others above it.
TEST_F(Tool, AnswersAsTheReadmeSays) {
  fs::create_directory("examples");
  for (const char* const name : {"broken.xml", "legacy.xml"}) {
    fs::copy_file(name, std::string("examples/") + name);
  }
  std::ifstream readme(Sources() / "README.md");
  const std::string indent = "    ";
  std::string line;
  std::getline(readme, line);
  std::set<std::string> tools;
  while (readme) {
    if (!line.starts_with(indent + "$ ")) {
      std::getline(readme, line);
      continue;
    }
    const std::string command = line.substr(indent.size() + 2);
    std::string expected;
    while (std::getline(readme, line) && !line.starts_with(indent + "$ ") &&
           (line.empty() || line.starts_with(indent))) {
      expected += line.substr(std::min(line.size(), indent.size())) + '\n';
    }
    while (expected.ends_with("\n\n")) expected.pop_back();
    if (expected == "\n") expected.clear();
    const bool is_of_shell = !command.starts_with("vexorlog ");
    if (is_of_shell && kIsWindows) continue;
    if (is_of_shell) std::ofstream("command.sh") << command;
    expected = std::regex_replace(expected, std::regex("[0-9]+ (mean|notes)"), "<N> $1");
    expected = std::regex_replace(expected, std::regex("with usec, [^(]*"), "with <...>");
    const std::string output = Run(is_of_shell ? "sh command.sh" : command).output;
    EXPECT_EQ(output, FillIn(expected, output)) << command;
    tools.insert(command.substr(0, command.find(' ')));
  }
  EXPECT_TRUE(tools.contains("vexorlog") && (kIsWindows || tools.contains("vexorcfg")));
}

// Another program merges the night, counts it and reads the exported files.
TEST_F(Tool, AgreesWithOtherPrograms) {
  if (kIsWindows) GTEST_SKIP() << "needs programs of the host";
  const Answer answer =
      Run("python3 " + (Sources() / "tests/tools/compare_night.py").string() + " night");
  if (answer.status == -1 && std::getenv("CI") == nullptr) GTEST_SKIP() << "needs python3";
  EXPECT_EQ(answer.output, "");
  EXPECT_EQ(answer.status, 0);
}

TEST_F(Tool, PrintsJsonAsTheSchemaSays) {
  if (kIsWindows) GTEST_SKIP() << "needs programs of the host";
  std::string documents;
  for (const char* const command :
       {"check --json --notes broken.xml", "show --json lab.xml",
        "show --json --changed --tests legacy.xml",
        "show --json broken.xml -- /cstate -at 90 -core x", "diff --json lab.xml legacy.xml",
        "diff --json --all lab.xml lab.xml", "explain --json", "explain --json peci",
        "explain --json random", "explain --json EC_TURBO", "explain --json 0xC0000006",
        "explain --json GSTATES/KNOBS Randm Random", "explain --json sleep S3 Warm-Rest",
        "explain --json codes", "get --json lab.xml TestTraceCfg/Name CSTATES/ActiveTime"}) {
    const std::string document = "document" + std::to_string(documents.size()) + ".json";
    Run(std::string("vexorcfg ") + command + " >" + document);
    documents += " " + document;
  }
  // Debian's interpreter, as it is the one that has Debian's packages.
  const Answer answer =
      Run("/usr/bin/python3 " + (Sources() / "tests/tools/validate_json.py").string() + " " +
          (Sources() / "docs/vexorcfg.schema.json").string() + documents);
  if (answer.status == -1 && std::getenv("CI") == nullptr) GTEST_SKIP() << "needs python3";
  EXPECT_EQ(answer.output, "");
  EXPECT_EQ(answer.status, 0);
}

TEST_F(Tool, PrintsSarif) {
  if (kIsWindows) GTEST_SKIP() << "needs programs of the host";
  std::ofstream("\xC3\xB6 %.xml") << "<VEXOR>\xC3\xB6<Version>3.21.522.0</Version><A/>\n"
                                     "<!-- vexorcfg: allow VX019 --><B/></VEXOR>";
  const Answer check = Run(
      "vexorcfg check --format sarif broken.xml lab.xml \"\xC3\xB6 %.xml\" none.xml >log.sarif");
  EXPECT_EQ(check.status, 3);
  const Answer answer =
      Run("python3 " + (Sources() / "tests/tools/check_sarif.py").string() + " log.sarif .");
  if (answer.status == -1 && std::getenv("CI") == nullptr) GTEST_SKIP() << "needs python3";
  EXPECT_EQ(answer.output, "6 results, 1 suppressed, 1 notifications\n");
}

// A function "complete" that prints, sorted, what the shell completes the line of its arguments to.
// Only fish can be asked for it; for the others, functions take the place of the shell.
constexpr const char* kBash = R"(source <(vexorcfg completion)
source <(vexorlog completion bash)
complete() {
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); _$1
  printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd' '
}
)";
constexpr const char* kFish = R"(vexorcfg completion fish | source
vexorlog completion fish | source
function complete_line
  builtin complete -C "$argv" | string replace -r '\t.*' '' | sort | paste -sd' '
end
)";
constexpr const char* kZsh = R"(compdef() {}
source <(vexorcfg completion zsh)
source <(vexorlog completion zsh)
compadd() { shift; print -l -- "$@"; }
_describe() { print -l -- "${(@P)@[-1]}"; }
complete() {
  words=("$@") CURRENT=$#; _$1 | sed 's/:.*//' | grep -e "^$words[-1]" | sort | paste -sd' '
}
)";
constexpr const char* kLines = R"(
complete vexorcfg c
complete vexorcfg check --st
complete vexorcfg completion p
complete vexorcfg explain tim
complete vexorcfg explain PSF
complete vexorcfg explain error PSF
complete vexorcfg explain option Wak
complete vexorlog s
complete vexorlog show --co
complete vexorlog show --test UF
complete vexorlog show night --level ''
complete vexorlog export night --format j
)";

TEST_F(Tool, CompletesCommandsOptionsAndNames) {
  if (kIsWindows) GTEST_SKIP() << "needs shells of the host";
  const struct {
    const char* shell;
    const char* script;
  } kShells[] = {{"bash", kBash}, {"fish --no-config", kFish}, {"zsh -f", kZsh}};
  for (const auto& [shell, script] : kShells) {
    std::string lines = kLines;
    if (script == kFish)
      lines = std::regex_replace(lines, std::regex("complete v"), "complete_line v");
    std::ofstream("complete.sh") << script << lines;
    const Answer answer = Run(std::string(shell) + " complete.sh");
    if (answer.status == -1 && std::getenv("CI") == nullptr) continue;  // not installed
    EXPECT_EQ(answer.output,
              "check completion convert\n--strict\npowershell\ntime timeout\nPSF0-GV\nPSF0-GV\n"
              "WakeEvent WakeUpTimeout\nshow stats summary\n--columns --context\nUFS\n"
              "Critical Debug Information\njsonl\n")
        << shell;
  }
}

}  // namespace
