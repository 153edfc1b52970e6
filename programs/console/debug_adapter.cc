#include "programs/console/debug_adapter.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>

#include "base/translation.h"
#include "engine/condition.h"
#include "engine/lit_source.h"
#include "engine/recording.h"
#include "engine/server_steps.h"
#include "engine/stimuli.h"
#include "language/channel.h"
#include "programs/told_map.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::console {

namespace {

using nlohmann::json;

/// What a request cannot have, for whoever debugs to read.
struct Refused {
  std::string reason;
};

/// A running module, its past, and the stimuli that are left.
class Debuggee {
 public:
  Debuggee(Module* module, const std::string& file)
      : simulation_(module), recording_(&simulation_), names_(simulation_), none_(nullptr) {
    const std::string map = programs::told_map(file);
    if (map.empty()) return;
    source_.emplace(map, simulation_, file);
    if (!source_->problem().empty()) source_.reset();
  }

  void read_stimuli(const std::string& file) {
    std::ifstream in(file);
    if (!in) throw Refused{file + ": cannot be read"};
    StimuliReader reader(in, simulation_);
    try {
      while (auto stimulus = reader.next()) stimuli_.push_back(std::move(*stimulus));
    } catch (const StimuliError& error) {
      throw Refused{file + ":" + std::to_string(error.line) + ": " + error.reason};
    }
  }

  /// False at the end of the stimuli, where there are some.
  bool forward() {
    if (recording_.forward()) return true;
    const auto next = static_cast<size_t>(recording_.position().instant);
    if (!stimuli_.empty() && next >= stimuli_.size()) return false;
    if (!stimuli_.empty()) apply(stimuli_[next], simulation_);
    recording_.go(nullptr);
    return true;
  }
  bool back() { return recording_.back(); }

  const SimulationState& state() const { return simulation_.state(); }
  const SignalNames& names() const { return names_; }
  Simulation& simulation() { return simulation_; }
  const LitSource* source() const { return source_ ? &*source_ : nullptr; }

 private:
  Simulation simulation_;
  Recording recording_;
  SignalNames names_;
  ServerSteps none_;
  std::optional<LitSource> source_;
  std::vector<Stimulus> stimuli_;
};

constexpr SignalPlace::List lists[]{SignalPlace::input, SignalPlace::output, SignalPlace::local,
                                    SignalPlace::register_};
constexpr const char* list_names[]{"Inputs", "Outputs", "Locals", "Registers"};

std::string word_of(const Light& light) {
  std::string text;
  const auto add = [&](bool is, const char* word) {
    if (is) text += (text.empty() ? "" : ", ") + translated(word);
  };
  add(light.started, "started");
  add(light.waits, "waits");
  add(light.ended, "ended");
  add(light.killed, "killed");
  return text;
}

class Adapter {
 public:
  int run() {
    while (!ended_) {
      const std::optional<json> message = channel_.read();
      if (!message) break;
      if (message->is_object() && message->contains("type") && (*message)["type"] == "request")
        take(*message);
    }
    return 0;
  }

 private:
  void take(const json& request) {
    const json& command = request.contains("command") ? request["command"] : json("");
    json answer{{"type", "response"},
                {"request_seq", request.contains("seq") ? request["seq"] : json(0)},
                {"command", command},
                {"success", true}};
    const json arguments = request.value("arguments", json::object());
    then_.clear();
    try {
      const std::string name = command.is_string() ? command.get<std::string>() : "";
      const auto row = commands().find(name);
      if (row == commands().end()) throw Refused{"\"" + name + "\" is not known"};
      if (row->second.needs_module && debuggee_ == nullptr)
        throw Refused{"no module has been launched"};
      answer["body"] = (this->*row->second.answer)(arguments);
    } catch (const Refused& refused) {
      fail(answer, translated(refused.reason));
    } catch (const std::exception& error) {
      fail(answer, error.what());
    }
    send(answer);
    for (const auto& [event, body] : then_)
      send({{"type", "event"}, {"event", event}, {"body", body}});
  }

  static void fail(json& answer, const std::string& reason) {
    answer["success"] = false;
    answer["message"] = reason;
  }

  void send(json message) {
    message["seq"] = ++number_;
    channel_.write(message);
  }

  using Answer = json (Adapter::*)(const json& arguments);
  struct Row {
    Answer answer;
    bool needs_module = true;
  };
  static const std::map<std::string, Row>& commands() {
    static const std::map<std::string, Row> table{
        {"initialize", {&Adapter::initialize, false}},
        {"launch", {&Adapter::launch, false}},
        {"setBreakpoints", {&Adapter::set_breakpoints, false}},
        {"setExceptionBreakpoints", {&Adapter::nothing, false}},
        {"configurationDone", {&Adapter::configured}},
        {"threads", {&Adapter::threads}},
        {"stackTrace", {&Adapter::frames}},
        {"scopes", {&Adapter::scopes}},
        {"variables", {&Adapter::variables}},
        {"setVariable", {&Adapter::set_variable}},
        {"evaluate", {&Adapter::evaluate}},
        {"next", {&Adapter::step}},
        {"stepIn", {&Adapter::step}},
        {"stepOut", {&Adapter::step}},
        {"stepBack", {&Adapter::step_back}},
        {"continue", {&Adapter::go_on}},
        {"reverseContinue", {&Adapter::go_back}},
        {"pause", {&Adapter::nothing}},
        {"disconnect", {&Adapter::disconnect, false}},
        {"terminate", {&Adapter::disconnect, false}},
    };
    return table;
  }

  json nothing(const json&) { return json::object(); }

  json initialize(const json&) {
    return {{"supportsConfigurationDoneRequest", true},
            {"supportsStepBack", true},
            {"supportsSetVariable", true},
            {"supportsConditionalBreakpoints", true},
            {"supportsTerminateRequest", true}};
  }

  json launch(const json& arguments) {
    const std::string file = arguments.at("program");
    const ZucRead read = read_zuc_file(file, "", "");
    if (read.module == nullptr) throw Refused{read.problem};
    auto debuggee = std::make_unique<Debuggee>(read.module, file);
    if (arguments.contains("stimuli")) debuggee->read_stimuli(arguments["stimuli"]);
    debuggee_ = std::move(debuggee);
    name_ = read.module->getName();
    then_.emplace_back("initialized", json::object());
    return json::object();
  }

  json configured(const json&) {
    stopped("entry");
    return json::object();
  }

  json disconnect(const json&) {
    ended_ = true;
    return json::object();
  }

  void stopped(const char* reason) {
    then_.emplace_back(
        "stopped",
        json{{"reason", reason},
             {"description", "instant " + std::to_string(debuggee_->simulation().instant())},
             {"threadId", 1},
             {"allThreadsStopped", true}});
  }

  // Places to stop.

  struct Stop {
    int line;
    std::string condition;
  };

  json set_breakpoints(const json& arguments) {
    // By the path without links, as the map's files have it.
    const std::string file =
        std::filesystem::weakly_canonical(arguments.at("source").at("path").get<std::string>());
    std::vector<Stop>& stops = stops_[file];
    stops.clear();
    json told = json::array();
    for (const json& given : arguments.value("breakpoints", json::array())) {
      const Stop stop{given.at("line"), given.value("condition", "")};
      told.push_back({{"verified", true}, {"line", stop.line}});
      try {
        if (!stop.condition.empty() && debuggee_ != nullptr)
          static_cast<void>(holds(stop.condition));
        stops.push_back(stop);
      } catch (const Refused& refused) {
        told.back()["verified"] = false;
        told.back()["message"] = refused.reason;
      }
    }
    return {{"breakpoints", told}};
  }

  /// Does a statement of a line with a stop do anything, and its condition hold?
  bool at_stop() {
    const LitSource* source = debuggee_->source();
    if (source == nullptr) return false;
    for (size_t instance = 0; instance < source->instances().size(); ++instance)
      for (const LitSource::Lit& lit : source->lit(instance, debuggee_->state()))
        for (const Stop& stop : stops_[lit.place.file])
          if (lit.place.first_line <= stop.line && stop.line <= lit.place.last_line &&
              (stop.condition.empty() || holds(stop.condition)))
            return true;
    return false;
  }

  bool holds(const std::string& condition) {
    try {
      return Condition(condition, debuggee_->simulation()).holds(debuggee_->state());
    } catch (const ConditionError& error) {
      throw Refused{"character " + std::to_string(error.character) + ": " + error.reason};
    }
  }

  // Moves.

  json step(const json&) {
    stopped(debuggee_->forward() ? "step" : at_end);
    return json::object();
  }
  json step_back(const json&) {
    stopped(debuggee_->back() ? "step" : "entry");
    return json::object();
  }
  json go_on(const json&) {
    constexpr int most = 100'000;  // without stimuli nothing ends
    bool more = true;
    for (int instant = 0; instant < most && (more = debuggee_->forward()); ++instant)
      if (at_stop()) break;
    stopped(more ? "breakpoint" : at_end);
    return {{"allThreadsContinued", true}};
  }
  json go_back(const json&) {
    while (debuggee_->back())
      if (at_stop()) {
        stopped("breakpoint");
        return json::object();
      }
    stopped("entry");
    return json::object();
  }

  static constexpr const char* at_end = "pause";  ///< of the stimuli

  // What is shown.

  json threads(const json&) { return {{"threads", {{{"id", 1}, {"name", name_}}}}}; }

  json frames(const json&) {
    json frames = json::array();
    const LitSource* source = debuggee_->source();
    for (size_t instance = 0; source != nullptr && instance < source->instances().size();
         ++instance)
      for (const LitSource::Lit& lit : source->lit(instance, debuggee_->state()))
        frames.push_back({{"id", frames.size() + 1},
                          {"name", source->instances()[instance].path + ": " + word_of(lit.light)},
                          {"source", {{"path", lit.place.file}}},
                          {"line", lit.place.first_line},
                          {"column", lit.place.first_column},
                          {"endLine", lit.place.last_line},
                          {"endColumn", lit.place.last_column + 1}});
    if (frames.empty()) frames.push_back({{"id", 1}, {"name", name_}, {"line", 0}, {"column", 0}});
    return {{"totalFrames", frames.size()}, {"stackFrames", frames}};
  }

  json scopes(const json&) {
    json scopes = json::array();
    for (size_t list = 0; list < std::size(lists); ++list)
      scopes.push_back({{"name", translated(list_names[list])},
                        {"variablesReference", list + 1},
                        {"expensive", false}});
    return {{"scopes", scopes}};
  }

  std::string text_of(SignalPlace place) const {
    const std::string& value = shown_value(debuggee_->state(), place);
    const auto word = std::string(look_of(shown_state(debuggee_->state(), place)).word);
    return value == "--" ? word : word + " " + value;
  }

  json variables(const json& arguments) {
    const size_t list = arguments.at("variablesReference").get<size_t>() - 1;
    json all = json::array();
    if (list >= std::size(lists)) return {{"variables", all}};
    const std::vector<std::string>& names = debuggee_->names().names(lists[list]);
    for (size_t row = 0; row < names.size(); ++row)
      all.push_back({{"name", names[row]},
                     {"value", text_of({lists[list], row})},
                     {"variablesReference", 0}});
    return {{"variables", all}};
  }

  /// An input's state for the next instant.
  json set_variable(const json& arguments) {
    const std::string name = arguments.at("name"), word = arguments.at("value");
    SignalPlace place;
    if (!debuggee_->names().find(name, place) || place.list != SignalPlace::input)
      throw Refused{"\"" + name + "\" is no input"};
    for (const SignalState state :
         {SignalState::one, SignalState::zero, SignalState::top, SignalState::bottom})
      if (word == look_of(state).word || (word == "1" && state == SignalState::one) ||
          (word == "0" && state == SignalState::zero)) {
        debuggee_->simulation().choose_input(place.row, state);
        return {{"value", std::string(look_of(state).word)}};
      }
    throw Refused{"an input is one, zero, top or bottom"};
  }

  /// A signal by its state, or whether a condition holds.
  json evaluate(const json& arguments) {
    const std::string text = arguments.at("expression");
    SignalPlace place;
    const std::string result = debuggee_->names().find(text, place) ? text_of(place)
                               : holds(text)                        ? "true"
                                                                    : "false";
    return {{"result", result}, {"variablesReference", 0}};
  }

  language::Channel channel_{STDIN_FILENO, STDOUT_FILENO};
  std::unique_ptr<Debuggee> debuggee_;
  std::string name_;
  std::map<std::string, std::vector<Stop>> stops_;  ///< by file
  std::vector<std::pair<std::string, json>> then_;  ///< events behind the answer
  long number_ = 0;
  bool ended_ = false;
};

}  // namespace

int serve_debugger() {
  return Adapter().run();
}

}  // namespace kiva::console
