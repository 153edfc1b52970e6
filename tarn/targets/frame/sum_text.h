#pragma once

#include <functional>
#include <string>

#include "tarn/targets/frame/target_text.h"

namespace kiva {

/// The texts of a sum of products.
struct SumTexts {
  std::string or_text;
  std::string and_text;
  std::string not_text;
  std::string not_end = {};
  std::string zero = "0";
  std::string one = "1";
  /// Cover level of bddpp_manager::Bdd_sop.
  int level = 1;
  /// The variable at an index; its name in the text where this is empty.
  std::function<std::string(long index)> name = {};
};

/// The right member of an equation as a sum of products, in the names of the text. In the working
/// form a sum that may pass the limit of products is an IllegalOperationException with the name of
/// the variable; else the cover itself ends the process.
std::string sum_text(const TargetText& text, const SumTexts& texts, const TargetEquation& equation);

/// Number of paths of f to one, at most `limit`: no cover has more products.
long count_products(const bdd& f, long limit);

}  // namespace kiva
