// Comments are taken as people write them: those above a module's head tell what it is for, those
// behind a declaration, or on lines of their own above it, what its signals mean.

#include "programs/tarn/document.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "engine/drawing/svg.h"
#include "engine/drawing/tikz.h"
#include "programs/tarn/map_of.h"
#include "tarn/zu/source_lines.h"
#include "tarn/zu/source_properties.h"

namespace kiva::tarn_program {

namespace {

constexpr size_t most_states = 12;
constexpr double page_width = 445, page_height = 560;  // points

/// Of a line that is a comment alone, or of what stands behind ";;"; "" for none, and for what asks
/// something of a tool.
std::string comment_of(const std::string& line) {
  const size_t at = line.find(";;");
  if (at == std::string::npos) return "";
  const size_t begin = line.find_first_not_of("; \t", at);
  if (begin == std::string::npos || line[begin] == '@') return "";
  return line.substr(begin, line.find_last_not_of(" \t\r") + 1 - begin);
}

bool holds_code(const std::string& line) {
  return without_comment(line).find_first_not_of(" \t\r") != std::string::npos;
}

void add_line(std::string& text, const std::string& line) {
  if (!line.empty()) text += (text.empty() ? "" : " ") + line;
}

/// The comment above the line with this number, from 1; one empty line may stand between.
std::vector<std::string> summary_of(const std::vector<std::string>& lines, int first_line) {
  size_t end = std::min(lines.size(), static_cast<size_t>(std::max(first_line - 1, 0)));
  const auto is_comment = [&](size_t at) {
    return !holds_code(lines[at]) && lines[at].find(";;") != std::string::npos;
  };
  if (end > 0 && !is_comment(end - 1) && !holds_code(lines[end - 1])) --end;
  size_t begin = end;
  while (begin > 0 && is_comment(begin - 1)) --begin;
  std::vector<std::string> paragraphs{""};
  for (size_t at = begin; at < end; ++at) {
    const std::string comment = comment_of(lines[at]);
    if (comment.empty())
      paragraphs.emplace_back();
    else
      add_line(paragraphs.back(), comment);
  }
  std::erase(paragraphs, "");
  return paragraphs;
}

/// What comments say of the inputs and outputs that the lines of a module declare: one behind
/// several of them is about each, one above a line about the only one there.
void read_meanings(Module& module, DocumentNotes& notes) {
  std::set<std::string> open;
  for (const auto* list : {&module.getInputSignalList(), &module.getOutputSignalList()})
    for (const Signal* signal : *list) open.insert(signal->getOriginalName());
  std::string above;
  bool is_head = true;
  for (const std::string& line : source_lines(module)) {
    if (open.empty()) break;
    if (!holds_code(line)) {
      add_line(above, comment_of(line));
      continue;
    }
    // A module may bear the name of a signal.
    const size_t from = is_head ? std::min(line.find(':'), line.size()) : 0;
    is_head = false;
    std::vector<std::string> here;
    for (const std::string& name : open)
      if (find_word(line, name, from) != std::string::npos) here.push_back(name);
    std::string meaning = comment_of(line);
    if (meaning.empty() && here.size() == 1) meaning = above;
    above.clear();
    for (const std::string& name : here) {
      open.erase(name);
      if (!meaning.empty()) notes.meanings.emplace(name, meaning);
    }
  }
}

std::vector<Diagram> diagrams_of(Module* module, const std::string& file,
                                 const SourceNotes::Names& names) {
  std::vector<Diagram> all;
  try {
    if (const std::string map = map_of(module, file); !map.empty()) all = automata_of_map(map);
  } catch (const nlohmann::json::exception&) {  // whoever wants the map will say that it is none
  }
  for (Diagram& automaton : all) automaton.title = "Automaton " + automaton.title;
  if (!all.empty() || module->getFinalised() == 0) return all;
  std::string problem;
  Diagram states = reachable_diagram(module, most_states, problem, names);
  if (!problem.empty() || states.nodes.size() < 2) return all;
  states.title = "States";
  return {std::move(states)};
}

}  // namespace

DocumentNotes document_notes(Module* module, const std::string& file,
                             const SourceNotes::Names& names) {
  DocumentNotes notes;
  const SourceSpan& head = module->getSpan();
  if (head.known()) notes.summary = summary_of(SourceLines().of(*head.file), head.first_line);
  read_meanings(*module, notes);
  for (const SourceProperty& property : source_properties(*module))
    notes.properties.push_back({property.word, property.text,
                                std::filesystem::path(property.where.file).filename().string() +
                                    ':' + std::to_string(property.where.line)});
  for (const Diagram& diagram : diagrams_of(module, file, names)) {
    const DiagramLayout layout = layout_for_page(diagram, page_width, page_height);
    notes.pictures.push_back({diagram.title, tikz_text(diagram, layout, page_width, page_height),
                              svg_text(diagram, layout)});
  }
  return notes;
}

}  // namespace kiva::tarn_program
