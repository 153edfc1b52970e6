#include "engine/drawing/tikz.h"

#include <iomanip>
#include <sstream>

#include "base/markup.h"

namespace kiva {

namespace {

class Picture {
 public:
  Picture(const Diagram& diagram, const DiagramLayout& layout, double scale)
      : diagram_(diagram), layout_(layout), scale_(scale) {
    out_ << std::fixed << std::setprecision(1);
  }

  std::string text() {
    const double size = (DiagramLayout::text_size - 2) * scale_;
    out_ << std::setprecision(3) << "\\begin{tikzpicture}[x=" << scale_ << "bp, y=-" << scale_
         << "bp, every node/.style={\n  align=center, inner sep=1pt, font=\\sffamily\\fontsize{"
         << size << "}{" << size * 1.2 << "}\\selectfont}]\n"
         << std::setprecision(1) << "\\useasboundingbox (0,0) rectangle ";
    put({layout_.width, layout_.height}) << ";\n";
    for (size_t n = 0; n < layout_.arcs.size(); ++n) put_arc(n);
    for (const DiagramLayout::Arc& arc : layout_.arcs)  // no arc goes over a label
      if (!arc.curve.empty()) put_lines(arc.lines, arc.label, "[fill=white]");
    for (size_t n = 0; n < layout_.nodes.size(); ++n) put_node(n);
    out_ << "\\end{tikzpicture}\n";
    return out_.str();
  }

 private:
  std::ostream& put(DrawnPoint point) { return out_ << '(' << point.x << ',' << point.y << ')'; }

  void put_node(size_t n) {
    const DiagramLayout::Node& node = layout_.nodes[n];
    const Diagram::Shape shape = diagram_.nodes[n].shape;
    const bool box = shape == Diagram::Shape::register_ || shape == Diagram::Shape::function;
    const auto put_shape = [&](double inset) {
      const double w = node.width / 2 - inset, h = node.height / 2 - inset;
      out_ << "\\draw[fill=white] ";
      put({node.centre.x - (box ? w : 0), node.centre.y - (box ? h : 0)});
      if (box)
        put({node.centre.x + w, node.centre.y + h}) << ";\n";
      else
        out_ << " ellipse[x radius=" << w << ", y radius=" << h << "];\n";
    };
    put_shape(0);
    if (shape == Diagram::Shape::final_state) put_shape(3);
    put_lines(node.lines, node.centre, "");
  }

  void put_lines(const std::vector<std::string>& lines, DrawnPoint centre, const char* style) {
    if (lines.empty()) return;
    out_ << "\\node" << style << " at ";
    put(centre) << " {";
    for (size_t n = 0; n < lines.size(); ++n)
      out_ << (n == 0 ? "" : "\\\\") << latex_text(lines[n]);
    out_ << "};\n";
  }

  void put_arc(size_t n) {
    const DiagramLayout::Arc& arc = layout_.arcs[n];
    if (arc.curve.empty()) return;
    out_ << "\\draw[->, >=latex, gray" << (diagram_.arcs[n].weak ? ", dashed" : "") << "] ";
    put(arc.curve.front());
    for (size_t p = 1; p + 2 < arc.curve.size(); p += 3) {
      put_control(" .. controls ", arc.curve[p]);
      put_control(" and ", arc.curve[p + 1]);
      put_control(" .. ", arc.curve[p + 2]);
    }
    put_control(" -- ", arc.tip);
    out_ << ";\n";
  }
  void put_control(const char* word, DrawnPoint point) {
    out_ << word;
    put(point);
  }

  const Diagram& diagram_;
  const DiagramLayout& layout_;
  double scale_;
  std::ostringstream out_;
};

}  // namespace

std::string tikz_text(const Diagram& diagram, const DiagramLayout& layout, double most_width,
                      double most_height) {
  return Picture(diagram, layout, layout.scale_for(most_width, most_height)).text();
}

}  // namespace kiva
