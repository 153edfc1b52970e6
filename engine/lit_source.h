#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "engine/shown_cover.h"

namespace kiva {

class MapRows;

/// What a piece of source text does in an instant.
struct Light {
  bool started = false;  ///< in this instant
  bool waits = false;    ///< waits or goes on: it is there in the next instant, too
  bool ended = false;    ///< of itself, in this instant
  bool killed = false;   ///< in this instant, from outside
  bool any() const { return started || waits || ended || killed; }
  friend bool operator==(const Light&, const Light&) = default;
};

/// A place of a file; lines and columns from 1, the last ones included.
struct SourcePlace {
  std::string file;
  int first_line, first_column, last_line, last_column;
  friend auto operator<=>(const SourcePlace&, const SourcePlace&) = default;
};

/// The source of a compiled module by the map beside it (`tarn --map`), lit by what an instant
/// shows.
class LitSource {
 public:
  /// Of the module's own body, or of one that it runs.
  struct Instance {
    std::string module;
    std::string path;  ///< by the runs that lead there: "main/sub"
    std::string file;
    std::string suffix;  ///< behind the names of its signals
  };
  /// A condition that was looked at.
  struct Looked {
    SourcePlace place;
    bool holds;
  };
  struct Lit {
    SourcePlace place;
    Light light;
  };

  /// Reads the map; `problem` says why it cannot be used. Where `module_file` is told, sources have
  /// their whole paths, by the map beside it; else the names of the map.
  LitSource(const std::string& map_text, const Simulation& simulation,
            const std::string& module_file = "");
  const std::string& problem() const { return problem_; }
  const std::vector<Instance>& instances() const { return instances_; }
  /// Rows of the locals that the user declared.
  const std::vector<size_t>& declared() const { return declared_; }
  /// Why source and module do not fit: a file has changed since, or is gone; empty if they fit.
  std::string stale(size_t instance) const;

  /// The statements without parts, and the states of an automaton, that do something in the
  /// instant.
  std::vector<Lit> lit(size_t instance, const SimulationState& state) const;
  /// The leaves of an instance, all of them, in the order of the text.
  std::vector<Lit> leaves(size_t instance, const SimulationState& state) const;
  /// The same, each with the instants in which it does anything.
  std::vector<std::pair<SourcePlace, ShownCover>> active(size_t instance) const;
  /// The states of its automaton, all of them.
  std::vector<Lit> states(size_t instance, const SimulationState& state) const;
  /// The conditions that count in the instant, in the order of the text.
  std::vector<Looked> looked_at(size_t instance, const SimulationState& state) const;
  /// Where the statements stand whose circuits have that local, given by its row.
  std::vector<SourcePlace> places_of(size_t instance, size_t local) const;
  /// The statement that goes on while that local, given by its row, is One.
  std::optional<SourcePlace> going_on(size_t instance, size_t local) const;
  /// A local that is a bit of a state's code, and whether it is One.
  using CodeBit = std::pair<size_t, bool>;
  /// The states of an automaton that fit these bits of its code, an empty name for none of them;
  /// nothing where no automaton has them all.
  std::optional<std::vector<std::string>> states_with(size_t instance,
                                                      const std::vector<CodeBit>& bits) const;

 private:
  /// Rows of locals; MapRows::none where the module has not the signal.
  struct Part {
    SourcePlace place;
    bool leaf;
    size_t set, reset, rtl;
    std::vector<size_t> active, next, stops;
  };
  struct Condition {
    SourcePlace place;
    size_t value;
    std::vector<size_t> looked, stops;
  };
  struct State {
    SourcePlace place;
    std::string name;
    unsigned code;
    bool final_state;
    size_t automaton;  ///< its part
  };
  /// All circuits of an instance.
  struct Circuits {
    std::vector<Part> parts;
    std::vector<Condition> conditions;
    std::vector<State> states;
  };

  void read_instance(const nlohmann::json& of, const MapRows& rows);
  void read_states(const nlohmann::json& of, Circuits& into);

  std::string file_at(const std::string& file) const;
  SourcePlace place(const nlohmann::json& span) const;

  std::filesystem::path folder_;  ///< from which the map names files
  std::string problem_;
  std::vector<Instance> instances_;
  std::vector<size_t> declared_;
  std::vector<Circuits> circuits_;  ///< by instance
  std::vector<size_t> shown_;       ///< by number in the map: the instance that stands for it
  std::vector<std::pair<std::string, std::string>> hashes_;  ///< by file
};

}  // namespace kiva
