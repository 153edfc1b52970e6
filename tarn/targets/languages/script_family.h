#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "tarn/targets/frame/straight_code.h"

namespace kiva {

/// What Python and JavaScript have in common: registers are fields of an object, inputs and all
/// that is computed are locals of its step.
class ScriptText {
 public:
  /// `object` is what stands in front of a field.
  ScriptText(const TargetText& text, ExpressionTexts texts, std::string object);

  std::string read(long index) const;
  std::string left(const StraightLine& line) const;
  const std::vector<StraightLine>& lines() const { return lines_; }
  /// The names of the interface, by `form`, where "@" stands for one, with commas between.
  std::string inputs(const std::string& form) const;
  std::string outputs(const std::string& form) const;
  /// A line for each register, behind `margin`: what it begins with, or takes over. What is known
  /// of it stands before it, behind `comment`.
  std::string first_values(const std::string& margin, const std::string& end,
                           const std::string& comment) const;
  std::string moves(const std::string& margin, const std::string& end) const;

 private:
  const TargetText& text_;
  std::string object_, zero_, one_;
  std::unordered_set<long> state_;
  std::vector<StraightLine> lines_;
};

}  // namespace kiva
