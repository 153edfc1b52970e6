#include "engine/drawing/svg.h"

#include <cmath>
#include <sstream>

#include "base/markup.h"

namespace kiva {

namespace {

class Picture {
 public:
  Picture(const Diagram& diagram, const DiagramLayout& layout, const DiagramLight* light,
          const DiagramColours& colours)
      : diagram_(diagram), layout_(layout), light_(light), colours_(colours) {}

  std::string text() {
    out_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << layout_.width << "\" height=\""
         << layout_.height << "\" viewBox=\"0 0 " << layout_.width << ' ' << layout_.height
         << "\" font-family=\"DejaVu Sans, sans-serif\" font-size=\"" << DiagramLayout::text_size
         << "\">\n<title>" << xml_text(diagram_.title) << "</title>\n<rect width=\"100%\" "
         << "height=\"100%\" fill=\"" << colours_.paper << "\"/>\n";
    for (size_t n = 0; n < layout_.arcs.size(); ++n) put_arc(n);
    for (size_t n = 0; n < layout_.arcs.size(); ++n) put_label(n);
    for (size_t n = 0; n < layout_.nodes.size(); ++n) put_node(n);
    out_ << "</svg>\n";
    return out_.str();
  }

 private:
  bool lit(const std::vector<bool> DiagramLight::*which, size_t n) const {
    return light_ != nullptr && n < (light_->*which).size() && (light_->*which)[n];
  }

  void put_node(size_t n) {
    const DiagramLayout::Node& node = layout_.nodes[n];
    const Diagram::Shape shape = diagram_.nodes[n].shape;
    const bool is = lit(&DiagramLight::is, n);
    std::ostringstream style;
    style << "\" fill=\"" << (is ? colours_.here : colours_.paper) << "\" stroke=\"" << colours_.ink
          << "\" stroke-width=\"" << (lit(&DiagramLight::next, n) ? 3 : 1) << "\"/>\n";
    const auto put_shape = [&](double inset) {
      const double w = node.width - 2 * inset, h = node.height - 2 * inset;
      if (shape == Diagram::Shape::register_ || shape == Diagram::Shape::function)
        out_ << "<rect x=\"" << node.centre.x - w / 2 << "\" y=\"" << node.centre.y - h / 2
             << "\" width=\"" << w << "\" height=\"" << h << "\" rx=\""
             << (shape == Diagram::Shape::function ? 6 : 0) << style.str();
      else
        out_ << "<ellipse cx=\"" << node.centre.x << "\" cy=\"" << node.centre.y << "\" rx=\""
             << w / 2 << "\" ry=\"" << h / 2 << style.str();
    };
    put_shape(0);
    if (shape == Diagram::Shape::final_state) put_shape(3);
    put_lines(node.lines, node.centre, is ? " font-weight=\"bold\"" : "", colours_.ink,
              is ? colours_.here : colours_.paper);
  }

  void put_lines(const std::vector<std::string>& lines, DrawnPoint centre, const std::string& style,
                 const char* colour, const char* behind) {
    const double step = DiagramLayout::text_size * 1.2;
    double y = centre.y - step * (static_cast<double>(lines.size()) - 1) / 2 +
               DiagramLayout::text_size * 0.35;
    for (const std::string& line : lines) {
      out_ << "<text x=\"" << centre.x << "\" y=\"" << y << "\" text-anchor=\"middle\" "
           << "paint-order=\"stroke\" stroke-width=\"3\" stroke=\"" << behind << "\" fill=\""
           << colour << '"' << style << '>' << xml_text(line) << "</text>\n";
      y += step;
    }
  }

  void put_arc(size_t n) {
    const DiagramLayout::Arc& arc = layout_.arcs[n];
    if (arc.curve.empty()) return;
    const bool fired = lit(&DiagramLight::fired, n);
    const char* colour = fired ? colours_.fired : colours_.quiet;
    out_ << "<path fill=\"none\" stroke=\"" << colour << "\" stroke-width=\"" << (fired ? 3 : 1)
         << '"' << (diagram_.arcs[n].weak ? " stroke-dasharray=\"5 3\"" : "") << " d=\"";
    for (size_t p = 0; p < arc.curve.size(); ++p)
      out_ << (p == 0 ? "M" : p == 1 ? " C" : " ") << arc.curve[p].x << ',' << arc.curve[p].y;
    out_ << "\"/>\n";
    put_head(arc.curve.back(), arc.tip, colour);
  }

  /// Once all arcs are there, so that none goes over a label.
  void put_label(size_t n) {
    const DiagramLayout::Arc& arc = layout_.arcs[n];
    if (arc.curve.empty()) return;
    put_lines(arc.lines, arc.label,
              lit(&DiagramLight::triggered, n) ? " text-decoration=\"underline\"" : "",
              lit(&DiagramLight::fired, n) ? colours_.fired : colours_.ink, colours_.paper);
  }

  void put_head(DrawnPoint from, DrawnPoint tip, const char* colour) {
    const double dx = tip.x - from.x, dy = tip.y - from.y, length = std::hypot(dx, dy);
    if (length == 0) return;
    const double side = 3.5 / length;
    out_ << "<polygon fill=\"" << colour << "\" points=\"" << tip.x << ',' << tip.y << ' '
         << from.x - dy * side << ',' << from.y + dx * side << ' ' << from.x + dy * side << ','
         << from.y - dx * side << "\"/>\n";
  }

  const Diagram& diagram_;
  const DiagramLayout& layout_;
  const DiagramLight* light_;
  const DiagramColours& colours_;
  std::ostringstream out_;
};

}  // namespace

std::string svg_text(const Diagram& diagram, const DiagramLayout& layout, const DiagramLight* light,
                     const DiagramColours& colours) {
  return Picture(diagram, layout, light, colours).text();
}

}  // namespace kiva
