#pragma once

#include <cstdio>
#include <functional>
#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/g_longlong.h"
#include "base/index_set.h"
#include "base/name_numbers.h"
#include "bdd/bdd.h"
#include "bdd/bdd_node.h"
#include "bdd/unique_table.h"

namespace kiva {

struct call_memory;
struct node_code_texts;

/// Version of the package.
std::string Bdd_version();

/// The limit of every list of products.
constexpr int Max_number_of_terms() {
  return 1000000;
}

/// A store of reduced, ordered binary decision diagrams with complement edges, and the variables
/// they test.
///
/// Conventions: an `id` is a variable's number of creation, an `index` its place in the order, both
/// from 0; `link` is a polarity, +1 or -1; a literal array has one int for each variable, by index:
/// 0 false, 1 true, 2 unknown or absent. Wrong calls write one line on the error stream and give
/// the neutral result named at the operation. One thread at a time. What bears the mark `classic`
/// no program calls: it is kept for callers who know it by name.
class bddpp_manager {
 public:
  bddpp_manager();
  /// The variables of `other` with its order and names, and no other node.
  explicit bddpp_manager(const bddpp_manager* other);
  bddpp_manager(const bddpp_manager&) = delete;
  bddpp_manager& operator=(const bddpp_manager&) = delete;
  ~bddpp_manager();

  std::string Bdd_version() const { return kiva::Bdd_version(); }

  // Variables. A name that exists already gives its variable.
  bdd New_var_last(const std::string& name);
  bdd_node* New_node_var_last(const std::string& name);
  /// Inserts at `index`; a default-built handle or null when the index is out of range.
  bdd New_var_before(long index, const std::string& name);
  bdd New_var_before(const bdd& var, const std::string& name);
  bdd_node* New_node_var_before(long index, const std::string& name);
  bdd New_var_after(long index, const std::string& name);
  bdd New_var_after(const bdd& var, const std::string& name);
  bdd_node* New_node_var_after(long index, const std::string& name);

  long Nb_bdd_vars() const { return internal_bdd_vars; }
  /// Capacity of the variable tables: 16 at first, doubled when full.
  long Max_bdd_vars() const { return internal_max_bdd_vars; }  // classic
  long idtoindex(long id) const { return internal_idtoindex_table[id]; }
  long indextoid(long index) const { return internal_indextoid_table[index]; }

  /// Zero when out of range.
  bdd Bdd_var_by_id(long id);
  /// One for -1, a default-built handle when out of range otherwise.
  bdd Bdd_var_by_index(long index);
  /// Zero for an unknown name. Answers to names given at creation, whatever renamings followed.
  bdd Bdd_var_by_name(const std::string& name);
  /// -1 for an unknown name.
  long Id_var_by_name(const std::string& name) const;
  long Index_var_by_name(const std::string& name) const;
  /// Top variable; -1 on a constant, -3 on a handle of another manager or a default-built one.
  long Id_var_by_bdd(const bdd& f) const { return Bdd_if_id(f); }  // classic
  long Index_var_by_bdd(const bdd& f) const { return Bdd_if_index(f); }
  long Bdd_if_id(const bdd& f) const;
  long Bdd_if_index(const bdd& f) const;
  /// The id or index must be valid.
  std::string Name_var_by_id(long id) const;
  std::string Name_var_by_index(long index) const;
  /// Name of the top variable; "1" and "0" for the constants. Ends the process on a bad handle.
  std::string Name_var_by_bdd(const bdd& f) const;

  // Renaming changes what the Name_ operations give; look-ups by name keep the first name.
  void Change_name_by_id(long id, const std::string& name);
  void Change_name_by_index(long index, const std::string& name);
  void Rename_var(const std::string& new_name, const std::string& old_name);
  void Replace_char_in_all_names(char from, char to);
  /// A name that begins with "_" gets the prefix "v".
  void No_begin_underscore_name();

  bdd Bdd_one() { return bdd(this, 1, internal_bdd_node_one); }
  bdd Bdd_zero() { return bdd(this, -1, internal_bdd_node_one); }
  bdd_node* Bdd_node_one() const { return internal_bdd_node_one; }

  // Nodes.
  /// The only place where a decision node is found or made. The caller sets `link` (normally to 1);
  /// it receives the polarity of the result. Null for a bad index.
  bdd_node* Find_or_create_bdd_node(long index, int then_link, int else_link, bdd_node* then_node,
                                    bdd_node* else_node, int& link);
  void Map_integrate(bdd_node* node);  // classic
  void Map_suppress(bdd_node* node);   // classic
  /// All nodes of the unique table in key order (variable id, then, else, polarity).
  std::vector<bdd_node*> internal_bdd_node_map() const;

  void Bdd_clear_marks(bdd_node* node);
  void Bdd_clear_marks(const bdd& f) { Bdd_clear_marks(f.node()); }
  void Bdd_global_clear_marks();
  /// Marks the unmarked nodes from `node` down, then before else, and numbers them from `start`;
  /// gives the next free number.
  long Bdd_incremental_id(bdd_node* node, long start);
  /// Number of nodes, the constant included.
  long Bdd_node_size(bdd_node* node);  // classic
  long Bdd_size(const bdd& f) { return Bdd_node_size(f.node()); }
  /// The next global id: one above the number of nodes ever made.
  long Bdd_total_size() const { return internal_unique_table.next_global_id(); }
  int Bdd_is_correct(const bdd& f);
  /// Destroys the nodes that are no variable and have no reference left.
  void Bdd_gc();  // classic
  /// Destroys the nodes that no handle has and that stand below none with a handle, and gives the
  /// memory behind the last node that is left back to the system. Variables, what is associated
  /// with them and nodes that were taken out of the table stay. A pointer to a node holds nothing:
  /// to be called between phases, where all that goes on has handles. Gives how many have gone.
  long collect_unheld();
  /// The same where there are twice as many nodes as it left last, and half a million at least:
  /// looking for them costs as much as there are.
  void collect_when_doubled();
  /// Nodes ever made, without those that `collect_unheld` has destroyed.
  long Bdd_kept_size() const { return Bdd_total_size() - collected_; }
  /// Bytes that stand ready for nodes and for finding them.
  std::size_t table_bytes() const { return internal_unique_table.bytes(); }

  // Kept as part of the interface; each writes one line and does nothing else.
  void Bdd_free(const bdd& f);                                  // classic
  bdd Bdd_dup(const bdd& f);                                    // classic
  void Bdd_var_reorder();                                       // classic
  bdd Bdd_swap_vars(const bdd& f, const bdd& a, const bdd& b);  // classic

  // Operators.
  bdd Bdd_not(const bdd& f) { return bdd(f.manager_ref(), -f.link_type(), f.node()); }
  bdd Bdd_and(const bdd& f, const bdd& g);
  bdd Bdd_or(const bdd& f, const bdd& g);
  bdd_node* Bdd_and(int f_link, bdd_node* f, int g_link, bdd_node* g, int& link);
  bdd_node* Bdd_or(int f_link, bdd_node* f, int g_link, bdd_node* g, int& link);
  bdd Bdd_nand(const bdd& f, const bdd& g);
  bdd Bdd_nor(const bdd& f, const bdd& g);
  bdd Bdd_xor(const bdd& f, const bdd& g);
  bdd Bdd_xnor(const bdd& f, const bdd& g);
  bdd Bdd_eq(const bdd& f, const bdd& g) { return Bdd_xnor(f, g); }
  bdd Bdd_implication(const bdd& f, const bdd& g);
  /// 1 when f implies g.
  int Bdd_imply(const bdd& f, const bdd& g);
  int Bdd_equiv(const bdd& f, const bdd& g);
  /// 1 when f and g are disjoint.
  int Bdds_excl(const bdd& f, const bdd& g);
  int Bdds_exclude(const bdd& f, const bdd& g) { return Bdds_excl(f, g); }  // classic
  bdd Bdd_ite(const bdd& f, const bdd& g, const bdd& h);
  /// On the variable of `index` taken with `link`; -1 means the constant.
  bdd Bdd_ite(int link, long index, const bdd& g, const bdd& h);

  /// Cofactors of the top variable; of any constant both are one.
  bdd Bdd_then(const bdd& f);
  bdd Bdd_else(const bdd& f);
  /// The top variable; zero on a constant.
  bdd Bdd_if(const bdd& f);

  /// Quantify one variable; f itself when v is neither a variable nor a negated one.
  bdd Bdd_exist(const bdd& f, const bdd& v);
  bdd Bdd_forall(const bdd& f, const bdd& v);
  /// The cofactor of f by a cube; by a constant f itself.
  bdd Bdd_cube_reduce(const bdd& f, const bdd& cube);
  /// The product of the cofactors of f by the cubes of c. Where c is no cube the result need not
  /// agree with f on c.
  bdd Bdd_reduce(const bdd& f, const bdd& c);
  /// A cofactor of f by any c that is not zero: agrees with f on c, and takes no value that f does
  /// not take there. By a product it is Bdd_cube_reduce. f itself for c zero.
  [[nodiscard]] bdd Bdd_constrain(const bdd& f, const bdd& c);
  /// Quantifies all variables of a product of positive literals out of the and of f and g.
  [[nodiscard]] bdd Bdd_and_exist(const bdd& f, const bdd& g, const bdd& variables);
  /// Substitutes g for the variable v; zero when v is no variable.
  bdd Bdd_compose(const bdd& f, const bdd& v, const bdd& g);
  /// Substitutes at once for the variable of each given index; later entries win.
  [[nodiscard]] bdd Bdd_vector_compose(const bdd& f,
                                       const std::vector<std::pair<long, bdd>>& values);
  /// `map` gives the new index of each old index.
  bdd Bdd_replace_vars(const bdd& f, const long* map);
  /// Each part of the diagram that tests index n or more becomes one.
  bdd Bdd_keep_first_variables(const bdd& f, long n);
  /// Drops variables of f, in ascending id order, while f stays disjoint from g.
  bdd Bdd_simplify(const bdd& f, const bdd& g);
  /// The same, but tries only ids smaller than the index of f's top variable.
  bdd Bdd_simplify2(const bdd& f, const bdd& g);
  /// The or of the prime implicants of f, each simplified alone; the last argument has no effect.
  bdd Bdd_simplify3(const bdd& f, const bdd& g, int ignored);

  /// One cube that implies f, the then side tried first; one when f is zero.
  bdd Bdd_satisfy(const bdd& f);
  int Bdd_OneSat(bdd_node* node, int link, int* literals);
  bdd Literals_to_bdd(const int* literals);
  void Bdd_to_literals(const bdd& f, int* literals);  // classic
  void Bdd_node_to_literals(int link, bdd_node* node, int* literals);
  /// The literals of a cube that is not zero, from the root down; of one there are none.
  void for_each_literal(int link, const bdd_node* node,
                        const std::function<void(long index, int value)>& take) const;
  bdd Bdd_eval(const bdd& f, const int* literals);
  /// 0, 1, or 2 when the result depends on an unknown and the two branches differ.
  int Bdd_eval_for_literal(const bdd& f, const int* literals);

  // Shape tests.
  int Bdd_is_var(const bdd& f) const;
  int Bdd_is_negvar(const bdd& f) const;
  int Bdd_is_cube(const bdd& f) const;
  /// 1 for either constant.
  int Bdd_is_tautology(const bdd& f) const;
  /// `polarity` not 0 asks for one, 0 for zero.
  int Bdd_is_tautology(const bdd& f, int polarity) const;
  int Bdd_is_one_tautologic(const bdd& f) const;
  int Bdd_is_zero_tautologic(const bdd& f) const;

  // Dependence.
  int Bdd_depends_on(const bdd& f, const bdd& g) const;
  int Bdd_node_depends_on(bdd_node* n, bdd_node* m) const;
  int exists_common_variables(const bdd& f, const bdd& g) const;
  int Variable_awaited(const bdd& f, long index);
  int Variable_true_awaited(const bdd& f, long index);   // classic
  int Variable_false_awaited(const bdd& f, long index);  // classic
  index_set set_of_id_depend_on(const bdd& f) const;
  index_set set_of_index_depend_on(const bdd& f) const;
  /// present[index] becomes 1 for each variable of f, 0 for the others.
  void Present_variables(const bdd& f, int* present) const;  // classic

  // Implicants and covers: products, each an ordinary bdd. A list of more than
  // Max_number_of_terms() products ends the process with a report. The forms that fill an array
  // expect room for that many in it, start at element 0 and give the count.
  /// The prime implicants of f; of a constant f itself.
  std::vector<bdd> Bdd_prime_implicants(const bdd& f);
  int Bdd_prime_implicants(const bdd& f, bdd* out);
  /// Splits the prime implicants: a prime is essential when the others leave part of f uncovered.
  void Bdd_essential_implicants(const bdd& f, std::vector<bdd>& essential, std::vector<bdd>& other);
  void Bdd_essential_implicants(const bdd& f, int* nb_essential, bdd* essential, int* nb_other,
                                bdd* other);
  /// A short product that implies f; zero for zero. Ends the process on a handle of another
  /// manager.
  bdd Bdd_one_implicant(const bdd& f);
  /// A sum of products equal to f; `mode` chooses among the levels below, 0 for any other value.
  /// Ends the process on a handle of another manager.
  std::vector<bdd> Bdd_sop(const bdd& f, int mode);
  int Bdd_sop(const bdd& f, bdd* out, int mode);
  /// Disjoint products; none for zero.
  int Bdd_sop_0(const bdd& f, bdd* out);
  /// Prime products, none of them redundant; of zero the one product zero. What the search needed
  /// of the array beyond the count is set to zero.
  int Bdd_sop_1(const bdd& f, bdd* out);
  /// The essential prime implicants, then others until f is covered.
  int Bdd_sop_2(const bdd& f, bdd* out);  // classic
  /// As Bdd_sop_0, since variables cannot be exchanged (Bdd_swap_vars).
  int Bdd_sop_3(const bdd& f, bdd* out);  // classic

  // Tables over n chosen variables; entry m takes vars[i] from bit i of m.
  bdd Minterm(int m, int n, const bdd* vars);
  void Truth_table(const bdd& f, int n, const bdd* vars, char* out);     // classic
  void Bdd_truth_table(const bdd& f, int n, const bdd* vars, bdd* out);  // classic

  // Expression text (expression_parser.h). The empty text is zero; what is refused is reported, and
  // zero. `error` is 0 on success; `priority` is the prefix in angle brackets, 0 without one.
  bdd Parse_expression(const std::string& text, int* priority, int* error);
  /// Refuses a prefix.
  bdd Parse_expression(const std::string& text, int* error);

  // Associations of functions with variables.
  void Bdd_assoc_bdd_to_var(const bdd& f, const bdd& v);
  bdd Bdd_follow_assoc(const bdd& f, int* loop);

  // Structure, for a reader's eye (print_structure.cc).
  void Print_bdd_structure(std::ostream& out, const bdd& f);
  /// Only says that it does nothing.
  void Print_bdd_structure(FILE* file, const bdd& f);
  /// From the node down, each line behind `indent` blanks and more; numbers must have been given
  /// and marks cleared.
  void Print_bdd_structure_loc(std::ostream& out, int indent, bdd_node* node);
  void Chars(char c, int count, std::ostream& out);

  // Node lines (print_nodes.cc): local id, variable, then, else, else polarity; -1 is the variable
  // of the constant, -3 a child that it lacks. `corr` gives the number to write for each index.
  void Print_bdd_node(std::ostream& out, const bdd_node* node) const;
  void Print_bdd_node(std::ostream& out, const bdd_node* node, const long* corr) const;
  void Print_bdd_node_with_adress(std::ostream& out, const bdd_node* node) const;  // classic
  /// Number the nodes from 0, then before else, and write each once; a list shares its numbers.
  void Print_bdd_by_nodes_list(std::ostream& out, const bdd& f);                    // classic
  void Print_bdd_by_nodes_list(std::ostream& out, const bdd& f, const long* corr);  // classic
  void Print_bdds_list_by_nodes_list(std::ostream& out, const std::list<bdd>& functions);
  void Print_bdds_list_by_nodes_list(std::ostream& out, const std::list<bdd>& functions,
                                     const long* corr);

  // Products and sums of products (print_sop.cc). A negation stands as not_text, variable, not_end;
  // prefix and suffix stand around each name; `mode` is the level of Bdd_sop. Zero is "0", one "1".
  std::string Print_product_to_String_pref_suff(const std::string& and_text,
                                                const std::string& not_text,
                                                const std::string& not_end, const bdd& cube,
                                                const std::string& prefix,
                                                const std::string& suffix) const;
  std::string Print_product_to_String(const std::string& and_text, const std::string& not_text,
                                      const std::string& not_end, const bdd& cube) const;
  void Print_product_pref_suff(const std::string& and_text, const std::string& not_text,
                               const std::string& not_end, std::ostream& out, const bdd& cube,
                               const std::string& prefix,
                               const std::string& suffix) const;  // classic
  void Print_product(const std::string& and_text, const std::string& not_text,
                     const std::string& not_end, std::ostream& out,
                     const bdd& cube) const;  // classic
  /// Each variable as name[index].
  void Print_wren_product(const std::string& and_text, const std::string& not_text,
                          const std::string& not_end, std::ostream& out, const bdd& cube,
                          const std::string& name) const;  // classic
  std::string Print_sop_to_String_pref_suff(const std::string& or_text, const std::string& and_text,
                                            const std::string& not_text, const std::string& not_end,
                                            const bdd& f, const std::string& prefix,
                                            const std::string& suffix, int mode);
  std::string Print_sop_to_String(const std::string& or_text, const std::string& and_text,
                                  const std::string& not_text, const std::string& not_end,
                                  const bdd& f, int mode);
  void Print_sop_pref_suff(const std::string& or_text, const std::string& and_text,
                           const std::string& not_text, const std::string& not_end,
                           std::ostream& out, const bdd& f, const std::string& prefix,
                           const std::string& suffix, int mode);  // classic
  void Print_sop(const std::string& or_text, const std::string& and_text,
                 const std::string& not_text, const std::string& not_end, std::ostream& out,
                 const bdd& f, int mode);
  void Print_wren_sop(const std::string& or_text, const std::string& and_text,
                      const std::string& not_text, const std::string& not_end, std::ostream& out,
                      const bdd& f, const std::string& name, int mode);
  void Print_debug_bdd(std::ostream& out, const bdd& f);

  // Tables of products (print_table.cc): a header line with the variables of f and `var`, then one
  // row a product. Too many products end the process.
  void PLA_print_pref_suff(std::ostream& out, const bdd& var, const bdd& f,
                           const std::string& input_prefix, const std::string& input_suffix,
                           const std::string& header, const std::string& header_end,
                           const std::string& row_end, const std::string& last_row_end,
                           const std::string& column_separator, int mode);
  /// With corr[index] in place of each name.
  void PLA_print_pref_suff_with_renaming(std::ostream& out, const bdd& var, const bdd& f,
                                         const std::string& input_prefix,
                                         const std::string& input_suffix, const std::string& header,
                                         const std::string& header_end, const std::string& row_end,
                                         const std::string& last_row_end,
                                         const std::string& column_separator, int mode,
                                         const long* corr);
  void ZUC_print(std::ostream& out, const long* corr, const bdd& var, const bdd& f,
                 int mode);  // classic

  // Evaluation code (print_node_code.cc): one line for each unmarked node from `node` down,
  // children first, which marks them. Entries of the table have the nodes' global ids. A writer
  // clears the marks once for all its functions.
  void Print_node_code(const node_code_texts& texts, std::ostream& out, bdd_node* node);
  void Print_node_for_eval(const std::string& or_text, const std::string& and_text,
                           const std::string& not_open, const std::string& not_close,
                           const std::string& var_prefix, const std::string& var_suffix,
                           const std::string& constant, const std::string& line_end,
                           const std::string& table, std::ostream& out, bdd_node* node);  // classic
  void Print_node_for_eval(const std::string& line_start, const std::string& or_text,
                           const std::string& and_text, const std::string& not_open,
                           const std::string& not_close, const std::string& var_prefix,
                           const std::string& var_suffix, const std::string& constant,
                           const std::string& line_end, const std::string& table, std::ostream& out,
                           bdd_node* node);  // classic
  void Print_node_for_eval_arrayless(const std::string& or_text, const std::string& and_text,
                                     const std::string& not_open, const std::string& not_close,
                                     const std::string& var_prefix, const std::string& var_suffix,
                                     const std::string& constant, const std::string& line_end,
                                     const std::string& table, std::ostream& out,
                                     bdd_node* node);  // classic
  void Print_node_for_eval_arrayless(const std::string& line_start, const std::string& or_text,
                                     const std::string& and_text, const std::string& not_open,
                                     const std::string& not_close, const std::string& var_prefix,
                                     const std::string& var_suffix, const std::string& constant,
                                     const std::string& line_end, const std::string& table,
                                     std::ostream& out, bdd_node* node);  // classic

  // Classic: texts of one target language each, whose bodies stand with the language
  // (tarn/targets/languages).
  std::string Print_sop_to_VHDL_String(const bdd& f, int mode);
  std::string Print_sop_to_ESTEREL_String(const bdd& f, int mode);
  void BLIF_print(std::ostream& out, const bdd& var, const bdd& f, int mode);
  void Print_node_for_eval_BLIF(const std::string& table, std::ostream& out, bdd_node* node);
  void Print_node_for_eval_NUSMV(const std::string& table, std::ostream& out, bdd_node* node);
  void Print_node_for_eval_VHDL(const std::string& array, std::ostream& out, bdd_node* node);
  /// The array element of one variable: its input, and '0'. Only the first marks the node.
  void Print_node_for_eval_VHDL_input(const std::string& array, std::ostream& out, bdd_node* node);
  void Print_node_for_eval_VHDL_reset_input(const std::string& array, std::ostream& out,
                                            const bdd_node* node) const;

  // Reports (print_reports.cc).
  void Bdd_stats(std::ostream& out) const;  // classic
  void debug_variables(std::ostream& out);  // classic
  /// Whether a variable that is associated with a function of itself settles.
  void Print_Fixes_Points(std::ostream& out, const bdd& f);  // classic

 private:
  friend class bdd_node;
  friend class bdd_internals;

  bdd_node* new_variable(long index, const std::string& name);
  bdd variable_handle(bdd_node* node);
  unique_table internal_unique_table;
  long collected_ = 0;        ///< nodes, by collect_unheld
  long left_collecting_ = 0;  ///< by the last of it
  std::unique_ptr<call_memory> internal_call_memory;
  bdd_node* internal_bdd_node_one = nullptr;

  long internal_bdd_vars = 0;
  long internal_max_bdd_vars = 16;
  std::vector<std::string> internal_names_table;  // by id, as all but the last of these
  std::vector<bdd_node*> internal_variables_table;
  std::vector<bdd_node*> internal_assoc_var_table;
  std::vector<int> internal_idtoindex_table;
  std::vector<int> internal_indextoid_table;  // by index
  name_numbers internal_first_names;          // the ids of the names given at creation
  /// The ids that bear a name now; kept from the first renaming on.
  std::unordered_map<std::string, index_set> internal_ids_of_name;
  bool internal_ids_of_name_known = false;
};

inline long bdd_node::var_index() const {
  return internal_var_id < 0 ? internal_var_id
                             : page().manager->internal_idtoindex_table[internal_var_id];
}

/// Manager, link and node with its key, for error reports.
std::ostream& operator<<(std::ostream& out, const bdd& f);

/// The node line of bddpp_manager.
void Print_bdd_node(std::ostream& out, const bdd_node* node);

/// Copies f into another manager. Same indices in both managers.
bdd Bdd_isomorphe(bddpp_manager* to, bddpp_manager* from, const bdd& f);
/// `corr` gives the destination index of each source index.
bdd_node* Bdd_isomorphe(bddpp_manager* to, bddpp_manager* from, bdd_node* node, const long* corr);
bdd Bdd_isomorphe(bddpp_manager* to, bddpp_manager* from, const bdd& f, const long* corr);
/// By the names of the source; a variable that `to` lacks is appended there.
bdd Bdd_isomorphe_by_name(bddpp_manager* to, bddpp_manager* from, const bdd& f);

}  // namespace kiva
