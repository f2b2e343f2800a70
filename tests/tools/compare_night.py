#!/usr/bin/env python3
"""Compares what vexorlog says of a folder of logs with a plain merge and count of its rows.

Usage: compare_night.py FOLDER, with vexorlog in PATH. Says nothing when all agrees.
"""
import csv
import heapq
import io
import json
import math
import re
import shutil
import subprocess
import sys
from datetime import datetime
from pathlib import Path

FOLDER = Path(sys.argv[1])
STATISTICS = ("count", "min", "median", "p90", "p99", "max")


def ask(*words):
    run = subprocess.run(["vexorlog", *words, str(FOLDER)], capture_output=True, check=False)
    assert run.returncode in (0, 1) and not run.stderr, (words, run)
    return run.stdout.decode()


def time_of(row):
    return datetime.strptime(row["Time"], "%Y-%m-%d %H:%M:%S.%f")


def is_version(row):
    return row["Notes"].startswith("Version,")


def read_series():
    """The rows of each series of files, in the order of its numbers."""
    series = {}
    for path in FOLDER.glob("*.csv"):
        name, number = re.fullmatch(r"(.*?)(?:_(\d+))?", path.stem).groups()
        series.setdefault(name, []).append((int(number or 0), path))
    for name in sorted(series):
        rows = []
        for _, path in sorted(series[name]):
            text = path.read_bytes().replace(b"\0", b"").decode()
            reader = csv.reader(io.StringIO(text, newline=""))
            columns = [cell.strip() for cell in next(reader)]
            for cells in reader:
                if cells == [] or cells[0] == "Time":
                    continue
                cells += [""] * (len(columns) - len(cells))
                row = dict(zip(columns, (cell.strip() for cell in cells)))
                rows.append(row | {"File": path.as_posix(), "Line": reader.line_num})
        yield rows


def check_summary(rows):
    for test in json.loads(ask("summary", "--json"))["tests"]:
        own = [row for row in rows if row["TestType"] == test["test"]]
        times = sorted(time_of(row) for row in own if not is_version(row))
        results = [row["Result"] for row in own]
        counted = (len(own), results.count("PASS"), results.count("FAIL"),
                   max(int(row["Iter"] or 0) for row in own),
                   max(later - time for time, later in zip(times, times[1:])).total_seconds())
        said = tuple(test[key] for key in ("rows", "passed", "failed", "iterations"))
        assert said + (test["longest_silence"]["seconds"],) == counted, (test, counted)


def check_gaps(rows):
    times = [time_of(row) for row in rows]
    limit = max(60, 10 * (times[-1] - times[0]).total_seconds() / (len(times) - 1))
    found = []
    for before, time, row in zip(times, times[1:], rows[1:]):
        seconds = (time - before).total_seconds()
        if seconds > (1 if is_version(row) else limit):
            found.append((row["Time"], seconds))
    said = json.loads(ask("gaps", "--json"))["gaps"]
    assert [(gap["end"], gap["seconds"]) for gap in said] == found, (said, found)


def check_statistics(rows):
    said = json.loads(ask("stats", "--json", "--by", "Affinity"))["statistics"]
    assert len(said) > 30, len(said)
    for row in said:
        cells = (own[row["column"]] for own in rows if own["Affinity"] == row["group"])
        numbers = sorted(float(cell.rstrip(" %")) for cell in cells
                         if re.fullmatch(r"[\d.]+( ?%)?", cell))
        ranks = (math.ceil(percent * len(numbers) / 100) for percent in (50, 90, 99))
        counted = (len(numbers), numbers[0], *(numbers[rank - 1] for rank in ranks), numbers[-1])
        assert tuple(row[key] for key in STATISTICS) == counted, (row, counted)
        assert math.isclose(row["mean"], math.fsum(numbers) / len(numbers)), row


def check_export(rows):
    exported = ask("export")
    read = list(csv.DictReader(io.StringIO(exported, newline="")))
    expected = [{name: str(row[name]) for name in read[0]} for row in rows]
    assert read == expected, [pair for pair in zip(read, expected) if pair[0] != pair[1]][:1]
    lines = [json.loads(line) for line in ask("export", "--format", "jsonl").splitlines()]
    places = [(row["File"], row["Line"]) for row in rows]
    assert [(line["File"], line["Line"]) for line in lines] == places
    if shutil.which("sqlite3"):
        Path("night.csv").write_bytes(exported.encode())
        table = subprocess.run(
            ["sqlite3", "-json", "-cmd", ".import --csv night.csv rows", ":memory:",
             "SELECT * FROM rows"], capture_output=True, check=True).stdout
        assert json.loads(table) == read


def main():
    series = [[(time_of(row), i, row) for row in rows] for i, rows in enumerate(read_series())]
    rows = [row for _, _, row in heapq.merge(*series, key=lambda item: item[:2])]
    assert len(rows) > 1000, len(rows)
    check_summary(rows)
    check_gaps(rows)
    check_statistics(rows)
    check_export(rows)


main()
