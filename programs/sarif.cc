#include "programs/sarif.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "base/whole_file.h"
#include "programs/report.h"

namespace kiva::programs {

namespace {

using nlohmann::json;

Sarif* living = nullptr;

/// A path as it stands in an address.
std::string address(const std::string& path) {
  static const char* const digits = "0123456789ABCDEF";
  std::string text;
  for (const unsigned char c : path) {
    if (std::isalnum(c) != 0 || std::string("/._-~+@,=").find(c) != std::string::npos)
      text += static_cast<char>(c);
    else
      text += {'%', digits[c / 16], digits[c % 16]};
  }
  return text.starts_with('/') ? "file://" + text : text;
}

json location(const Place& place) {
  json where{{"artifactLocation", {{"uri", address(place.file)}}}};
  if (place.line > 0) where["region"]["startLine"] = place.line;
  if (place.line > 0 && place.column > 0) where["region"]["startColumn"] = place.column;
  return {{"physicalLocation", where}};
}

json result(const Diagnostic& diagnostic) {
  static constexpr const char* levels[] = {"error", "warning", "note"};
  json found{{"level", levels[static_cast<int>(diagnostic.severity)]},
             {"message", {{"text", diagnostic.sentence}}}};
  if (!diagnostic.name.empty()) found["ruleId"] = diagnostic.name;
  if (diagnostic.where.known()) found["locations"] = json::array({location(diagnostic.where)});
  for (const Diagnostic::Note& note : diagnostic.notes) {
    json related = note.where.known() ? location(note.where) : json::object();
    related["message"]["text"] = note.sentence;
    found["relatedLocations"].push_back(related);
  }
  return found;
}

}  // namespace

Sarif::Sarif(std::string program, std::string path)
    : program_(std::move(program)), path_(std::move(path)) {
  if (!path_.empty()) living = this;
}

Sarif::~Sarif() {
  finish();
}

void Sarif::keep(const Diagnostic& diagnostic) {
  if (living != nullptr) living->kept_.push_back(diagnostic);
}

std::string Sarif::text() const {
  json results = json::array();
  for (const Diagnostic& diagnostic : kept_) results.push_back(result(diagnostic));
  const json driver{{"name", program_}, {"version", KIVA_VERSION}};
  const json run{{"tool", {{"driver", driver}}}, {"results", results}};
  const json log{{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                 {"version", "2.1.0"},
                 {"runs", json::array({run})}};
  return log.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
}

bool Sarif::finish() {
  if (living != this) return true;
  living = nullptr;
  WholeFile file(path_);
  if (file.opened()) file.out() << text();
  if (file.opened() && file.finish()) return true;
  return complain(program_, {path_, 0, 0, 0, 0}, "cannot be written");
}

}  // namespace kiva::programs
