// Hover, definition, references, new names.

#include <algorithm>
#include <set>

#include "base/translation.h"
#include "language/answers.h"
#include "language/words.h"

namespace kiva::language {

using nlohmann::json;

namespace {

std::optional<Symbol> symbol_at(Workspace& workspace, const DocumentPtr& document, size_t offset) {
  const Occurrence* occurrence = document->names.at(offset);
  if (occurrence == nullptr) return {};
  return workspace.symbol(document, *occurrence);
}

json location(const Found& found) {
  return {{"uri", found.document->uri}, {"range", range_of(*found.document, *found.occurrence)}};
}

/// Does the occurrence write the symbol?
bool writes(Workspace& workspace, const Found& found) {
  if (found.occurrence->role == Role::writing) return true;
  if (found.occurrence->role != Role::reading) return false;
  // "[mine \ its]" writes mine where its is an output.
  const Names& names = found.document->names;
  const size_t token = found.occurrence->token;
  if (token + 2 >= names.tokens.size() || !names.tokens[token + 1].is("\\")) return false;
  for (const Occurrence& formal : names.occurrences) {
    if (formal.token != token + 2 || formal.role != Role::formal) continue;
    const std::optional<Symbol> its = workspace.symbol(found.document, formal);
    return its && its->declared() != nullptr && its->declared()->kind == SignalKind::output;
  }
  return false;
}

bool declares(Role role) {
  return role == Role::declaration || role == Role::module || role == Role::state_declaration;
}

/// "lines 3, 5", of the symbol's own document; others by their files' names.
std::string lines(const Symbol& symbol, const std::vector<Found>& all) {
  std::string text;
  std::set<std::string> met;
  for (const Found& found : all) {
    const int line = found.document->names.tokens[found.occurrence->token].line;
    std::string place = std::to_string(line);
    if (found.document->path != symbol.document->path)
      place = std::filesystem::path(found.document->path).filename().string() + ":" + place;
    if (met.insert(place).second) text += (text.empty() ? "" : ", ") + place;
  }
  return text.empty() ? "nowhere" : (met.size() > 1 ? "lines " : "line ") + text;
}

std::string signal_text(Workspace& workspace, const Symbol& symbol) {
  const Declared* declared = symbol.declared();
  std::string text =
      declared == nullptr ? "not declared: " : std::string(word_of(declared->kind)) + " ";
  text += "`" + symbol.name + "`";
  if (declared != nullptr && !declared->type.empty()) text += ": " + declared->type;
  if (symbol.outline() != nullptr) text += " of module `" + symbol.outline()->name + "`";
  std::vector<Found> written, read;
  for (const Found& found : workspace.occurrences(symbol)) {
    if (declares(found.occurrence->role) || found.occurrence->role == Role::formal) continue;
    (writes(workspace, found) ? written : read).push_back(found);
  }
  const bool input = declared != nullptr && declared->kind == SignalKind::input;
  if (!input) text += "\n\nemitted: " + lines(symbol, written);
  return text + "\n\nread: " + lines(symbol, read);
}

std::string interface_text(const Symbol& symbol) {
  std::string text = "module `" + symbol.name + "`";
  for (const SignalKind kind : {SignalKind::input, SignalKind::output}) {
    std::string names;
    for (const Declared& signal : symbol.outline()->declared)
      if (signal.kind == kind)
        names += (names.empty() ? "" : ", ") + signal.name +
                 (signal.type.empty() ? "" : ": " + signal.type);
    if (!names.empty()) text += std::string("\n\n") + word_of(kind) + "s: " + names;
  }
  return text;
}

std::string text_of(Workspace& workspace, const Symbol& symbol) {
  switch (symbol.kind) {
    case Symbol::Kind::signal:
      return signal_text(workspace, symbol);
    case Symbol::Kind::module:
      return interface_text(symbol);
    case Symbol::Kind::state:
      return "state `" + symbol.name + "`";
    case Symbol::Kind::data:
      break;
  }
  return "`" + symbol.name + "` of the data part";
}

}  // namespace

json hover(Workspace& workspace, const DocumentPtr& document, size_t offset) {
  const auto answer = [&](const std::string& text, const SourceToken& token) {
    return json{{"contents", {{"kind", "markdown"}, {"value", translated_lines(text)}}},
                {"range", range_of(*document, token)}};
  };
  if (const Occurrence* occurrence = document->names.at(offset)) {
    const std::optional<Symbol> symbol = workspace.symbol(document, *occurrence);
    return symbol ? answer(text_of(workspace, *symbol), document->names.tokens[occurrence->token])
                  : json();
  }
  for (const SourceToken& token : document->names.tokens) {
    if (offset < token.begin || offset > token.end() || token.kind == TokenKind::text) continue;
    const WordRow* row = find_word(token.text);
    if (row != nullptr)
      return answer("**" + std::string(row->word) + "**: " + std::string(row->meaning), token);
  }
  return {};
}

json definition(Workspace& workspace, const DocumentPtr& document, size_t offset) {
  const std::optional<Symbol> symbol = symbol_at(workspace, document, offset);
  if (!symbol) return {};
  const std::vector<Found> all = workspace.occurrences(*symbol);
  for (const Found& found : all)
    if (declares(found.occurrence->role)) return location(found);
  if (symbol->kind == Symbol::Kind::data && !all.empty()) return location(all.front());
  return {};
}

json references(Workspace& workspace, const DocumentPtr& document, size_t offset,
                bool with_declaration) {
  json all = json::array();
  const std::optional<Symbol> symbol = symbol_at(workspace, document, offset);
  if (!symbol) return all;
  for (const Found& found : workspace.occurrences(*symbol))
    if (with_declaration || !declares(found.occurrence->role)) all.push_back(location(found));
  return all;
}

json rename_place(Workspace& workspace, const DocumentPtr& document, size_t offset) {
  const Occurrence* occurrence = document->names.at(offset);
  if (occurrence == nullptr || !workspace.symbol(document, *occurrence)) return {};
  return {{"range", range_of(*document, *occurrence)},
          {"placeholder", document->names.name_of(*occurrence)}};
}

namespace {

/// Edits by document.
class Edits {
 public:
  void add(const Document& document, size_t begin, size_t end, const std::string& text) {
    changes_[document.uri].push_back(
        {{"range", range_of(document, begin, end)}, {"newText", text}});
  }
  json answer() const { return {{"changes", changes_}}; }

 private:
  json changes_ = json::object();
};

/// Gives the run a renaming of its own.
void add_renaming(Edits& edits, const Document& document, const Call& call,
                  const std::string& text) {
  const std::vector<SourceToken>& tokens = document.names.tokens;
  if (call.close != 0) {
    const bool empty = call.close == call.open + 1;
    const size_t at = tokens[call.close].begin;
    return edits.add(document, at, at, (empty ? "" : ", ") + text);
  }
  const size_t at = tokens[call.token].end();
  edits.add(document, at, at, " [" + text + "]");
}

bool renames(const Call& call, const std::string& formal) {
  return std::find(call.formals.begin(), call.formals.end(), formal) != call.formals.end();
}

/// What the module runs and finds the signal by its name would no longer find it.
void keep_called(Workspace& workspace, const Symbol& symbol, const std::string& name,
                 Edits& edits) {
  for (const Call& call : symbol.outline()->calls) {
    const auto called = workspace.called(symbol.document, symbol.module, call.module);
    const Declared* its = called ? called->outline()->find(symbol.name) : nullptr;
    const bool shared = its != nullptr && is_outside(its->kind) && !renames(call, symbol.name);
    if (shared) add_renaming(edits, *symbol.document, call, name + " \\ " + symbol.name);
  }
}

/// What runs the module and gives it the signal by its name.
void keep_callers(Workspace& workspace, const Symbol& symbol, const std::string& name,
                  Edits& edits) {
  const auto keep = [&](const DocumentPtr& document, size_t caller, const Call& call) {
    if (call.module != symbol.outline()->name || renames(call, symbol.name)) return;
    const auto called = workspace.called(document, caller, call.module);
    if (called && called->document->path == symbol.document->path &&
        document->names.modules[caller].find(symbol.name) != nullptr)
      add_renaming(edits, *document, call, symbol.name + " \\ " + name);
  };
  for (const DocumentPtr& document : workspace.around(symbol.document))
    for (size_t n = 0; n < document->names.modules.size(); ++n)
      for (const Call& call : document->names.modules[n].calls) keep(document, n, call);
}

void keep_runs(Workspace& workspace, const Symbol& symbol, const std::string& name, Edits& edits) {
  const Declared* signal = symbol.declared();
  if (signal == nullptr) return;
  keep_called(workspace, symbol, name, edits);
  if (is_outside(signal->kind)) keep_callers(workspace, symbol, name, edits);
}

void check_name(const Symbol& symbol, const std::string& name) {
  if (!is_user_name(name))
    throw Refused{"\"" + name +
                  "\" cannot be a name: letters, digits and _ behind a letter, and no "
                  "word of the language"};
  const bool signal = symbol.kind == Symbol::Kind::signal;
  const bool taken = signal ? symbol.outline() != nullptr && symbol.outline()->find(name) != nullptr
                            : symbol.kind == Symbol::Kind::module &&
                                  symbol.document->names.find_module(name) != nullptr;
  if (taken) throw Refused{"\"" + name + "\" is declared already"};
}

}  // namespace

json renamed(Workspace& workspace, const DocumentPtr& document, size_t offset,
             const std::string& name) {
  const std::optional<Symbol> symbol = symbol_at(workspace, document, offset);
  if (!symbol) throw Refused{"nothing can be renamed here"};
  if (name == symbol->name) return {{"changes", json::object()}};
  check_name(*symbol, name);
  Edits edits;
  for (const Found& found : workspace.occurrences(*symbol)) {
    const SourceToken& token = found.document->names.tokens[found.occurrence->token];
    edits.add(*found.document, token.begin, token.end(), name);
  }
  if (symbol->kind == Symbol::Kind::signal) keep_runs(workspace, *symbol, name, edits);
  return edits.answer();
}

}  // namespace kiva::language
