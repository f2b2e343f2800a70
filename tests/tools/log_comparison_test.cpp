// What vexorlog writes, held against what other programs make of the same logs: Python merges them
// in the plainest way, and Python's csv module and sqlite3 read the exported file.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/child_process.h"
#include "source_dir.h"
#include "temporary_folder.h"

namespace {

namespace fs = std::filesystem;

// Fills a folder with logs of several series: split, with leftovers of an earlier run, with times
// that are equal, run back or are missing, and with all that a cell or a row may hold.
constexpr const char* kMakeLogs = R"py(
import csv, io, random, sys
folder, seed = sys.argv[1], int(sys.argv[2])
random.seed(seed)
header = ["Time", "TestType", "Result", "Notes", "C6%", " Level"]
cells = ["", "a", "a b", 'say "x"', '"', "a,b", "two\nlines", "\n", "\u00e4\u20ac\U0001f600", "12.5",
         " blanks ", "2024-03-07 00:00:01.000", "'", "\\", "tab\t", "x\n2024-03-07 00:00:02.000,y"]
stamp = lambda second: "2024-03-07 %02d:%02d:%02d.000" % (second // 3600, second // 60 % 60, second % 60)
def write(name, second):
    line_end = random.choice(["\n", "\r\n"])
    columns = header if random.random() < 0.7 else ["Time", "PC8%", "Notes", "Extra", " Level"]
    text = io.StringIO()
    rows = csv.writer(text, lineterminator="\n")
    rows.writerow(columns)
    for i in range(random.randrange(1, 30)):
        if random.random() < 0.1:
            text.write("a raw line %d, of another program\n" % i)
            continue
        if random.random() < 0.05:
            rows.writerow(columns)
        second += random.choice([0, 0, 0, 1, 1, 7, -1])
        surplus = random.choice([0, 0, 0, 0, 2, -1])
        # A short row with the beginning of a row in it would be taken for one that was cut off.
        row = random.choices(cells[:-1] if surplus < 0 else cells, k=len(columns) - 2 + surplus)
        rows.writerow([stamp(second)] + row + ["Debug"])
    with open(folder + "/" + name, "w", newline="", encoding="utf-8") as file:
        file.write(text.getvalue().replace("\n", line_end))
    return second
for series in range(6):
    second = 1000 + random.randrange(5)
    if series % 3 == 2:
        write("single%d.csv" % series, second)
        continue
    files = random.randrange(1, 12)
    for number in range(files):
        second = max(write("series%d_%d.csv" % (series, number), second), 1010)
    write("series%d_%d.csv" % (series, files), 3)  # of an earlier run
)py";

// Merges the logs of a folder and compares that with an exported file, cell for cell; and the
// exported file with what sqlite3 imports from it.
constexpr const char* kCompare = R"py(
import csv, glob, os, re, sqlite3, subprocess, sys
folder, exported, database = sys.argv[1:4]

def read(path):
    """The rows of a log as (line, time or None, cells by column)."""
    with open(path, newline="", encoding="utf-8") as file:
        text = file.read().replace("\0", "")
    has_returns = text.split("\n", 1)[0].endswith("\r")
    lines = text.split("\n")
    rows = csv.reader([line + "\n" for line in lines])
    found, columns, line = [], [], 0
    for cells in rows:
        first, line = line + 1, rows.line_num
        if not cells: continue
        if cells[0] == "Time":
            columns = [cell.strip() for cell in cells]
        elif not re.match(r"\d{4}-\d\d-\d\d \d\d:", cells[0]):
            found.append((first, None, {"Notes": lines[first - 1].rstrip("\r").strip(" ")}))
        else:
            if has_returns: cells = [cell.replace("\r\n", "\n") for cell in cells]
            surplus = len(cells) - len(columns)
            if surplus > 0: del cells[-1 - surplus:-1]
            found.append((first, cells[0], dict(zip(columns, [cell.strip(" ") for cell in cells]))))
    return found

series = {}
for path in glob.glob(folder + "/*.csv"):
    numbered = re.fullmatch(r"(.*)_(\d+)\.csv", path)
    name, number = numbered.groups() if numbered else (path[:-4], 0)
    series.setdefault(name, []).append((int(number), path))
streams = []
for name in sorted(series):
    start, stream = None, []
    for number, path in sorted(series[name]):
        rows = read(path)
        first = next((time for line, time, cells in rows if time), None)
        if start and first and first < start: continue
        start = start or first
        stream += [(path, *row) for row in rows]
    key, keyed = start or "", []
    for path, line, time, cells in stream:
        key = time or key
        keyed.append((key, path, line, cells))
    streams.append(keyed)
merged = []
while any(streams):
    first = min((stream[0][0], index) for index, stream in enumerate(streams) if stream)
    merged.append(streams[first[1]].pop(0))

with open(exported, newline="", encoding="utf-8") as file:
    header, *rows = csv.reader(file, strict=True)
assert header[:2] == ["File", "Line"], header
if len(rows) != len(merged): sys.exit("%d rows, not %d" % (len(rows), len(merged)))
for row, (time, path, line, cells) in zip(rows, merged):
    wanted = [path, str(line)] + [cells.get(name, "") for name in header[2:]]
    if row != wanted or not set(cells) <= set(header): sys.exit("%r is not %r" % (row, wanted))

subprocess.run(["sqlite3", database, '.import --csv "%s" night' % exported], check=True)
table = sqlite3.connect(database).execute("select * from night")
assert [column[0] for column in table.description] == header, table.description
for row, imported in zip(rows, table.fetchall(), strict=True):
    if tuple(row) != imported: sys.exit("sqlite3 imports %r, not %r" % (imported, row))
print(len(rows))
)py";

class LogComparison : public testing::Test {
 protected:
  LogComparison() { fs::create_directory(folder_ / "logs"); }

  // Returns what a program prints, when it ends with status 0.
  std::string Run(const std::vector<std::string>& words) {
    for (const char* const file : {"output.txt", "errors.txt"}) WriteBytes(folder_ / file, "");
    const Streams streams = {.output = folder_ / "output.txt", .errors = folder_ / "errors.txt"};
    EXPECT_EQ(ChildProcess(words, streams).Wait(), 0) << ReadBytes(folder_ / "errors.txt");
    return ReadBytes(folder_ / "output.txt");
  }

  // Returns the number of rows in which all programs agree.
  int CompareAll() {
    const std::string tool = (fs::path(VEXOR_TOOL_FOLDER) / "vexorlog").string();
    Run({tool, "export", folder_ / "logs", "-f", "-o", folder_ / "night.csv"});
    fs::remove(folder_ / "night.db");
    const std::string rows = Run(
        {"python3", "-c", kCompare, folder_ / "logs", folder_ / "night.csv", folder_ / "night.db"});
    return rows.empty() ? 0 : std::stoi(rows);
  }

  TemporaryFolder folder_;
};

TEST_F(LogComparison, AgreesOnTheExampleNight) {
  fs::copy(fs::path(VEXOR_SOURCE_DIR) / "examples/night", folder_ / "logs");
  EXPECT_GT(CompareAll(), 800);
}

TEST_F(LogComparison, AgreesOnAnythingThatLogsMayHold) {
  for (int seed = 1; seed <= 4; ++seed) {
    for (const auto& log : fs::directory_iterator(folder_ / "logs")) fs::remove(log.path());
    Run({"python3", "-c", kMakeLogs, folder_ / "logs", std::to_string(seed)});
    EXPECT_GT(CompareAll(), 30) << seed;
  }
}

}  // namespace
