#pragma once

#include <string>
#include <vector>

#include "tarn/model/source_span.h"

namespace kiva {

class Module;

/// Where the statements of a compiled module come from, and by which signals one sees what they do.
/// Names are those of the module's locals; an instance of a called module has the suffix of its run
/// behind each.
struct SourceMap {
  struct Part {
    SourceSpan span;
    bool leaf;          ///< has no parts in this text
    std::string set;    ///< One in the instant in which it starts
    std::string reset;  ///< One in the instant in which it is killed
    std::string rtl;    ///< One in the instant in which it ends
    /// Registers: one of them is One while it waits or goes on; and what they move to.
    std::vector<std::string> active, active_next;
    /// One of them is One where it is stopped before it does anything: by a strong abort around it.
    std::vector<std::string> stops;
  };
  /// A condition, looked at where one of `looked` is One and none of `stops`.
  struct Condition {
    SourceSpan span;
    std::string value;
    std::vector<std::string> looked, stops;
  };
  /// A state of an automaton: it is in it where the code's registers, low bit first, hold its
  /// number.
  struct AutomatonState {
    std::string name;
    SourceSpan span;
    int code;
    bool final_state;
    std::string shows;             ///< what it emits, as the source has it
    std::vector<double> geometry;  ///< where the source places it: x, y, radius; else empty
  };
  struct Arc {
    std::string from;  ///< empty for an initial one
    std::string to;
    SourceSpan span;
    int kind;                      ///< Transition::strong, weak, normal_termination
    std::string label;             ///< trigger and actions, as the source has them
    std::string fired, triggered;  ///< One where it fires, where its trigger holds in its source
    std::vector<double> geometry;  ///< a point of its drawing as the source has it; else empty
  };
  struct Instance {
    std::string module;
    std::string path;    ///< "main", "main/sub", by the runs that lead here
    std::string suffix;  ///< behind the names of its signals
    std::vector<Part> parts;
    std::vector<Condition> conditions;
    std::vector<std::string> code, next_code;
    std::vector<AutomatonState> states;
    std::vector<Arc> arcs;
    /// Another circuit of the same place, as copies of a loop's body are: the instance with which
    /// it is one to the reader; its own number where there is none.
    size_t twin_of;
  };
  std::vector<Instance> instances;  ///< the module itself first
  std::vector<std::string> locals;  ///< that the user declared, in modules that are run, too
};

/// Of a module that has been compiled here, under the option that keeps wires.
SourceMap source_map(Module* module);

/// The map as JSON, with a hash of each source file as it is now. Where it goes beside a compiled
/// module, `module_file`, it has the hash of that, too, and names files as they lie from its
/// folder; by their whole paths where that is empty.
std::string source_map_text(const SourceMap& map, const std::string& module,
                            const std::string& module_file);

/// 64 bits of the file's content (FNV-1a), as sixteen hexadecimal digits; empty where it cannot be
/// read.
std::string file_hash(const std::string& file);
/// The same of a text.
std::string text_hash(const std::string& text);

}  // namespace kiva
