// Text of boolean expressions; what is printed of a function is that function.

#include "bdd/bddpp.h"
#include "bdd/expression_parser.h"
#include "tests/fuzz/fuzz.h"

KIVA_FUZZ(text) {
  using namespace kiva;
  fuzz::run([&] {
    bddpp_manager manager;
    for (const char* name : {"a", "b", "c", "d"}) manager.New_var_last(name);
    class_exp_bdd_parser parser(&manager);
    if (parser.parse(text) != 0) return;
    const bdd function = parser.bddexpression();
    class_exp_bdd_parser again(&manager);
    const std::string printed =
        manager.Print_sop_to_String(" or ", " and ", "not ", "", function, 1);
    if (again.parse(printed) == 0 && again.bddexpression() != function)
      fuzz::found("printed as " + printed);
  });
}
