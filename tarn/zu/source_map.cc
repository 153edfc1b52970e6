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
#include <set>

#include "base/json_text.h"
#include "tarn/model/module.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

namespace {

/// What stands at a place of a source file; empty where it cannot be read.
class SourceTexts {
 public:
  std::string at(const SourceSpan& span) {
    if (!span.known()) return "";
    std::vector<std::string>& lines = lines_of(*span.file);
    std::string text;
    for (int number = span.first_line; number <= span.last_line; ++number) {
      if (number < 1 || static_cast<size_t>(number) > lines.size()) return "";
      std::string line = lines[static_cast<size_t>(number) - 1];
      if (number == span.last_line) line.resize(std::min<size_t>(line.size(), span.last_column));
      if (number == span.first_line)
        line.erase(0, std::min<size_t>(line.size(), static_cast<size_t>(span.first_column) - 1));
      line.resize(std::min(line.size(), line.find(";;")));
      std::istringstream words(line);
      for (std::string word; words >> word;) text += (text.empty() ? "" : " ") + word;
    }
    return text;
  }

 private:
  std::vector<std::string>& lines_of(const std::string& file) {
    const auto [at, first] = lines_.try_emplace(file);
    std::ifstream in;
    if (first) in.open(file);
    for (std::string line; first && std::getline(in, line);) at->second.push_back(line);
    return at->second;
  }
  std::map<std::string, std::vector<std::string>> lines_;
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

class Walk {
 public:
  SourceMap map;

  void instance(Module* module, const std::string& path, const std::string& suffix) {
    const size_t number = map.instances.size();
    map.instances.push_back({module->getName(), path, {}, {}, {}, {}, {}, {}});
    if (Statement* body = module->getStatement()) statement(body, number, path, suffix);
  }

 private:
  static std::string name(const Signal* signal, const std::string& suffix) {
    return signal == nullptr ? "" : signal->getInternalName() + suffix;
  }

  void statement(Statement* s, size_t number, const std::string& path, const std::string& suffix) {
    SourceMap::Part part{s->getSpan(),
                         s->children().empty(),
                         name(s->getSet(), suffix),
                         name(s->getReset(), suffix),
                         name(s->getRtl(), suffix),
                         {},
                         {}};
    for (const RegisterPair& pair : s->registers()) {
      part.active.push_back(name(pair.ACTIF, suffix));
      part.active_next.push_back(name(pair.ACTIFPLUS, suffix));
    }
    if (s->isAutomaton()) {
      map.instances[number].code = part.active;
      map.instances[number].next_code = part.active_next;
      automaton(s, number, suffix);
    }
    map.instances[number].parts.push_back(part);
    for (Statement* child : s->children()) statement(child, number, path, suffix);
    if (const auto* run = dynamic_cast<const Run*>(s);
        run != nullptr && run->getCalled() != nullptr)
      instance(run->getCalled(), path + '/' + run->getModuleName(), run->getSuffix() + suffix);
  }

  void automaton(const Statement* s, size_t number, const std::string& suffix) {
    SourceMap::Instance& into = map.instances[number];
    for (const auto& [name, state] : *s->getStateTable()) {
      if (name.ends_with("->")) into.twins.emplace_back(name, state->number);
      if (!state->span.known() || name.ends_with("->")) continue;
      const std::string text = texts_.at(state->span);
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
    for (const Transition* t : *s->getTransitionList())
      into.arcs.push_back({t->initial ? "" : t->from->name, t->to->name, t->span, t->tpe,
                           arc_label(texts_.at(t->span), *t), name(t->fired, suffix),
                           name(t->triggered, suffix)});
  }

  SourceTexts texts_;
};

}  // namespace

SourceMap source_map(Module* module) {
  Walk walk;
  walk.instance(module, module->getName(), "");
  for (const Signal* local : module->getLocalSignalList())
    if (local->isDeclared())
      walk.map.locals.push_back(local->isInstance() ? local->getInternalName()
                                                    : local->getOriginalName());
  return walk.map;
}

std::string file_hash(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return "";
  std::uint64_t hash = 14695981039346656037u;
  for (auto at = std::istreambuf_iterator<char>(in); at != std::istreambuf_iterator<char>(); ++at)
    hash = (hash ^ static_cast<unsigned char>(*at)) * 1099511628211u;
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016" PRIx64, hash);
  return digits;
}

namespace {

std::string place_of_file(const std::string& file) {
  return std::filesystem::absolute(file).lexically_normal();
}

/// The files that spans of the map name, in the order of their first.
std::vector<std::string> source_files(const SourceMap& map) {
  std::vector<std::string> files;
  std::set<std::string> met;
  const auto enter = [&](const SourceSpan& at) {
    if (!at.known()) return;
    const std::string file = place_of_file(*at.file);
    if (met.insert(file).second) files.push_back(file);
  };
  for (const SourceMap::Instance& instance : map.instances) {
    for (const SourceMap::Part& part : instance.parts) enter(part.span);
    for (const SourceMap::AutomatonState& state : instance.states) enter(state.span);
    for (const SourceMap::Arc& arc : instance.arcs) enter(arc.span);
  }
  return files;
}

/// The instances of a map as text.
class InstancesText {
 public:
  explicit InstancesText(JsonText& json) : json_(json) {}

  void put(const SourceMap::Instance& instance) {
    json_.open_object();
    json_.put("module", instance.module);
    json_.put("path", instance.path);
    json_.open_array("statements");
    for (const SourceMap::Part& part : instance.parts) put(part);
    json_.close();
    if (!instance.states.empty()) {
      json_.put("code", instance.code);
      json_.put("next_code", instance.next_code);
      json_.open_array("states");
      for (const SourceMap::AutomatonState& state : instance.states) put(state);
      json_.close();
    }
    if (!instance.twins.empty()) {
      json_.open_array("twins");
      for (const auto& [name, code] : instance.twins) {
        json_.open_object();
        json_.put("name", name);
        json_.put("code", code);
        json_.close();
      }
      json_.close();
    }
    if (!instance.arcs.empty()) {
      json_.open_array("transitions");
      for (const SourceMap::Arc& arc : instance.arcs) put(arc);
      json_.close();
    }
    json_.close();
  }

 private:
  void put(const SourceMap::Part& part) {
    json_.open_object();
    put(part.span);
    json_.put("leaf", part.leaf);
    json_.put("set", part.set);
    json_.put("reset", part.reset);
    json_.put("end", part.rtl);
    json_.put("active", part.active);
    json_.put("next", part.active_next);
    json_.close();
  }
  void put(const SourceMap::AutomatonState& state) {
    json_.open_object();
    json_.put("name", state.name);
    put(state.span);
    json_.put("code", state.code);
    json_.put("final", state.final_state);
    json_.put("shows", state.shows);
    json_.open_array("geometry");
    for (const double number : state.geometry) json_.add(number);
    json_.close();
    json_.close();
  }
  void put(const SourceMap::Arc& arc) {
    json_.open_object();
    json_.put("from", arc.from);
    json_.put("to", arc.to);
    put(arc.span);
    json_.put("kind", arc.kind);
    json_.put("label", arc.label);
    json_.put("fired", arc.fired);
    json_.put("triggered", arc.triggered);
    json_.close();
  }
  void put(const SourceSpan& at) {
    if (!at.known()) return json_.put_null("span");
    json_.open_array("span");
    json_.add(place_of_file(*at.file));
    for (const int number : {at.first_line, at.first_column, at.last_line, at.last_column})
      json_.add(number);
    json_.close();
  }

  JsonText& json_;
};

}  // namespace

std::string source_map_text(const SourceMap& map, const std::string& module) {
  JsonText json;
  json.open_object();
  json.put("module", module);
  json.open_object("sources");
  for (const std::string& file : source_files(map)) json.put(file, file_hash(file));
  json.close();
  json.put("locals", map.locals);
  json.open_array("instances");
  InstancesText text(json);
  for (const SourceMap::Instance& instance : map.instances) text.put(instance);
  json.close();
  json.close();
  return json.text() + '\n';
}

}  // namespace kiva
