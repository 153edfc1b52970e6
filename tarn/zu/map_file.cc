#include "tarn/zu/map_file.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "tarn/zu/source_map.h"

namespace kiva {

namespace {

using nlohmann::json;

/// The hash of the module's text, as the map has it; empty where it has none.
std::string hash_in(const std::string& map_text) {
  // Most of a map is its instances, which are read by others.
  const auto wanted = [](int, json::parse_event_t event, const json& name) {
    return event != json::parse_event_t::key || name == "zuc";
  };
  const json map = json::parse(map_text, wanted, false);
  if (!map.is_object()) return "";
  const auto hash = map.find("zuc");
  return hash != map.end() && hash->is_string() ? hash->get<std::string>() : "";
}

}  // namespace

MapFile map_beside(const std::string& module_file) {
  MapFile map{module_file + ".map", "", ""};
  std::ifstream in(map.name, std::ios::binary);
  map.text.assign(std::istreambuf_iterator<char>(in), {});
  const std::string hash = hash_in(map.text);
  if (hash.empty() || hash == file_hash(module_file)) return map;
  map.text.clear();
  map.problem =
      "belongs to another text of the module, and is not used (tarn --map writes it anew)";
  return map;
}

}  // namespace kiva
