// Layout of source text, in rounds. A round sets the breaks that the text has and those that parts
// of modules ask for, and lays each line out: its indentation follows from what is open before it.
// Lines that are too long get breaks where their outermost parts meet, until none is, or none can
// be broken. So the result is a layout that asks for no further break, which is why a second time
// changes nothing.
//
// What is open is a stack: brackets, lists that go to their ";", and the heads of present and if,
// which a branch follows; ">>" and "||", which bind weaker, end all heads since the last bracket.

#include "language/layout.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <vector>

#include "tarn/zu/source_tokens.h"

namespace kiva::language {

namespace {

constexpr size_t most_columns = 100;
constexpr size_t step = 2;
constexpr size_t most_indent = 80;

using Words = std::unordered_set<std::string_view>;

bool among(const Words& words, const SourceToken& token) {
  return token.kind != TokenKind::text && words.contains(token.text);
}

const Words lists{"Input:", "Output:", "Local:", "Run:", "Type:", "Register:"};
const Words tables{"Method:", "Constant:"};
const Words parts{"module",  "data:",     "end data",    "end",          "state:", "automaton",
                  "Input:",  "Output:",   "Local:",      "Run:",         "Type:",  "Register:",
                  "Method:", "Constant:", "transition:", "Mealy Machine"};
const Words alone{"data:", "end data", "end", "automaton", "transition:", "Mealy Machine"};
/// Between these and their ";" stand declarations, states, transitions and equations.
const Words item_modes{"data:", "automaton", "Mealy Machine"};
const Words statements{"nothing", "halt",    "pause", "emit", "noemit", "wait",
                       "sustain", "present", "if",    "loop", "repeat", "weak",
                       "strong",  "run",     "{",     "||",   ">>",     "when"};
const Words ends{"end", "end data"};
const Words openers{"{", "(", "["};
const Words closers{"}", ")", "]"};
/// With a ":" behind them they would be another token.
const Words colon_makes{"Input",    "Output", "Local", "Run",        "Register", "Type", "Method",
                        "Constant", "data",   "state", "transition", "geometry", "value"};

/// What is open before a token.
struct Open {
  enum What { brace, bracket, head, list, table, item } what;
  size_t indent;  ///< of the line on which it stands
  bool has_else = false;
};

class Layout {
 public:
  explicit Layout(const std::string& text) : text_(text), tokens_(source_tokens(text)) {}

  LaidOut run() {
    if (!sound()) return {text_, reason_, at_};
    set_breaks();
    do {
      open_broken_braces();
      lay_out_lines();
    } while (break_long_lines());
    LaidOut result{print(), "", 0};
    if (!same_tokens(result.text))
      return {text_, "this text would mean something else with other blanks", 0};
    return result;
  }

 private:
  struct Line {
    size_t first, last;  ///< tokens; the one behind the last
    size_t indent;
    std::string code;
    size_t comment = 0;  ///< the token behind the code, where there is one
  };

  bool refuse(const SourceToken& token, std::string reason) {
    at_ = token.begin;
    reason_ = std::move(reason);
    return false;
  }

  /// Whether there is a layout at all.
  bool sound() {
    std::vector<const SourceToken*> open;
    for (const SourceToken& token : tokens_) {
      if (token.kind == TokenKind::wrong) return refuse(token, "this character begins no token");
      if (among(openers, token)) open.push_back(&token);
      if (!among(closers, token)) continue;
      const char wanted = token.is(")") ? '(' : token.is("]") ? '[' : '{';
      if (open.empty() || open.back()->text.front() != wanted)
        return refuse(token, "this bracket closes none");
      open.pop_back();
    }
    return open.empty() || refuse(*open.back(), "this bracket is not closed");
  }

  bool same_tokens(const std::string& other) const {
    const std::vector<SourceToken> now = source_tokens(other);
    return std::equal(tokens_.begin(), tokens_.end(), now.begin(), now.end(),
                      [](const SourceToken& a, const SourceToken& b) {
                        return a.kind == b.kind && a.text == b.text;
                      });
  }

  // Breaks.

  /// Line ends before each token: at most two, and those that its part asks for.
  void set_breaks() {
    breaks_.resize(tokens_.size());
    bool items = false, listing = false;
    for (size_t i = 1; i < tokens_.size(); ++i) {
      const SourceToken& before = tokens_[i - 1];
      const SourceToken& token = tokens_[i];
      breaks_[i] = given_breaks(before, token);
      items = (items || among(item_modes, before)) && !among(ends, before);
      listing = listing || among(lists, before);
      const bool comment = token.kind == TokenKind::comment;
      if (comment && breaks_[i] == 0) continue;
      const bool item_ends = before.is(";") && (items || listing);
      if (item_ends && !comment && token.kind != TokenKind::text) listing = false;
      breaks_[i] = std::max(breaks_[i], item_ends ? 1 : asked_breaks(i));
    }
  }

  int asked_breaks(size_t i) const {
    if (ends_module(i - 1) || (tokens_[i].is("module") && tokens_[i - 1].is("}"))) return 2;
    return begins_line(i) ? 1 : 0;
  }

  int given_breaks(const SourceToken& before, const SourceToken& token) const {
    const auto begin = text_.begin() + static_cast<long>(before.end());
    const auto end = text_.begin() + static_cast<long>(token.begin);
    return static_cast<int>(std::min(2L, std::count(begin, end, '\n')));
  }

  bool begins_line(size_t i) const {
    const SourceToken& before = tokens_[i - 1];
    return before.kind == TokenKind::comment || among(alone, before) || among(parts, tokens_[i]) ||
           heads_module(i);
  }

  /// Braces with a line end between them stand at the ends of lines.
  void open_broken_braces() {
    struct Brace {
      size_t at;
      bool broken = false;
    };
    std::vector<Brace> open;
    for (size_t i = 0; i < tokens_.size(); ++i) {
      if (!open.empty() && breaks_[i] > 0) open.back().broken = true;
      if (tokens_[i].is("{")) open.push_back({i});
      if (!tokens_[i].is("}")) continue;
      const Brace closed = open.back();
      open.pop_back();
      if (!closed.broken) continue;
      break_before(closed.at + 1);
      break_before(i);
      if (!open.empty()) open.back().broken = true;
    }
  }

  /// Is the token the first behind "module NAME:"?
  bool heads_module(size_t i) const {
    return i >= 3 && tokens_[i - 1].is(":") && tokens_[i - 3].is("module") && !tokens_[i].is("{");
  }
  /// Is the token an "end", with a comment of its line behind it or without?
  bool ends_module(size_t i) const {
    if (tokens_[i].kind == TokenKind::comment && breaks_[i] == 0 && i > 0) --i;
    return among(ends, tokens_[i]);
  }

  // Lines.

  void lay_out_lines() {
    lines_.clear();
    stack_.clear();
    items_ = false;
    for (size_t i = 0; i < tokens_.size(); ++i) {
      const SourceToken& token = tokens_[i];
      if (token.kind == TokenKind::comment) {
        if (i > 0 && breaks_[i] == 0) {
          lines_.back().comment = i;
          lines_.back().last = i + 1;
        } else {
          lines_.push_back({i, i + 1, 0, std::string(token.text)});
        }
        continue;
      }
      end_what_ends_before(token);
      if (lines_.empty() || breaks_[i] > 0)
        lines_.push_back({i, i, indent_of(token, i), ""});
      else if (blank_between(tokens_[i - 1], token, i))
        lines_.back().code += ' ';
      lines_.back().code += token.text;
      lines_.back().last = i + 1;
      open_and_close(token);
    }
    indent_comments();
  }

  void drop(Open::What what) {
    while (!stack_.empty() && stack_.back().what == what) stack_.pop_back();
  }

  void end_what_ends_before(const SourceToken& token) {
    if (token.is("module") || among(ends, token)) {
      stack_.clear();
      items_ = false;
    }
    if (after_list_ && token.kind != TokenKind::text) drop(Open::list);
    if (among(parts, token)) drop(Open::table);
    after_list_ = false;
    if (token.is(">>") || token.is("||") || among(closers, token)) drop(Open::head);
    if (token.is("else"))
      while (!stack_.empty() && stack_.back().what == Open::head && stack_.back().has_else)
        stack_.pop_back();
  }

  size_t inside() const {
    return stack_.empty() ? 0 : std::min(stack_.back().indent + step, most_indent);
  }

  size_t indent_of(const SourceToken& token, size_t i) const {
    if (stack_.empty()) return continues(token, i) ? step : 0;
    const Open& top = stack_.back();
    const bool ends = among(closers, token) || (token.is("else") && top.what == Open::head);
    if (ends) return top.indent;
    const bool statement = top.what == Open::head || top.what == Open::brace;
    return inside() + (statement && continues(token, i) ? step : 0);
  }

  /// In statements: does the token go on with what the line before has begun?
  bool continues(const SourceToken& token, size_t i) const {
    if (items_ || i == 0 || among(statements, token) || among(parts, token) || token.is("else"))
      return false;
    return true;
  }

  void open_and_close(const SourceToken& token) {
    const size_t indent = lines_.back().indent;
    if (token.is(";")) return end_item();
    if (among(closers, token) && !stack_.empty()) return stack_.pop_back();
    if (among(item_modes, token)) {
      items_ = true;
    } else if (token.is("else") && !stack_.empty() && stack_.back().what == Open::head) {
      stack_.back() = {Open::head, indent, true};
    } else if (const std::optional<Open::What> what = opened_by(token)) {
      stack_.push_back({*what, indent});
    }
  }

  std::optional<Open::What> opened_by(const SourceToken& token) const {
    if (among(lists, token)) return Open::list;
    if (among(tables, token)) return Open::table;
    if (token.is("{")) return Open::brace;
    if (among(openers, token)) return Open::bracket;
    if (token.is("present") || token.is("if")) return Open::head;
    const bool begins_item = items_ && !token.is("transition:") && !token.is("end data") &&
                             (stack_.empty() || stack_.back().what == Open::table);
    if (begins_item) return Open::item;
    return {};
  }

  void end_item() {
    if (stack_.empty()) return;
    if (stack_.back().what == Open::item)
      stack_.pop_back();
    else if (stack_.back().what == Open::list)
      after_list_ = true;
  }

  /// A comment that has its line stands like what follows, in brackets that close like their
  /// inside.
  void indent_comments() {
    size_t indent = 0;
    for (size_t n = lines_.size(); n-- > 0;) {
      Line& line = lines_[n];
      const SourceToken& first = tokens_[line.first];
      if (first.kind == TokenKind::comment)
        line.indent = indent;
      else
        indent = line.indent + (among(closers, first) ? step : 0);
    }
  }

  // Blanks.

  static bool is_operand(const SourceToken& token) {
    return token.kind == TokenKind::name || token.kind == TokenKind::number ||
           token.kind == TokenKind::text || token.is(")");
  }

  bool blank_between(const SourceToken& before, const SourceToken& token, size_t i) const {
    static const Words hold_next{"(", "[", "#", "~"}, hold_before{",", ";", ")", "]"};
    if (among(hold_next, before) || among(hold_before, token)) return false;
    if (token.is("(")) return before.kind != TokenKind::name;
    if (token.is(":")) return colon_apart(before, i);
    if (token.is(".") || before.is("."))
      return before.kind == TokenKind::number || token.kind == TokenKind::number;
    if (before.is("-") && i >= 2 && !is_operand(tokens_[i - 2]))
      return token.text.find('.') != std::string_view::npos;  // else one number
    return !in_geometry(before, token, i);
  }

  /// In "text" : file : module, and behind what would become one token with it.
  bool colon_apart(const SourceToken& before, size_t i) const {
    const auto behind_text = [&] {
      return i >= 3 && tokens_[i - 2].is(":") && tokens_[i - 3].kind == TokenKind::text;
    };
    return before.kind == TokenKind::text || colon_makes.contains(before.text) || behind_text();
  }

  /// Between "<" and ">" of a place?
  bool in_geometry(const SourceToken& before, const SourceToken& token, size_t i) const {
    if (before.is("<")) return i >= 2 && tokens_[i - 2].is("geometry:");
    if (before.is(",")) return i >= 4 && tokens_[i - 4].is("geometry:");
    return token.is(">") && i >= 5 && tokens_[i - 5].is("geometry:") && tokens_[i - 2].is(",");
  }

  // Long lines.

  bool break_long_lines() {
    bool any = false;
    for (const Line& line : lines_)
      if (line.indent + line.code.size() > most_columns) any = break_line(line) || any;
    return any;
  }

  bool break_before(size_t i) {
    if (i >= tokens_.size() || breaks_[i] > 0 || tokens_[i].kind == TokenKind::comment)
      return false;
    breaks_[i] = 1;
    return true;
  }

  /// How deep in brackets each of its tokens stands.
  std::vector<int> depths_of(const Line& line) const {
    std::vector<int> depths;
    int depth = 0;
    for (size_t i = line.first; i < line.last; ++i) {
      if (among(closers, tokens_[i])) --depth;
      depths.push_back(depth);
      if (among(openers, tokens_[i])) ++depth;
    }
    return depths;
  }

  bool break_line(const Line& line) {
    const std::vector<int> depths = depths_of(line);
    const auto [least, most] = std::minmax_element(depths.begin(), depths.end());
    for (int level = *least; level <= *most; ++level) {
      const auto each = [&](const char* text, size_t behind) {
        bool any = false;
        for (size_t i = line.first; i < line.last; ++i)
          if (depths[i - line.first] == level && tokens_[i].is(text) && i + behind > line.first)
            any = break_before(i + behind) || any;
        return any;
      };
      if (each("||", 0) || each(">>", 1) || break_braces(line, depths, level) || each("else", 0))
        return true;
    }
    return fill(line);
  }

  bool break_braces(const Line& line, const std::vector<int>& depths, int level) {
    bool any = false;
    for (size_t i = line.first; i < line.last; ++i) {
      if (depths[i - line.first] != level) continue;
      if (tokens_[i].is("{")) any = break_before(i + 1) || any;
      if (tokens_[i].is("}") && i > line.first) any = break_before(i) || any;
    }
    return any;
  }

  /// Breaks a list or an expression at the last place that still fits, else at the first.
  bool fill(const Line& line) {
    static const Words between{"and", "&", "or", "|", "xor", "nor", "nand", "+", "*"};
    size_t place = 0, column = line.indent;
    for (size_t i = line.first; i + 1 < line.last; ++i) {
      const bool blank = i > line.first && blank_between(tokens_[i - 1], tokens_[i], i);
      const size_t before = column;
      column += (blank ? 1 : 0) + tokens_[i].text.size();
      const bool comma = tokens_[i].is(",");
      const size_t here = comma ? i + 1 : among(between, tokens_[i]) ? i : 0;
      if (here <= line.first) continue;
      if ((comma ? column : before) > most_columns && place != 0) break;
      if (tokens_[here].kind != TokenKind::comment) place = here;
    }
    return place != 0 && break_before(place);
  }

  // Text.

  std::string print() const {
    const std::vector<size_t> columns = comment_columns();
    std::string out;
    for (size_t n = 0; n < lines_.size(); ++n) {
      const Line& line = lines_[n];
      if (n > 0 && breaks_[line.first] > 1) out += '\n';
      out += std::string(line.indent, ' ') + line.code;
      if (line.comment != 0)
        out += std::string(columns[n] - line.indent - line.code.size(), ' ') +
               std::string(tokens_[line.comment].text);
      out += '\n';
    }
    return out;
  }

  /// Where the comments behind code stand: in one column, in lines that follow each other.
  std::vector<size_t> comment_columns() const {
    std::vector<size_t> columns(lines_.size());
    for (size_t first = 0, last = 0; first < lines_.size(); first = last) {
      size_t most = 0;
      for (last = first; last < lines_.size(); ++last) {
        const Line& line = lines_[last];
        if (last > first && (line.comment == 0 || breaks_[line.first] > 1)) break;
        most = std::max(most, line.indent + line.code.size());
        if (line.comment == 0) {
          ++last;
          break;
        }
      }
      std::fill(columns.begin() + static_cast<long>(first),
                columns.begin() + static_cast<long>(last), most + step);
    }
    return columns;
  }

  const std::string& text_;
  std::vector<SourceToken> tokens_;
  std::vector<int> breaks_;
  std::vector<Line> lines_;
  std::vector<Open> stack_;
  bool items_ = false;
  bool after_list_ = false;  ///< behind the ";" of a list
  std::string reason_;
  size_t at_ = 0;
};

}  // namespace

LaidOut lay_out(const std::string& text) {
  return Layout(text).run();
}

}  // namespace kiva::language
