#include "tarn/zuc/zuc_parser.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <utility>

#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zuc/zuc_scanner.h"

namespace kiva {

namespace {

/// The pointer is all that a session remembers of its reads.
struct ReaderUnderWay {
  class_zuc_parser* reader = nullptr;
};

template <class T>
bool absent_or_empty(const T* list) {
  return list == nullptr || list->empty();
}

}  // namespace

class_zuc_parser*& pzuc_parser() {
  return Session::current().part<ReaderUnderWay>().reader;
}

class_zuc_parser::class_zuc_parser() {
  pzuc_parser() = this;
}

class_zuc_parser::~class_zuc_parser() {
  if (pzuc_parser() == this) pzuc_parser() = nullptr;
}

void class_zuc_parser::add_awaited_io(const Names* awaited_inputs, const Names* awaited_outputs) {
  awaited_input_list = awaited_inputs;
  awaited_output_list = awaited_outputs;
}

int class_zuc_parser::parse(std::ostream& log, int explain, const std::string& instance_text) {
  return parse(log, explain, instance_text, Compilation::EmptyString);
}

int class_zuc_parser::parse(std::ostream& log, int explain, const std::string& instance_text,
                            const std::string& run_instance_text) {
  parse_os = &log;
  explain_param = explain;
  instance = instance_text;
  run_instance = run_instance_text;
  int result = 1;
  try {
    result = zucparse(*this);
  } catch (...) {
    flush_trace();
    throw;
  }
  flush_trace();
  return result == 0 ? 0 : 1;
}

int class_zuc_parser::line() const {
  return plexer->lineno();
}
std::string class_zuc_parser::token_text() const {
  return plexer->YYText();
}
long class_zuc_parser::token_number() const {
  return std::strtol(plexer->YYText(), nullptr, 10);
}

bool class_zuc_parser::stop(int at_line, const std::string& reason) {
  problem_ = {at_line, reason};
  return false;
}

void class_zuc_parser::syntax_error(const char* message) {
  std::cerr << "line " << line() << ": " << message << '\n';
  stop(line(), message);
}

void class_zuc_parser::trace(int step, int alternative, std::string_view text) {
  if (explain_param != 1) return;
  char number[24];
  char* end = std::to_chars(number, number + 12, step).ptr;
  if (alternative != 1) {
    *end++ = '.';
    end = std::to_chars(end, end + 8, alternative).ptr;
  }
  pending_trace_.append(number, end);
  pending_trace_ += " --> ";
  pending_trace_ += text;
  pending_trace_ += '\n';
  constexpr size_t enough = 1 << 16;
  if (pending_trace_.size() > enough) flush_trace();
}

void class_zuc_parser::trace_token(int step, int alternative) {
  if (explain_param == 1)
    trace(step, alternative,
          std::string_view(plexer->YYText(), static_cast<size_t>(plexer->YYLeng())));
}

void class_zuc_parser::flush_trace() {
  if (parse_os != nullptr && !pending_trace_.empty())
    parse_os->write(pending_trace_.data(), static_cast<std::streamsize>(pending_trace_.size()));
  pending_trace_.clear();
}

void class_zuc_parser::begin_module() {
  pmodule_parse = make_kept<Module>(module_name);
  pw = pmodule_parse->getBddWood();
}

Signal* class_zuc_parser::declare(const std::string& name, const std::string* type) {
  Signal* signal = make_kept<Signal>(name, name + instance, pmodule_parse, pw);
  if (type != nullptr) signal->setValueType(*type, pmodule_parse);
  global_signal_list.push_back(signal);
  return signal;
}

void class_zuc_parser::mark_awaited(const signal_list& list, const Names* awaited, const char* kind,
                                    void (*mark)(Signal*)) {
  for (Signal* signal : list) {
    const std::string& name = signal->getOriginalName();
    if (!absent_or_empty(awaited) && !signal->isValued(pmodule_parse) &&
        std::find(awaited->begin(), awaited->end(), name) == awaited->end()) {
      std::string text;
      if (!module_name.empty()) text = module_name + ":";
      text += std::string("PARSING ERROR: ") + kind + " signal \"" + name +
              "\" is unknown in main module!\n  --> authorised signals:\n";
      for (const std::string& known : *awaited) text += known + "\n";
      end_with(text, Manner::message);
    }
    mark(signal);
  }
}

void class_zuc_parser::mark_inputs(const signal_list& list) {
  mark_awaited(list, awaited_input_list, "input", [](Signal* signal) { signal->setInput(); });
}

void class_zuc_parser::mark_outputs(const signal_list& list) {
  mark_awaited(list, awaited_output_list, "output", [](Signal* signal) { signal->setOutput(); });
}

void class_zuc_parser::mark_data(const signal_list& list) {
  for (Signal* signal : list) {
    signal->setInput();
    signal->setValue();
  }
}

void class_zuc_parser::mark_locals(const signal_list& list) {
  for (Signal* signal : list) {
    signal->setLocal();
    signal->setInput(false);
    signal->setOutput(false);
  }
}

bool class_zuc_parser::stand_once(const signal_list& list, bool data) {
  std::unordered_set<std::string> own;
  std::unordered_set<std::string>& met = data ? own : met_;
  for (const Signal* signal : list)
    if (!met.insert(signal->getOriginalName()).second)
      return stop(line(), "signal \"" + signal->getOriginalName() + "\" stands twice");
  return true;
}

long class_zuc_parser::initial_value() {
  const long value = token_number();
  if (value <= 1) return value;
  report("Warning: Boolean value expected to initialize register value", Manner::message,
         Severity::warning);
  return 0;
}

regclass* class_zuc_parser::declare_register(const std::string& next, const std::string& actual,
                                             long initial) {
  if (before_of_name_.empty()) {
    names_.reserve(global_signal_list.size());
    for (size_t place = 0; place < global_signal_list.size(); ++place) {
      const auto [number, first] = names_.enter(global_signal_list[place]->getInternalName());
      if (first) last_of_name_.push_back(none);
      before_of_name_.push_back(std::exchange(last_of_name_[number], place));
    }
  }
  const auto variable = [this](const std::string& name) -> Signal* {
    const long number = names_.find(name + instance);
    if (number < 0) return nullptr;
    const size_t last = last_of_name_[number];
    for (size_t place = last; place != none; place = before_of_name_[place]) {
      global_signal_list[place]->setRegister();
      global_signal_list[place]->setWire();
    }
    return global_signal_list[last];
  };
  Signal* actual_signal = variable(actual);
  Signal* next_signal = variable(next);
  if (actual_signal == nullptr || next_signal == nullptr) {
    std::cerr << "register " << actual << " not defined as local ...\n";
    return nullptr;
  }
  return make_kept<regclass>(actual_signal, next_signal, static_cast<int>(initial));
}

void class_zuc_parser::declare_wires(const std::string& set, const std::string& reset,
                                     const std::string& rtl) {
  const auto wire = [this](const std::string& name) {
    Signal* signal = make_kept<Signal>(name, pmodule_parse, pw, true);
    signal->setRegister(false);
    signal->setWire();
    global_signal_list.push_back(signal);
    return signal;
  };
  pmodule_parse->setSet(wire(set));
  pmodule_parse->setReset(wire(reset));
  pmodule_parse->setRtl(wire(rtl));
}

void class_zuc_parser::node_line(long id, long var, long then_id, long else_id, long link) {
  if (id < 0 || id >= parsed_nodes_number) {
    std::cerr << "detecting bad indice about parsed_nodes_table[]! skipping ...\n";
    return;
  }
  nodes_.enter(id, parsed_nodes_class(var, then_id, else_id, link, line()));
}

bool class_zuc_parser::expression_line(long early, long late, long var, long root, long link,
                                       const std::vector<long>& deps) {
  return bddexpression_convert(early, late, var, root, link, deps);
}

bool class_zuc_parser::bddexpression_convert(long early, long late, long var, long root, long link,
                                             const std::vector<long>& deps) {
  bddpp_manager* manager = pw->my_bdd_manager();
  if (manager == nullptr) {
    end_with("internal error in class_zuc_parser::bddexpression_convert(): no bdd manager !");
  }
  const long names = manager->Nb_bdd_vars();
  const auto outside = [&](long number) {
    return stop(line(),
                "variable number " + std::to_string(number) + " is outside the names of the file");
  };
  if (var < 0 || var >= names) return outside(var);

  // A second line for one variable replaces the first.
  const auto learn = [this, var](auto&&... arguments) {
    const std::unique_ptr<Bddexpression> replaced(pw->exp_by_index(var));
    new Bddexpression(std::forward<decltype(arguments)>(arguments)...);  // owned by the wood
  };
  if (root == -3) {
    for (long dep : deps)
      if (dep < 0 || dep >= names) return outside(dep);
    const index_set reads = index_set::from_unsorted(deps);
    learn(var, pw, reads, "VALUE_SIGNAL", early, late);
    return true;
  }
  if (link != 1 && link != -1)
    return stop(line(), "equation link " + std::to_string(link) + " is neither 1 nor -1");
  std::string problem;
  int at_line = 0;
  bdd_node* node = nodes_.build(manager, root, problem, at_line);
  if (node == nullptr) return stop(at_line == 0 ? line() : at_line, problem);
  learn(manager->Name_var_by_index(var), pw, manager->Bdd_var_by_index(var),
        bdd(manager, static_cast<int>(link), node), early, late);
  return true;
}

bool class_zuc_parser::room_for(const std::vector<int>& table, const char* kind) {
  if (table.size() < most_declarations) return true;
  return stop(line(), std::string("more than 32767 ") + kind + " in one file");
}

// A name that the process knows already keeps its place in the global table; the file's number for
// it is an entry of the corresponding table here.

bool class_zuc_parser::add_type(const std::string& name) {
  if (!room_for(corres_typeid, "types")) return false;
  DataTypeTable& table = Compilation::typeTable();
  table.addType(name);
  corres_typeid.push_back(table.getIndex(name));
  return true;
}

bool class_zuc_parser::add_method(const std::string& type, const std::string& name,
                                  const Names& arguments) {
  if (!room_for(corres_methodid, "methods")) return false;
  DataMethodTable& table = Compilation::methodTable();
  if (table.getMethod(name) == nullptr)
    table.addMethod(make_kept<MethodDecl>(type, name, arguments));
  corres_methodid.push_back(table.getMethodIndex(name));
  return true;
}

bool class_zuc_parser::add_constant(const std::string& type, const std::string& name,
                                    const std::string* literal) {
  if (!room_for(corres_constantesid, "constants")) return false;
  DataConstantTable& table = Compilation::constantTable();
  if (table.getConstant(name) == nullptr) {
    DataValue* value = nullptr;
    if (literal != nullptr) value = make_kept<DataValue>(literal->substr(1, literal->size() - 2));
    ConstantDecl* constant = make_kept<ConstantDecl>(type, name, value);
    if (value != nullptr) value->setConstant(constant);
    table.addConstant(constant);
  }
  corres_constantesid.push_back(table.getConstantIndex(name));
  return true;
}

bool class_zuc_parser::finish(bool reincarnate, bool finalised) {
  Module* module = pmodule_parse;
  module->setInputSignalList(std::move(inputs));
  module->setOutputSignalList(std::move(outputs));
  module->setDataSignalList(std::move(data));
  module->setLocalSignalList(std::move(locals));
  module->setRegisterList(std::move(registers));
  module->setReincarnate(reincarnate);
  module->setFinalised(finalised ? 1 : 0);
  if (has_bindings) {
    binding_declaration_parse bindings(std::move(binding_list), std::move(evalnode_list),
                                       corres_methodid, corres_constantesid);
    try {
      bindings.createbinding(module);
    } catch (const ZucProblem& found) {
      problem_ = found;
      return false;
    } catch (const LibraryException& exception) {
      stop(line(), exception.text());
      throw;
    }
    std::list<long> ids;
    for (const signal_list* list : {&module->getLocalSignalList(), &module->getOutputSignalList()})
      for (const Signal* signal : *list) ids.splice(ids.end(), signal->getAllBddId(module, pw));
    pw->compute_dates(ids);
  }
  module->update_user_type();
  return true;
}

}  // namespace kiva
