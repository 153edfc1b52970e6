#pragma once

#include <string>
#include <vector>

#include "engine/lit_source.h"
#include "engine/simulation.h"
#include "tarn/targets/frame/source_notes.h"

namespace kiva {

/// A machine to look at: the automaton of a source text, the states that a module reaches, or its
/// registers with what they move to.
struct Diagram {
  enum class Shape { state, final_state, register_, function };
  /// It is here where all these signals of the module are as told.
  using Code = std::vector<std::pair<std::string, bool>>;
  struct Node {
    std::string name;
    std::string shows;  ///< what it emits, or its function
    Shape shape = Shape::state;
    /// In the instant, and in the next one where the module tells: any of these.
    std::vector<Code> is, next;
    SourcePlace place = {};
    std::vector<double> geometry = {};  ///< where the source places it: x, y, radius; else empty
  };
  static constexpr size_t nowhere = static_cast<size_t>(-1);
  struct Arc {
    size_t from;  ///< `nowhere` for one that begins
    size_t to;
    std::string label;
    bool weak = false;
    SourcePlace place = {};
    /// Signals: any of them is One when it fires, when its trigger holds.
    std::vector<std::string> fired = {}, triggered = {};
    std::vector<double> geometry = {};  ///< a point through which the source has it go; else empty
  };
  std::string title;
  std::vector<Node> nodes;
  std::vector<Arc> arcs;
};

/// The automata that the source map of a module tells of, each instance of a module that is run
/// with its own; throws what nlohmann::json throws for what is no map.
std::vector<Diagram> automata_of_map(const std::string& map_text);

/// Each register with what it moves to, each output with what it is, and which registers they read.
/// Registers are drawn under these names, or else their own.
Diagram registers_diagram(Module* module, const SourceNotes::Names& names = {});

/// The states that a module reaches whatever its inputs are, and the steps between them, with the
/// inputs that lead from one to the next and the outputs present. `problem` says why there is none:
/// more states or steps than `most`, or more than 64 registers.
Diagram reachable_diagram(Module* module, size_t most, std::string& problem,
                          const SourceNotes::Names& names = {});

/// How an instant looks in a diagram, by node and by arc.
struct DiagramLight {
  std::vector<bool> is, next;          ///< where it is in the instant, and in the next one
  std::vector<bool> fired, triggered;  ///< taken in the instant; its trigger holds
};

/// Finds the signals of a diagram once.
class DiagramLights {
 public:
  DiagramLights(const Diagram& diagram, const Simulation& simulation);
  /// `before` is the state from which the instant was run, if it is known.
  DiagramLight at(const SimulationState& state, const SimulationState* before = nullptr) const;
  /// The instants in which it is at the node, or comes there.
  ShownCover entered(size_t node) const;
  /// The instants in which the arc is taken.
  const ShownCover& fired(size_t arc) const { return fired_[arc]; }

 private:
  ShownBit find(const std::string& name, bool wanted, bool registers_first) const;
  ShownCover find_all(const std::vector<Diagram::Code>& codes, bool registers_first) const;
  ShownCover find_any(const std::vector<std::string>& names) const;

  const Simulation* simulation_;
  std::vector<ShownCover> is_, next_, fired_, triggered_;
  std::vector<size_t> arc_to_;
};

}  // namespace kiva
