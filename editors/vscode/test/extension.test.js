// Runs the extension with the real client library and the real "vexorcfg lsp".
//
// VEXORCFG is the program, EXTENSION the folder of the extension, such as that of an unpacked
// package.
"use strict";

const assert = require("node:assert");
const fs = require("node:fs");
const Module = require("node:module");
const os = require("node:os");
const path = require("node:path");
const { after, afterEach, beforeEach, test } = require("node:test");
const { Document, Editor } = require("./vscode");

const program = process.env.VEXORCFG ?? "vexorcfg";
const broken = fs.readFileSync(path.join(__dirname, "../../../examples/broken.xml"), "utf8");
const work = fs.mkdtempSync(path.join(os.tmpdir(), "größe ü "));
const editor = new Editor();

const load = Module._load;
Module._load = (request, ...rest) =>
  request === "vscode" ? editor.module : load.call(Module, request, ...rest);
const extension = require(process.env.EXTENSION ?? path.join(__dirname, ".."));

const activate = () => extension.activate({ subscriptions: [] });
const codesOf = (diagnostics) => diagnostics.map(({ code }) => code.value ?? code);
const open = (name, text) => editor.open(new Document(path.join(work, name), text));

beforeEach(() => {
  editor.reset();
  editor.settings.set("vexorcfg.path", program);
});
afterEach(() => extension.deactivate());
after(() => fs.rmSync(work, { recursive: true }));

test("a configuration is checked, completed, explained and mended", async () => {
  const document = open("lab ö.xml", broken);
  const other = open("other.xml", "<project><CSTATES>True</CSTATES></project>");
  await activate();
  assert.deepEqual(editor.messages, []);
  const found = await editor.diagnosticsOf(document, ({ length }) => length > 0);
  assert.deepEqual(codesOf(found), ["VX052", "VX046", "VX019"]);
  assert.deepEqual(found[0].range.start, document.positionOf("True<"));

  const hover = await editor.ask("Hover", document, document.positionOf("msec:80"));
  assert.match([hover.contents].flat()[0].value, /80 ms/);

  const place = document.positionOf("<ActiveTime>");
  const { items } = await editor.ask("CompletionItem", document, place);
  const labels = items.map(({ label }) => (label.label ?? label).replace(/^<(.*)>$/, "$1"));
  assert.ok(labels.includes("RandomPkgVoting"), `not among ${labels}`);

  const context = { diagnostics: [found[0]], triggerKind: 1 };
  const actions = await editor.ask("CodeActions", document, found[0].range, context);
  const [{ uri, range, newText }] = actions[0].edit.edits;
  assert.equal(uri.toString(), document.uri.toString());
  editor.replace(document, range, newText);
  assert.ok(document.text.includes("<PSTATES>true</PSTATES>"), document.text);
  const left = await editor.diagnosticsOf(document, ({ length }) => length === 2);
  assert.deepEqual(codesOf(left), ["VX046", "VX019"]);

  const [root] = await editor.ask("DocumentSymbol", document);
  assert.equal(root.name, "VEXOR");
  assert.ok((await editor.ask("FoldingRange", document)).length > 0);
  assert.deepEqual(editor.diagnosticsNow(other) ?? [], []);
});

test("a changed setting takes effect at once", async () => {
  const document = open("lab.xml", broken);
  await activate();
  await editor.diagnosticsOf(document, ({ length }) => length === 3);
  editor.set("vexorcfg.notes", true);
  const found = await editor.diagnosticsOf(document, ({ length }) => length === 5);
  assert.equal(found.filter(({ severity }) => severity >= 2).length, 2);
});

test("a program that cannot serve is named", async () => {
  for (const [name, expected] of [
    ["no-such-program", /^The program "no-such-program" was not found\..*"vexorcfg\.path"/],
    [work, /^The program ".*" cannot be run: /],
    [process.execPath, /^The program ".*" cannot be run: /],
  ]) {
    editor.reset();
    editor.settings.set("vexorcfg.path", name);
    await activate();
    assert.equal(editor.messages.length, 1);
    assert.match(editor.messages[0], expected);
  }
});
