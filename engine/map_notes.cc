// A signal of a statement is named after what it tells and the line where the statement stands, so
// that it has the same name until lines move.

#include "engine/map_notes.h"

#include <nlohmann/json.hpp>
#include <set>

#include "tarn/zu/source_lines.h"

namespace kiva {

namespace {

using nlohmann::json;

constexpr size_t most_words = 48;

class NotesOfMap {
 public:
  NotesOfMap(const std::filesystem::path& folder, SourceNotes& notes)
      : folder_(folder), notes_(notes) {}

  void read(const json& map) {
    size_t number = 0;
    for (const json& instance : map.at("instances")) {
      prefix_ = number++ == 0 ? "" : instance.at("module").get<std::string>() + '_';
      read_automaton(instance);
      for (const json& part : instance.at("statements")) read_part(part);
      for (const json& condition : instance.at("conditions"))
        add(condition, condition.at("value"), "test", "");
    }
  }

 private:
  void read_part(const json& part) {
    add(part, part.at("set"), "start", "");
    add(part, part.at("reset"), "killed", "");
    add(part, part.at("end"), "done", "");
    for (const auto& name : part.at("active")) add(part, name, "active", "");
    for (const auto& name : part.at("next")) add(part, name, "active", "_next");
  }

  void read_automaton(const json& instance) {
    if (!instance.contains("states") || instance.at("states").empty()) return;
    const json& first = instance.at("states").front();
    for (const auto& name : instance.at("code")) add(first, name, "state", "");
    for (const auto& name : instance.at("next_code")) add(first, name, "state", "_next");
    for (const json& arc : instance.value("transitions", json::array())) {
      const std::string from = arc.at("from"),
                        ends = from + (from.empty() ? "" : "_") + arc.at("to").get<std::string>();
      add(arc, arc.at("fired"), "fired_" + prefix_ + ends);
      add(arc, arc.at("triggered"), "trigger_" + prefix_ + ends);
    }
  }

  /// `span` holds file, line and columns.
  void add(const json& at, const std::string& signal, const char* kind, const char* end) {
    if (at.at("span").is_null()) return;
    add(at, signal, kind + ('_' + prefix_) + std::to_string(at.at("span")[1].get<int>()) + end);
  }
  void add(const json& at, const std::string& signal, const std::string& name) {
    if (signal.empty() || at.at("span").is_null()) return;
    notes_.of.try_emplace(SourceNotes::key(signal), SourceNote{place(at.at("span")), name});
  }

  std::string place(const json& span) {
    const std::filesystem::path file = folder_ / span[0].get<std::string>();
    const int line = span[1], column = span[2], last_line = span[3], last_column = span[4];
    const std::vector<std::string>& lines = lines_.of(file.string());
    std::string text = file.filename().string() + ':' + std::to_string(line);
    if (line < 1 || static_cast<size_t>(line) > lines.size()) return plain(text);
    std::string words = lines[static_cast<size_t>(line) - 1];
    if (line == last_line) words.resize(std::min<size_t>(words.size(), last_column));
    words = without_comment(words);
    words.erase(0, std::min<size_t>(words.size(), column - 1));
    words.resize(words.find_last_not_of(" \t\r") + 1);
    if (words.size() > most_words) words = words.substr(0, most_words - 3) + "...";
    return plain(text + ' ' + words);
  }

  /// What may stand in a comment of any language.
  static std::string plain(std::string text) {
    for (char& c : text)
      if (c < ' ' || c > '~' || c == '\\') c = ' ';
    for (size_t at = 0; (at = text.find("*/", at)) != std::string::npos;) text.insert(++at, " ");
    text.resize(text.find_last_not_of(' ') + 1);
    return text;
  }

  std::filesystem::path folder_;
  SourceNotes& notes_;
  std::string prefix_;
  SourceLines lines_;
};

}  // namespace

void read_map_notes(const std::string& map_text, const std::filesystem::path& folder,
                    SourceNotes& notes) {
  NotesOfMap(folder, notes).read(json::parse(map_text));
}

SourceNotes::Names register_names(Module* module, const std::string& map_text) {
  SourceNotes notes;
  try {
    if (!map_text.empty()) read_map_notes(map_text, "", notes);
  } catch (const json::exception&) {  // whoever wants the map says that it is none
    return {};
  }
  SourceNotes::Names names;
  std::set<std::string> taken;
  for (const regclass* reg : module->getRegisterList()) {
    const std::string name = reg->actual_var()->getOriginalName();
    const SourceNote* note = notes.at(name);
    if (note == nullptr) continue;
    std::string own = note->name;
    for (int n = 1; !taken.insert(own).second; ++n) own = note->name + '_' + std::to_string(n);
    names.emplace(SourceNotes::key(name), own);
  }
  return names;
}

}  // namespace kiva
