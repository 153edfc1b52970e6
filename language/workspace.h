#pragma once

#include <chrono>
#include <filesystem>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "language/names.h"
#include "language/text.h"

namespace kiva::language {

/// A source text at one moment.
struct Document {
  Document(std::string its_uri, std::string its_path, Text its_text)
      : uri(std::move(its_uri)),
        path(std::move(its_path)),
        text(std::move(its_text)),
        names(names_of(text.all())) {}
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  std::string uri, path;
  Text text;
  Names names;

  std::string_view text_of(const Occurrence& occurrence) const {
    return names.tokens[occurrence.token].text;
  }
};
using DocumentPtr = std::shared_ptr<const Document>;

/// What a name stands for: a signal or a state of a module, a module, or a name of the data part.
struct Symbol {
  enum class Kind { signal, state, module, data } kind;
  DocumentPtr document;  ///< the one of its declaration, or where it would be declared
  size_t module;         ///< number there; Occurrence::outside for names of the data part
  std::string name;

  const Outline* outline() const {
    return module < document->names.modules.size() ? &document->names.modules[module] : nullptr;
  }
  /// The signal's declaration; null for none.
  const Declared* declared() const {
    return kind == Kind::signal && outline() != nullptr ? outline()->find(name) : nullptr;
  }
};

struct Found {
  DocumentPtr document;
  const Occurrence* occurrence;
};

/// The texts that are open in the editor, and those of its folders, which are read when asked for.
class Workspace {
 public:
  void set_root(const std::string& folder) { root_ = folder; }
  void put(const std::string& uri, Text text);
  void close(const std::string& uri) { open_.erase(uri); }
  /// An open document; null for none.
  DocumentPtr find(const std::string& uri) const;
  /// The open texts by path.
  std::map<std::string, std::string> texts() const;

  /// All documents, that one first, then those of its folder and of the root.
  std::vector<DocumentPtr> around(const DocumentPtr& document);
  /// The module that a run in a module of the document calls; none where it is not found.
  std::optional<Symbol> called(const DocumentPtr& document, size_t caller, const std::string& name);
  /// What an occurrence stands for.
  std::optional<Symbol> symbol(const DocumentPtr& document, const Occurrence& occurrence);
  /// Where the symbol is named, in all documents.
  std::vector<Found> occurrences(const Symbol& symbol);

 private:
  struct OnDisk {
    std::filesystem::file_time_type time;
    std::uintmax_t size;
    DocumentPtr document;
  };
  DocumentPtr read(const std::string& path);
  /// A folder's source files, as they were at most a moment ago.
  const std::list<std::string>& listed(const std::string& folder, bool deep);

  struct Listing {
    std::chrono::steady_clock::time_point time;
    std::list<std::string> files;
  };
  std::string root_;
  std::map<std::pair<std::string, bool>, Listing> listings_;
  std::map<std::string, DocumentPtr> open_;  ///< by uri
  std::map<std::string, OnDisk> disk_;       ///< by path
};

}  // namespace kiva::language
