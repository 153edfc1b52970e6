// A module as a component: a C# class with one method that takes a list of events as a text, runs
// one reaction, and fires the list of the outputs.

#include <algorithm>
#include <ostream>

#include "tarn/formats/c_family.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

const TargetText::Target csharp_target{
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
  const std::string text = "evts[i].evtValeur";
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
  return {.plain_outputs = rules.plain_outputs,
          .margin = " ",
          .truth = "!false",
          .operation = "DataExpr::CShap_opname"};
}

class CSharpText {
 public:
  CSharpText(Module* module, const TargetRules& rules)
      : text_(module, csharp_target, rules),
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
        << m_ << "\")]\n\n     public " << (rules().open_class ? "partial " : "") << "class " << m_
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
    if (!rules().no_leftovers) return true;
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
      if (!rules().open_class) {
        constant->CSharp_put(out);
      } else if (read.contains(constant)) {
        // A type of the user's has no constants.
        out << "        private static readonly " << constant->getType() << ' '
            << constant->getName() << " = " << data_text(c_.data(), *constant->getValue()) << ";\n";
      }
    }
    out << "        /* global state variables */\n";
    // A register that nothing reads is still moved, and warned of.
    const bool unread = rules().no_leftovers &&
                        std::any_of(text_.state().begin(), text_.state().end(),
                                    [&](const StateRail& rail) { return !is_kept(rail.index); });
    if (unread) out << "#pragma warning disable 414\n";
    for (const StateRail& rail : text_.state())
      out << "        bool  " << text_.state_name(rail.index) << " = "
          << (rail.initial ? "true" : "false") << ";\n";
    if (unread) out << "#pragma warning restore 414\n";
  }

  void put_reset(std::ostream& out) const {
    out << "        " << (rules().open_class ? "public" : "private") << " void " << m_
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

  bool is_kept(long index) const { return !rules().no_leftovers || text_.is_read(index); }
  bool is_value_kept(const Signal* input) const {
    return !rules().no_leftovers || text_.is_value_read(input);
  }

  void put_locals(std::ostream& out) const {
    std::set<long> variables(text_.locals().begin(), text_.locals().end());
    if (!rules().kept_fields) {
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
    const auto put_value = [&](const Signal* signal) {
      if (text_.is_valued(signal))
        out << "            " << text_.type(signal) << ' ' << text_.value_name(signal)
            << "  = zero_" << text_.type(signal) << ";\n";
    };
    for (const Signal* input : text_.inputs())
      if (is_value_kept(input)) put_value(input);
    for (const Signal* output : text_.outputs()) put_value(output);
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
          << converted(text_.type(valued), rules().signed_values) << ";\n";
    out << "                }\n";
    if (!rules().events_add)
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
  std::string m_;
  CFamilyText c_;
  std::vector<std::string> event_of_;  ///< variables of the outputs' events
};

}  // namespace

void Module::CSharp_put(std::ostream& out) {
  CSharpText(this, Compilation::target_rules()).put(out);
}

void Module::CSharp_put_equation(std::ostream& out, const std::string& array, int) {
  const TargetText text(this, csharp_target, TargetRules::told());
  CFamilyText(text, array, &no_pointers, style(text.rules())).put_equations(out);
}

void Module::printCSHARP() {
  print_target(*this, target("csharp").file, Compilation::target_rules(),
               [this](std::ostream& out) { CSharp_put(out); });
}

// The told forms of data.

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
