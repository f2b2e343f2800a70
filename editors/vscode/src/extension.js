// Starts "vexorcfg lsp" for the configuration files that VS Code opens. All knowledge of them is in
// that program.
"use strict";

const { execFile } = require("node:child_process");
const vscode = require("vscode");
const { LanguageClient } = require("vscode-languageclient/node");

const NAME = "VEXOR configurations";

/** @type {LanguageClient | undefined} */
let client;

/** Serializes starts and stops, which take a while. @type {Promise<void>} */
let pending = Promise.resolve();

/**
 * Returns why the program cannot serve, or undefined if it can.
 *
 * @param {string} program
 * @returns {Promise<string | undefined>}
 */
function findFault(program) {
  return new Promise((resolve) => {
    execFile(program, ["lsp", "--help"], { timeout: 10000 }, (error, _output, errors) => {
      if (!error) return resolve(undefined);
      if (error.code === "ENOENT") {
        return resolve(`The program "${program}" was not found. Install the tools of VexorUtils, ` +
          'or set "vexorcfg.path" to the path of vexorcfg.');
      }
      if (typeof error.code === "number" && errors.startsWith("vexorcfg: ")) {
        return resolve(`"${program}" is too old to help in an editor: it has no command "lsp".`);
      }
      resolve(`The program "${program}" cannot be run: ${errors.trim() || error.message}`);
    });
  });
}

async function start() {
  const settings = vscode.workspace.getConfiguration("vexorcfg");
  const program = settings.get("path", "vexorcfg");
  const fault = await findFault(program);
  if (fault !== undefined) {
    // Not awaited: the message stays until it is read.
    vscode.window.showErrorMessage(fault, "Open Settings").then((answer) => {
      if (answer) vscode.commands.executeCommand("workbench.action.openSettings", "vexorcfg.path");
    });
    return;
  }
  client = new LanguageClient("vexorcfg", NAME, { command: program, args: ["lsp"] }, {
    documentSelector: [
      { language: "xml", scheme: "file", pattern: settings.get("files", "**/*.xml") },
      { language: "xml", scheme: "untitled" },
    ],
    initializationOptions: { notes: settings.get("notes", false) },
  });
  await client.start();
}

async function stop() {
  const old = client;
  client = undefined;
  if (old?.needsStop()) await old.dispose();
}

function restart() {
  pending = pending.then(stop).then(start).catch(() => {});  // the client shows its failures
  return pending;
}

/** @param {vscode.ExtensionContext} context */
function activate(context) {
  context.subscriptions.push(
    vscode.commands.registerCommand("vexorcfg.restart", restart),
    vscode.workspace.onDidChangeConfiguration((change) => {
      // The client follows changes of vexorcfg.trace itself.
      const names = ["path", "files", "notes"];
      if (names.some((name) => change.affectsConfiguration(`vexorcfg.${name}`))) restart();
    }));
  return restart();
}

function deactivate() {
  pending = pending.then(stop).catch(() => {});
  return pending;
}

module.exports = { activate, deactivate };
