#include "engine/diagram.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "engine/map_rows.h"

namespace kiva {

namespace {

/// A number in the bits of its registers, low bit first.
Diagram::Code code_of(const nlohmann::json& registers, unsigned number) {
  Diagram::Code code;
  for (size_t bit = 0; bit < registers.size(); ++bit)
    code.emplace_back(registers[bit].get<std::string>(), (number >> bit & 1u) != 0);
  return code;
}

/// The nodes by the names of their states. A state that may start its run again has a twin of
/// another name, which is one node with it.
using NodeNames = std::map<std::string, size_t>;

size_t node_of(const NodeNames& names, const std::string& name) {
  const auto at = names.find(name);
  return at == names.end() ? Diagram::nowhere : at->second;
}

void add_arc(Diagram& diagram, const NodeNames& names, const nlohmann::json& json) {
  std::string label = json.value("label", "");
  const int kind = json.at("kind").get<int>();
  if (kind == 3) label = label.empty() ? "ends" : "ends " + label;
  Diagram::Arc arc{node_of(names, json.at("from")), node_of(names, json.at("to")), label, kind == 2,
                   map_place(json.at("span"))};
  arc.geometry = json.value("geometry", std::vector<double>());
  if (arc.to == Diagram::nowhere) return;
  auto same = std::ranges::find_if(diagram.arcs, [&](const Diagram::Arc& other) {
    return other.place == arc.place && other.from == arc.from && other.to == arc.to;
  });
  if (same == diagram.arcs.end()) same = diagram.arcs.insert(same, std::move(arc));
  const auto add_signal = [&](const char* key, std::vector<std::string>& signals) {
    if (const std::string name = json.value(key, ""); !name.empty()) signals.push_back(name);
  };
  add_signal("fired", same->fired);
  add_signal("triggered", same->triggered);
}

Diagram automaton_of(const nlohmann::json& instance) {
  using Json = nlohmann::json;
  Diagram diagram{instance.at("path"), {}, {}};
  const Json next = instance.value("next_code", Json::array());
  const auto add_codes = [&](Diagram::Node& node, unsigned number) {
    node.is.push_back(code_of(instance.at("code"), number));
    if (!next.empty()) node.next.push_back(code_of(next, number));
  };
  NodeNames names;
  for (const Json& state : instance.at("states")) {
    const SourcePlace place = map_place(state.at("span"));
    const auto same = std::ranges::find(diagram.nodes, place, &Diagram::Node::place);
    const auto number = static_cast<size_t>(same - diagram.nodes.begin());
    names[state.at("name")] = number;
    if (same == diagram.nodes.end())
      diagram.nodes.push_back(
          {state.at("name"),
           state.value("shows", ""),
           state.at("final").get<bool>() ? Diagram::Shape::final_state : Diagram::Shape::state,
           {},
           {},
           place,
           state.value("geometry", std::vector<double>())});
    add_codes(diagram.nodes[number], state.at("code").get<unsigned>());
  }
  for (const Json& arc : instance.value("transitions", Json::array())) add_arc(diagram, names, arc);
  return diagram;
}

}  // namespace

std::vector<Diagram> automata_of_map(const std::string& map_text) {
  std::vector<Diagram> all;
  const nlohmann::json json = nlohmann::json::parse(map_text);
  for (const nlohmann::json& instance : json.at("instances"))
    if (instance.contains("states")) all.push_back(automaton_of(instance));
  return all;
}

namespace {

/// What both of them hold.
ShownCover both(const ShownCover& left, const ShownCover& right) {
  ShownCover product;
  for (const ShownCube& cube : left)
    for (const ShownCube& other : right) {
      product.push_back(cube);
      product.back().insert(product.back().end(), other.begin(), other.end());
    }
  return product;
}

ShownCover instant_before(ShownCover cover) {
  for (ShownCube& cube : cover)
    for (ShownBit& bit : cube) bit.before = true;
  return cover;
}

}  // namespace

DiagramLights::DiagramLights(const Diagram& diagram, const Simulation& simulation)
    : simulation_(&simulation) {
  for (const Diagram::Node& node : diagram.nodes) {
    // Locals show the instant; registers what it leaves behind.
    const bool tells_next = !node.next.empty();
    const ShownCover is = find_all(node.is, !tells_next);
    is_.push_back(tells_next ? is : instant_before(is));
    next_.push_back(tells_next ? find_all(node.next, false) : is);
  }
  for (const Diagram::Arc& arc : diagram.arcs) {
    if (!arc.fired.empty())
      fired_.push_back(find_any(arc.fired));
    else
      fired_.push_back(arc.from == Diagram::nowhere ? ShownCover{}
                                                    : both(is_[arc.from], next_[arc.to]));
    triggered_.push_back(find_any(arc.triggered));
    arc_to_.push_back(arc.to);
  }
}

/// A register stands among the locals, too, where it shows the instant.
ShownBit DiagramLights::find(const std::string& name, bool wanted, bool registers_first) const {
  for (const bool in_registers : {registers_first, !registers_first}) {
    const auto& names = in_registers ? simulation_->register_names() : simulation_->local_names();
    const auto at = std::ranges::find(names, name);
    if (at != names.end())
      return {in_registers ? ShownBit::register_ : ShownBit::local,
              static_cast<size_t>(at - names.begin()), wanted};
  }
  return {ShownBit::missing, 0, wanted};  // what nothing drives is not One
}

ShownCover DiagramLights::find_all(const std::vector<Diagram::Code>& codes,
                                   bool registers_first) const {
  ShownCover all;
  for (const Diagram::Code& code : codes) {
    all.emplace_back();
    for (const auto& [name, wanted] : code)
      all.back().push_back(find(name, wanted, registers_first));
  }
  return all;
}

ShownCover DiagramLights::find_any(const std::vector<std::string>& names) const {
  ShownCover any;
  for (const std::string& name : names) any.push_back({find(name, true, false)});
  return any;
}

ShownCover DiagramLights::entered(size_t node) const {
  ShownCover cover = is_[node];
  for (size_t arc = 0; arc < fired_.size(); ++arc)
    if (arc_to_[arc] == node) cover.insert(cover.end(), fired_[arc].begin(), fired_[arc].end());
  return cover;
}

DiagramLight DiagramLights::at(const SimulationState& state, const SimulationState* before) const {
  const auto seen = [&](const std::vector<ShownCover>& covers) {
    std::vector<bool> bits;
    for (const ShownCover& cover : covers) bits.push_back(holds(cover, state, before));
    return bits;
  };
  return {seen(is_), seen(next_), seen(fired_), seen(triggered_)};
}

}  // namespace kiva
