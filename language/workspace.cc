#include "language/workspace.h"

#include <algorithm>
#include <fstream>
#include <set>

#include "base/read_all.h"
#include "language/folder.h"

namespace kiva::language {

namespace fs = std::filesystem;

void Workspace::put(const std::string& uri, Text text) {
  open_[uri] = std::make_shared<Document>(uri, path_of(uri), std::move(text));
}

DocumentPtr Workspace::find(const std::string& uri) const {
  const auto at = open_.find(uri);
  return at == open_.end() ? nullptr : at->second;
}

std::map<std::string, std::string> Workspace::texts() const {
  std::map<std::string, std::string> texts;
  for (const auto& [uri, document] : open_) texts[document->path] = document->text.all();
  return texts;
}

DocumentPtr Workspace::read(const std::string& path) {
  std::error_code error;
  const auto time = fs::last_write_time(path, error);
  const auto size = fs::file_size(path, error);
  constexpr std::uintmax_t most = 4'000'000;
  if (error || size > most) return nullptr;
  OnDisk& known = disk_[path];
  if (known.document != nullptr && known.time == time && known.size == size) return known.document;
  std::ifstream in(path, std::ios::binary);
  known = {time, size, std::make_shared<Document>(uri_of(path), path, Text(read_all(in)))};
  return known.document;
}

std::vector<DocumentPtr> Workspace::around(const DocumentPtr& document) {
  std::vector<DocumentPtr> all{document};
  std::set<std::string> met{document->path};
  const auto add = [&](const DocumentPtr& other) {
    if (other != nullptr && met.insert(other->path).second) all.push_back(other);
  };
  for (const auto& [uri, other] : open_) add(other);
  const auto add_files = [&](const std::list<std::string>& paths) {
    for (const std::string& path : paths)
      if (!met.contains(path)) add(read(path));
  };
  add_files(listed(fs::path(document->path).parent_path().string(), false));
  if (!root_.empty()) add_files(listed(root_, true));
  return all;
}

const std::list<std::string>& Workspace::listed(const std::string& folder, bool deep) {
  Listing& listing = listings_[{folder, deep}];
  const auto now = std::chrono::steady_clock::now();
  if (now - listing.time > std::chrono::seconds(1)) listing = {now, source_files(folder, deep)};
  return listing.files;
}

namespace {

/// Where the module is looked for by its caller's section Run:; "" where that says nothing.
std::vector<std::string> declared_paths(const Document& document, size_t caller,
                                        const std::string& name) {
  if (caller >= document.names.modules.size()) return {};
  for (const auto& [module, place] : document.names.modules[caller].places) {
    if (module != name) continue;
    const std::string path =
        (fs::path(document.path).parent_path() / place).lexically_normal().string();
    if (path.ends_with(".zu")) return {path};
    return {path + ".zu", path + "/" + name + ".zu"};
  }
  return {};
}

std::optional<Symbol> module_in(const DocumentPtr& document, const std::string& name) {
  const Outline* module = document->names.find_module(name);
  if (module == nullptr) return {};
  const auto number = static_cast<size_t>(module - document->names.modules.data());
  return Symbol{Symbol::Kind::module, document, number, name};
}

}  // namespace

std::optional<Symbol> Workspace::called(const DocumentPtr& document, size_t caller,
                                        const std::string& name) {
  for (const std::string& path : declared_paths(*document, caller, name)) {
    DocumentPtr other;
    for (const auto& [uri, open] : open_)
      if (open->path == path) other = open;
    if (other == nullptr) other = read(path);
    if (other == nullptr) continue;
    if (std::optional<Symbol> found = module_in(other, name)) return found;
  }
  if (std::optional<Symbol> here = module_in(document, name)) return here;
  for (const DocumentPtr& other : around(document))
    if (std::optional<Symbol> found = module_in(other, name)) return found;
  return {};
}

std::optional<Symbol> Workspace::symbol(const DocumentPtr& document, const Occurrence& occurrence) {
  const std::string name = document->names.name_of(occurrence);
  const Symbol here{Symbol::Kind::signal, document, occurrence.module, name};
  const auto as = [&](Symbol::Kind kind) {
    Symbol symbol = here;
    symbol.kind = kind;
    return symbol;
  };
  switch (occurrence.role) {
    case Role::module:
      return as(Symbol::Kind::module);
    case Role::called:
    case Role::placed:
      return called(document, occurrence.module, name);
    case Role::formal: {
      std::optional<Symbol> symbol = called(document, occurrence.module, occurrence.called);
      if (symbol) symbol->kind = Symbol::Kind::signal, symbol->name = name;
      return symbol;
    }
    case Role::state_declaration:
    case Role::state:
      return as(Symbol::Kind::state);
    case Role::type:
    case Role::method:
    case Role::constant: {
      Symbol symbol = as(Symbol::Kind::data);
      symbol.module = Occurrence::outside;
      return symbol;
    }
    default:
      return here;
  }
}

std::vector<Found> Workspace::occurrences(const Symbol& symbol) {
  const bool wide = symbol.kind == Symbol::Kind::module || symbol.kind == Symbol::Kind::signal;
  const std::vector<DocumentPtr> documents =
      wide ? around(symbol.document) : std::vector<DocumentPtr>{symbol.document};
  std::vector<Found> found;
  for (const DocumentPtr& document : documents)
    for (const Occurrence& occurrence : document->names.occurrences) {
      if (document->text_of(occurrence) != symbol.name) continue;
      const std::optional<Symbol> its = this->symbol(document, occurrence);
      if (its && its->kind == symbol.kind && its->document->path == symbol.document->path &&
          its->module == symbol.module)
        found.push_back({document, &occurrence});
    }
  return found;
}

}  // namespace kiva::language
