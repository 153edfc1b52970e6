// C#: a module as a component, a class with one method that takes a list of events as a text, runs
// one reaction, and fires the list of the outputs.

#include <algorithm>
#include <ostream>

#include "tarn/b_automaton/writing.h"
#include "tarn/model/sexception.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/c_automaton.h"
#include "tarn/targets/languages/c_family.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "C#",
              .keywords = {"abstract", "as", "base", "bool", "break", "byte", "case", "catch",
                           "char", "checked", "class", "const", "continue", "decimal", "default",
                           "delegate", "do", "double", "else", "enum", "event", "explicit",
                           "extern", "false", "finally", "fixed", "float", "for", "foreach", "goto",
                           "if", "implicit", "in", "int", "interface", "internal", "is", "lock",
                           "long", "namespace", "new", "null", "object", "operator", "out",
                           "override", "params", "private", "protected", "public", "readonly",
                           "ref", "return", "sbyte", "sealed", "short", "sizeof", "stackalloc",
                           "static", "string", "struct", "switch", "this", "throw", "true", "try",
                           "typeof", "uint", "ulong", "unchecked", "unsafe", "ushort", "using",
                           "virtual", "void", "volatile", "while",
                           // Words in some places only.
                           "async", "await", "dynamic", "field", "get", "global", "nameof",
                           "partial", "record", "set", "value", "var", "when", "where", "yield",
                           // What every class has, and what the text names.
                           "Equals", "Finalize", "GetHashCode", "GetType", "MemberwiseClone",
                           "ReferenceEquals", "ToString", "System", "Vanto", "GenEntree", "Bean",
                           "Category", "List", "Convert", "GrammaireA", "MyEvent", "Logger", "s",
                           "GA", "e", "i", "evts", "outputEvts", "format", "evt", "evtFormat",
                           "FiresendEvent", "SendEventList", "StringValueEventHandler"}},
    .has_data = true,
    .own_names = [](const std::string& module) {
      return std::vector<std::string>{module + "_node", module + "_automaton",
                                      module + "_reset_automaton"};
    }};

struct OwnRules {
  /// Outputs and values are plain variables; else they are read as if they were pointers.
  bool plain_outputs;
  /// Registers are fields alone; else locals of the same names hide them, and nothing is kept.
  bool kept_fields;
  /// The registers can be put back from outside, and the class is partial, so that the user's part
  /// supplies data; else neither.
  bool open_class;
  /// An event makes its own input present and says nothing of the others; else it clears them.
  bool events_add;
  /// Values of int and byte are converted to what these are; else to uint and sbyte, which need a
  /// cast.
  bool signed_values;
};

constexpr OwnRules own_rules(bool working) {
  return {working, working, working, working, working};
}

equation_code_texts equation_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts = c_equation_texts(manager, array, {}, "", "");
  texts.nodes.constant = "!false";
  return texts;
}

constexpr ValuedOutputTexts output_texts{.open_if = "           if (",
                                         .open = ")\n              {\n",
                                         .first = "                  ",
                                         .other = "                  else",
                                         .otherwise = "                else { ",
                                         .close = "              }\n",
                                         .test = " if ("};

/// The built-in types: their zero, and how a text becomes a value.
struct BuiltIn {
  const char *type, *zero, *told, *working;
};
constexpr BuiltIn built_ins[] = {
    {"byte", "zero_byte = 0 ", " Convert.ToSByte(", " Convert.ToByte("},
    {"int", "zero_int = 0 ", "Convert.ToUInt32(", "Convert.ToInt32("},
    {"float", "zero_float = 0", "Convert.ToSingle(", "Convert.ToSingle("},
    {"long", "zero_long = 0", " Convert.ToInt64(", " Convert.ToInt64("},
    {"short", "zero_short = 0", " Convert.ToInt16(", " Convert.ToInt16("},
    {"string", "zero_string =\"\"", nullptr, nullptr},
    {"bool", "zero_bool = false", " Convert.ToBoolean(", " Convert.ToBoolean("},
};

/// The value of an event's text.
std::string converted(const std::string& type, bool signed_values) {
  std::string text = "evts[i].evtValeur";
  for (const BuiltIn& known : built_ins) {
    if (type != known.type) continue;
    if (known.told == nullptr) return text;
    return (signed_values ? known.working : known.told) + text + " ) ";
  }
  return type + ".To(" + text + ")";
}

/// No name of a list of pointers: the told text assigns outputs plainly, and only reads them so.
const std::list<std::string> no_pointers;

CFamilyStyle style(const TargetRules& rules) {
  return {.plain_outputs = own_rules(rules.own).plain_outputs,
          .margin = " ",
          .truth = "!false",
          .operation = "DataExpr::CShap_opname"};
}

class CSharpText {
 public:
  CSharpText(Module* module, const TargetRules& rules)
      : text_(module, language, rules),
        own_(own_rules(rules.own)),
        m_(text_.module_name()),
        c_(text_, m_ + "_node", &no_pointers, style(rules)) {
    for (const Signal* output : text_.outputs()) {
      const std::string name = rules.names ? text_.name(output) : output->getOriginalName();
      event_of_.push_back(text_.own_name("evt" + name));
    }
  }

  void put(std::ostream& out) const {
    out << " using System; \n using Vanto.Beans; \n using System.Collections.Generic; \n"
           " using System.Threading; \nusing Vanto.Util;\n\n namespace GenEntree\n {\n"
           "    [Bean(Category=\""
        << m_ << "\")]\n\n     public " << (own_.open_class ? "partial " : "") << "class " << m_
        << "\n     {\n";
    put_fields(out);
    put_reset(out);
    out << "        public void " << m_ << "_automaton(string s)\n        {\n";
    put_locals(out);
    put_input_events(out);
    out << "   /* outputs computing */\n";
    c_.put_equations(out);
    c_.put_valued_outputs(out, output_texts);
    out << "         /* refresh registers */\n";
    c_.put_state_moves(out, "           ");
    put_output_events(out);
    out << "        /*-----------Delegate Methods & Events-------------------*/\n"
           "        public delegate void StringValueEventHandler(string evt );\n"
           "        public event StringValueEventHandler SendEventList;\n"
           "        public void FiresendEvent(string evtFormat)\n        {\n"
           "            if (SendEventList != null)\n            {\n"
           "                SendEventList(evtFormat);\n            }\n        }\n    }\n}\n";
  }

 private:
  const TargetRules& rules() const { return text_.rules(); }

  bool needs_zero(const std::string& type) const {
    if (!c_family_rules(rules().own).no_leftovers) return true;
    const auto is_of_type = [&](const Signal* signal) {
      return text_.is_valued(signal) && text_.type(signal) == type;
    };
    return std::any_of(text_.inputs().begin(), text_.inputs().end(), is_of_type) ||
           std::any_of(text_.outputs().begin(), text_.outputs().end(), is_of_type) ||
           std::any_of(text_.valued_locals().begin(), text_.valued_locals().end(), is_of_type);
  }

  void put_fields(std::ostream& out) const {
    for (const BuiltIn& known : built_ins)
      if (needs_zero(known.type))
        out << "        private " << known.type << ' ' << known.zero << ";\n";
    out << "        // private constants:\n";
    const auto read = constants_read(*text_.module());
    for (const ConstantDecl* constant : data_constants()) {
      if (constant->getValue() == nullptr) continue;
      if (!own_.open_class) {
        constant->CSharp_put(out);
      } else if (read.contains(constant)) {
        // A type of the user's has no constants.
        out << "        private static readonly " << constant->getType() << ' '
            << constant->getName() << " = " << data_text(c_.data(), *constant->getValue()) << ";\n";
      }
    }
    out << "        /* global state variables */\n";
    // A register that nothing reads is still moved, and warned of.
    const bool unread = c_family_rules(rules().own).no_leftovers &&
                        std::any_of(text_.state().begin(), text_.state().end(),
                                    [&](const StateRail& rail) { return !is_kept(rail.index); });
    if (unread) out << "#pragma warning disable 414\n";
    for (const StateRail& rail : text_.state())
      out << "        bool  " << text_.state_name(rail.index) << " = "
          << (rail.initial ? "true" : "false") << ";\n";
    if (unread) out << "#pragma warning restore 414\n";
  }

  void put_reset(std::ostream& out) const {
    out << "        " << (own_.open_class ? "public" : "private") << " void " << m_
        << "_reset_automaton(";
    if (!text_.finalised())
      out << " bool _s_SET" << text_.module()->getName() << ", bool _s_RESET"
          << text_.module()->getName();
    out << ")\n        {\n";
    for (const StateRail& rail : text_.state())
      out << "            " << text_.state_name(rail.index) << "= "
          << (rail.initial ? "true" : "false") << ";\n";
    out << "        }\n";
  }

  bool is_kept(long index) const {
    return !c_family_rules(rules().own).no_leftovers || text_.is_read(index);
  }
  bool is_value_kept(const Signal* input) const {
    return !c_family_rules(rules().own).no_leftovers || text_.is_value_read(input);
  }

  void put_value(std::ostream& out, const Signal* signal) const {
    if (text_.is_valued(signal))
      out << "            " << text_.type(signal) << ' ' << text_.value_name(signal) << "  = zero_"
          << text_.type(signal) << ";\n";
  }

  void put_locals(std::ostream& out) const {
    std::set<long> variables(text_.locals().begin(), text_.locals().end());
    if (!own_.kept_fields) {
      for (long index : text_.wood()->Set_of_index_used_variables()) variables.insert(index);
      for (const StateRail& rail : text_.state()) variables.insert(rail.index);
    }
    for (long index : text_.input_rails())
      if (is_kept(index)) variables.insert(index);
    for (long index : text_.output_rails()) variables.insert(index);
    for (long index : variables)
      out << "            bool " << (is_wire(index) ? "v" : "") << text_.name(index)
          << "  =  false;\n";
    for (const Signal* signal : text_.valued_locals())
      out << "            " << text_.type(signal) << "  " << text_.value_name(signal) << " = zero_"
          << text_.type(signal) << ";\n";
    for (const Signal* input : text_.inputs())
      if (is_value_kept(input)) put_value(out, input);
    for (const Signal* output : text_.outputs()) put_value(out, output);
    const long nodes = text_.count_nodes([&](std::ostream& nowhere) { c_.put_equations(nowhere); });
    if (nodes > 0 || !rules().used_nodes)
      out << "            bool[]  " << c_.array() << "  =  new bool[" << nodes << "];\n";
  }

  /// A rail of a wire of a module that is not finalised.
  bool is_wire(long index) const {
    if (text_.finalised()) return false;
    const Module& module = *text_.module();
    for (const Signal* wire : {module.getSet(), module.getReset(), module.getRtl()})
      if (index == text_.status(wire) || index == text_.value(wire)) return true;
    return false;
  }

  void put_input_events(std::ostream& out) const {
    out << "/*-----------------------partie "
           "evt/input_signals----------------------------------------"
           "-*/\n"
           "            GrammaireA GA = new GrammaireA();\n"
           "             List<MyEvent> evts =  new List<MyEvent>(255);\n"
           "            evts= GA.deserialize(s);\n"
           "            foreach (MyEvent e in evts)\n            {\n"
           "                Logger.Info(e.nameEvt);\n            }\n"
           "            for(int i = 0; i<evts.Count;i++)\n           {\n";
    for (const Signal* input : text_.inputs()) {
      const long index = text_.status(input);
      const bool has_value = text_.is_valued(input) && is_value_kept(input);
      if (!is_kept(index) && !has_value) continue;
      put_input_event(out, input->getOriginalName(), index, has_value ? input : nullptr);
    }
    for (long index : text_.further_inputs())
      put_input_event(out, text_.name(index), index, nullptr);
    out << "            }\n";
  }

  void put_input_event(std::ostream& out, const std::string& event, long index,
                       const Signal* valued) const {
    out << "                if(evts[i].nameEvt == \"" << event << "\")\n                {\n";
    if (is_kept(index)) out << "                     " << text_.name(index) << "= true;\n";
    if (valued != nullptr)
      out << "                     " << text_.value_name(valued) << " = "
          << converted(text_.type(valued), own_.signed_values) << ";\n";
    out << "                }\n";
    if (!own_.events_add)
      out << "                else\n                {\n                   " << text_.name(index)
          << "= false;\n                }\n";
  }

  void put_output_events(std::ostream& out) const {
    out << "            /*-----------------------partie "
           "evt/outputs_signals----------------------------"
           "-------------*/\n"
           "           List<MyEvent> outputEvts = new List<MyEvent>(255);   \n";
    for (size_t i = 0; i < text_.outputs().size(); ++i) {
      const Signal* output = text_.outputs()[i];
      const std::string name = output->getOriginalName();
      if (text_.is_valued(output))
        out << "           MyEvent " << event_of_[i] << "= new MyEvent( \"" << name << "\",\""
            << text_.type(output) << "\", Convert.ToString(" << text_.value_name(output) << "),";
      else
        out << "            MyEvent " << event_of_[i] << " = new MyEvent( \"" << name << "\", ";
      out << "Convert.ToString(" << text_.name(output) << "));\n"
          << "            outputEvts.Add(" << event_of_[i] << ");\n";
    }
    out << "            string format =\"\";\n"
           "            format = GA.serialize(outputEvts);\n"
           "            FiresendEvent(format);\n        }\n";
  }

  TargetText text_;
  OwnRules own_;
  std::string m_;
  CFamilyText c_;
  std::vector<std::string> event_of_;  ///< variables of the outputs' events
};

const Bench bench{.language = &language,
                  .extension = ".cs",
                  .run = csharp_bench_run,
                  .put = put_csharp_bench,
                  .tool = "mcs --version"};

}  // namespace

extern const Target csharp_target{
    .option = "csharp",
    .help = "C# component, .cs",
    .file = {.extension = ".cs", .in_folder = true, .tells_failure = true},
    .put = [](const TargetJob& job) { CSharpText(job.module, job.rules).put(job.out); },
    .finalised_only = true,
    .comment = "// ",
    .bench = &bench};

// A boolean automaton.

namespace {

void put_react(std::ostream& out, const b_automaton& automaton, const std::string& prefix,
               const std::string& array) {
  if (automaton.nb_locals() > 0) out << "  bool " << joined(automaton.locals_list(), ", ") << ";\n";
  out << "  int " << array << '[' << automaton.manager_associe()->Bdd_total_size() << "];\n";
  if (automaton.nb_equ_def() > 0) {
    out << "// internal definitions \n";
    equation_code_texts texts = c_equation_texts(automaton.manager_associe(), array, {}, "", "");
    texts.read = texts.nodes.name = [&](long index) {
      return (index < automaton.input_index(0) ? prefix : "") + automaton.nom_associe(index);
    };
    texts.left = [read = texts.read](long index) { return "  " + read(index); };
    automaton.manager_associe()->Bdd_global_clear_marks();
    for (long index : automaton.wood_associee()->earliest_sort()) {
      const bdd& f = automaton.wood_associee()->exp_by_index(index)->my_bdd_exp();
      if (f.initialised()) put_equation_code(out, texts, index, f);
    }
  }
}

}  // namespace

void b_automaton::CSHARP_put(std::ostream& out, int, const std::string& name) const {
  const std::string prefix = name + "_", array = name + "_def_node";
  const std::string dots(60, '.');
  const auto section = [&](const std::string& title) {
    out << "//" << dots << "\n// " << title << "\n//" << dots << '\n';
  };
  const auto fields = [&](const std::string& kind, const std::vector<std::string>& names,
                          const std::string& none) {
    out << "// private " << kind << " variables :\n";
    if (names.empty()) out << none << '\n';
    put_lines(out, names, "private bool ", ";");
  };
  const auto properties = [&](const std::string& kind, const std::vector<std::string>& names,
                              const std::string& before) {
    out << "// get & set methods for " << kind << " from the FSM " << kind << " :\n";
    for (const std::string& field : names)
      out << " public bool " << before << field << "\n {\n  get { return " << field
          << "; }\n  set { if (value != " << field << ") " << field << " = value; }\n }\n";
  };
  section("Libraries :");
  out << " using System; \n";
  section("Class :");
  out << " public class " << name << "\n{\n";
  section("private attributs:");
  fields("input", names_.inputs, "// No inputs ...");
  fields("output", names_.outputs, "// No output ...");
  out << "// private registers variables :\n";
  if (nb_state_vars() > 0)
    out << "private bool " << joined(c_state_names(*this), ", ", prefix) << ";\n";
  section("The constructor :");
  out << "public " << name << "()\n{\n  Reset_Automaton();\n}\n";
  section("The methods :");
  properties("inputs", names_.inputs, "P_");
  properties("outputs", names_.outputs, "GS_");
  out << " private void Reset_Automaton()\n{\n  Reset_Inputs();\n  Reset_Outputs();\n"
         "  Reset_Registers();\n}\n private void Reset_Inputs()\n{\n";
  put_lines(out, names_.inputs, "  ", " = false;");
  out << "}\n private void Reset_Outputs()\n{\n";
  put_lines(out, names_.outputs, "  ", " = false;");
  out << "}\n private void Reset_Registers()\n{\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << "  " << prefix << nom_state_var(k) << " = "
        << (valeur_initiale_state_var(k) == 1 ? "!false" : "false") << ";\n";
  out << "}\n// FSM Transition methods:\npublic void Automaton()\n{\n  React();\n  Next();\n"
         "  Reset_Inputs();\n}\n// Next state method computing:\n private void React()\n{\n";
  put_react(out, *this, prefix, array);
  out << "}\n// Changing method X=Xnext\n private void Next()\n{\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << "  " << prefix << nom_state_var(k) << " = " << prefix << nom_next_state_var(k) << ";\n";
  out << "}\n}\n";
}

// The told operations of other classes.

void Module::CSharp_put(std::ostream& out) {
  put_target(csharp_target, this, out);
}

void Module::printCSHARP() {
  print_target(csharp_target, this);
}

void Module::CSharp_put_equation(std::ostream& out, const std::string& array, int) {
  const TargetText text(this, language, TargetRules::told());
  CFamilyText(text, array, &no_pointers, style(text.rules())).put_equations(out);
}

void Bddexpression::put_csharp(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, equation_texts(my_bdd_manager(), array), my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_csharp(std::ostream& out, const std::string& array) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_csharp(out, array);
}

std::string DataExpr::CSharp_opname(int op) {
  if (op < 0 || op > Supe)
    throw IllegalOperationException("DataExpr::CShap_opname", "invalid_operator");
  return C_opname(op);
}

void DataExpr::CSharp_put(std::ostream& out, Module* module) const {
  put_told_c_data(out, "DataExpr::CShap_opname", *this, module);
}

void DataTypeTable::CSharp_put(std::ostream& out) const {
  for (const auto& [name, index] : entries())
    out << "public const " << name << " zero_" << name << ";\n";
}

void DataMethodTable::CSharp_put(std::ostream& out) const {
  for (const MethodDecl* method : method_list) method->CSharp_put(out);
}

void MethodDecl::CSharp_put(std::ostream& out) const {
  out << "public " << return_type << ' ' << name << '(';
  const char* separator = "";
  for (const std::string& type : arg_type_list) {
    out << separator << type;
    separator = ", ";
  }
  out << ");\n";
}

void DataConstantTable::CSharp_put(std::ostream& out) const {
  for (const ConstantDecl* constant : constant_list)
    if (constant->getValue() != nullptr) constant->CSharp_put(out);
}

void ConstantDecl::CSharp_put(std::ostream& out) const {
  out << (value == nullptr ? "public const " : "private const ") << type << ' ' << name;
  if (value != nullptr) {
    out << " = ";
    value->CSharp_put(out, nullptr);
  }
  out << ";\n";
}

}  // namespace kiva
