#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "tarn/model/source_span.h"
#include "tarn/session/diagnostic.h"

namespace kiva {

class Module;

/// A doubtful place of a program that compiles, which users may silence by its name.
struct WarningRow {
  const char* name;
  const char* about;
};

/// In the order of the documentation, which has a row for each.
const std::vector<WarningRow>& warning_table();

/// A module that has been read and not been compiled, and where its signals are declared.
struct ReadModule {
  const Module* module;
  std::unordered_map<std::string, SourceSpan> places;
};

/// The doubtful places, and the faults that only a whole module shows, of all modules of one source
/// text, in the order of the text; in no order of place.
std::vector<Diagnostic> find_doubtful(const std::vector<ReadModule>& modules);

/// A warning of that row of the table.
Diagnostic warning(const char* name, const SourceSpan& span, std::string sentence);

// Parts of it.
void find_doubtful_signals(const ReadModule& read, std::vector<Diagnostic>& found);
void find_doubtful_statements(const Module& module, std::vector<Diagnostic>& found);
void find_overruled(const Module& module, std::vector<Diagnostic>& found);
void find_doubtful_modules(const std::vector<ReadModule>& modules, std::vector<Diagnostic>& found);

}  // namespace kiva
