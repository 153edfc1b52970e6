#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tarn/targets/frame/target_text.h"

namespace kiva {

/// How a language writes boolean expressions.
struct ExpressionTexts {
  std::string and_text, or_text, not_text;
  std::string differ_text, same_text;  ///< empty where there is no such operator
  std::string zero, one;
  std::function<std::string(long index)> read = {};   ///< the variable at an index
  std::function<std::string(long number)> part = {};  ///< a part that several lines share
};

/// A line of straight-line code: what it assigns, and from what.
struct StraightLine {
  long index = -1;   ///< of the variable; -1 for a part that several lines share
  long number = -1;  ///< of that part
  std::string right = {};
  const TargetEquation* equation = nullptr;  ///< a test on data is this one's; else null
};

/// The equations of a text as expressions a person can read: each line stands behind what it reads,
/// what is read once stands where it is read, unless the line grows long, and what several lines
/// share has a line of its own. What nothing of the interface or the state reads by name may have
/// no line.
std::vector<StraightLine> straight_code(const TargetText& text, const ExpressionTexts& texts);

/// What a line assigns, as the texts name it.
std::string left_of(const StraightLine& line, const ExpressionTexts& texts);

/// The bindings that give a local its value where a signal is present that no line computes: known
/// from the start.
std::vector<const DataBinding*> early_values(const TargetText& text,
                                             const std::vector<StraightLine>& lines);

/// A line that is longer than a hundred columns as several: broken at blanks, what follows four
/// deeper than its start.
std::string broken(const std::string& line);

}  // namespace kiva
