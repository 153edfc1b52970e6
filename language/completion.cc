#include <set>

#include "base/translation.h"
#include "language/answers.h"
#include "language/words.h"

namespace kiva::language {

using nlohmann::json;

namespace {

// The protocol's numbers.
constexpr int variable_item = 6, module_item = 9, keyword_item = 14, snippet_item = 15,
              event_item = 23;

class Completion {
 public:
  Completion(Workspace& workspace, DocumentPtr document, size_t offset)
      : workspace_(workspace), document_(std::move(document)), names_(document_->names) {
    before_ = names_.token_before(offset);
    // A word that is being written counts for nothing.
    if (before_ < names_.tokens.size()) {
      const SourceToken& token = names_.tokens[before_];
      const bool written = token.kind == TokenKind::name || token.kind == TokenKind::word;
      if (written && token.end() >= offset)
        before_ = before_ == 0 ? names_.tokens.size() : before_ - 1;
    }
    module_ = before_ < names_.tokens.size() ? names_.module_around(before_) : Occurrence::outside;
  }

  json run() {
    if (before_ >= names_.tokens.size() || module_ == Occurrence::outside) {
      add_words({"module"});
    } else if (behind({"run"})) {
      add_modules();
    } else if (const Call* call = open_call()) {
      add_renamings(*call);
    } else if (behind({"emit", "noemit", "sustain"})) {
      add_signals(true);
    } else if (behind({"present", "wait", "when", "until", "if", "not", "and", "or", "&", "|", "~",
                       "(", "[", "#", "="})) {
      add_signals(false);
      add_words({"not", "TT", "FF"});
    } else if (behind({"weak", "strong"})) {
      add_words({"abort"});
    } else {
      add_statements();
    }
    return items_;
  }

 private:
  const SourceToken& token() const { return names_.tokens[before_]; }
  const Outline& module() const { return names_.modules[module_]; }

  bool behind(const std::set<std::string_view>& words) const {
    return token().kind != TokenKind::text && words.contains(token().text);
  }

  void add(const std::string& label, int kind, const std::string& detail,
           const std::string& snippet = "") {
    items_.push_back({{"label", label}, {"kind", kind}, {"detail", translated(detail)}});
    if (snippet.empty()) return;
    items_.back()["insertText"] = snippet;
    items_.back()["insertTextFormat"] = 2;
  }

  void add_words(const std::set<std::string_view>& words) {
    for (const WordRow& row : word_table())
      if (words.contains(row.word)) add_word(row);
  }

  void add_word(const WordRow& row) {
    std::string snippet(row.snippet);
    add(std::string(row.word), snippet.empty() ? keyword_item : snippet_item,
        std::string(row.meaning), snippet);
  }

  void add_signals(bool to_emit) {
    for (const Declared& signal : module().declared) {
      if (to_emit && (signal.kind == SignalKind::input || signal.kind == SignalKind::reg)) continue;
      add(signal.name, is_outside(signal.kind) ? event_item : variable_item,
          word_of(signal.kind) + (signal.type.empty() ? "" : ": " + signal.type));
    }
  }

  void add_modules() {
    std::set<std::string> met{module().name};
    for (const DocumentPtr& document : workspace_.around(document_))
      for (const Outline& other : document->names.modules)
        if (met.insert(other.name).second)
          add(other.name, module_item,
              document == document_ ? "module" : "module of " + document->path);
  }

  /// The run in whose renamings the place stands.
  const Call* open_call() const {
    for (const Call& call : module().calls)
      if (call.open != 0 && call.open <= before_ && (call.close == 0 || before_ < call.close))
        return &call;
    return nullptr;
  }

  void add_renamings(const Call& call) {
    const auto called = workspace_.called(document_, module_, call.module);
    if (!called) return add_signals(false);
    const bool mine = !token().is("\\") && (token().is("[") || token().is(","));
    const std::set<std::string> done(call.formals.begin(), call.formals.end());
    for (const Declared& signal : called->outline()->declared) {
      if (!is_outside(signal.kind)) continue;
      const std::string detail = std::string(word_of(signal.kind)) + " of " + call.module;
      if (done.contains(signal.name)) continue;
      if (mine)
        add("\\ " + signal.name, snippet_item, detail, "$1 \\\\ " + signal.name);
      else if (token().is("\\"))
        add(signal.name, event_item, detail);
    }
    if (mine) add_signals(false);
  }

  void add_statements() {
    for (const WordRow& row : word_table()) add_word(row);
    add_signals(false);
  }

  Workspace& workspace_;
  DocumentPtr document_;
  const Names& names_;
  size_t before_, module_ = Occurrence::outside;
  json items_ = json::array();
};

}  // namespace

json completion(Workspace& workspace, const DocumentPtr& document, size_t offset) {
  return Completion(workspace, document, offset).run();
}

}  // namespace kiva::language
