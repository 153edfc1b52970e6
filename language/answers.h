#pragma once

// What a server answers to the requests of an editor, in the protocol's own values. Byte offsets
// become its lines and columns here.

#include <nlohmann/json.hpp>

#include "language/workspace.h"
#include "tarn/session/diagnostic.h"

namespace kiva::language {

/// A request that cannot be fulfilled, for its user to read.
struct Refused {
  std::string reason;
};

Position position_in(const nlohmann::json& position);
nlohmann::json json_of(const Position& position);
/// The range from one byte offset to another.
nlohmann::json range_of(const Document& document, size_t begin, size_t end);
nlohmann::json range_of(const Document& document, const SourceToken& token);
nlohmann::json range_of(const Document& document, const Occurrence& occurrence);

// Of a place in a document.
nlohmann::json hover(Workspace& workspace, const DocumentPtr& document, size_t offset);
nlohmann::json definition(Workspace& workspace, const DocumentPtr& document, size_t offset);
nlohmann::json references(Workspace& workspace, const DocumentPtr& document, size_t offset,
                          bool with_declaration);
/// Where a new name would be asked for; null where nothing can be renamed.
nlohmann::json rename_place(Workspace& workspace, const DocumentPtr& document, size_t offset);
/// Renames in all documents. Runs that found a signal by its name get a renaming. Throws Refused.
nlohmann::json renamed(Workspace& workspace, const DocumentPtr& document, size_t offset,
                       const std::string& name);
nlohmann::json completion(Workspace& workspace, const DocumentPtr& document, size_t offset);
/// `troubled` says that the editor shows a diagnostic there.
nlohmann::json code_actions(const DocumentPtr& document, size_t begin, size_t end, bool troubled);

// Of a whole document.
nlohmann::json symbols(const Document& document);
nlohmann::json folding(const Document& document);
nlohmann::json semantic_tokens(const Document& document);
/// The words that semantic_tokens numbers.
nlohmann::json semantic_legend();
/// Throws Refused.
nlohmann::json formatting(const Document& document);
nlohmann::json diagnostics(const Document& document, const std::vector<Diagnostic>& found);

}  // namespace kiva::language
