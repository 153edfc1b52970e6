#include "language/server.h"

#include "base/translation.h"
#include "language/answers.h"
#include "language/checks.h"
#include "language/folder.h"

namespace kiva::language {

using nlohmann::json;

namespace {

// The protocol's numbers.
constexpr int parse_error = -32700, invalid_request = -32600, unknown_method = -32601,
              invalid_params = -32602, internal_error = -32603, not_initialized = -32002,
              request_failed = -32803;

/// What is being compiled has changed, or the end has come.
struct Superseded {};

json capabilities() {
  return {{"positionEncoding", "utf-16"},
          {"textDocumentSync", {{"openClose", true}, {"change", 2}, {"save", true}}},
          {"completionProvider", {{"triggerCharacters", {" ", "[", "\\"}}}},
          {"hoverProvider", true},
          {"definitionProvider", true},
          {"referencesProvider", true},
          {"renameProvider", {{"prepareProvider", true}}},
          {"documentSymbolProvider", true},
          {"documentFormattingProvider", true},
          {"codeActionProvider", {{"codeActionKinds", {"quickfix", "refactor"}}}},
          {"foldingRangeProvider", true},
          {"semanticTokensProvider", {{"legend", semantic_legend()}, {"full", true}}}};
}

}  // namespace

int Server::run() {
  while (!ended_) {
    if (!unchecked_.empty() && !channel_.pending()) {
      check_next();
      continue;
    }
    if (!receive()) break;
  }
  return shut_down_ ? 0 : 1;
}

/// Takes the next message; false at the end.
bool Server::receive() {
  const std::optional<json> message = channel_.read();
  if (!message) return false;
  if (message->is_discarded())
    fail(nullptr, parse_error, "this is no JSON");
  else
    take(*message);
  return true;
}

/// What has come while a text is being compiled.
void Server::receive_between() {
  while (channel_.pending()) {
    const size_t before = edits_;
    if (!receive() || edits_ != before || shut_down_ || ended_) throw Superseded();
  }
}

void Server::fail(const json& id, int code, const std::string& reason) const {
  channel_.write({{"jsonrpc", "2.0"},
                  {"id", id},
                  {"error", {{"code", code}, {"message", translated(reason)}}}});
}

void Server::take(const json& message) {
  const bool named = message.is_object() && message.contains("method");
  if (!named || !message["method"].is_string()) {
    // An answer to a request of ours would have a result; there are none.
    if (!message.is_object() || (!message.contains("result") && !message.contains("error")))
      fail(nullptr, invalid_request, "a message has a method");
    return;
  }
  const std::string method = message["method"];
  const json params = message.value("params", json::object());
  const bool request = message.contains("id");
  const json id = request ? message["id"] : json();
  try {
    request ? answer(id, method, params) : note(method, params);
  } catch (const Refused& refused) {
    if (request) fail(id, request_failed, refused.reason);
  } catch (const json::exception& error) {
    if (request) fail(id, invalid_params, error.what());
  } catch (const std::exception& error) {
    if (request) fail(id, internal_error, error.what());
  }
}

void Server::answer(const json& id, const std::string& method, const json& params) {
  if (shut_down_) return fail(id, invalid_request, "the server has been shut down");
  if (!initialized_ && method != "initialize")
    return fail(id, not_initialized, "the server has not been initialized");
  const json result = result_of(method, params);
  if (result.is_discarded()) return fail(id, unknown_method, "\"" + method + "\" is not known");
  channel_.write({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
}

namespace {

using Ask = json (*)(Workspace&, const DocumentPtr&, const json&);

size_t place(const Document& document, const json& params) {
  return document.text.offset(position_in(params.at("position")));
}

/// What is asked of a document.
const std::map<std::string, Ask>& asked() {
  static const std::map<std::string, Ask> table{
      {"completion", [](Workspace& w, const DocumentPtr& d,
                        const json& p) { return completion(w, d, place(*d, p)); }},
      {"hover",
       [](Workspace& w, const DocumentPtr& d, const json& p) { return hover(w, d, place(*d, p)); }},
      {"definition", [](Workspace& w, const DocumentPtr& d,
                        const json& p) { return definition(w, d, place(*d, p)); }},
      {"references",
       [](Workspace& w, const DocumentPtr& d, const json& p) {
         const json context = p.value("context", json::object());
         return references(w, d, place(*d, p), context.value("includeDeclaration", true));
       }},
      {"prepareRename", [](Workspace& w, const DocumentPtr& d,
                           const json& p) { return rename_place(w, d, place(*d, p)); }},
      {"rename",
       [](Workspace& w, const DocumentPtr& d, const json& p) {
         return renamed(w, d, place(*d, p), p.at("newName").get<std::string>());
       }},
      {"codeAction",
       [](Workspace&, const DocumentPtr& d, const json& p) {
         const json& range = p.at("range");
         const size_t begin = d->text.offset(position_in(range.at("start")));
         const size_t end = d->text.offset(position_in(range.at("end")));
         const json context = p.value("context", json::object());
         const bool troubled = !context.value("diagnostics", json::array()).empty();
         return code_actions(d, begin, end, troubled);
       }},
      {"documentSymbol", [](Workspace&, const DocumentPtr& d, const json&) { return symbols(*d); }},
      {"foldingRange", [](Workspace&, const DocumentPtr& d, const json&) { return folding(*d); }},
      {"formatting", [](Workspace&, const DocumentPtr& d, const json&) { return formatting(*d); }},
      {"semanticTokens/full",
       [](Workspace&, const DocumentPtr& d, const json&) { return semantic_tokens(*d); }},
  };
  return table;
}

const std::string of_document = "textDocument/";

}  // namespace

/// Discarded for a method that is not known.
json Server::result_of(const std::string& method, const json& params) {
  if (method == "initialize") return initialize(params);
  if (method == "shutdown") {
    shut_down_ = true;
    return nullptr;
  }
  const auto ask = method.starts_with(of_document) ? asked().find(method.substr(of_document.size()))
                                                   : asked().end();
  if (ask == asked().end()) return json(json::value_t::discarded);
  return ask->second(workspace_, document_of(params), params);
}

json Server::initialize(const json& params) {
  const auto text = [](const json& value, const char* name) {
    return value.is_object() && value.contains(name) && value[name].is_string()
               ? value[name].get<std::string>()
               : std::string();
  };
  std::string root = text(params, "rootUri");
  if (root.empty() && params.is_object() && params.contains("workspaceFolders") &&
      params["workspaceFolders"].is_array() && !params["workspaceFolders"].empty())
    root = text(params["workspaceFolders"][0], "uri");
  workspace_.set_root(path_of(root));
  initialized_ = true;
  return {{"capabilities", capabilities()},
          {"serverInfo", {{"name", "tarn"}, {"version", KIVA_VERSION}}}};
}

DocumentPtr Server::document_of(const json& params) const {
  const std::string uri = params.at("textDocument").at("uri");
  DocumentPtr document = workspace_.find(uri);
  if (document == nullptr) throw Refused{uri + " is not open"};
  return document;
}

// Notifications.

void Server::note(const std::string& method, const json& params) {
  if (method == "exit") ended_ = true;
  if (!initialized_ || shut_down_) return;
  if (method.starts_with("textDocument/did")) ++edits_;
  if (method == "textDocument/didOpen") {
    const json& document = params.at("textDocument");
    const std::string uri = document.at("uri");
    workspace_.put(uri, Text(document.at("text").get<std::string>()));
    unchecked_.insert(uri);
  } else if (method == "textDocument/didChange") {
    change(params);
  } else if (method == "textDocument/didSave") {
    // Others may run its modules.
    for (const auto& [path, text] : workspace_.texts()) unchecked_.insert(uri_of(path));
  } else if (method == "textDocument/didClose") {
    const std::string uri = params.at("textDocument").at("uri");
    workspace_.close(uri);
    unchecked_.erase(uri);
    publish(uri, json::array());
  }
}

void Server::change(const json& params) {
  const DocumentPtr document = document_of(params);
  Text text = document->text;
  for (const json& change : params.at("contentChanges")) {
    const std::string other = change.at("text");
    if (!change.contains("range")) {
      text = Text(other);
      continue;
    }
    const json& range = change["range"];
    text = text.replaced(position_in(range.at("start")), position_in(range.at("end")), other);
  }
  workspace_.put(document->uri, std::move(text));
  unchecked_.insert(document->uri);
}

// Diagnostics.

void Server::publish(const std::string& uri, const json& diagnostics) const {
  channel_.write({{"jsonrpc", "2.0"},
                  {"method", "textDocument/publishDiagnostics"},
                  {"params", {{"uri", uri}, {"diagnostics", diagnostics}}}});
}

void Server::check_next() {
  const std::string uri = *unchecked_.begin();
  const DocumentPtr document = workspace_.find(uri);
  if (document == nullptr) return unchecked_.erase(uri), void();
  try {
    check_text(
        document->path, workspace_.texts(), [this] { receive_between(); },
        [&](const std::vector<Diagnostic>& found) { publish(uri, diagnostics(*document, found)); });
    unchecked_.erase(uri);
  } catch (const Superseded&) {
    // It is begun anew.
  }
}

}  // namespace kiva::language
