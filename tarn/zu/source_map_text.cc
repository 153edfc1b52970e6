// A map as JSON. It is written without a tree of values: a map may be long.

#include <filesystem>
#include <map>
#include <set>

#include "base/json_text.h"
#include "tarn/zu/source_map.h"

namespace kiva {

namespace {

/// How files are named in a map beside a module.
class FileNames {
 public:
  explicit FileNames(const std::string& module_file) {
    if (!module_file.empty()) folder_ = std::filesystem::absolute(module_file).parent_path();
  }
  const std::string& of(const std::string& file) {
    std::string& name = names_[file];
    if (name.empty())
      name = folder_.empty() ? std::filesystem::absolute(file).lexically_normal()
                             : std::filesystem::proximate(file, folder_);
    return name;
  }

 private:
  std::map<std::string, std::string> names_;
  std::filesystem::path folder_;
};

/// The files that spans of the map name, in the order of their first.
std::vector<std::string> source_files(const SourceMap& map, FileNames& names) {
  std::vector<std::string> files;
  std::set<std::string> met;
  const auto enter = [&](const SourceSpan& at) {
    if (!at.known()) return;
    if (met.insert(names.of(*at.file)).second) files.push_back(*at.file);
  };
  for (const SourceMap::Instance& instance : map.instances) {
    for (const SourceMap::Part& part : instance.parts) enter(part.span);
    for (const SourceMap::Condition& condition : instance.conditions) enter(condition.span);
    for (const SourceMap::AutomatonState& state : instance.states) enter(state.span);
    for (const SourceMap::Arc& arc : instance.arcs) enter(arc.span);
  }
  return files;
}

/// The instances of a map as text.
class InstancesText {
 public:
  InstancesText(JsonText& json, FileNames& names) : json_(json), names_(names) {}

  void put(const SourceMap::Instance& instance, size_t number) {
    json_.open_object();
    json_.put("module", instance.module);
    json_.put("path", instance.path);
    json_.put("suffix", instance.suffix);
    if (instance.twin_of != number) json_.put("twin_of", static_cast<int>(instance.twin_of));
    json_.open_array("statements");
    for (const SourceMap::Part& part : instance.parts) put(part);
    json_.close();
    json_.open_array("conditions");
    for (const SourceMap::Condition& condition : instance.conditions) put(condition);
    json_.close();
    if (!instance.states.empty()) {
      json_.put("code", instance.code);
      json_.put("next_code", instance.next_code);
      json_.open_array("states");
      for (const SourceMap::AutomatonState& state : instance.states) put(state);
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
    json_.put("stops", part.stops);
    json_.close();
  }
  void put(const SourceMap::Condition& condition) {
    json_.open_object();
    put(condition.span);
    json_.put("value", condition.value);
    json_.put("looked", condition.looked);
    json_.put("stops", condition.stops);
    json_.close();
  }
  void put(const SourceMap::AutomatonState& state) {
    json_.open_object();
    json_.put("name", state.name);
    put(state.span);
    json_.put("code", state.code);
    json_.put("final", state.final_state);
    json_.put("shows", state.shows);
    put_geometry(state.geometry);
    json_.close();
  }
  void put_geometry(const std::vector<double>& numbers) {
    json_.open_array("geometry");
    for (const double number : numbers) json_.add(number);
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
    put_geometry(arc.geometry);
    json_.close();
  }
  void put(const SourceSpan& at) {
    if (!at.known()) return json_.put_null("span");
    json_.open_array("span");
    json_.add(names_.of(*at.file));
    for (const int number : {at.first_line, at.first_column, at.last_line, at.last_column})
      json_.add(number);
    json_.close();
  }

  JsonText& json_;
  FileNames& names_;
};

}  // namespace

std::string source_map_text(const SourceMap& map, const std::string& module,
                            const std::string& module_file) {
  FileNames names(module_file);
  JsonText json;
  json.open_object();
  json.put("module", module);
  if (!module_file.empty()) json.put("zuc", file_hash(module_file));
  json.open_object("sources");
  for (const std::string& source : source_files(map, names))
    json.put(names.of(source), file_hash(source));
  json.close();
  json.put("locals", map.locals);
  json.open_array("instances");
  InstancesText text(json, names);
  for (size_t i = 0; i < map.instances.size(); ++i) text.put(map.instances[i], i);
  json.close();
  json.close();
  return json.text() + '\n';
}

}  // namespace kiva
