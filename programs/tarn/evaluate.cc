// The expression is read over a manager that knows every variable of the module by the names that a
// user may give it; the function of the module that it stands for is brought back there to be
// printed.

#include "programs/tarn/evaluate.h"

#include <iostream>

#include "base/text_stream.h"
#include "bdd/expression_parser.h"
#include "pert_exp/unfold.h"
#include "programs/tarn/read_module.h"
#include "programs/tarn/translate.h"
#include "tarn/targets/frame/sum_text.h"

namespace kiva::tarn_program {

namespace {

class Evaluation {
 public:
  Evaluation(Module* module, const std::string& file)
      : module_(module), wood_(*module->getBddWood()), file_(file) {
    wood_.update_bdd_vars();
    place_of_.assign(static_cast<size_t>(wood_.Nb_bdd_vars()), -1);
    name_signals(module->getInputSignalList(), false);
    name_signals(module->getOutputSignalList(), true);
    name_signals(module->getLocalSignalList(), false);
    for (long index = 0; index < wood_.Nb_bdd_vars(); ++index)
      name(wood_.Name_var_by_index(index), index);
  }

  bool run(const std::string& text) {
    TextStream told;
    class_exp_bdd_parser parser(&names_, told);
    if (parser.parse(text) != 0) return complain(parser);
    if (parser.prio() != 0) return fail("--eval: a priority has no meaning here");
    const bdd f = computed(parser.bddexpression());
    if (count_products(f, Max_number_of_terms() + 1L) > Max_number_of_terms())
      return fail("--eval: more than " + std::to_string(Max_number_of_terms()) + " products");
    const bdd shown = Bdd_isomorphe(&names_, wood_.my_bdd_manager(), f, place_of_.data());
    std::cout << names_.Print_sop_to_String(" or ", " and ", "not ", "", shown, 1) << '\n';
    return true;
  }

 private:
  void name(const std::string& name, long index) {
    if (index < 0 || name.empty()) return;
    const bool is_new = names_.Id_var_by_name(name) < 0;
    const long place = names_.Index_var_by_bdd(names_.New_var_last(name));
    if (is_new) index_of_.push_back(index);
    // A signal may be all that bears a name, and the first name that a variable gets is shown.
    if (is_new && place_of_[static_cast<size_t>(index)] < 0)
      place_of_[static_cast<size_t>(index)] = place;
  }

  void name_signals(const signal_list& signals, bool outputs) {
    for (const Signal* signal : signals)
      name(signal->getOriginalName(), outputs ? signal->getInitialBddStatusId(module_, &wood_)
                                              : signal->getBddStatusId(module_, &wood_));
  }

  /// What the function over names is in an instant of the module.
  bdd computed(const bdd& f) {
    bddpp_manager* manager = wood_.my_bdd_manager();
    const bdd of_module = Bdd_isomorphe(manager, &names_, f, index_of_.data());
    index_set registers;
    for (const regclass* reg : module_->getRegisterList())
      registers.insert(reg->actual_var()->getBddStatusId(module_, &wood_));
    return unfolded(wood_, of_module, [&](long index) { return registers.contains(index); });
  }

  /// One line with the place, from 1, of what stands in the way.
  bool complain(const class_exp_bdd_parser& parser) const {
    const std::string& piece = parser.current_piece();
    const std::string place = "--eval: character " + std::to_string(parser.position() + 1) + ": ";
    switch (parser.fault()) {
      case ExpressionFault::unknown_name:
        return fail(place + '"' + piece + "\" is no signal of " + file_);
      case ExpressionFault::too_deep:
        return fail(place + "nested too deep");
      default:
        if (piece.empty()) return fail(place + "the expression ends too early");
        return fail(place + '"' + piece + "\" cannot stand here");
    }
  }

  Module* module_;
  Bddexpressionwood& wood_;
  const std::string& file_;
  bddpp_manager names_;
  std::vector<long> index_of_;  ///< by index of `names_`
  std::vector<long> place_of_;  ///< by index of the module
};

}  // namespace

bool evaluate_expression(Options& options, Messages& messages) {
  const std::string& file = options.files.front();
  const std::string& text = options.eval;
  try {
    const programs::ProgramSession session(&messages);
    choose(options);
    Module* module = read_module(file);
    return module != nullptr &&
           Evaluation(module, file).run(text.substr(0, text.find_last_not_of(' ') + 1));
  } catch (...) {
    return fail(fault_under_way(file));
  }
}

}  // namespace kiva::tarn_program
