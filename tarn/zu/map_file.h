#pragma once

#include <string>

namespace kiva {

/// The map beside a compiled module, as its readers are to take it.
struct MapFile {
  std::string name;     ///< MODULE.zuc.map
  std::string text;     ///< empty where there is none, and where it does not belong to the module
  std::string problem;  ///< why one that is there is not used; empty if it is
};

/// A map that holds the hash of another text than that of `module_file` as it is now does not
/// belong to it. What is no map is given as it stands: whoever reads it says so.
MapFile map_beside(const std::string& module_file);

}  // namespace kiva
