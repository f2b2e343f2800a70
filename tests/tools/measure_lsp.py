"""Measures the processor time of the language server: PROGRAM FILE [KEYSTROKES].

A keystroke is a change of one character in an option's text, its findings, and a completion behind
it. Prints the median and the longest time, in the file as it is and with its content repeated up
to 1 MB.
"""

import glob
import statistics
import sys

from lsp_client import Client


def used(client):
    """Returns the processor time of all threads so far, in milliseconds."""
    total = 0
    for path in glob.glob(f"/proc/{client.process.pid}/task/*/schedstat"):
        with open(path, encoding="ascii") as file:
            total += int(file.read().split()[0])
    return total / 1e6


def measure(client, uri, text, keystrokes):
    client.open(uri, text)
    lines = text.split("\n")
    line = next(i for i in range(len(lines) * 2 // 3, len(lines)) if "Time>" in lines[i])
    character = lines[line].index("<", lines[line].index(">"))
    place = {"line": line, "character": character}
    behind = {"line": line, "character": character + 1}
    times = []
    for number in range(keystrokes):
        before = used(client)
        change = ({"range": {"start": place, "end": place}, "text": "0"} if number % 2 == 0 else
                  {"range": {"start": place, "end": behind}, "text": ""})
        client.change(uri, number + 2, change)
        client.ask("completion", uri, position=place)
        client.wait_for_findings(uri, number + 2)
        times.append(used(client) - before)
    print(f"{len(text.encode())} bytes: median {statistics.median(times):.1f} ms, "
          f"longest {max(times):.1f} ms")


def main():
    program, path = sys.argv[1:3]
    keystrokes = int(sys.argv[3]) if len(sys.argv) > 3 else 100
    with open(path, encoding="utf-8") as file:
        text = file.read()
    client = Client(program)
    measure(client, "small", text, keystrokes)
    begin, end = text.index("<GLOBALPM>"), text.index("</GLOBALPM>")
    content = text[begin + len("<GLOBALPM>"):end]
    long = text[:begin] + "<GLOBALPM>" + content * (1000000 // len(content)) + text[end:]
    measure(client, "long", long, keystrokes)
    client.end()


main()
