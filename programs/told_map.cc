#include "programs/told_map.h"

#include <ostream>
#include <set>

#include "base/translation.h"
#include "programs/told_text.h"
#include "tarn/zu/map_file.h"

namespace kiva::programs {

std::string told_map(const std::string& module_file) {
  static std::set<std::string> told;
  const MapFile map = map_beside(module_file);
  if (!map.problem.empty() && told.insert(map.name).second)
    errors() << map.name << ": note: " << translated(map.problem) << '\n';
  return map.text;
}

}  // namespace kiva::programs
