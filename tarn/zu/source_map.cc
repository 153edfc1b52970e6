// The map is a walk over the statements as they were compiled, copies included: a copy stands where
// its original does, so that one place of the source may have several circuits.

#include "tarn/zu/source_map.h"

#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "tarn/model/module.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

namespace {

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
        {module->getName(), around.path, around.suffix, {}, {}, {}, {}, {}, number});
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
      automaton(s, around.number);
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

  void automaton(const Statement* s, size_t number) {
    SourceMap::Instance& into = map.instances[number];
    for (const auto& [name, state] : *s->getStateTable())
      if (state->span.known() && !name.ends_with("->"))
        into.states.push_back({name, state->span, state->number, state->final_state});
    for (const Transition* t : *s->getTransitionList())
      into.arcs.push_back({t->initial ? "" : t->from->name, t->to->name, t->span, t->tpe});
  }

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
  if (!in) return "";
  std::uint64_t hash = 14695981039346656037u;
  for (auto at = std::istreambuf_iterator<char>(in); at != std::istreambuf_iterator<char>(); ++at)
    hash = (hash ^ static_cast<unsigned char>(*at)) * 1099511628211u;
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016" PRIx64, hash);
  return digits;
}

std::string source_map_text(const SourceMap& map, const std::string& module) {
  using Json = nlohmann::ordered_json;
  Json json;
  json["module"] = module;
  json["sources"] = Json::object();
  const auto span = [&](const SourceSpan& at) {
    if (!at.known()) return Json(nullptr);
    const std::string file = std::filesystem::absolute(*at.file).lexically_normal();
    if (!json["sources"].contains(file)) json["sources"][file] = file_hash(file);
    return Json{file, at.first_line, at.first_column, at.last_line, at.last_column};
  };
  json["locals"] = map.locals;
  json["instances"] = Json::array();
  for (const SourceMap::Instance& instance : map.instances) {
    Json of{{"module", instance.module}, {"path", instance.path}, {"suffix", instance.suffix}};
    const auto number = static_cast<size_t>(&instance - map.instances.data());
    if (instance.twin_of != number) of["twin_of"] = instance.twin_of;
    of["statements"] = Json::array();
    for (const SourceMap::Part& part : instance.parts)
      of["statements"].push_back({{"span", span(part.span)},
                                  {"leaf", part.leaf},
                                  {"set", part.set},
                                  {"reset", part.reset},
                                  {"end", part.rtl},
                                  {"active", part.active},
                                  {"next", part.active_next},
                                  {"stops", part.stops}});
    of["conditions"] = Json::array();
    for (const SourceMap::Condition& condition : instance.conditions)
      of["conditions"].push_back({{"span", span(condition.span)},
                                  {"value", condition.value},
                                  {"looked", condition.looked},
                                  {"stops", condition.stops}});
    if (!instance.states.empty()) of["code"] = instance.code;
    for (const SourceMap::AutomatonState& state : instance.states)
      of["states"].push_back({{"name", state.name},
                              {"span", span(state.span)},
                              {"code", state.code},
                              {"final", state.final_state}});
    for (const SourceMap::Arc& arc : instance.arcs)
      of["transitions"].push_back(
          {{"from", arc.from}, {"to", arc.to}, {"span", span(arc.span)}, {"kind", arc.kind}});
    json["instances"].push_back(std::move(of));
  }
  return json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

}  // namespace kiva
