// The text of an open document, by itself and as the server keeps it.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "vexorcfg/lsp/server.h"
#include "vexorcfg/lsp/text_document.h"

namespace tools::vexorcfg::lsp {
namespace {

constexpr PositionEncoding kEncodings[] = {PositionEncoding::kUtf8, PositionEncoding::kUtf16};

struct Place {
  std::size_t at;
  Position position;
};

// Returns every place between two characters, found in the plainest way, without UTF-8 that is cut
// off.
std::vector<Place> ListPlaces(std::string_view text, PositionEncoding encoding) {
  std::vector<Place> places;
  Position position;
  for (std::size_t at = 0; at < text.size();) {
    places.push_back({at, position});
    const auto byte = static_cast<unsigned char>(text[at]);
    const std::size_t bytes = byte < 0xC0 || byte == 0xFF ? 1
                              : byte < 0xE0               ? 2
                              : byte < 0xF0               ? 3
                                                          : 4;
    const bool is_pair = text.substr(at, 2) == "\r\n";
    const std::size_t units = bytes == 4 ? 2 : 1;
    position.character += encoding == PositionEncoding::kUtf8 ? bytes : units;
    at += is_pair ? 2 : bytes;
    if (byte == '\r' || byte == '\n') position = {.line = position.line + 1, .character = 0};
  }
  places.push_back({text.size(), position});
  return places;
}

std::string Print(Position position) {
  return std::to_string(position.line) + ":" + std::to_string(position.character);
}

template <class Random>
std::string MakeText(Random& random, std::size_t most) {
  constexpr std::string_view kPieces[] = {"a",
                                          "\r",
                                          "\n",
                                          "\r\n",
                                          "\xC3\xA9",
                                          "\xE2\x82\xAC",
                                          "\xF0\x9F\x98\x80",
                                          "\xFF",
                                          "<b>plain text</b>"};
  std::string text;
  for (std::size_t count = random() % (most + 1); count > 0; --count) {
    text += kPieces[random() % std::size(kPieces)];
  }
  return text;
}

TEST(TextDocument, KeepsPositionsOverEdits) {
  for (const PositionEncoding encoding : kEncodings) {
    std::mt19937 random(7);  // NOLINT: the same edits each time
    std::string text = MakeText(random, 400);
    TextDocument document(text, encoding);
    for (int edit = 0; edit < 500; ++edit) {
      const std::vector<Place> places = ListPlaces(text, encoding);
      for (const Place& place : places) {
        ASSERT_EQ(Print(document.PositionOf(place.at)), Print(place.position)) << place.at;
        ASSERT_EQ(document.OffsetOf(place.position), place.at) << Print(place.position);
      }
      std::size_t begin = places[random() % places.size()].at;
      std::size_t end = places[random() % places.size()].at;
      if (begin > end) std::swap(begin, end);
      const std::string replacement = MakeText(random, (end - begin) / 5 + 4);
      text.replace(begin, end - begin, replacement);
      document.Replace(begin, end, replacement);
      ASSERT_EQ(document.text(), text);
    }
  }
}

TEST(TextDocument, SnapsToCharactersAndLines) {
  struct Row {
    PositionEncoding encoding;
    std::string_view text;
    Position position;
    std::size_t at;
  };
  constexpr PositionEncoding kUtf8 = PositionEncoding::kUtf8;
  constexpr PositionEncoding kUtf16 = PositionEncoding::kUtf16;
  constexpr Row kRows[] = {
      {kUtf16, "a\xF0\x9F\x98\x80z", {0, 2}, 1},  // between the halves of a character
      {kUtf16, "a\xF0\x9F\x98\x80z", {0, 3}, 5},
      {kUtf8, "a\xF0\x9F\x98\x80z", {0, 3}, 1},
      {kUtf8, "a\xC3\xA9", {0, 2}, 1},
      {kUtf16, "\xF0\x9F\x98z", {0, 3}, 3},  // cut off: each byte is one
      {kUtf8, "\xF0\x9F\x98z", {0, 2}, 2},
      {kUtf16, "\xED\xA0\x80z", {0, 3}, 3},  // a surrogate
      {kUtf16, "ab\r\ncd", {0, 9}, 2},
      {kUtf16, "ab\rcd\n", {1, 9}, 5},
      {kUtf16, "ab\rcd\n", {2, 9}, 6},
      {kUtf16, "ab\rcd\n", {3, 0}, 6},
      {kUtf8, "", {0, 0}, 0},
      {kUtf8, "x", {static_cast<std::size_t>(-1), static_cast<std::size_t>(-1)}, 1},
      {kUtf8, "x", {0, static_cast<std::size_t>(-1)}, 1},
  };
  for (const Row& row : kRows) {
    const TextDocument document(std::string(row.text), row.encoding);
    EXPECT_EQ(document.OffsetOf(row.position), row.at) << row.text << Print(row.position);
  }
  const TextDocument document("a\r\n\xF0\x9F\x98\x80z", kUtf16);
  EXPECT_EQ(Print(document.PositionOf(2)), "0:1");  // between CR and LF
  EXPECT_EQ(Print(document.PositionOf(5)), "1:0");
  EXPECT_EQ(Print(document.PositionOf(99)), "1:3");
}

std::string MakeFrame(const Json& message) {
  std::ostringstream out;
  WriteMessage(out, message);
  return out.str();
}

Json MakeOpen(const std::string& text) {
  return {{"method", "textDocument/didOpen"},
          {"params", {{"textDocument", {{"uri", "a"}, {"version", 0}, {"text", text}}}}}};
}

// Makes a change at random places of the text, and changes the text.
template <class Random>
Json MakeChange(std::string& text, PositionEncoding encoding, int version, Random& random) {
  const std::vector<Place> places = ListPlaces(text, encoding);
  const std::size_t first = random() % places.size();
  const std::size_t last = std::min(first + random() % 10, places.size() - 1);
  std::string inserted = MakeText(random, 3);
  std::erase(inserted, '\xFF');  // JSON is UTF-8
  text.replace(places[first].at, places[last].at - places[first].at, inserted);
  Json range;
  for (const auto& [name, index] : {std::pair("start", first), std::pair("end", last)}) {
    const Position place = places[index].position;
    range[name] = {{"line", place.line}, {"character", place.character}};
  }
  const Json change = {{"range", range}, {"text", inserted}};
  return {{"method", "textDocument/didChange"},
          {"params",
           {{"textDocument", {{"uri", "a"}, {"version", version}}},
            {"contentChanges", Json::array({change})}}}};
}

// The version and the number of the findings published last.
std::pair<int, std::size_t> LastFindings(std::istream& out) {
  std::pair<int, std::size_t> last(-1, 0);
  MessageReader reader(out);
  for (auto frame = reader.Read(); frame.kind == Frame::Kind::kBody; frame = reader.Read()) {
    const Json message = Json::parse(frame.body);
    if (MethodOf(message).empty()) continue;
    const Json& params = message.at("params");
    last = {params.at("version").get<int>(), params.at("diagnostics").size()};
  }
  return last;
}

TEST(LanguageServer, FollowsManyEditsInARow) {
  constexpr int kEdits = 10000;
  for (const PositionEncoding encoding : kEncodings) {
    std::mt19937 random(3);  // NOLINT
    std::string text =
        "<VEXOR>\r\n<!-- \xF0\x9F\x98\x80" + MakeText(random, 500) + " -->\n</VEXOR>";
    const Json encodings = {encoding == PositionEncoding::kUtf8 ? "utf-8" : "utf-16"};
    std::string input = MakeFrame(
        {{"id", 1},
         {"method", "initialize"},
         {"params", {{"capabilities", {{"general", {{"positionEncodings", encodings}}}}}}}});
    input += MakeFrame(MakeOpen(text));
    for (int version = 1; version <= kEdits; ++version) {
      input += MakeFrame(MakeChange(text, encoding, version, random));
    }

    std::istringstream in(input);
    std::stringstream out;
    std::ostringstream log;
    EXPECT_EQ(Serve(in, out, log), 1);  // no shutdown
    EXPECT_EQ(log.str(), "");
    const auto [version, findings] = LastFindings(out);
    EXPECT_EQ(version, kEdits);
    const bool is_known = vexor::MayBeConfiguration(text);
    EXPECT_EQ(findings, is_known ? vexor::CheckTypedText(text).size() : 0);

    in = std::istringstream(input);
    Server server(out, log);
    MessageReader reader(in);
    for (auto frame = reader.Read(); frame.kind == Frame::Kind::kBody; frame = reader.Read()) {
      server.Take(ParseMessage(frame));
    }
    ASSERT_EQ(server.documents().size(), 1U);
    EXPECT_EQ(server.documents().front().text.text(), text);
    EXPECT_EQ(log.str(), "");
  }
}

TEST(LanguageServer, ReadsBytesThatAreNotUtf8) {
  const Message message = ParseMessage(
      {.kind = Frame::Kind::kBody, .body = "{\"method\":\"a\xFF\xC3\xA9\xE2\x82z\"}", .fault = {}});
  EXPECT_EQ(MethodOf(message.content), "a?\xC3\xA9??z");
}

// Only a request that still waits can be cancelled.
TEST(LanguageServer, CancelsRequestsThatWait) {
  const auto cancel = [](const Json& id) {
    return MakeFrame({{"method", "$/cancelRequest"}, {"params", {{"id", id}}}});
  };
  std::istringstream in(
      cancel(1) + MakeFrame({{"id", 1}, {"method", "initialize"}, {"params", Json::object()}}) +
      MakeFrame({{"id", 2}, {"method", "shutdown"}}) +
      MakeFrame({{"id", "2"}, {"method", "shutdown"}}) + cancel(2) + cancel("3") + cancel(nullptr) +
      cancel(Json::array()) + MakeFrame({{"method", "$/cancelRequest"}}) +
      MakeFrame({{"method", "exit"}}) + MakeFrame({{"id", 4}, {"method", "shutdown"}}));
  MessageReader reader(in);
  MessageQueue queue;
  FillQueue(reader, queue);
  std::stringstream out;
  std::ostringstream log;
  Server server(out, log);
  while (const std::optional<Message> message = queue.Take()) server.Take(*message);
  EXPECT_TRUE(server.HasEnded());
  EXPECT_EQ(server.ExitStatus(), 0);

  std::string answers;
  MessageReader answer(out);
  for (auto frame = answer.Read(); frame.kind == Frame::Kind::kBody; frame = answer.Read()) {
    const Json message = Json::parse(frame.body);
    answers += message.at("id").dump() + " " + MemberAt(message, "/error/code").dump() + "\n";
  }
  EXPECT_EQ(answers, "1 null\n2 -32800\n\"2\" null\n");
}

}  // namespace
}  // namespace tools::vexorcfg::lsp
