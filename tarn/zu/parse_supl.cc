// The reader's frame: tokens, spans, messages, bounds. Its actions stand in parse_supl_data.cc,
// parse_supl_module.cc, parse_supl_statement.cc and parse_supl_automaton.cc.

#include "tarn/zu/parse_supl.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "forms/forms.h"
#include "parse_zu.hh"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/open_texts.h"
#include "tarn/session/session.h"
#include "tarn/session/session_files.h"
#include "tarn/session/source_excerpt.h"
#include "tarn/zu/zu_file.h"
#include "tarn/zu/zu_scanner.h"

namespace kiva {

const std::string class_zu_parser::initial_name = "I->";

namespace {

/// What the actions of the grammar work on.
struct UnderWay {
  Module* module = nullptr;
  Automaton::StateTable* states = nullptr;
};

}  // namespace

Module*& TheModule() {
  return Session::current().part<UnderWay>().module;
}
Automaton::StateTable*& TheCurrentStateTable() {
  return Session::current().part<UnderWay>().states;
}

int class_zu_parser::parse() {
  struct AtEnd {
    class_zu_parser& reader;
    ~AtEnd() {
      reader.passing_.clear();
      reader.depths_.clear();
      reader.extents_.clear();
      reader.declared_.clear();
      reader.types_here_.clear();
      reader.recovery_ = {};
    }
  } at_end{*this};
  TheModule() = nullptr;
  TheCurrentStateTable() = nullptr;
  recovery_ = {};
  copies_left_ = most_copies + static_cast<long>(plexer->text().size());
  span_ = plexer->span();
  try {
    const int result = zuparse(*this);
    if (result != 0 && !gathers()) end_of_syntax(false);
  } catch (const EnoughFaults&) {
  } catch (LibraryException& exception) {
    exception.set_where(span_);
    if (!gathers()) throw;
    if (recovery_.faults.size() < most_faults) fault(exception.sentence());
  }
  hand_over();
  return 0;
}

int class_zu_parser::next_token(ZUSTYPE* value, SourceSpan* span) {
  std::deque<int>& given = recovery_.tokens;
  int token = given.empty() ? plexer->yylex() : given.front();
  *span = plexer->span();
  if (!given.empty()) {
    given.pop_front();
    return token;
  }
  follow(token);
  if (gathers() && close_before(token)) {
    token = given.front();
    given.pop_front();
    return token;
  }
  switch (token) {
    case INT:
      value->integer = static_cast<int>(
          std::min(std::strtol(plexer->YYText(), nullptr, 10), static_cast<long>(INT_MAX)));
      break;
    case REAL:
      value->real = std::strtod(plexer->YYText(), nullptr);
      break;
    case STRING: {
      const std::string_view quoted = plexer->token();
      value->text = made<std::string>(quoted.substr(1, quoted.size() - 2));
      break;
    }
    case ID:
      value->text = token_text();
      break;
    default:
      break;
  }
  return token;
}

std::string* class_zu_parser::token_text() {
  return made<std::string>(plexer->token());
}

SourceSpan class_zu_parser::reduce(const SourceSpan* first, const SourceSpan* last) {
  span_ = *last;
  span_.first_line = first->first_line;
  span_.first_column = first->first_column;
  return span_;
}

Statement* class_zu_parser::looking(Statement* statement, const SourceSpan& condition) {
  statement->setConditionSpan(condition);
  for (Statement* part : statement->children())
    if (part->is_counted()) part->setConditionSpan(condition);
  return statement;
}

// Messages.

void class_zu_parser::end_of_syntax(bool too_deep) {
  const std::string_view token = plexer->token();
  std::string hint = "not expected here";
  if (too_deep) {
    hint = "nested too deeply";
  } else if (token.empty()) {
    hint = "the text ends here";
  } else if (token == std::string_view("\0", 1)) {
    hint = "a NUL byte";
  } else if (token == "\r") {
    hint = "a carriage return; lines end with a newline alone";
  }
  const std::string lexeme(token.substr(0, token.find('\0')));
  Diagnostic fault =
      Diagnostic::of_told("SYNTAX ERROR at line " + std::to_string(plexer->lineno()) +
                              ": last token read: \"" + lexeme + "\"\n\n",
                          Manner::untold, place_of(plexer->span()));
  fault.sentence = "syntax error at \"" + lexeme + "\": " + hint;
  fl_show_Salert(fault.told);
  point_at(plexer->span(), hint);
  end_with(std::move(fault));
}

void class_zu_parser::fatal(const std::string& text, const std::string& sentence) {
  if (gathers()) return fault(sentence);
  fl_show_Salert(text);
  point_at(span_, "in this text");
  end_with(Diagnostic::of_told(text, Manner::untold, place_of(span_)));
}

void class_zu_parser::point_at(const SourceSpan& span, const std::string& reason) const {
  tell_place(span, reason);
  std::cerr << source_excerpt(plexer->text(), place_of(span));
}

// Bounds.

namespace {

[[noreturn]] void throw_too_deep(const std::string& what) {
  throw IllegalOperationException(what + " nested deeper than " +
                                  std::to_string(class_zu_parser::most_nested) + " levels");
}

}  // namespace

int class_zu_parser::depth_of(const void* node) const {
  auto at = depths_.find(node);
  return at == depths_.end() ? 1 : at->second;
}

void class_zu_parser::set_depth(const void* node, int depth) {
  if (depth > most_nested) throw_too_deep("expressions");
  depths_[node] = depth;
}

Expression* class_zu_parser::nested(Expression* node,
                                    std::initializer_list<const Expression*> operands) {
  int depth = 0;
  for (const Expression* operand : operands) depth = std::max(depth, depth_of(operand));
  if (depth > 0) set_depth(node, depth + 1);
  return node;
}

class_zu_parser::Extent class_zu_parser::extent_of(const Statement* statement) const {
  auto at = extents_.find(statement);
  return at == extents_.end() ? Extent{} : at->second;
}

void class_zu_parser::measure(const Statement* statement) {
  Extent extent{0, 0};
  for (const Statement* child : statement->children()) {
    const Extent below = extent_of(child);
    extent.depth = std::max(extent.depth, below.depth);
    extent.statements += below.statements;
  }
  if (extent.depth == 0) return;
  enter_extent(statement, {extent.depth + 1, extent.statements + 1});
}

void class_zu_parser::enter_extent(const Statement* statement, const Extent& extent) {
  if (extent.depth > most_nested) throw_too_deep("statements");
  extents_[statement] = extent;
}

// Statements.

std::string class_zu_parser::next_name(const std::string& prefix, int& counter) const {
  return TheModule()->generateName(prefix.c_str(), counter);
}

std::vector<Statement*> class_zu_parser::copies(Statement* body, int count) {
  count_copies(count, extent_of(body).statements);
  std::vector<Statement*> made;
  made.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    made.push_back(body->duplicate(i));
    extents_[made.back()] = extent_of(body);
  }
  return made;
}

void class_zu_parser::count_copies(long count, long statements) {
  if (count > copies_left_ / statements)
    throw IllegalOperationException("too many copies of one statement:", std::to_string(count));
  copies_left_ -= count * statements;
}

// The way in.

namespace {

void read_text(std::istream& in, const char* file) {
  zu_scanner scanner(&in, make_kept<std::string>(file));
  struct AtEnd {
    class_zu_parser& reader;
    ~AtEnd() { reader.plexer = nullptr; }
  } at_end{Session::current().part<class_zu_parser>()};
  at_end.reader.plexer = &scanner;
  at_end.reader.parse();
}

}  // namespace

void read_zu_file(const char* file) {
  const auto& open = Session::current().part<OpenTexts>().texts;
  if (const auto at = open.find(file); at != open.end()) {
    std::istringstream text(at->second);
    return read_text(text, file);
  }
  std::error_code error;
  std::ifstream in;
  if (!std::filesystem::is_directory(file, error)) in.open(file, std::ios::binary);
  if (!in.is_open()) {
    Diagnostic fault = Diagnostic::of_told("", Manner::untold, {file, 0, 0, 0, 0});
    fault.sentence = std::filesystem::is_directory(file, error) ? "is a folder, not source text"
                     : std::filesystem::exists(file, error)     ? "cannot be opened"
                                                                : "does not exist";
    fl_show_alert("Can not open input file:", file, "", 0);
    end_with(std::move(fault));
  }
  SessionFiles::current().note_read(file);
  read_text(in, file);
}

}  // namespace kiva

int zulex(ZUSTYPE* value, kiva::SourceSpan* span, kiva::class_zu_parser& reader) {
  return reader.next_token(value, span);
}
