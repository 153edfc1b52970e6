#pragma once

#include <string>
#include <vector>

#include "engine/diagram.h"

namespace kiva {

struct DrawnPoint {
  double x, y;
};

/// Where the parts of a diagram stand on a page; y goes down, in points.
struct DiagramLayout {
  struct Node {
    DrawnPoint centre;
    double width, height;
    std::vector<std::string> lines;  ///< its name, then what it shows
  };
  struct Arc {
    std::vector<DrawnPoint> curve;  ///< Bezier: a point, then three for each piece
    DrawnPoint tip;                 ///< of the arrow's head, which begins at the curve's end
    DrawnPoint label;               ///< its centre
    std::vector<std::string> lines;
  };
  double width = 0, height = 0;
  std::vector<Node> nodes;
  std::vector<Arc> arcs;  ///< one without curve is not drawn
  static constexpr double text_size = 11;
  /// By which it is made smaller to fit so many points, at most 1.
  double scale_for(double most_width, double most_height) const;
};

/// Where the source tells the place of every state these places are kept, else they are sought.
DiagramLayout layout_of(const Diagram& diagram);
/// For a page of so many points: to the right or down, whichever fits it better.
DiagramLayout layout_for_page(const Diagram& diagram, double width, double height);

/// The diagram in Graphviz's own language.
std::string dot_text(const Diagram& diagram);

/// Text with long lines broken at blanks.
std::vector<std::string> broken_lines(const std::string& text, size_t longest = 28);

}  // namespace kiva
