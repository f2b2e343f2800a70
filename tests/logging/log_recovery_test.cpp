// Reading logs that were cut off anywhere and then continued; and the byte searches of the reader.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "logging/log_scan.h"
#include "logging/log_test_tools.h"
#include "platform/test_disk.h"
#include "vexor/logging/log_reader.h"

namespace {

using vexor::LogReader;
using vexor::LogRow;
using vexor::LogRowKind;

struct Reading {
  int whole = 0;  // rows without damage
  int cut_off = 0;
  int nul_blocks = 0;
  bool other_damage = false;
};

Reading Read(const std::string& path) {
  Reading reading;
  LogReader reader;
  EXPECT_FALSE(reader.Open(path));
  while (reader.Next()) {
    const LogRow row = reader.Row();
    if (row.Has(vexor::LogDamage::kCutOff)) {
      ++reading.cut_off;
    } else if (row.Kind() == LogRowKind::kNulBlock) {
      ++reading.nul_blocks;
    } else if (row.IsDamaged()) {
      reading.other_damage = true;
    } else if (row.Kind() != LogRowKind::kHeader) {
      ++reading.whole;
    }
  }
  return reading;
}

void LogSome(VexorLogging& log) {
  log.LogNote("a, \"quoted\" text\nof two lines", TRACE_CRITICAL);
  log.LogMsgData("b", TRACE_DEBUG, "01:005", "pass");
  log.LogNote("c", TRACE_INFORMATION);
}

// The text with the line ends of the other system.
std::string WithReturns(std::string_view text) {
  std::string changed;
  for (const char c : text) {
    if (c == '\n' && !changed.ends_with('\r')) changed += '\r';
    changed += c;
  }
  return changed;
}

// Wherever a log is cut off, all complete rows are read, the rest of an incomplete one is not read
// as a row, and the damage is marked, unless only a line end was missing, which is then added.
class LogRecovery : public testing::TestWithParam<bool> {};

TEST_P(LogRecovery, FindsEveryCut) {
  const bool has_returns = GetParam();
  const QuietConsole quiet;
  const TemporaryFolder folder;
  const TestDisk disk;
  TestDisk::PretendFlushes({});
  VexorLogging log;
  ASSERT_TRUE(Open(log, folder, "whole"));
  LogSome(log);
  log.CloseFile(true);
  std::string bytes = ReadBytes(folder / "whole.csv");
  if (has_returns) bytes = WithReturns(bytes);
  WriteBytes(folder / "whole.csv", bytes);
  struct Place {
    std::size_t text_end;
    std::size_t end;  // with the line end
  };
  std::vector<Place> places;  // the header's first
  LogReader reader;
  reader.Open(folder / "whole.csv");
  while (reader.Next()) {
    const LogRow row = reader.Row();
    ASSERT_FALSE(row.IsDamaged());
    places.push_back({row.Offset() + row.Text().size(), row.Offset() + row.Size()});
  }
  ASSERT_EQ(places.size(), 4U);

  const std::string cut = folder / "cut.csv";
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    int ended = 0;  // lines
    int whole = 0;
    for (const Place& place : places) {
      ended += place.end <= size ? 1 : 0;
      whole += place.text_end <= size ? 1 : 0;
    }
    const auto line = static_cast<std::size_t>(ended);
    const bool is_cut = size > (ended > 0 ? places[line - 1].end : 0);
    const bool lacks_text = is_cut && whole == ended;
    const std::string left = bytes.substr(0, size);
    WriteBytes(cut, left);
    EXPECT_EQ(Read(cut).cut_off, is_cut ? 1 : 0) << size;
    for (const bool nuls : {false, true}) {
      const std::string before = left + std::string(nuls ? 700 : 0, '\0');
      WriteBytes(cut, before);
      ASSERT_TRUE(Open(log, folder, "cut", TRACE_DEBUG, LOG_FILE_APPEND));
      LogSome(log);
      log.CloseFile(true);
      if (has_returns) WriteBytes(cut, before + WithReturns(ReadBytes(cut).substr(before.size())));
      const Reading reading = Read(cut);
      EXPECT_EQ(reading.cut_off, (nuls ? is_cut : lacks_text) ? 1 : 0) << size << nuls;
      EXPECT_EQ(reading.nul_blocks, nuls ? 1 : 0) << size;
      EXPECT_FALSE(reading.other_damage) << size << nuls;
      EXPECT_EQ(reading.whole, std::max((nuls ? ended : whole) - 1, 0) + 3) << size << nuls;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(BothLineEnds, LogRecovery, testing::Bool());

TEST(LogScan, FindsTheSameOnEveryProcessor) {
  std::minstd_rand random(5);
  constexpr std::string_view kBytes("\n\"\0,,,,abcdefgh\x80\xFF", 17);
  for (int round = 0; round < 20000; ++round) {
    // Some with few stops, longer than the sums of bytes reach.
    const std::size_t rare = round % 500 == 0 ? 5000 : 1 + static_cast<std::size_t>(round) % 40;
    std::string text(random() % (rare * 2), 'x');
    for (char& c : text) {
      if (random() % rare == 0) c = kBytes[random() % kBytes.size()];
      if (rare > 1000 && c == 'x') c = ',';
    }
    const std::size_t size = text.size();
    for (int i = 0; i < 4; ++i) text += kBytes;  // not to be looked at
    text.resize(size + vexor::kScanMargin, ',');
    const char* const end = text.data() + size;
    vexor::Passed passed;
    vexor::Passed expected;
    const char* const at = vexor::FindStop(text.data(), end, passed);
    EXPECT_EQ(at, vexor::portable::FindStop(text.data(), end, expected));
    EXPECT_EQ(passed.commas, expected.commas);
    EXPECT_EQ(passed.beyond_ascii, expected.beyond_ascii);
    if (size >= vexor::kScanBlock) {
      EXPECT_EQ(vexor::FindInBlock(text.data(), ','),
                vexor::portable::FindInBlock(text.data(), ','));
    }
    const std::string_view view(text.data(), size);
    vexor::CommaSearch commas(view);
    std::size_t next = view.find(',');
    for (; next != std::string_view::npos; next = view.find(',', next + 1)) {
      ASSERT_EQ(commas.Next(), next);
    }
    EXPECT_EQ(commas.Next(), size);
  }
}

TEST(LogScan, KnowsUtf8) {
  const std::pair<std::string_view, bool> kTexts[] = {
      {"", true},
      {"a longer text of one byte each", true},
      {"\xC2\x80\xDF\xBF", true},
      {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", true},
      {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true},
      {"\x80", false},
      {"\xC1\xBF", false},
      {"\xC2", false},
      {"\xC2\x41", false},
      {"\xE0\x9F\xBF", false},
      {"\xED\xA0\x80", false},
      {"\xE2\x82", false},
      {"\xF0\x8F\xBF\xBF", false},
      {"\xF4\x90\x80\x80", false},
      {"\xF5\x80\x80\x80", false},
      {"\xF0\x9F\x98", false},
      {"twelve bytes\xFF", false},
  };
  for (const auto& [text, is_utf8] : kTexts) EXPECT_EQ(vexor::IsUtf8(text), is_utf8) << text;
}

}  // namespace
