// What is wrong with a text, in sentences for whoever wrote it, and how reading goes on behind it.
//
// A fault of syntax makes the generated parser look for the next place where it can go on: behind
// the `;` of a list, or at what can follow a statement. It would look for that beyond the end of
// the module, so the reader closes what is open before it lets an `end`, a `module` or the end of
// the text through: a list by `;`, braces by `}`, a module by `end`.

#include <algorithm>
#include <cctype>
#include <tuple>
#include <utility>

#include "base/nearest_name.h"
#include "parse_zu.hh"
#include "tarn/session/diagnostic.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/syntax_words.h"
#include "tarn/zu/zu_scanner.h"

namespace kiva {

namespace {

bool contains(const std::vector<std::string>& symbols, const std::string& symbol) {
  return std::find(symbols.begin(), symbols.end(), symbol) != symbols.end();
}

bool is_word(std::string_view token) {
  return !token.empty() && std::isalpha(static_cast<unsigned char>(token.front())) != 0;
}

std::string quoted(const std::string& text) {
  return '"' + text + '"';
}

}  // namespace

// Gathering.

void class_zu_parser::fault(const std::string& sentence, const SourceSpan& span,
                            std::vector<Diagnostic::Note> notes) {
  Diagnostic fault;
  fault.where = place_of(span);
  fault.sentence = sentence;
  fault.notes = std::move(notes);
  fault.manner = Manner::untold;
  for (const Diagnostic& known : recovery_.faults)
    if (known.sentence == sentence && known.where.line == fault.where.line &&
        known.where.column == fault.where.column)
      return;
  recovery_.faults.push_back(std::move(fault));
  if (recovery_.faults.size() >= most_faults) throw EnoughFaults();
}

void class_zu_parser::hand_over() {
  std::vector<Diagnostic> faults = std::move(recovery_.faults);
  // Behind a fault much would look doubtful that is not.
  if (faults.empty()) faults = find_doubtful(recovery_.modules);
  std::stable_sort(faults.begin(), faults.end(), [](const Diagnostic& a, const Diagnostic& b) {
    return std::tie(a.where.line, a.where.column) < std::tie(b.where.line, b.where.column);
  });
  bool wrong = false;
  for (const Diagnostic& fault : faults) {
    report(fault);
    wrong = wrong || fault.severity == Severity::error;
  }
  if (wrong) throw FatalDiagnostic({});
}

// Names.

std::string class_zu_parser::undeclared(const std::string& name, bool to_emit) const {
  std::string sentence = quoted(name) + " is not declared";
  if (TheModule() == nullptr) return sentence;
  std::vector<std::string> known;
  const auto take = [&](const signal_list& list) {
    for (const Signal* signal : list)
      if (!recovery_.stand_ins.contains(signal->getOriginalName()))
        known.push_back(signal->getOriginalName());
  };
  take(TheModule()->getOutputSignalList());
  take(TheModule()->getLocalSignalList());
  if (!to_emit) take(TheModule()->getInputSignalList());
  const std::string meant = nearest_name(name, known);
  return meant.empty() ? sentence : sentence + "; did you mean " + quoted(meant) + "?";
}

std::string class_zu_parser::not_emitted(const std::string& name) const {
  const Signal* signal = TheModule()->getSignal(name);
  if (signal == nullptr) return undeclared(name, true);
  return quoted(name) + " is an input and cannot be emitted";
}

Signal* class_zu_parser::stand_in(const std::string& name) {
  if (TheModule() == nullptr) begin_module("");
  if (Signal* known = TheModule()->getSignal(name)) return known;
  recovery_.stand_ins.insert(name);
  declare_local(name, "");
  return TheModule()->getSignal(name);
}

// Tokens.

void class_zu_parser::follow(int token) {
  Recovery& r = recovery_;
  r.before = {r.last, r.before[0]};
  r.last = {token, plexer->span()};
  if (token == DATA) r.in_data = true;
  if (token == ENDDATA) r.in_data = false;
  if (token == '{') {
    if (r.begins) r.braced = true;
    r.braces.push_back(r.last.span);
  }
  if (token == '}' && !r.braces.empty()) r.braces.pop_back();
  r.begins = false;
  if (r.in_interface) follow_interface(token);
}

/// What a torn interface may have declared is not told to be undeclared.
void class_zu_parser::follow_interface(int token) {
  Recovery& r = recovery_;
  static constexpr int of_interface[] = {INPUT, OUTPUT, LOCAL, RUN_DECL, ID, ',', ';', ':', '{'};
  if (std::ranges::find(of_interface, token) != std::end(of_interface)) {
    if (r.under_way && token == ID) r.skipped.emplace_back(plexer->token());
    return;
  }
  r.in_interface = false;
  for (const std::string& name : std::exchange(r.skipped, {})) stand_in(name);
}

/// True if tokens have been put before this one, which stands behind them.
bool class_zu_parser::close_before(int token) {
  Recovery& r = recovery_;
  const bool at_module_end = token == END && !r.braced && !r.in_data;
  if (!at_module_end && token != MODULE && token != END_OF_INPUT) return false;
  if (!r.in_module && !r.in_data) return false;
  if (r.under_way) r.tokens.push_back(';');
  close_open(token);
  if (r.tokens.empty()) return false;
  r.tokens.push_back(token);
  return true;
}

/// Puts what closes the data part, braces and the module, and tells what was missing.
void class_zu_parser::close_open(int token) {
  Recovery& r = recovery_;
  const std::string where =
      token == END_OF_INPUT ? "the end of the text" : quoted(token == END ? "end" : "module");
  const auto missing = [&](const std::string& what,
                           const std::vector<Diagnostic::Note>& notes = {}) {
    if (!r.under_way) fault("expected " + quoted(what) + " before " + where, r.last.span, notes);
  };
  if (r.in_data) {
    missing("end data");
    r.tokens.push_back(ENDDATA);
    r.in_data = false;
  }
  if (!r.braces.empty()) missing("}", {{place_of(r.braces.back()), "\"{\" stands here"}});
  r.tokens.insert(r.tokens.end(), r.braces.size(), '}');
  if (token != END && r.in_module && !r.braced) {
    if (r.braces.empty()) missing("end");
    r.tokens.push_back(END);
  }
  r.braces.clear();
}

// Syntax.

void class_zu_parser::syntax_error(const std::vector<std::string>& expected) {
  if (!gathers()) end_of_syntax(false);
  fault(syntax_sentence(expected), plexer->span());
  if (recovery_.in_interface && recovery_.last.token == ID)
    recovery_.skipped.emplace_back(plexer->token());
}

void class_zu_parser::misplaced(const std::string& list) {
  if (!gathers()) end_of_syntax(false);
  fault(quoted(list) + " comes too late: the order is Input:, Output:, Local:, Run:, each once");
}

void class_zu_parser::too_deep() {
  if (!gathers()) end_of_syntax(true);
  fault("nested too deeply", plexer->span());
}

/// One line of the source, blanks as single ones, not too long.
std::string class_zu_parser::source_text(const SourceSpan& span) const {
  const std::string& text = plexer->text();
  size_t begin = 0;
  for (int line = 1; line < span.first_line; ++line) begin = text.find('\n', begin) + 1;
  size_t end = begin;
  for (int line = span.first_line; line < span.last_line; ++line) end = text.find('\n', end) + 1;
  begin += static_cast<size_t>(span.first_column) - 1;
  end += static_cast<size_t>(span.last_column);
  constexpr size_t most = 40;
  std::string shown;
  for (size_t at = begin; at < std::min(end, text.size()); ++at) {
    const bool blank = std::isspace(static_cast<unsigned char>(text[at])) != 0;
    if (!blank || !shown.ends_with(' ')) shown += blank ? ' ' : text[at];
    if (shown.size() > most) return shown.substr(0, most - 3) + "...";
  }
  return shown;
}

/// The token before the last; a name together with the word in front of it.
std::string class_zu_parser::text_before() const {
  const auto& [latest, earlier] = recovery_.before;
  if (latest.token == 0) return "";
  const std::string text = source_text(latest.span);
  if (latest.token != ID || earlier.token == 0 || earlier.token == ID) return text;
  const std::string word = source_text(earlier.span);
  const bool together = is_word(word) && earlier.span.first_line == latest.span.first_line;
  return together ? word + ' ' + text : text;
}

namespace {

/// What is wrong with a character that begins no token; "" for one that does.
std::string character_fault(std::string_view token) {
  const auto byte = static_cast<unsigned char>(token.front());
  if (byte == 0) return "a NUL byte cannot stand in source text";
  if (byte == '\r') return "a carriage return cannot stand here; lines end with a newline alone";
  if (token == "\"") return "the text in quotes that begins here does not end";
  if (token == "_") return "a name begins with a letter, not with \"_\"";
  if (byte >= 0x80) return "a character other than ASCII stands in quotes or comments only";
  if (byte < ' ') return "a control character cannot stand in source text";
  static constexpr std::string_view known = ";,:(){}[]=/+-*#.~<>\\&|\"!";
  if (std::isalnum(byte) != 0 || known.find(token.front()) != std::string_view::npos) return "";
  return quoted(std::string(token)) + " is no character of the language";
}

}  // namespace

/// What is wrong with the token whatever can follow; "" for an ordinary one.
std::string class_zu_parser::token_fault(const std::vector<std::string>& expected) const {
  const std::string_view token = plexer->token();
  if (token.empty()) return "";
  if (std::string sentence = character_fault(token); !sentence.empty()) return sentence;
  SourceSpan both = plexer->span();
  both.last_column += 1;
  if (token == ";" && source_text(both) == ";;") return "a comment needs a newline at its end";
  if (token == ";" && contains(expected, "SEQUENCE"))
    return "statements are joined by \">>\" or \"||\", not by \";\"";
  if (token == "abort" && contains(expected, "EMIT"))
    return "an abort is \"weak abort\" or \"strong abort\"";
  return "";
}

std::string class_zu_parser::syntax_sentence(const std::vector<std::string>& all) const {
  const std::string token = source_text(plexer->span());
  const bool at_end = plexer->token().empty();
  std::vector<std::string> expected = all;
  // What only begins an optional part behind a name is no help.
  if (contains(expected, "SEQUENCE")) std::erase(expected, "'('");
  if (std::string sentence = token_fault(expected); !sentence.empty()) return sentence;
  if (expected.size() == 1 && expected.front() == "ID" && is_word(token))
    return quoted(token) + " is a word of the language and cannot be a name";
  const std::string before = text_before();
  const std::string after = before.empty() ? "" : " after " + quoted(before);
  const std::string wanted = expectation(expected);
  std::string sentence =
      wanted.empty() ? quoted(token) + " cannot stand here" + after : "expected " + wanted + after;
  if (at_end) {
    sentence = wanted.empty() ? "the text ends too early" : sentence + ", and the text ends here";
  } else if (is_word(token)) {
    const std::string meant = word_meant(token, expected);
    if (!meant.empty()) sentence += "; did you mean " + quoted(meant) + "?";
  }
  return sentence;
}

}  // namespace kiva
