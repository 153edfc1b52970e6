#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/lit_source.h"
#include "engine/simulation.h"

namespace kiva {

/// The locals that a source map names, by their rows.
class MapRows {
 public:
  static constexpr size_t none = static_cast<size_t>(-1);

  explicit MapRows(const Simulation& simulation) {
    for (size_t row = 0; row < simulation.local_names().size(); ++row)
      by_name_.emplace(simulation.local_names()[row], row);
  }
  /// `none` where the module has not the signal.
  size_t of(const std::string& name) const {
    const auto at = by_name_.find(name);
    return at == by_name_.end() ? none : at->second;
  }
  std::vector<size_t> of_all(const nlohmann::json& names) const {
    std::vector<size_t> all;
    for (const nlohmann::json& name : names) all.push_back(of(name.get<std::string>()));
    return all;
  }

 private:
  std::unordered_map<std::string, size_t> by_name_;
};

/// A place as a map has it; null is no place.
inline SourcePlace map_place(const nlohmann::json& span) {
  if (span.is_null()) return {};
  return {span.at(0), span.at(1), span.at(2), span.at(3), span.at(4)};
}

}  // namespace kiva
