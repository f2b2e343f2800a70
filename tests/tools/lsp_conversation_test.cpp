// Conversations with the language server: each file in "lsp" has what a client sends, and what the
// server answers at once.
//
//   # title                   a new conversation, with a new server
//   ? ID METHOD PARAMS        a request
//   ! METHOD PARAMS           a notification
//   > TEXT                    a message of any text
//   >> BYTES                  any bytes, with "\r" and "\n"
//   < TEXT                    a message of the server, without "jsonrpc"
//   [1]                       the exit status
//
// "<...>" and "<N>" are placeholders. Findings are published whenever no message waits.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "placeholders.h"
#include "source_dir.h"
#include "vexor/util/strings.h"
#include "vexorcfg/lsp/server.h"

namespace {

namespace fs = std::filesystem;
namespace lsp = tools::vexorcfg::lsp;

std::string TakeWord(std::string& text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  const std::string word = text.substr(0, end);
  text.erase(0, end + 1);
  return word;
}

std::string MakeFrame(const std::string& body) {
  return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

// Returns the bytes that a line stands for.
std::string MakeBytes(std::string line) {
  const std::string kind = TakeWord(line);
  if (kind == ">>") {
    StringReplaceSubstring(line, "\\r", "\r");
    StringReplaceSubstring(line, "\\n", "\n");
    return line;
  }
  if (kind == ">") return MakeFrame(line);
  const std::string id = kind == "?" ? R"("id":)" + TakeWord(line) + "," : "";
  const std::string method = TakeWord(line);
  const std::string params = line.empty() ? "" : R"(,"params":)" + line;
  return MakeFrame(R"({"jsonrpc":"2.0",)" + id + R"("method":")" + method + '"' + params + "}");
}

// Sends bytes, and returns the server's messages as lines of a file.
std::vector<std::string> Exchange(lsp::Server& server, std::stringstream& out,
                                  const std::string& bytes) {
  std::istringstream in(bytes);
  lsp::MessageReader reader(in);
  for (auto frame = reader.Read(); frame.kind != lsp::Frame::Kind::kEnd; frame = reader.Read()) {
    server.Take(lsp::ParseMessage(frame));
    while (server.PublishNext()) {
    }
  }
  std::vector<std::string> lines;
  lsp::MessageReader answers(out);
  for (auto frame = answers.Read(); frame.kind == lsp::Frame::Kind::kBody; frame = answers.Read()) {
    StringReplaceSubstring(frame.body, R"("jsonrpc":"2.0",)", "");
    lines.push_back("< " + frame.body);
  }
  out.clear();
  return lines;
}

class Conversation {
 public:
  // Takes one line of the file. The server's messages are held against the lines before the next
  // one that sends something.
  void Take(const std::string& line, const std::string& place) {
    if (line.starts_with("< ")) return expected_.push_back(line);
    Finish(place);
    if (line.starts_with("[")) {
      EXPECT_EQ(line, "[" + std::to_string(server_.ExitStatus()) + "]") << place;
    } else if (!line.empty()) {
      answers_ = Exchange(server_, out_, MakeBytes(line));
    }
  }

  void Finish(const std::string& place) {
    EXPECT_EQ(FilledIn(expected_, answers_), answers_) << place;
    expected_.clear();
    answers_.clear();
  }

 private:
  std::stringstream out_;
  std::ostringstream log_;
  lsp::Server server_{out_, log_};
  std::vector<std::string> expected_;
  std::vector<std::string> answers_;
};

TEST(LanguageServer, AnswersAsWritten) {
  std::size_t lines = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(VEXOR_SOURCE_DIR) / "tests/tools/lsp")) {
    std::ifstream file(entry.path());
    auto conversation = std::make_unique<Conversation>();
    std::string place = entry.path().string();
    int number = 0;
    for (std::string line; std::getline(file, line);) {
      ++lines;
      const std::string here = entry.path().filename().string() + ":" + std::to_string(++number);
      if (line.starts_with("# ")) {
        conversation->Finish(place);
        conversation = std::make_unique<Conversation>();
      } else {
        conversation->Take(line, place);
      }
      if (!line.starts_with("< ")) place = here;
    }
    conversation->Finish(place);
  }
  EXPECT_GT(lines, 0U);
}

}  // namespace
