// Sends any messages to the language server. The first byte of the input says how to read the rest:
// '#' for the bytes of a stream; otherwise each line is a message, or one of the requests below
// with the begin and the end of a range:
//
//   { "id": 1, "method": ...     a message
//   h2 4 2 9                     hover
//   e2 4 2 9text                 an edit
#include <array>
#include <sstream>

#include "fuzz.h"
#include "vexorcfg/lsp/server.h"

namespace {

namespace lsp = tools::vexorcfg::lsp;
using tools::Json;

struct Shorthand {
  char letter;
  const char* method;
};

constexpr Shorthand kShorthands[] = {
    {'c', "textDocument/completion"},   {'h', "textDocument/hover"},
    {'a', "textDocument/codeAction"},   {'s', "textDocument/documentSymbol"},
    {'f', "textDocument/foldingRange"}, {'e', "textDocument/didChange"},
    {'o', "textDocument/didOpen"},
};

Json MakePlace(std::istream& in) {
  unsigned line = 0;
  unsigned character = 0;
  in >> line >> character;
  in.clear();
  return {{"line", line}, {"character", character}};
}

// Returns null for a line that is no shorthand.
Json MakeMessage(const std::string& line) {
  for (const auto& [letter, method] : kShorthands) {
    if (!line.starts_with(letter)) continue;
    std::istringstream in(line.substr(1));
    const Json start = MakePlace(in);
    const Json end = MakePlace(in);
    std::string text;
    std::getline(in, text);
    Json params = {{"textDocument", {{"uri", "a"}, {"version", 1}, {"text", text}}},
                   {"position", start},
                   {"range", {{"start", start}, {"end", end}}},
                   {"context", Json::object()}};
    params["contentChanges"] = Json::array({{{"range", params["range"]}, {"text", text}}});
    Json message = {{"method", method}, {"params", params}};
    if (letter != 'e' && letter != 'o') message["id"] = 1;
    return message;
  }
  return {};
}

std::string MakeStream(std::string_view input) {
  std::ostringstream stream;
  const bool is_utf8 = input.starts_with("8");
  const Json encodings = Json::array({is_utf8 ? "utf-8" : "utf-16"});
  lsp::WriteMessage(
      stream, {{"id", 0},
               {"method", "initialize"},
               {"params", {{"capabilities", {{"general", {{"positionEncodings", encodings}}}}}}}});
  for (const std::string& line : SplitLines(input)) {
    const Json message = MakeMessage(line);
    if (message.is_null()) {
      stream << "Content-Length: " << line.size() << "\r\n\r\n" << line;
    } else {
      lsp::WriteMessage(stream, message);
    }
  }
  return stream.str();
}

// Every answer is JSON, and none reports a failure of the server itself.
void RequireAnswers(std::istream& out) {
  lsp::MessageReader reader(out);
  for (auto frame = reader.Read(); frame.kind != lsp::Frame::Kind::kEnd; frame = reader.Read()) {
    Require(frame.kind == lsp::Frame::Kind::kBody, "the server writes whole messages");
    const Json answer = Json::parse(frame.body, nullptr, false);
    Require(answer.is_object(), "the server writes JSON", frame.body);
    Require(lsp::MemberAt(answer, "/error/code") != static_cast<int>(lsp::kInternalError),
            "the server does not fail", frame.body);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = AsText(data, size);
  std::istringstream in(input.starts_with("#") ? std::string(input.substr(1)) : MakeStream(input));
  std::stringstream out;
  std::ostringstream log;
  lsp::Server server(out, log);
  lsp::MessageReader reader(in);
  for (auto frame = reader.Read(); frame.kind != lsp::Frame::Kind::kEnd && !server.HasEnded();
       frame = reader.Read()) {
    server.Take(lsp::ParseMessage(frame));
    server.PublishNext();
  }
  RequireAnswers(out);
  return 0;
}
