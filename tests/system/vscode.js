// The extension between a stand-in for the editor and the language server: node vscode.js EXTENSION TARN WORK

const assert = require("assert");
const Module = require("module");
const path = require("path");
const { pathToFileURL, fileURLToPath } = require("url");

const [folder, tarn, work] = process.argv.slice(2);
const none = { dispose() {} };
const listeners = {}; // of the editor's events, by name
const providers = {}; // what the client has registered, by kind
const shown = new Map(); // diagnostics by address

// Any class of the editor's that the client extends, makes or asks for: it keeps what it is made of.
class Any {
  constructor(...parts) {
    this.parts = parts;
  }
  dispose() {}
}
class Position {
  constructor(line, character) {
    Object.assign(this, { line, character });
  }
}
class Range {
  constructor(...ends) {
    const [start, end] = ends.length === 2 ? ends : [new Position(ends[0], ends[1]), new Position(ends[2], ends[3])];
    Object.assign(this, { start, end });
  }
}
class Diagnostic {
  constructor(range, message, severity) {
    Object.assign(this, { range, message, severity });
  }
}
class CompletionItem {
  constructor(label) {
    this.label = label;
  }
}
class TextEdit {
  constructor(range, newText) {
    Object.assign(this, { range, newText });
  }
  static replace(range, newText) {
    return new TextEdit(range, newText);
  }
}
class WorkspaceEdit {
  changes = [];
  set(uri, edits) {
    this.changes.push({ uri, edits });
  }
}
class EventEmitter {
  heard = [];
  event = (listener, self) => (this.heard.push(listener.bind(self)), none);
  fire(event) {
    for (const listener of this.heard) listener(event);
  }
  dispose() {}
}
class CancellationTokenSource {
  token = { isCancellationRequested: false, onCancellationRequested: () => none };
  cancel() {}
  dispose() {}
}
class Uri {
  constructor(text) {
    Object.assign(this, { text, scheme: "file", fsPath: fileURLToPath(text) });
  }
  static parse(text) {
    return new Uri(text);
  }
  static file(name) {
    return new Uri(pathToFileURL(name).href);
  }
  toString() {
    return this.text;
  }
}

// What is not written here is an event (on...), or something that nobody looks at.
const part = (name, own = {}) =>
  new Proxy(own, {
    get: (own, key) => {
      if (key in own || typeof key === "symbol") return own[key];
      if (/^on(Did|Will)/.test(key)) return (listener, self) => ((listeners[key] ??= []).push(listener.bind(self)), none);
      const registered = /^register(.*)Provider$/.exec(key);
      if (registered) return (selector, provider) => ((providers[registered[1]] = provider), none);
      return undefined;
    },
  });
const kind = { append: () => kind };
const quiet = { append() {}, appendLine() {}, show() {}, dispose() {} };
const told = (text) => {
  console.error(text);
  return Promise.resolve();
};
const settings = { compiler: tarn, console: "kiva-console" };
const documents = [];
const vscode = {
  version: "1.82.0",
  Position, Range, Diagnostic, CompletionItem, TextEdit, WorkspaceEdit, EventEmitter, CancellationTokenSource, Uri,
  Disposable: Object.assign(Any, { from: () => none }),
  DiagnosticSeverity: { Error: 0, Warning: 1, Information: 2, Hint: 3 },
  CodeActionKind: { Empty: kind },
  DebugAdapterExecutable: class {
    constructor(command, args) {
      Object.assign(this, { command, args });
    }
  },
  env: part("env", { language: "en", appName: "stand-in" }),
  debug: { registerDebugAdapterDescriptorFactory: (type, factory) => ((providers.Debugger = { type, factory }), none) },
  commands: { registerCommand: () => none },
  languages: part("languages", {
    match: (selector, document) => ([selector].flat().some(({ language }) => language === document.languageId) ? 10 : 0),
    createDiagnosticCollection: () => ({
      set: (uri, found) => shown.set(uri.toString(), found),
      delete: (uri) => shown.delete(uri.toString()),
      clear() {},
      dispose() {},
    }),
  }),
  window: part("window", {
    createOutputChannel: () => quiet,
    showErrorMessage: told, showWarningMessage: told, showInformationMessage: told,
    tabGroups: part("tabs", { all: [] }),
    visibleTextEditors: [],
  }),
  workspace: part("workspace", {
    textDocuments: documents,
    notebookDocuments: [],
    workspaceFolders: [{ uri: Uri.file(work), name: "work", index: 0 }],
    getConfiguration: (section) => ({ get: (name, other) => (section === "zu" ? settings[name] : other) }),
    createFileSystemWatcher: () => part("watcher", none),
  }),
};
const editor = new Proxy(vscode, { get: (own, key) => own[key] ?? (/^[A-Z]/.test(String(key)) ? class extends Any {} : undefined) });
const load = Module._load;
Module._load = (name, ...rest) => (name === "vscode" ? editor : load(name, ...rest));

const fire = (event, argument) => {
  for (const listener of listeners[event] ?? []) listener(argument);
};
const until = async (what, holds) => {
  for (let tries = 0; !holds(); ++tries) {
    assert(tries < 1000, `${what} did not come`);
    await new Promise((go) => setTimeout(go, 20));
  }
};
const token = new CancellationTokenSource().token;

async function steps() {
  const extension = require(path.join(folder, require(path.join(folder, "package.json")).main));
  const context = { subscriptions: [] };
  await extension.activate(context);

  const uri = Uri.file(path.join(work, "lamp.zu"));
  const lines = ["module lamp:", "Input: button;", "Output: light;", "loop{wait button>>emit lihgt}", "end", ""];
  const document = {
    uri, languageId: "zu", version: 1, fileName: uri.fsPath, isClosed: false, getText: () => lines.join("\n"),
  };
  documents.push(document);
  fire("onDidOpenTextDocument", document);
  const found = () => shown.get(uri.toString()) ?? [];
  await until("the error", () => found().length > 0);
  assert.strictEqual(found()[0].message, '"lihgt" is not declared; did you mean "light"?');
  assert.strictEqual(found()[0].range.start.line, 3);
  const at = new Position(3, 23);
  const offered = await providers.CompletionItem.provideCompletionItems(document, at, token, { triggerKind: 0 });
  assert((offered.items ?? offered).some((item) => item.label === "light"), "completion");

  lines[3] = lines[3].replace("lihgt", "light");
  document.version = 2;
  const range = new Range(3, 23, 3, 28);
  fire("onDidChangeTextDocument", {
    document, reason: undefined, contentChanges: [{ range, rangeOffset: 0, rangeLength: 5, text: "light" }],
  });
  await until("the end of the error", () => shown.has(uri.toString()) && found().length === 0);
  const renamed = await providers.Rename.provideRenameEdits(document, at, "lit", token);
  assert.deepStrictEqual(renamed.changes[0].edits.map((edit) => [edit.range.start.line, edit.newText]).sort(), [[2, "lit"], [3, "lit"]]);
  const layout = await providers.DocumentFormattingEdit.provideDocumentFormattingEdits(document, { tabSize: 2, insertSpaces: true }, token);
  assert.deepStrictEqual(layout.map((edit) => edit.newText.split("\n")[3]), ["loop { wait button >> emit light }"]);

  assert.strictEqual(providers.Debugger.type, "zu");
  assert.deepStrictEqual(providers.Debugger.factory.createDebugAdapterDescriptor().args, ["--dap"]);
  await extension.deactivate();
}

steps().then(
  () => process.exit(0),
  (fault) => {
    console.error(fault);
    process.exit(1);
  },
);
