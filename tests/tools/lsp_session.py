"""Speaks with the real program as an editor does: PROGRAM EXAMPLES. Prints what is wrong."""

import pathlib
import sys

from lsp_client import Client


def expect(what, found, expected):
    if found != expected:
        print(f"{what}: {found!r}, expected {expected!r}")


def place(text, part):
    """Returns the position behind a part of the text."""
    before = text[:text.index(part) + len(part)]
    return {"line": before.count("\n"), "character": len(before) - before.rfind("\n") - 1}


def mend(client, uri, text):
    """Applies the preferred quick fix of every finding, as a user would."""
    version = 1
    while findings := client.findings[uri][1]:
        actions = client.ask("codeAction", uri, range=findings[0]["range"],
                             context={"diagnostics": findings[:1], "only": ["quickfix"]})
        preferred = [action for action in actions if action.get("isPreferred")]
        if not preferred:
            print(f"no quick fix for {findings[0]}")
            return
        version += 1
        edits = preferred[0]["edit"]["changes"][uri]
        client.change(uri, version, *({"range": edit["range"], "text": edit["newText"]}
                                      for edit in reversed(edits)))
        client.wait_for_findings(uri, version)


def main():
    program, examples = sys.argv[1], pathlib.Path(sys.argv[2])
    client = Client(program)
    uri = "file:///c%3A/a folder/ä#.xml"
    text = (examples / "broken.xml").read_text(encoding="utf-8")
    codes = [finding["code"] for finding in client.open(uri, text)]
    expect("findings", codes, ["VX052", "VX046", "VX019"])
    hover = client.ask("hover", uri, position=place(text, "<ActiveTime>m"))
    expect("hover", "80 ms" in hover["contents"]["value"], True)
    items = client.ask("completion", uri, position=place(text, "<InStateTime>"))["items"]
    expect("completion", "msec" in [item["label"] for item in items], True)
    symbols = client.ask("documentSymbol", uri)
    expect("symbols", [symbols[0]["name"], len(symbols) > 50], ["VEXOR", True])
    expect("folding", len(client.ask("foldingRange", uri)) > 10, True)
    mend(client, uri, text)

    # Many edits at once cost few checks, and the last one counts.
    other = "untitled:1"
    client.open(other, "")
    for version in range(2, 1000):
        client.change(other, version, {"text": f"<VEXOR>{version}</VEXOR>"})
    waiting = [client.start("textDocument/hover", {"textDocument": {"uri": other}, "position":
                                                   {"line": 0, "character": 2}}) for _ in range(9)]
    client.notify("$/cancelRequest", {"id": waiting[-1]})
    client.answer(waiting[-1])
    expect("findings after many edits", len(client.wait_for_findings(other, 999)) > 0, True)
    client.notify("textDocument/didClose", {"textDocument": {"uri": other}})
    client.wait_for_findings(other, None)
    expect("findings of a closed document", client.findings[other][1], [])
    expect("exit status", client.end(), 0)


main()
