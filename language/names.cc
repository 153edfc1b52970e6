#include "language/names.h"

#include <algorithm>
#include <map>
#include <set>

namespace kiva::language {

const char* word_of(SignalKind kind) {
  static const char* const words[] = {"input", "output", "local", "register"};
  return words[static_cast<int>(kind)];
}

bool is_outside(SignalKind kind) {
  return kind == SignalKind::input || kind == SignalKind::output;
}

const Declared* Outline::find(std::string_view name) const {
  const auto at = std::find_if(declared.begin(), declared.end(),
                               [&](const Declared& signal) { return signal.name == name; });
  return at == declared.end() ? nullptr : &*at;
}

const Occurrence* Names::at(size_t offset) const {
  for (const bool behind : {false, true})
    for (const Occurrence& occurrence : occurrences) {
      const SourceToken& token = tokens[occurrence.token];
      if (token.begin <= offset && offset < token.end() + (behind ? 1 : 0)) return &occurrence;
    }
  return nullptr;
}

size_t Names::token_before(size_t offset) const {
  const auto at = std::partition_point(
      tokens.begin(), tokens.end(), [&](const SourceToken& token) { return token.begin < offset; });
  return at == tokens.begin() ? tokens.size() : static_cast<size_t>(at - tokens.begin()) - 1;
}

std::string Names::name_of(const Occurrence& occurrence) const {
  return std::string(tokens[occurrence.token].text);
}

size_t Names::module_around(size_t token) const {
  for (size_t n = 0; n < modules.size(); ++n)
    if (modules[n].head <= token && token <= modules[n].last) return n;
  return Occurrence::outside;
}

const Outline* Names::find_module(std::string_view name) const {
  for (const Outline& module : modules)
    if (module.name == name) return &module;
  return nullptr;
}

namespace {

class Walk {
 public:
  explicit Walk(Names& names) : names_(names), tokens_(names.tokens) {}

  void run() {
    while (at_ < tokens_.size()) {
      const SourceToken& token = tokens_[at_];
      if (token.kind == TokenKind::name)
        see_name();
      else if (token.kind != TokenKind::text)
        see_word(token);
      ++at_;
    }
    if (inside_) end_module(tokens_.size() - 1);
  }

 private:
  enum class Mode { data, list, runs, registers, statements, states, transitions, equations };

  bool next_is(std::string_view text) const {
    return at_ + 1 < tokens_.size() && tokens_[at_ + 1].is(text);
  }
  bool before_is(std::string_view text) const { return at_ > 0 && tokens_[at_ - 1].is(text); }
  bool next_is_name() const {
    return at_ + 1 < tokens_.size() && tokens_[at_ + 1].kind == TokenKind::name;
  }

  void enter(Role role, std::string called = "") {
    names_.occurrences.push_back(
        {at_, role, inside_ ? names_.modules.size() - 1 : Occurrence::outside, std::move(called)});
  }

  std::string text() const { return std::string(tokens_[at_].text); }
  Outline& module() { return names_.modules.back(); }

  // Words and signs.

  void see_word(const SourceToken& token) {
    static const std::vector<std::string_view> tables{"data:", "Type:", "Method:", "Constant:"};
    if (token.is("module")) return begin_module();
    if (token.is(";")) return end_item();
    if (token.is("end") && inside_) return end_module(at_);
    if (std::find(tables.begin(), tables.end(), token.text) != tables.end())
      return begin_data(token);
    if (token.is("/") && depth_ == 0) actions_ = true;
    begin_part(token);
    see_bracket(token);
  }

  void begin_part(const SourceToken& token) {
    static const std::vector<std::string_view> lists{"Input:", "Output:", "Local:", "Run:"};
    static const std::map<std::string_view, Mode> modes{{"Register:", Mode::registers},
                                                        {"automaton", Mode::states},
                                                        {"transition:", Mode::transitions},
                                                        {"Mealy Machine", Mode::equations},
                                                        {"end data", Mode::statements}};
    const auto list = std::find(lists.begin(), lists.end(), token.text);
    if (inside_ && list != lists.end()) {
      section_ = static_cast<size_t>(list - lists.begin());
      mode_ = section_ == 3 ? Mode::runs : Mode::list;
    }
    if (const auto mode = modes.find(token.text); mode != modes.end()) mode_ = mode->second;
  }

  void see_bracket(const SourceToken& token) {
    if (token.is("{")) ++braces_;
    if (token.is("}") && braces_ > 0 && --braces_ == 0 && braced_) end_module(at_);
    if (token.is("(")) ++depth_;
    if (token.is(")") && depth_ > 0) --depth_;
    if (token.is("[") && calling_) module().calls.back().open = at_;
    if (token.is("]") && calling_) {
      module().calls.back().close = at_;
      calling_ = false;
    }
  }

  void begin_data(const SourceToken& token) {
    mode_ = Mode::data;
    data_ = token.text;
  }

  void end_item() {
    depth_ = 0;
    actions_ = calling_ = false;
    if (mode_ == Mode::runs || mode_ == Mode::list) {
      if (inside_) module().section_end[section_] = at_;
      if (mode_ == Mode::list || at_ + 1 >= tokens_.size() ||
          tokens_[at_ + 1].kind != TokenKind::text)
        mode_ = Mode::statements;
    }
    if (mode_ == Mode::registers) mode_ = Mode::equations;
  }

  void begin_module() {
    if (inside_) end_module(at_ - 1);
    if (!next_is_name()) return;
    inside_ = true;
    braced_ = false;
    braces_ = depth_ = 0;
    actions_ = calling_ = false;
    mode_ = Mode::statements;
    names_.modules.emplace_back();
    module().head = at_++;
    module().name = text();
    enter(Role::module);
    if (next_is(":")) ++at_;
    braced_ = next_is("{");
    if (braced_) ++at_, ++braces_;
    module().head_end = at_;
  }

  void end_module(size_t last) {
    module().last = last;
    inside_ = false;
    mode_ = Mode::statements;
  }

  // Names.

  void see_name() {
    switch (mode_) {
      case Mode::data:
        return data_name();
      case Mode::list:
        return list_name();
      case Mode::runs:
        return run_name();
      case Mode::registers:
        return declare(SignalKind::reg);
      case Mode::states:
      case Mode::transitions:
        return automaton_name();
      case Mode::equations:
        return signal_name(depth_ == 0 && (before_is(";") || before_is("Mealy Machine")));
      case Mode::statements:
        return statement_name();
    }
  }

  void data_name() {
    if (data_ == "Type:") return enter(Role::type);
    const bool first = before_is(";") || before_is(data_);
    if (first || (data_ == "Method:" && depth_ > 0)) return enter(Role::type);
    if (data_ == "Constant:" && (next_is(":=") || next_is(";")) && !before_is(":="))
      constants_.insert(text());
    enter(data_ == "Method:" || next_is("(") ? Role::method : Role::constant);
  }

  void list_name() {
    if (!inside_) return;
    if (!before_is(":")) return declare(static_cast<SignalKind>(section_));
    if (!module().declared.empty()) module().declared.back().type = text();
    enter(Role::type);
  }

  void declare(SignalKind kind) {
    if (!inside_) return;
    enter(Role::declaration);
    module().declared.push_back({text(), kind, at_, ""});
  }

  /// "FOLDER/FILE" : MODULE, or "FOLDER" : FILE : MODULE.
  void run_name() {
    if (next_is(":") || !inside_) return;
    enter(Role::placed);
    size_t first = at_;
    while (first > 0 && !tokens_[first].is(";") && tokens_[first].kind != TokenKind::text) --first;
    if (tokens_[first].kind != TokenKind::text) return;
    std::string place(tokens_[first].text.substr(1, tokens_[first].text.size() - 2));
    if (at_ - first == 4) place += "/" + std::string(tokens_[at_ - 2].text);
    module().places.emplace_back(text(), place);
  }

  void automaton_name() {
    if (before_is("run") || calling_) return statement_name();
    if (before_is("state:")) return enter(Role::state_declaration);
    if (actions_) return depth_ == 0 ? signal_name(true) : value_name();
    const bool in_trigger = open_bracket();
    enter_state_or_signal(in_trigger);
  }

  void enter_state_or_signal(bool in_trigger) {
    if (in_trigger) return value_name();
    if (mode_ == Mode::transitions) enter(Role::state);
  }

  /// Does a "[" of this item stand open?
  bool open_bracket() const {
    for (size_t i = at_; i-- > 0;) {
      if (tokens_[i].is("[")) return true;
      if (tokens_[i].is("]") || tokens_[i].is(";") || tokens_[i].is("transition:")) return false;
    }
    return false;
  }

  void statement_name() {
    if (before_is("run")) return call();
    if (calling_ && open_call()) {
      if (!before_is("\\")) return signal_name(false);
      Call& call = module().calls.back();
      call.formals.push_back(text());
      return enter(Role::formal, call.module);
    }
    const bool writes = before_is("emit") || before_is("noemit") || before_is("sustain");
    if (writes) return signal_name(true);
    value_name();
  }

  bool open_call() { return inside_ && module().calls.back().open != 0; }

  void call() {
    if (!inside_) return;
    enter(Role::called);
    module().calls.push_back({text(), at_, 0, 0, {}});
    calling_ = next_is("[");
  }

  void signal_name(bool writes) { enter(writes ? Role::writing : Role::reading); }

  /// A signal, or a constant or a method where no signal has the name.
  void value_name() {
    const bool dotted = next_is(".") || before_is(".");
    if ((next_is("(") || dotted) && !before_is("#")) return enter(Role::method);
    const bool signal = before_is("#") || (inside_ && module().find(tokens_[at_].text) != nullptr);
    if (!signal && constants_.contains(text())) return enter(Role::constant);
    signal_name(false);
  }

  Names& names_;
  std::vector<SourceToken>& tokens_;
  size_t at_ = 0;
  Mode mode_ = Mode::statements;
  bool inside_ = false, braced_ = false;
  size_t braces_ = 0, depth_ = 0;
  size_t section_ = 0;     ///< of the head: Input:, Output:, Local:, Run:
  std::string_view data_;  ///< the table of the data part
  bool actions_ = false;   ///< behind the "/" of a state or transition
  bool calling_ = false;   ///< in the renamings of a run
  std::set<std::string> constants_;
};

}  // namespace

Names names_of(const std::string& text) {
  Names names;
  for (SourceToken& token : source_tokens(text))
    (token.kind == TokenKind::comment ? names.comments : names.tokens).push_back(token);
  Walk(names).run();
  return names;
}

}  // namespace kiva::language
