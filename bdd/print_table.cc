// Functions as tables of products: a header that names the columns, then a row of '1', '0' and '-'
// for each product.

#include <iostream>

#include "base/process_end.h"
#include "bdd/literal_list.h"

namespace kiva {

namespace {

struct table_texts {
  const std::string& input_prefix;
  const std::string& input_suffix;
  const std::string& header;
  const std::string& header_end;
  const std::string& row_end;
  const std::string& last_row_end;
  const std::string& column_separator;
};

template <class Name>
void put_table(bddpp_manager& m, std::ostream& out, const bdd& var, const bdd& f,
               const table_texts& texts, int mode, Name name) {
  const std::vector<bdd> products = m.Bdd_sop(f, mode);
  if (products.size() >= static_cast<std::size_t>(Max_number_of_terms())) {
    std::cerr << "internal error in void bdd_manager::PLA_print...(ostream &, bdd)\n"
                 " product term number exceded limit\n";
    end_process();
  }
  const index_set present = m.set_of_index_depend_on(f);
  const auto put_name = [&](long index) {
    out << texts.input_prefix << name(index) << texts.input_suffix;
  };
  out << texts.header;
  for (long index : present) {
    put_name(index);
    out << ' ';
  }
  put_name(m.Bdd_if_index(var));
  out << texts.header_end;
  if (present.empty()) {
    out << (m.Bdd_is_one_tautologic(f) ? '1' : '0') << texts.last_row_end;
    return;
  }
  for (std::size_t row = 0; row < products.size(); ++row) {
    const literal_list literals = literals_of(m, products[row]);
    auto literal = literals.begin();
    for (long index : present) {
      const bool bound = literal != literals.end() && *literal / 2 == index;
      out << (!bound ? '-' : *literal % 2 != 0 ? '1' : '0') << texts.column_separator;
      if (bound) ++literal;
    }
    out << " 1" << (row + 1 < products.size() ? texts.row_end : texts.last_row_end);
  }
}

}  // namespace

void bddpp_manager::PLA_print_pref_suff(std::ostream& out, const bdd& var, const bdd& f,
                                        const std::string& input_prefix,
                                        const std::string& input_suffix, const std::string& header,
                                        const std::string& header_end, const std::string& row_end,
                                        const std::string& last_row_end,
                                        const std::string& column_separator, int mode) {
  put_table(
      *this, out, var, f,
      {input_prefix, input_suffix, header, header_end, row_end, last_row_end, column_separator},
      mode, [&](long index) { return Name_var_by_index(index); });
}

void bddpp_manager::PLA_print_pref_suff_with_renaming(
    std::ostream& out, const bdd& var, const bdd& f, const std::string& input_prefix,
    const std::string& input_suffix, const std::string& header, const std::string& header_end,
    const std::string& row_end, const std::string& last_row_end,
    const std::string& column_separator, int mode, const long* corr) {
  put_table(
      *this, out, var, f,
      {input_prefix, input_suffix, header, header_end, row_end, last_row_end, column_separator},
      mode, [&](long index) { return corr[index]; });
}

void bddpp_manager::ZUC_print(std::ostream& out, const long* corr, const bdd& var, const bdd& f,
                              int mode) {
  PLA_print_pref_suff_with_renaming(out, var, f, "", "", "", ":\n", ",\n", ";\n", " ", mode, corr);
}

}  // namespace kiva
