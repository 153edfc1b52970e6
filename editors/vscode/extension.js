// The client of the language server in the compiler, and of the debugger in the console.

const { DebugAdapterExecutable, debug, workspace } = require("vscode");
const { LanguageClient } = require("vscode-languageclient/node");

let client;

const setting = (name) => workspace.getConfiguration("zu").get(name);

exports.activate = (context) => {
  const createDebugAdapterDescriptor = () => new DebugAdapterExecutable(setting("console"), ["--dap"]);
  context.subscriptions.push(debug.registerDebugAdapterDescriptorFactory("zu", { createDebugAdapterDescriptor }));
  const server = { command: setting("compiler"), args: ["--lsp"] };
  client = new LanguageClient("zu", "ZU", server, { documentSelector: [{ language: "zu" }] });
  return client.start();
};

exports.deactivate = () => client && client.stop();
