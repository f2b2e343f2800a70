"""Checks the settings in docs/editors.md: SOURCES VEXORCFG.

JSON and TOML must parse, those of the extension for VS Code must be its defaults, and the line that
names a schema must be what vexorcfg writes.
"""

import json
import re
import subprocess
import sys
import tomllib

sources, vexorcfg = sys.argv[1:]
with open(f"{sources}/docs/editors.md", encoding="utf-8") as file:
    document = file.read()
with open(f"{sources}/editors/vscode/package.json", encoding="utf-8") as file:
    properties = json.load(file)["contributes"]["configuration"]["properties"]

blocks = {"json": [], "toml": []}
for kind, text in re.findall(r"\n```(json|toml)\n(.*?)\n```\n", document, re.DOTALL):
    blocks[kind].append((json.loads if kind == "json" else tomllib.loads)(text))
settings = {name: value for block in blocks["json"] for name, value in block.items()}

for name in [name for name in settings if name.startswith("vexorcfg.")]:
    default = properties[name]["default"]
    assert settings[name] == default, f"{name}: expected {default!r}, got {settings[name]!r}"
servers = [settings["clients"]["vexorcfg"]["command"]]
servers += [[s["command"], *s["args"]] for b in blocks["toml"] for s in b["language-server"].values()]
for command in servers:
    assert command == ["vexorcfg", "lsp"], command

line = subprocess.run([vexorcfg, "defaults", "--schema", "vexor.xsd"], check=True,
                      capture_output=True, encoding="utf-8").stdout.split("\n")[0]
assert f"\n      {line}\n" in document, f"not in docs/editors.md: {line}"
