#pragma once

#include <string>

#include "engine/drawing/layout.h"

namespace kiva {

/// The picture for LaTeX's package tikz, made smaller where it is larger than so many points.
std::string tikz_text(const Diagram& diagram, const DiagramLayout& layout, double most_width,
                      double most_height);

}  // namespace kiva
