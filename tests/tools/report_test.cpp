// The report as a reader sees it: a page that a browser opened, asked for what it shows.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "platform/child_process.h"
#include "temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr bool kIsWindows = fs::path::preferred_separator == '\\';
constexpr std::string_view kHeader =
    "Time,TestType,Iter,Affinity,Result,Status,Notes,C6%,freq(MHz), Level\n";

// "2024-03-07 HH:MM:SS.000", so many seconds after midnight.
std::string Stamp(int second) {
  std::array<char, 32> text = {};
  std::snprintf(text.data(), text.size(), "2024-03-07 %02d:%02d:%02d.000", second / 3600,
                second / 60 % 60, second % 60);
  return text.data();
}

class Report : public testing::Test {
 protected:
  std::string Path(const std::string& name) { return folder_ / name; }

  // Returns what a program prints; its status is one of 0 and 1.
  std::string Run(std::vector<std::string> words) {
    const std::string output = Path("output.txt");
    WriteBytes(output, "");
    if (words.front() == "vexorlog")
      words.front() = (fs::path(VEXOR_TOOL_FOLDER) / words.front()).string();
    const int status = ChildProcess(words, {.output = output, .errors = Path("errors.txt")}).Wait();
    EXPECT_TRUE(status == 0 || status == 1) << words.front() << ReadBytes(Path("errors.txt"));
    return ReadBytes(output);
  }

  std::string MakeReport() {
    Run({"vexorlog", "report", Path("logs"), "-f", "-o", Path("night.html")});
    return ReadBytes(Path("night.html"));
  }

  Json Ask(std::vector<std::string> words) {
    words.insert(words.end(), {"--json", Path("logs")});
    return Json::parse(Run(words));
  }

  // The page once its scripts have run.
  std::string Open(const std::string& hash) {
    return Run({"chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
                "--no-first-run", "--disable-background-networking", "--disable-component-update",
                "--disable-sync", "--user-data-dir=" + Path("profile"),
                "--virtual-time-budget=5000", "--dump-dom", "file://" + Path("night.html") + hash});
  }

  std::ofstream MakeLog(const std::string& name, std::string_view header = kHeader) {
    fs::create_directory(Path("logs"));
    std::ofstream log(Path("logs/" + name), std::ios::binary);
    log << header;
    return log;
  }

  // Two tests, a silence of an hour, a restart, and texts that look like markup.
  void MakeNight() {
    std::ofstream log = MakeLog("CSTATES.csv");
    const std::string version =
        ",VEXOR,,,,,\"Version,3.21.522.0 -- Driver Version: N/A -- Hash 0x0 "
        "-- Build date: 2024-01-01 @ 00:00:00 UTC\",,,Critical\n";
    log << Stamp(0) << version;
    for (int i = 0; i < 3000; ++i) {
      const int time = i + (i < 1500 ? 0 : 3600);
      const bool fails = i % 1000 == 700;
      if (i == 2000) log << Stamp(time) << version;
      log << Stamp(time) << ",CSTATES," << i << ",00:00:00" << i % 2 << ":0,"
          << (fails ? "FAIL,missed,\"0x00200004 EC_CSTATE; EC_C6; at " + std::to_string(i) + "\""
                    : "PASS,reached,")
          << ',' << (i == 1234 ? 99.875 : 50 + i % 7) << ",,Information\n";
    }
    std::ofstream other = MakeLog("HWP.csv");
    constexpr std::string_view kMarkup =
        "</script><img src=x onerror=document.documentElement.dataset.hacked=1>";
    other << Stamp(10) << ",HWP,1," << kMarkup << ",FAIL,," << kMarkup << ",,2400.5,Critical\n"
          << Stamp(20) << ',' << kMarkup << ",1,,PASS,,<!--<script>,,800,Information\n";
  }

  TemporaryFolder folder_;
};

bool HasBrowser() {
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (fs::exists(fs::path(folder) / "chromium")) return true;
  }
  return false;
}

// The value of an attribute behind the first place that has `mark`.
std::string Attribute(const std::string& page, const std::string& mark, const std::string& name) {
  const std::size_t element = page.find(mark);
  if (element == std::string::npos) return "no " + mark;
  const std::size_t end = page.find('>', element);
  const std::size_t begin = page.find(" data-" + name + "=\"", page.rfind('<', element));
  if (begin >= end) return "no data-" + name;
  const std::size_t value = page.find('"', begin) + 1;
  return page.substr(value, page.find('"', value) - value);
}

double Number(const std::string& page, const std::string& mark, const std::string& name) {
  const std::string text = Attribute(page, mark, name);
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  EXPECT_TRUE(!text.empty() && *end == '\0') << name << ": " << text;
  return number;
}

// What a plot holds is what the statistics say.
void ExpectPlot(const std::string& page, const std::string& column, const Json& row) {
  const std::string mark = "data-column=\"" + column + "\"";
  for (const char* const name : {"count", "min", "max"}) {
    EXPECT_EQ(Number(page, mark, name), row[name].get<double>()) << column << ' ' << name;
  }
}

Json RowOf(const Json& statistics, const std::string& group, const std::string& column) {
  for (const Json& row : statistics["statistics"]) {
    if (row["group"] == group && row["column"] == column) return row;
  }
  return {};
}

TEST_F(Report, ShowsANightInABrowser) {
  if (kIsWindows) GTEST_SKIP() << "needs a browser of the host";
  if (!HasBrowser()) {
    if (std::getenv("CI") != nullptr) FAIL() << "chromium is not installed";
    GTEST_SKIP() << "chromium is not installed: scripts/setup.sh browser";
  }
  MakeNight();
  MakeReport();
  const Json summary = Ask({"vexorlog", "summary"});
  const Json statistics = Ask({"vexorlog", "stats"});
  const std::size_t tests = summary["tests"].size();

  const std::string whole = Open("");
  const std::string root = "<html";
  EXPECT_EQ(Attribute(whole, root, "ready"), "true");
  EXPECT_EQ(Attribute(whole, root, "errors"), "0") << Attribute(whole, root, "error");
  EXPECT_EQ(Attribute(whole, root, "requests"), "0");
  EXPECT_EQ(Attribute(whole, root, "hacked"), "no data-hacked");
  EXPECT_EQ(Attribute(whole, root, "images"), "0");
  EXPECT_EQ(Number(whole, root, "tests"), static_cast<double>(tests));
  EXPECT_EQ(Number(whole, root, "lanes"), static_cast<double>(tests));
  EXPECT_EQ(Number(whole, root, "gaps"),
            static_cast<double>(Ask({"vexorlog", "gaps"})["gaps"].size()));
  EXPECT_EQ(Attribute(whole, root, "failures"), "4");
  EXPECT_NE(whole.find("<li>0x00200004: C-state error (EC_CSTATE): EC_C6</li>"), std::string::npos);
  ExpectPlot(whole, "C6%", RowOf(statistics, "CSTATES", "C6%"));
  EXPECT_LE(Number(whole, "data-column=\"C6%\"", "points"), 2 * 2 * 1024);
  EXPECT_NE(whole.find("<rect class=\"silence\""), std::string::npos);

  const std::string filtered = Open("#filter=ec_c6");
  EXPECT_EQ(Attribute(filtered, root, "failures"), "3");
  EXPECT_EQ(Attribute(filtered, root, "lanes"), "1");
  EXPECT_NE(filtered.find("3 of 4 failures shown"), std::string::npos);

  const std::string core = Open("#test=CSTATES&column=C6%25&affinity=00:00:001:0");
  EXPECT_EQ(Attribute(core, root, "plots"), "1");
  EXPECT_EQ(Attribute(core, "data-column=\"C6%\"", "lines"), "1");
  ExpectPlot(core, "C6%",
             RowOf(Ask({"vexorlog", "stats", "--by", "Affinity", "--test", "CSTATES"}),
                   "00:00:001:0", "C6%"));
}

// The page loads nothing, and only its own elements stand in it.
TEST_F(Report, HoldsAllItNeedsAndNoMarkupOfLogs) {
  MakeNight();
  const std::string page = MakeReport();
  for (const char* const load : {"src=\"http", "href=\"http", "url(", "@import", "<link", "<img"}) {
    EXPECT_EQ(page.find(load), std::string::npos) << load;
  }
  EXPECT_NE(page.find("content=\"default-src 'none'; style-src 'unsafe-inline'; script-src "
                      "'unsafe-inline'; img-src data:\""),
            std::string::npos);
  std::size_t ends = 0;
  for (std::size_t at = page.find("</script"); at != std::string::npos;
       at = page.find("</script", at + 1))
    ++ends;
  EXPECT_EQ(ends, 3U);  // of the data, the plots' library and the page's own script
}

TEST_F(Report, StaysSmallAndKeepsPeaks) {
  constexpr int kRows = 40'000;
  constexpr int kCores = 40;
  constexpr std::array<std::string_view, 5> kColumns = {"C6%", "C7%", "PC2%", "PC10%", "freq(MHz)"};
  struct Range {
    double least = 1e9;
    double most = -1e9;
    int count = 0;
  };
  std::map<std::string, Range> ranges;
  std::ofstream log =
      MakeLog("CSTATES.csv", "Time,TestType,Affinity,C6%,C7%,PC2%,PC10%,freq(MHz), Level\n");
  unsigned state = 1;
  for (int i = 0; i < kRows; ++i) {
    const std::string core = "00:00:" + std::to_string(1000 + i % kCores).substr(1) + ":0";
    log << Stamp(i * 2) << ",CSTATES," << core;
    for (const std::string_view column : kColumns) {
      state = state * 1664525U + 1013904223U;
      const double number = (state >> 8U) % 1'000'000 / 1000.0;
      Range& range = ranges[core + std::string(column)];
      range = {std::min(range.least, number), std::max(range.most, number), range.count + 1};
      std::ostringstream text;
      text.precision(12);
      text << number;
      log << ',' << text.str();
    }
    log << ",Information\n";
  }
  log.close();

  const std::string page = MakeReport();
  EXPECT_LT(page.size(), 5'000'000U);
  const std::string mark = "id=\"data\">";
  const std::size_t begin = page.find(mark) + mark.size();
  const Json data = Json::parse(page.substr(begin, page.find("</script>", begin) - begin));
  ASSERT_EQ(data["series"].size(), ranges.size());
  std::size_t points = 0;
  for (const Json& series : data["series"]) {
    const Range& range =
        ranges[series["affinity"].get<std::string>() + series["column"].get<std::string>()];
    Range held;
    for (std::size_t i = 1; i < series["points"].size(); i += 2) {
      const double number = series["points"][i];
      held = {std::min(held.least, number), std::max(held.most, number), held.count + 1};
    }
    points += static_cast<std::size_t>(held.count);
    EXPECT_EQ(series["count"], range.count);
    EXPECT_EQ(held.least, range.least);
    EXPECT_EQ(held.most, range.most);
  }
  EXPECT_LT(points, kColumns.size() * kRows * 9 / 10);  // something had to go
}

}  // namespace
