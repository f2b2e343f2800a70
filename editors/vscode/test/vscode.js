// As much of the module "vscode" as the extension and its client library need: documents, settings,
// messages and diagnostics of an editor without a window. Providers that the client registers can
// be asked as VS Code asks them.
"use strict";

const { EventEmitter: NodeEmitter } = require("node:events");
const { URI } = require("vscode-uri");

// Makes a class whose constructor stores its arguments under these names.
function record(...names) {
  return class {
    constructor(...values) {
      names.forEach((name, i) => Object.assign(this, { [name]: values[i] }));
    }
  };
}

class Disposable {
  constructor(dispose = () => {}) {
    this.dispose = dispose;
  }
}

// An event that does not happen.
const never = () => new Disposable();

class EventEmitter {
  constructor() {
    const emitter = new NodeEmitter();
    this.event = (listener, self) => {
      const bound = listener.bind(self);
      emitter.on("event", bound);
      return new Disposable(() => emitter.off("event", bound));
    };
    this.fire = (event) => emitter.emit("event", event);
    this.dispose = () => emitter.removeAllListeners();
  }
}

class Position {
  constructor(line, character) {
    Object.assign(this, { line, character });
  }
}

class Range {
  constructor(...ends) {
    [this.start, this.end] = ends.length === 2
      ? ends : [new Position(ends[0], ends[1]), new Position(ends[2], ends[3])];
  }
}

class CodeActionKind {
  constructor(value) {
    this.value = value;
  }
  append(part) {
    return new CodeActionKind(this.value ? `${this.value}.${part}` : part);
  }
  static Empty = new CodeActionKind("");
  static QuickFix = new CodeActionKind("quickfix");
  static Refactor = new CodeActionKind("refactor");
  static Source = new CodeActionKind("source");
}

class WorkspaceEdit {
  constructor() {
    this.edits = [];
  }
  replace(uri, range, newText) {
    this.edits.push({ uri, range, newText });
  }
}

class Document {
  constructor(path, text, languageId = "xml") {
    this.uri = URI.file(path);
    this.text = text;
    this.languageId = languageId;
    this.version = 1;
    this.isClosed = false;
  }
  getText() {
    return this.text;
  }
  positionOf(text) {
    const at = this.text.indexOf(text);
    if (at < 0) throw new Error(`"${text}" is not in the document`);
    const before = this.text.slice(0, at).split("\n");
    return new Position(before.length - 1, before[before.length - 1].length);
  }
  offsetOf({ line, character }) {
    const lines = this.text.split("\n").slice(0, line);
    return lines.reduce((sum, each) => sum + each.length + 1, 0) + character;
  }
}

class Editor {
  constructor() {
    this.settings = new Map();
    this.messages = [];
    this.diagnostics = new Map();
    this.providers = new Map();
    this.documents = [];
    this.opened = new EventEmitter();
    this.changed = new EventEmitter();
    this.closed = new EventEmitter();
    this.configured = new EventEmitter();
    this.published = new EventEmitter();
    this.module = this.makeModule();
  }

  // Forgets settings, documents and messages.
  reset() {
    for (const kept of [this.settings, this.diagnostics]) kept.clear();
    this.messages.length = this.documents.length = 0;
  }

  set(name, value) {
    this.settings.set(name, value);
    this.configured.fire({ affectsConfiguration: (n) => n === name });
  }

  open(document) {
    this.documents.push(document);
    this.opened.fire(document);
    return document;
  }

  // Replaces a range of a document, as typing does.
  replace(document, range, text) {
    const begin = document.offsetOf(range.start);
    const end = document.offsetOf(range.end);
    document.text = document.text.slice(0, begin) + text + document.text.slice(end);
    document.version++;
    const contentChanges = [{ range, rangeOffset: begin, rangeLength: end - begin, text }];
    this.changed.fire({ document, contentChanges, reason: undefined });
  }

  diagnosticsNow(document) {
    return this.diagnostics.get(document.uri.toString());
  }

  // Resolves with the document's diagnostics once they satisfy the condition.
  diagnosticsOf(document, isGood) {
    return new Promise((resolve, reject) => {
      const look = () => {
        const found = this.diagnosticsNow(document);
        if (found === undefined || !isGood(found)) return;
        clearTimeout(timer);
        subscription.dispose();
        resolve(found);
      };
      const timer = setTimeout(() => {
        subscription.dispose();
        reject(new Error(`no such diagnostics, but ${JSON.stringify(this.diagnosticsNow(document))}`));
      }, 20000);
      const subscription = this.published.event(look);
      look();
    });
  }

  // Asks a provider, such as that of "Hover".
  async ask(kind, ...args) {
    const provider = this.providers.get(`register${kind}Provider`);
    if (provider === undefined) throw new Error(`no provider of ${kind}`);
    const method = Object.getOwnPropertyNames(provider).find((name) => name.startsWith("provide"));
    const token = { isCancellationRequested: false, onCancellationRequested: never };
    return provider[method](...args, token, { triggerKind: 0 });
  }

  makeModule() {
    const show = (text) => Promise.resolve(void this.messages.push(text));
    const output = { append() {}, appendLine() {}, show() {}, dispose() {}, clear() {} };
    const self = this;
    const known = {
      version: "1.82.0",
      Disposable, EventEmitter, Position, Range, CodeActionKind, WorkspaceEdit, Uri: URI,
      Diagnostic: record("range", "message", "severity"),
      DiagnosticSeverity: { Error: 0, Warning: 1, Information: 2, Hint: 3 },
      CompletionItem: record("label", "kind"),
      CompletionList: record("items", "isIncomplete"),
      CompletionItemKind: { Text: 0 },
      Hover: record("contents", "range"),
      DocumentSymbol: record("name"),
      MarkdownString: class {
        constructor(value = "") {
          this.value = value;
        }
        appendMarkdown(text) {
          this.value += text;
        }
      },
      CancellationTokenSource: class {
        constructor() {
          this.token = { isCancellationRequested: false, onCancellationRequested: never };
        }
        cancel() {}
        dispose() {}
      },
      env: { appName: "test", language: "en" },
      commands: { registerCommand: never, executeCommand: () => Promise.resolve() },
      window: {
        activeTextEditor: undefined, visibleTextEditors: [],
        tabGroups: { all: [], onDidChangeTabs: never },
        createOutputChannel: () => output,
        showErrorMessage: show, showWarningMessage: show, showInformationMessage: show,
        onDidChangeActiveTextEditor: never,
      },
      workspace: {
        get textDocuments() { return self.documents; },
        notebookDocuments: [],
        workspaceFolders: undefined,
        getConfiguration: (section) => ({
          get(name, preset) {
            const value = self.settings.get(`${section}.${name}`);
            return value === undefined ? preset : value;
          },
        }),
        getWorkspaceFolder: () => undefined,
        onDidOpenTextDocument: this.opened.event,
        onDidChangeTextDocument: this.changed.event,
        onDidCloseTextDocument: this.closed.event,
        onDidChangeConfiguration: this.configured.event,
      },
      languages: {
        match: (selector, document) =>
          [selector].flat().some((filter) => filter.language === document.languageId &&
            filter.scheme === document.uri.scheme) ? 10 : 0,
        createDiagnosticCollection: () => ({
          set(uri, diagnostics) {
            self.diagnostics.set(uri.toString(), diagnostics);
            self.published.fire(uri);
          },
          delete(uri) { self.diagnostics.delete(uri.toString()); },
          clear() { self.diagnostics.clear(); },
          dispose() { self.diagnostics.clear(); },
        }),
      },
    };
    return this.withDefaults(known, "");
  }

  // Adds what is only registered or derived from: events that do not happen, providers, classes.
  withDefaults(object, path) {
    return new Proxy(object, {
      get: (target, name) => {
        if (typeof name !== "string") return target[name];
        if (name in target) {
          const isNamespace = ["commands", "env", "languages", "window", "workspace"].includes(name);
          return isNamespace ? this.withDefaults(target[name], name) : target[name];
        }
        if (name.startsWith("on")) return never;
        if (path === "languages" && name.startsWith("register")) {
          return (_selector, provider) => {
            this.providers.set(name, provider);
            return new Disposable(() => this.providers.delete(name));
          };
        }
        if (path === "" && /^[A-Z]/.test(name)) return target[name] = record();
        return undefined;
      },
    });
  }
}

module.exports = { Document, Editor };
