// What can be done about a place by a change of the text.

#include <algorithm>

#include "base/translation.h"
#include "language/answers.h"
#include "language/branches.h"

namespace kiva::language {

using nlohmann::json;

namespace {

class Actions {
 public:
  Actions(DocumentPtr document, size_t begin, size_t end, bool troubled)
      : document_(std::move(document)),
        names_(document_->names),
        begin_(begin),
        end_(end),
        troubled_(troubled) {}

  json run() {
    for (const Occurrence& occurrence : names_.occurrences)
      if (touches(names_.tokens[occurrence.token])) declare(occurrence);
    const size_t strong = strong_abort();
    if (strong != no_statement)
      add("Use a weak abort", troubled_, names_.tokens[strong].begin, names_.tokens[strong].end(),
          "weak");
    for (size_t token = 0; token < names_.tokens.size(); ++token)
      if (touches(names_.tokens[token])) add_else(token);
    return all_;
  }

 private:
  bool touches(const SourceToken& token) const {
    return token.begin <= end_ && begin_ <= token.end();
  }

  void add(const std::string& title, bool fixes, size_t begin, size_t end,
           const std::string& text) {
    const json edit{{"range", range_of(*document_, begin, end)}, {"newText", text}};
    all_.push_back({{"title", translated(title)},
                    {"kind", fixes ? "quickfix" : "refactor"},
                    {"edit", {{"changes", {{document_->uri, {edit}}}}}}});
  }

  /// A signal that is declared nowhere.
  void declare(const Occurrence& occurrence) {
    const bool writes = occurrence.role == Role::writing;
    if ((!writes && occurrence.role != Role::reading) || occurrence.module >= names_.modules.size())
      return;
    const Outline& module = names_.modules[occurrence.module];
    const std::string name = names_.name_of(occurrence);
    if (module.find(name) != nullptr) return;
    if (!writes) declare_as(module, name, SignalKind::input);
    declare_as(module, name, SignalKind::local);
    if (writes) declare_as(module, name, SignalKind::output);
  }

  void declare_as(const Outline& module, const std::string& name, SignalKind kind) {
    static constexpr const char* sections[]{"Input: ", "Output: ", "Local: "};
    const auto section = static_cast<size_t>(kind);
    const std::string title =
        "Declare \"" + name + "\" as " + (kind == SignalKind::local ? "a " : "an ") + word_of(kind);
    if (module.section_end[section] != 0) {
      const size_t at = names_.tokens[module.section_end[section]].begin;
      return add(title, true, at, at, ", " + name);
    }
    size_t behind = module.head_end;
    for (size_t before = 0; before < section; ++before)
      behind = std::max(behind, module.section_end[before]);
    const size_t at = names_.tokens[behind].end();
    add(title, true, at, at, "\n" + (sections[section] + name) + ";");
  }

  /// The strong abort whose head is touched or, in trouble, the innermost one around the place.
  size_t strong_abort() const {
    size_t found = no_statement;
    for (size_t token = 0; token + 2 < names_.tokens.size(); ++token) {
      if (!names_.tokens[token].is("strong") || !names_.tokens[token + 1].is("abort")) continue;
      const bool head = touches(names_.tokens[token]) || touches(names_.tokens[token + 1]);
      const size_t end = head || !troubled_ ? no_statement : statement_end(names_, token);
      const bool around = end != no_statement && names_.tokens[token].begin <= begin_ &&
                          end_ <= names_.tokens[end - 1].end();
      if (head || around) found = token;
    }
    return found;
  }

  void add_else(size_t token) {
    if (!names_.tokens[token].is("present") && !names_.tokens[token].is("if")) return;
    const size_t end = branch_end(names_, token);
    if (end == no_statement || (end < names_.tokens.size() && names_.tokens[end].is("else")))
      return;
    const size_t at = names_.tokens[end - 1].end();
    add("Add an else", false, at, at, " else nothing");
  }

  DocumentPtr document_;
  const Names& names_;
  size_t begin_, end_;
  bool troubled_;
  json all_ = json::array();
};

}  // namespace

json code_actions(const DocumentPtr& document, size_t begin, size_t end, bool troubled) {
  return Actions(document, begin, end, troubled).run();
}

}  // namespace kiva::language
