#pragma once

#include <iosfwd>
#include <list>
#include <set>
#include <string>

#include "base/index_set.h"
#include "bdd/bddpp.h"

namespace kiva {

class Bddexpressionwood;

/// One equation: a variable of the wood's manager (left member) defined by a function (right
/// member). An abstract equation has no function: its truth comes from a data expression. What
/// bears the mark `classic` no program calls.
class Bddexpression {
 public:
  /// Empty: abstract, in no wood.
  Bddexpression() = default;
  /// Empty, in a wood, not learnt by it.
  explicit Bddexpression(Bddexpressionwood* wood) : pw(wood) {}

  // Each of the following is learnt by its wood. A null wood makes an abstract equation without
  // variable that nothing learns.
  Bddexpression(const std::string& name, Bddexpressionwood* wood, const bdd& var, const bdd& exp,
                long early, long late, int usertype = 0);
  /// Abstract when `exp_def` is not empty.
  Bddexpression(const std::string& name, Bddexpressionwood* wood, const bdd& var, const bdd& exp,
                const std::string& exp_def, long early, long late, int usertype);
  /// Named as its variable.
  Bddexpression(Bddexpressionwood* wood, const bdd& var, const bdd& exp, long early, long late);
  /// Abstract equation of the variable of `index`, which reads the indices of `deps`; each index of
  /// `extra` is entered as a reader of this one. Either may be null.
  Bddexpression(long index, Bddexpressionwood* wood, const index_set* deps, const index_set* extra,
                long early, long late);
  Bddexpression(long index, Bddexpressionwood* wood, const index_set* deps, const index_set* extra,
                const std::string& exp_def, long early, long late);
  Bddexpression(long index, Bddexpressionwood* wood, const index_set& deps,
                const std::string& exp_def, long early, long late);

  /// Copies, not learnt, into a wood of the same variable order.
  Bddexpression(Bddexpressionwood* wood, const Bddexpression& other);
  Bddexpression(Bddexpressionwood* to, Bddexpressionwood* from, const Bddexpression& other);
  Bddexpression(const Bddexpression&) = default;
  Bddexpression& operator=(const Bddexpression&) = default;

  /// Compares abstraction, variable, function, user type, weight, name and textual definition.
  friend bool operator==(const Bddexpression& a, const Bddexpression& b);

  const std::string& my_name() const { return name; }
  /// Name of the variable; "" without wood or variable.
  std::string my_bddname() const;
  Bddexpressionwood* my_wood() const { return pw; }
  bddpp_manager* my_bdd_manager() const;
  bddpp_manager* my_manager() const { return my_bdd_manager(); }
  /// Index of the left member; -3 without one.
  long my_index_var() const;
  const bdd& my_bdd_var() const { return bdd_var; }
  const bdd& my_bdd_exp() const { return bdd_exp; }
  const std::string& my_exp_def() const { return exp_def; }
  const std::string& getExpDef() const { return exp_def; }
  void setExpDef(const std::string& text) { exp_def = text; }  // classic
  void setName(const std::string& text) { name = text; }
  /// Not 0: no function stands for this equation.
  int getAbstraction() const { return abstraction; }
  void setAbstraction(int value) { abstraction = value; }  // classic
  int getUserType() const { return usertype; }
  void setUserType(int type) { usertype = type; }
  long getW() const { return w; }         // classic
  void setW(long weight) { w = weight; }  // classic
  long getEarlyDate() const { return earliest_date; }
  void setEarlyDate(long date) { earliest_date = date; }
  /// The late date stands in the wood's table; 0 without wood or variable.
  long getLateDate() const;
  void setLateDate(long date);
  const index_set& set_of_var_dependances() const { return vars_dependance; }
  void set_set_of_var_dependances(const index_set& deps) { vars_dependance = deps; }  // classic
  /// The dependences and the left member.
  index_set set_of_index_used_variables() const;
  void add_specific_var_dependance(long index) { vars_dependance.insert(index); }  // classic
  void setBddexpressionwood(Bddexpressionwood* wood) { pw = wood; }

  // Changes of the right member keep the wood's readers in step. Without wood each reports and
  // changes nothing.
  void setBddExp(const bdd& f);
  /// Sets both dates, and leaves the cycle warnings out.
  void setBddExp(const bdd& f, long early, long late);
  void append_or_exp(const bdd& g);
  void append_and_exp(const bdd& g);  // classic
  void append_not_exp();
  /// For an equation in no wood; refused otherwise.
  void setBddVar(bddpp_manager* manager, const bdd& var);
  void setBddExp(bddpp_manager* manager, const bdd& f);

  /// Splits the function on the variable x: two new variables, whose indices are given, have the
  /// cofactors as equations, and this function chooses between them. -3 twice, and no change, when
  /// there is no wood or function, or no such variable.
  void Shannon_expand(long x, long& then_index, long& else_index);

  /// One line of a compiled module: dates, the variable's number by `map`, the root's local id and
  /// polarity, the numbers of what it reads. Nothing without manager or variable.
  void put_zuc(std::ostream& os, long* map);
  // Classic, and taken by no reader: the line without what the equation reads, and the dates with
  // the equation as a text of products behind them.
  void put_zuc_2_0_4(std::ostream& os, long* map);
  void put_zuc_0_3_0(std::ostream& os, long* map);
  void Put_zuc_2_0_4(std::ostream& os, long* map) { put_zuc_2_0_4(os, map); }
  void Put_zuc_0_3_0(std::ostream& os, long* map) { put_zuc_0_3_0(os, map); }

  // For people (document_code.cc). An equation without function says so.
  /// The definition as a sum of products.
  void put_basic_doc(std::ostream& out);
  /// The diagram, indented.
  void put_tree(std::ostream& out);  // classic

  // Classic: texts of one target language each, whose bodies stand with the language
  // (tarn/targets/languages). Nothing without manager, variable or function.
  /// The assignment in C, behind the lines of its nodes that bear no mark yet; names in `outputs`
  /// are pointers.
  void put_c(std::ostream& out, const std::string& array, const std::list<std::string>& outputs,
             const std::string& prefix, const std::string& suffix);
  void put_c(std::ostream& out, const std::string& array, const std::list<std::string>& outputs) {
    put_c(out, array, outputs, "", "");
  }
  /// The same in VHDL; a name in `outputs` gets its nodes only, its process assigns it.
  void put_vhdl(std::ostream& out, const std::string& array, const std::list<std::string>& outputs);
  void put_systemc(std::ostream& out);
  /// Tables; a node is `prefix`, "_" and its number.
  void put_blif(std::ostream& out, const std::string& prefix);
  /// The nodes as elements of an array, or as variables with the array's name in front, or none,
  /// the function being a sum of products.
  void put_lustre(std::ostream& out, const std::string& array);
  void put_lustre_arrayless(std::ostream& out, const std::string& array);
  void put_lustre_compatibilite(std::ostream& out);  // classic
  void put_esterel(std::ostream& out);
  /// The definition behind the lines of its nodes; an equation without function says so.
  void put_doc(std::ostream& out, const std::string& prefix);
  /// A formula; names stand as they are.
  void put_latex(std::ostream& out);
  void put_csharp(std::ostream& out, const std::string& array);
  /// A sum of products over elements of `array`, by variable index.
  void put_wren(std::ostream& out, const std::string& array);
  /// The assignment in C, each variable with `prefix` in front.
  void put_ino_grafcet(std::ostream& out, const std::string& array, const std::string& prefix);
  /// A call of the function NAME_true or else NAME_false, or, if `two_sided` is 0, of NAME or none.
  void put_ino_grafcet(std::ostream& out, const std::string& array, const std::string& prefix,
                       int two_sided);

  /// Dependences from the function, after the wood's tables have followed the manager. An abstract
  /// equation keeps its own.
  void build_normal_dependances();
  void internal_build_dependances();
  void internal_build_dependances(bddpp_manager* manager);

 private:
  friend class Bddexpressionwood;

  /// Whether there is a wood; if not, reports under the name of `operation`.
  bool has_wood(const char* operation) const;
  void replace_function(const bdd& f);
  void learn_abstract(const index_set* extra, long late);

  Bddexpressionwood* pw = nullptr;
  std::string name;
  bdd bdd_var;
  int abstraction = 1;
  std::string exp_def;
  bdd bdd_exp;
  long w = 1;
  index_set vars_dependance;
  long earliest_date = 0;
  int usertype = 0;
};

}  // namespace kiva
