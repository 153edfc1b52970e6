// Places come from Graphviz's library. A diagram goes there as a graph of numbered nodes whose
// labels have the sizes of our text, and comes back as boxes and curves. Where the source tells the
// place of every state, in points with y downwards, these places are kept; a transition whose point
// is told goes through it, and has its label there.

#include "engine/drawing/layout.h"

#include <gvc.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <sstream>

namespace kiva {

std::vector<std::string> broken_lines(const std::string& text, size_t longest) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (lines.empty() || lines.back().size() + 1 + word.size() > longest)
      lines.push_back(word);
    else
      lines.back() += ' ' + word;
  }
  return lines;
}

namespace {

std::vector<std::string> lines_of(const Diagram::Node& node) {
  std::vector<std::string> lines = broken_lines(node.name);
  if (lines.empty()) lines.emplace_back();
  const bool is_function =
      node.shape == Diagram::Shape::register_ || node.shape == Diagram::Shape::function;
  const std::string shows = node.shows.empty() ? "" : (is_function ? "= " : "/ ") + node.shows;
  for (const std::string& line : broken_lines(shows, 40)) lines.push_back(line);
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
  return text;
}

/// In double quotes, for a text in Graphviz's language.
std::string quoted(const std::string& text) {
  std::string all = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') all += '\\';
    if (c == '\n')
      all += "\\n";
    else
      all += c;
  }
  return all + '"';
}

const char* shape_of(Diagram::Shape shape) {
  return shape == Diagram::Shape::register_ || shape == Diagram::Shape::function ? "box"
                                                                                 : "ellipse";
}

constexpr double points_an_inch = 72;

/// The library's context. One for the process, never freed: its text plugin keeps pointers into the
/// fonts of the context that it has seen last.
GVC_t* context() {
  static GVC_t* const kept = gvContext();
  return kept;
}

bool places_are_told(const Diagram& diagram) {
  return !diagram.nodes.empty() && std::ranges::all_of(diagram.nodes, [](const auto& node) {
    return node.geometry.size() == 3;
  });
}

/// In Graphviz's language, where y goes up: kept there.
std::string place_text(double x, double y) {
  std::ostringstream place;
  place << x << ',' << -y << '!';
  return place.str();
}

/// From the centre of a node towards a point, where its edge is.
DrawnPoint edge_of(const DiagramLayout::Node& node, DrawnPoint towards, double beyond) {
  const double x = towards.x - node.centre.x, y = towards.y - node.centre.y;
  const double a = node.width / 2 + beyond, b = node.height / 2 + beyond;
  const double length = std::hypot(x / a, y / b);
  return length == 0 ? node.centre
                     : DrawnPoint{node.centre.x + x / length, node.centre.y + y / length};
}

/// A curve from one node to another that is at the point half way; a loop where they are the same.
DiagramLayout::Arc told_arc(const DiagramLayout::Node& from, const DiagramLayout::Node& to,
                            DrawnPoint through) {
  constexpr double head = 10;
  const bool loop = from.centre.x == to.centre.x && from.centre.y == to.centre.y;
  const double x = through.x - from.centre.x, y = through.y - from.centre.y;
  const DrawnPoint left{through.x - (loop ? y / 2 : 0), through.y + (loop ? x / 2 : 0)};
  const DrawnPoint right{through.x + (loop ? y / 2 : 0), through.y - (loop ? x / 2 : 0)};
  const DrawnPoint begin = edge_of(from, left, 0), end = edge_of(to, right, head);
  // Of a cubic curve half way: an eighth of its ends, three eighths of its handles.
  const auto handle = [&](double side, double point, double ends) {
    return side + (8 * point - ends) / 6 - point;
  };
  return {
      {begin,
       {handle(left.x, through.x, begin.x + end.x), handle(left.y, through.y, begin.y + end.y)},
       {handle(right.x, through.x, begin.x + end.x), handle(right.y, through.y, begin.y + end.y)},
       end},
      edge_of(to, right, 0),
      through,
      {}};
}

constexpr size_t many_arcs = 150;
/// Ways between the nodes for more arcs can take a minute to find: each is straight, or one curve
/// through the place of its label.
constexpr size_t most_curves = 300;

class Placed {
 public:
  Placed(const Diagram& diagram, bool down)
      : diagram_(diagram),
        fixed_(places_are_told(diagram)),
        straight_(diagram.arcs.size() > most_curves),
        graph_(agopen(name("diagram"), Agdirected, nullptr), &agclose) {
    set(graph_.get(), "rankdir", down ? "TB" : "LR");
    set(graph_.get(), "nodesep", "0.35");
    set(graph_.get(), "ranksep", "0.5");
    set(graph_.get(), "splines", straight_ ? "line" : "true");
    // The best places of many are not worth minutes.
    if (diagram.arcs.size() > many_arcs)
      for (const char* effort : {"nslimit", "nslimit1", "mclimit"})
        set(graph_.get(), effort, "0.2");
    set(graph_.get(), "inputscale", std::to_string(points_an_inch));
    add_nodes();
    add_arcs();
    done_ = gvLayout(context(), graph_.get(), fixed_ ? "neato" : "dot") == 0;
  }
  ~Placed() {
    if (done_) gvFreeLayout(context(), graph_.get());
  }
  Placed(const Placed&) = delete;
  Placed& operator=(const Placed&) = delete;

  DiagramLayout layout() const {
    DiagramLayout all;
    if (!done_) return all;
    const boxf box = GD_bb(graph_.get());
    const double margin = 12;
    const auto point = [&](double x, double y) {
      return DrawnPoint{x - box.LL.x + margin, box.UR.y - y + margin};
    };
    all.width = box.UR.x - box.LL.x + 2 * margin;
    all.height = box.UR.y - box.LL.y + 2 * margin;
    for (size_t n = 0; n < diagram_.nodes.size(); ++n) {
      Agnode_t* node = nodes_[n];
      all.nodes.push_back({point(ND_coord(node).x, ND_coord(node).y),
                           ND_width(node) * points_an_inch, ND_height(node) * points_an_inch,
                           lines_of(diagram_.nodes[n])});
    }
    for (size_t n = 0; n < diagram_.arcs.size(); ++n) {
      const Diagram::Arc& of = diagram_.arcs[n];
      if (through(of))
        all.arcs.push_back(told_arc(all.nodes[of.from], all.nodes[of.to],
                                    point(ND_coord(rooms_.at(n)).x, ND_coord(rooms_.at(n)).y)));
      else
        all.arcs.push_back(arc(arcs_[n], point));
      if (straight_ && !of.label.empty() && of.from != Diagram::nowhere && of.from != of.to)
        all.arcs.back() = told_arc(all.nodes[of.from], all.nodes[of.to], all.arcs.back().label);
      all.arcs.back().lines = broken_lines(of.label);
    }
    return all;
  }

 private:
  /// The library's calls want texts that could be changed.
  static char* name(const char* text) { return const_cast<char*>(text); }

  static void set(void* object, const char* attribute, const std::string& value) {
    agsafeset(object, name(attribute), name(value.c_str()), name(""));
  }

  /// Label, and size where the label has one of its own.
  static void set_text(void* object, const std::string& text) {
    set(object, "label", text);
    set(object, "fontname", "DejaVu Sans");
    set(object, "fontsize", std::to_string(DiagramLayout::text_size));
  }

  void add_nodes() {
    for (size_t n = 0; n < diagram_.nodes.size(); ++n) {
      const Diagram::Node& node = diagram_.nodes[n];
      nodes_.push_back(agnode(graph_.get(), name(('n' + std::to_string(n)).c_str()), 1));
      set_text(nodes_.back(), joined(lines_of(node)));
      set(nodes_.back(), "shape", shape_of(node.shape));
      set(nodes_.back(), "margin", "0.12,0.06");
      if (!fixed_) continue;
      set_place(nodes_.back(), node.geometry[0], node.geometry[1]);
      for (const char* side : {"width", "height"})
        set(nodes_.back(), side, std::to_string(2 * node.geometry[2] / points_an_inch));
    }
  }

  void add_arcs() {
    for (size_t n = 0; n < diagram_.arcs.size(); ++n) {
      const Diagram::Arc& arc = diagram_.arcs[n];
      Agnode_t* from = nullptr;
      if (arc.from == Diagram::nowhere) {
        from = agnode(graph_.get(), name(('i' + std::to_string(n)).c_str()), 1);
        set(from, "label", "");
        set(from, "shape", "point");
        set(from, "width", "0.08");
        if (fixed_) {
          const auto& at = diagram_.nodes[arc.to].geometry;
          set_place(from, at[0] - at[2] - 40, at[1]);
        }
      } else {
        from = nodes_[arc.from];
      }
      arcs_.push_back(
          agedge(graph_.get(), from, nodes_[arc.to], name(std::to_string(n).c_str()), 1));
      const std::string label = joined(broken_lines(arc.label));
      set_text(arcs_.back(), through(arc) ? "" : label);
      if (!through(arc)) continue;
      // Room for the label where the arc shall go.
      Agnode_t* const room = rooms_[n] =
          agnode(graph_.get(), name(('g' + std::to_string(n)).c_str()), 1);
      set_text(room, label);
      set(room, "shape", "plaintext");
      set_place(room, arc.geometry[0], arc.geometry[1]);
    }
  }

  /// Whether the source tells a point of the arc.
  bool through(const Diagram::Arc& arc) const {
    return fixed_ && arc.geometry.size() == 2 && arc.from != Diagram::nowhere;
  }

  static void set_place(void* node, double x, double y) { set(node, "pos", place_text(x, y)); }

  template <class Point>
  static DiagramLayout::Arc arc(Agedge_t* edge, Point point) {
    DiagramLayout::Arc drawn;
    if (ED_label(edge) != nullptr)
      drawn.label = point(ED_label(edge)->pos.x, ED_label(edge)->pos.y);
    const splines* all = ED_spl(edge);
    if (all == nullptr || all->size == 0) return drawn;
    const bezier& curve = all->list[all->size - 1];
    for (size_t n = 0; n < static_cast<size_t>(curve.size); ++n)
      drawn.curve.push_back(point(curve.list[n].x, curve.list[n].y));
    drawn.tip = curve.eflag != 0 ? point(curve.ep.x, curve.ep.y) : drawn.curve.back();
    return drawn;
  }

  const Diagram& diagram_;
  bool fixed_, straight_;
  std::unique_ptr<Agraph_t, int (*)(Agraph_t*)> graph_;
  std::vector<Agnode_t*> nodes_;
  std::vector<Agedge_t*> arcs_;
  std::map<size_t, Agnode_t*> rooms_;  ///< of the labels, by arc that has a told point
  bool done_ = false;
};

}  // namespace

double DiagramLayout::scale_for(double most_width, double most_height) const {
  return std::min({1.0, most_width / std::max(width, 1.0), most_height / std::max(height, 1.0)});
}

DiagramLayout layout_of(const Diagram& diagram) {
  return Placed(diagram, diagram.nodes.size() > 8).layout();
}

DiagramLayout layout_for_page(const Diagram& diagram, double width, double height) {
  // Where ranks go to the right, labels of loops lie one over the other.
  const bool loops = std::ranges::any_of(diagram.arcs, [](const Diagram::Arc& arc) {
    return arc.from == arc.to && !arc.label.empty();
  });
  DiagramLayout right = Placed(diagram, false).layout();
  if (right.scale_for(width, height) == 1 && !loops) return right;
  DiagramLayout down = Placed(diagram, true).layout();
  const double much = loops ? 0.4 : 1;
  return down.scale_for(width, height) > much * right.scale_for(width, height) ? down : right;
}

std::string dot_text(const Diagram& diagram) {
  const bool fixed = places_are_told(diagram);
  std::string text = "digraph " + quoted(diagram.title) + " {\n" +
                     (fixed ? "  graph [layout=neato, inputscale=72];\n" : "") +
                     "  node [fontname=\"DejaVu Sans\"];\n  edge [fontname=\"DejaVu Sans\"];\n";
  for (size_t n = 0; n < diagram.nodes.size(); ++n) {
    const Diagram::Node& node = diagram.nodes[n];
    text += "  n" + std::to_string(n) + " [label=" + quoted(joined(lines_of(node))) +
            ", shape=" + shape_of(node.shape) +
            (node.shape == Diagram::Shape::final_state ? ", peripheries=2" : "");
    if (fixed) text += ", pos=" + quoted(place_text(node.geometry[0], node.geometry[1]));
    text += "];\n";
  }
  for (size_t n = 0; n < diagram.arcs.size(); ++n) {
    const Diagram::Arc& arc = diagram.arcs[n];
    std::string from = "n" + std::to_string(arc.from);
    if (arc.from == Diagram::nowhere) {
      from = "i" + std::to_string(n);
      text += "  " + from + " [shape=point];\n";
    }
    text += "  " + from + " -> n" + std::to_string(arc.to);
    std::string attributes =
        arc.label.empty() ? "" : "label=" + quoted(joined(broken_lines(arc.label)));
    if (arc.weak) attributes += std::string(attributes.empty() ? "" : ", ") + "style=dashed";
    text += attributes.empty() ? ";\n" : " [" + attributes + "];\n";
  }
  return text + "}\n";
}

}  // namespace kiva
