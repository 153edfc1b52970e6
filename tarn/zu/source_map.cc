// The map is a walk over the statements as they were compiled, copies included: a copy stands where
// its original does, so that one place of the source may have several circuits.

#include "tarn/zu/source_map.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "tarn/model/module.h"
#include "tarn/zu/source_lines.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

namespace {

/// What stands at a place of a source file; empty where it cannot be read.
class SourceTexts {
 public:
  std::string at(const SourceSpan& span) {
    if (!span.known()) return "";
    const std::vector<std::string>& lines = lines_.of(*span.file);
    std::string text;
    for (int number = span.first_line; number <= span.last_line; ++number) {
      if (number < 1 || static_cast<size_t>(number) > lines.size()) return "";
      std::string line = lines[static_cast<size_t>(number) - 1];
      if (number == span.last_line) line.resize(std::min<size_t>(line.size(), span.last_column));
      if (number == span.first_line)
        line.erase(0, std::min<size_t>(line.size(), static_cast<size_t>(span.first_column) - 1));
      std::istringstream words(without_comment(line));
      for (std::string word; words >> word;) text += (text.empty() ? "" : " ") + word;
    }
    return text;
  }

 private:
  SourceLines lines_;
};

std::string trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(" ;"), last = text.find_last_not_of(" ;");
  return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

/// Rank, trigger and actions of a transition's text "FROM RANK [TRIGGER] / ACTIONS -> TO".
std::string arc_label(const std::string& text, const Transition& t) {
  std::string label = text;
  for (const char* arrow : {"strong->", "weak->", "initial->", "normalterm->", "->"})
    if (const size_t at = label.rfind(arrow); at != std::string::npos) {
      label.resize(at);
      break;
    }
  label = trimmed(label);
  if (!t.initial && t.from != nullptr && label.starts_with(t.from->name))
    label.erase(0, t.from->name.size());
  return trimmed(label);
}

/// What stands around a statement.
struct Around {
  size_t number;       ///< of the instance
  std::string path;    ///< by the runs that lead there
  std::string suffix;  ///< behind the names of its module
  std::vector<std::string> stops;
};

class Walk {
 public:
  SourceMap map;

  void instance(Module* module, const Run* run, const Around& around) {
    const size_t number = map.instances.size();
    map.instances.push_back(
        {module->getName(), around.path, around.suffix, {}, {}, {}, {}, {}, {}, number});
    if (run != nullptr)
      map.instances[number].twin_of =
          first_of_.try_emplace({around.number, run->getSpan().text()}, number).first->second;
    Around inside = around;
    inside.number = number;
    if (Statement* body = module->getStatement()) statement(body, inside);
  }

 private:
  using Names = std::vector<std::string>;

  static std::string name(const Signal* signal, const std::string& suffix) {
    return signal == nullptr ? "" : signal->getInternalName() + suffix;
  }

  static void add_registers(const Statement* s, const std::string& suffix, SourceMap::Part& part) {
    for (const RegisterPair& pair : s->registers()) {
      part.active.push_back(name(pair.ACTIF, suffix));
      part.active_next.push_back(name(pair.ACTIFPLUS, suffix));
    }
  }

  void statement(Statement* s, const Around& around) {
    const bool leaf = s->children().empty() && !s->isAutomaton();
    SourceMap::Part part{s->getSpan(),
                         leaf,
                         name(s->getSet(), around.suffix),
                         name(s->getReset(), around.suffix),
                         name(s->getRtl(), around.suffix),
                         {},
                         {},
                         around.stops};
    add_registers(s, around.suffix, part);
    const auto* run = dynamic_cast<const Run*>(s);
    Around inside = around;
    if (s->getStop() != nullptr) inside.stops.push_back(name(s->getStop(), around.suffix));
    if (run != nullptr) part.stops = inside.stops;
    if (s->isAutomaton()) {
      map.instances[around.number].code = part.active;
      map.instances[around.number].next_code = part.active_next;
      automaton(s, around.number, around.suffix);
    }
    condition(s, part, around);
    map.instances[around.number].parts.push_back(part);
    members(s->children(), inside);
    if (run == nullptr || run->getCalled() == nullptr) return;
    inside.path += '/' + run->getModuleName();
    inside.suffix = run->getSuffix() + around.suffix;
    instance(run->getCalled(), run, inside);
  }

  void members(const std::vector<Statement*>& members, const Around& around) {
    for (size_t i = 0; i < members.size(); ++i) {
      statement(members[i], around);
      if (!members[i]->is_counted()) continue;
      // The count is one statement: it starts with its first and ends with its last.
      std::vector<SourceMap::Part>& parts = map.instances[around.number].parts;
      const size_t whole = parts.size() - 1;
      for (; i + 1 < members.size() && members[i + 1]->is_counted() &&
             members[i + 1]->getSpan().text() == members[i]->getSpan().text();
           ++i) {
        add_registers(members[i + 1], around.suffix, parts[whole]);
        parts[whole].rtl = name(members[i + 1]->getRtl(), around.suffix);
        condition(members[i + 1], own_part(members[i + 1], around.suffix), around);
      }
    }
  }

  static SourceMap::Part own_part(const Statement* s, const std::string& suffix) {
    SourceMap::Part part{s->getSpan(), true, name(s->getSet(), suffix), "", "", {}, {}, {}};
    add_registers(s, suffix, part);
    return part;
  }

  void condition(const Statement* s, const SourceMap::Part& part, const Around& around) {
    const LookedAt& at = s->looked_at();
    if (at.value == nullptr) return;
    Names looked;
    if (at.later) looked = part.active;
    if (at.at_start) looked.push_back(part.set);
    map.instances[around.number].conditions.push_back(
        {s->getConditionSpan(), name(at.value, around.suffix), looked, around.stops});
  }

  void automaton(const Statement* s, size_t number, const std::string& suffix) {
    SourceMap::Instance& into = map.instances[number];
    for (const auto& [name, state] : *s->getStateTable()) {
      if (!state->span.known()) continue;
      const std::string all = texts_.at(state->span), text = all.substr(0, all.find("geometry:"));
      const size_t slash = text.find('/');
      into.states.push_back(
          {name,
           state->span,
           state->number,
           state->final_state,
           slash == std::string::npos || !state->declared ? "" : trimmed(text.substr(slash + 1)),
           {}});
      if (state->geometry)
        into.states.back().geometry.assign(state->geometry->begin(), state->geometry->end());
    }
    for (const Transition* t : *s->getTransitionList()) {
      into.arcs.push_back({t->initial ? "" : t->from->name,
                           t->to->name,
                           t->span,
                           t->tpe,
                           arc_label(texts_.at(t->span), *t),
                           name(t->fired, suffix),
                           name(t->triggered, suffix),
                           {}});
      if (t->geometry) into.arcs.back().geometry = {t->geometry->first, t->geometry->second};
    }
  }

  SourceTexts texts_;
  /// By instance around it and place of the run.
  std::map<std::pair<size_t, std::string>, size_t> first_of_;
};

}  // namespace

SourceMap source_map(Module* module) {
  Walk walk;
  walk.instance(module, nullptr, {0, module->getName(), "", {}});
  for (const Signal* local : module->getLocalSignalList())
    if (local->isDeclared())
      walk.map.locals.push_back(local->isInstance() ? local->getInternalName()
                                                    : local->getOriginalName());
  return walk.map;
}

std::string file_hash(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return in ? text_hash(std::string(std::istreambuf_iterator<char>(in), {})) : "";
}

std::string text_hash(const std::string& text) {
  std::uint64_t hash = 14695981039346656037u;
  for (char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016" PRIx64, hash);
  return digits;
}

}  // namespace kiva
