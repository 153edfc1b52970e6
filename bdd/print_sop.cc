// Products and sums of products as text, for any syntax that has an infix or, an infix and, and a
// negation before or behind a name.

#include <ostream>

#include "bdd/literal_list.h"

namespace kiva {

namespace {

struct product_texts {
  const std::string& and_text;
  const std::string& not_text;
  const std::string& not_end;
};

template <class Name>
void append_product(std::string& text, const product_texts& texts, const bddpp_manager& m,
                    const bdd& cube, Name name) {
  if (m.Bdd_is_tautology(cube)) {
    text += m.Bdd_is_one_tautologic(cube) ? "1" : "0";
    return;
  }
  bool first = true;
  for (int code : literals_of(m, cube)) {
    if (!first) text += texts.and_text;
    first = false;
    const bool negated = code % 2 == 0;
    if (negated) text += texts.not_text;
    text += name(code / 2);
    if (negated) text += texts.not_end;
  }
}

template <class Name>
std::string sum_text(bddpp_manager& m, const std::string& or_text, const product_texts& texts,
                     const bdd& f, int mode, Name name) {
  std::string text;
  const std::vector<bdd> products = m.Bdd_sop(f, mode);
  if (products.empty()) return "0";
  for (std::size_t i = 0; i < products.size(); ++i) {
    if (i > 0) text += or_text;
    append_product(text, texts, m, products[i], name);
  }
  return text;
}

auto framed_name(const bddpp_manager& m, const std::string& prefix, const std::string& suffix) {
  return [&](long index) { return prefix + m.Name_var_by_index(index) + suffix; };
}

auto array_element(const std::string& name) {
  return [&](long index) { return name + "[" + std::to_string(index) + "]"; };
}

}  // namespace

std::string bddpp_manager::Print_product_to_String_pref_suff(
    const std::string& and_text, const std::string& not_text, const std::string& not_end,
    const bdd& cube, const std::string& prefix, const std::string& suffix) const {
  std::string text;
  append_product(text, {and_text, not_text, not_end}, *this, cube,
                 framed_name(*this, prefix, suffix));
  return text;
}

std::string bddpp_manager::Print_product_to_String(const std::string& and_text,
                                                   const std::string& not_text,
                                                   const std::string& not_end,
                                                   const bdd& cube) const {
  return Print_product_to_String_pref_suff(and_text, not_text, not_end, cube, "", "");
}

void bddpp_manager::Print_product_pref_suff(const std::string& and_text,
                                            const std::string& not_text, const std::string& not_end,
                                            std::ostream& out, const bdd& cube,
                                            const std::string& prefix,
                                            const std::string& suffix) const {
  out << Print_product_to_String_pref_suff(and_text, not_text, not_end, cube, prefix, suffix);
}

void bddpp_manager::Print_product(const std::string& and_text, const std::string& not_text,
                                  const std::string& not_end, std::ostream& out,
                                  const bdd& cube) const {
  out << Print_product_to_String(and_text, not_text, not_end, cube);
}

void bddpp_manager::Print_wren_product(const std::string& and_text, const std::string& not_text,
                                       const std::string& not_end, std::ostream& out,
                                       const bdd& cube, const std::string& name) const {
  std::string text;
  append_product(text, {and_text, not_text, not_end}, *this, cube, array_element(name));
  out << text;
}

std::string bddpp_manager::Print_sop_to_String_pref_suff(const std::string& or_text,
                                                         const std::string& and_text,
                                                         const std::string& not_text,
                                                         const std::string& not_end, const bdd& f,
                                                         const std::string& prefix,
                                                         const std::string& suffix, int mode) {
  return sum_text(*this, or_text, {and_text, not_text, not_end}, f, mode,
                  framed_name(*this, prefix, suffix));
}

std::string bddpp_manager::Print_sop_to_String(const std::string& or_text,
                                               const std::string& and_text,
                                               const std::string& not_text,
                                               const std::string& not_end, const bdd& f, int mode) {
  return Print_sop_to_String_pref_suff(or_text, and_text, not_text, not_end, f, "", "", mode);
}

void bddpp_manager::Print_sop_pref_suff(const std::string& or_text, const std::string& and_text,
                                        const std::string& not_text, const std::string& not_end,
                                        std::ostream& out, const bdd& f, const std::string& prefix,
                                        const std::string& suffix, int mode) {
  out << Print_sop_to_String_pref_suff(or_text, and_text, not_text, not_end, f, prefix, suffix,
                                       mode);
}

void bddpp_manager::Print_sop(const std::string& or_text, const std::string& and_text,
                              const std::string& not_text, const std::string& not_end,
                              std::ostream& out, const bdd& f, int mode) {
  out << Print_sop_to_String(or_text, and_text, not_text, not_end, f, mode);
}

void bddpp_manager::Print_wren_sop(const std::string& or_text, const std::string& and_text,
                                   const std::string& not_text, const std::string& not_end,
                                   std::ostream& out, const bdd& f, const std::string& name,
                                   int mode) {
  out << sum_text(*this, or_text, {and_text, not_text, not_end}, f, mode, array_element(name));
}

void bddpp_manager::Print_debug_bdd(std::ostream& out, const bdd& f) {
  Print_sop(" + ", " . ", "!", "", out, f, 0);
}

}  // namespace kiva
