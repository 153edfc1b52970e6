// The client of the language server in the compiler.

const { workspace } = require("vscode");
const { LanguageClient } = require("vscode-languageclient/node");

let client;

exports.activate = () => {
  const command = workspace.getConfiguration("zu").get("compiler");
  client = new LanguageClient("zu", "ZU", { command, args: ["--lsp"] }, { documentSelector: [{ language: "zu" }] });
  return client.start();
};

exports.deactivate = () => client && client.stop();
