// Draws the pictures of the window, each at its size and at twice its size ("@2x", for dense
// screens), as PNG files into the folder given. The files are kept beside this source; draw them
// anew after a change here with the target kiva_pictures.
//
// One family: round badges with a light rim and a white glyph for the actions, the same rim and
// blue for what is ticked, and the four state colours as the accent of the banner.

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <functional>
#include <iostream>

namespace kiva {
namespace {

const QColor kBlue(0x2f, 0x7f, 0xd6);
const QColor kGreen(0x2f, 0x9e, 0x4f);
const QColor kAmber(0xd8, 0x8a, 0x1c);
const QColor kSlate(0x5a, 0x77, 0x99);
const QColor kViolet(0x7b, 0x63, 0xb8);
const QColor kWhite(255, 255, 255);

using Draw = std::function<void(QPainter&)>;

QPen glyph_pen(double width, const QColor& color = kWhite) {
  return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

/// The round ground of an action, 40 by 40.
void badge(QPainter& p, const QColor& color) {
  QLinearGradient fill(0, 2, 0, 38);
  fill.setColorAt(0, color.lighter(135));
  fill.setColorAt(0.5, color);
  fill.setColorAt(1, color.darker(125));
  p.setPen(QPen(QColor(255, 255, 255, 190), 1.6));
  p.setBrush(fill);
  p.drawEllipse(QRectF(2.5, 2.5, 35, 35));
  p.setBrush(Qt::NoBrush);
}

void go(QPainter& p) {
  badge(p, kGreen);
  QPainterPath triangle;
  triangle.moveTo(15.5, 11.5);
  triangle.lineTo(28.5, 20);
  triangle.lineTo(15.5, 28.5);
  triangle.closeSubpath();
  p.setPen(glyph_pen(2));
  p.setBrush(kWhite);
  p.drawPath(triangle);
}

void init(QPainter& p) {
  badge(p, kAmber);
  p.setPen(glyph_pen(3));
  p.drawArc(QRectF(11.5, 11.5, 17, 17), 150 * 16, -300 * 16);
  QPainterPath head;  // the arrow turns back to the start
  head.moveTo(9.2, 10.2);
  head.lineTo(10.6, 18.2);
  head.lineTo(17.6, 14.6);
  head.closeSubpath();
  p.setPen(glyph_pen(1));
  p.setBrush(kWhite);
  p.drawPath(head);
}

void preferences(QPainter& p) {
  badge(p, kSlate);
  const double knob[3] = {24, 15.5, 21};
  for (int row = 0; row < 3; ++row) {
    const double y = 13.5 + 6.5 * row;
    p.setPen(glyph_pen(2.2));
    p.drawLine(QPointF(11.5, y), QPointF(28.5, y));
    p.setPen(QPen(kSlate.darker(130), 1));
    p.setBrush(kWhite);
    p.drawEllipse(QPointF(knob[row], y), 2.9, 2.9);
  }
}

void help(QPainter& p) {
  badge(p, kViolet);
  QPainterPath mark;
  mark.moveTo(14.8, 15.6);
  mark.cubicTo(15, 8.6, 25.6, 8.8, 25.4, 15.4);
  mark.cubicTo(25.3, 19.2, 20, 19.2, 20, 23.6);
  p.setPen(glyph_pen(3.2));
  p.drawPath(mark);
  p.setPen(Qt::NoPen);
  p.setBrush(kWhite);
  p.drawEllipse(QPointF(20, 29), 2.1, 2.1);
}

void view(QPainter& p) {
  badge(p, kBlue);
  QPainterPath eye;
  eye.moveTo(9.5, 20);
  eye.quadTo(20, 9.5, 30.5, 20);
  eye.quadTo(20, 30.5, 9.5, 20);
  p.setPen(glyph_pen(2.2));
  p.drawPath(eye);
  p.setBrush(kWhite);
  p.drawEllipse(QPointF(20, 20), 2.8, 2.8);
}

/// The name in drawn strokes, so that no font decides how it looks, over the trace of four
/// instants in the four state colours. 302 by 58.
void logo(QPainter& p) {
  QPainterPath letters;
  auto stroke = [&](std::initializer_list<QPointF> points) {
    auto at = points.begin();
    letters.moveTo(*at);
    while (++at != points.end()) letters.lineTo(*at);
  };
  const double top = 7, base = 39;
  stroke({{96, top}, {96, base}});
  stroke({{121, top}, {97, 24}, {122, base}});
  stroke({{144, top}, {144, base}});
  stroke({{164, top}, {180, base}, {196, top}});
  stroke({{210, base}, {226, top}, {242, base}});
  stroke({{216, 29}, {236, 29}});
  QLinearGradient silver(0, top, 0, base);
  silver.setColorAt(0, QColor(255, 255, 255));
  silver.setColorAt(1, QColor(196, 204, 214));
  p.setPen(QPen(QColor(0, 0, 0, 90), 8.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(letters.translated(0, 1.5));
  p.setPen(QPen(QBrush(silver), 6.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(letters);

  const QColor states[4] = {QColor(0x3d, 0x8b, 0xff), QColor(0xff, 0xd8, 0x2e),
                            QColor(0x3c, 0xd0, 0x5a), QColor(0xf4, 0xf4, 0xf4)};
  const double low = 54, high = 48;
  for (int instant = 0; instant < 4; ++instant) {
    const double x = 92 + 39.5 * instant;
    QPainterPath pulse;
    pulse.moveTo(x, low);
    pulse.lineTo(x + 10, low);
    pulse.lineTo(x + 10, high);
    pulse.lineTo(x + 28, high);
    pulse.lineTo(x + 28, low);
    pulse.lineTo(x + 36, low);
    p.setPen(glyph_pen(2.4, states[instant]));
    p.drawPath(pulse);
  }

  // The emblem: one round of reaction, closing on itself through its register.
  p.setPen(glyph_pen(4, QColor(0xd5, 0xdc, 0xe4)));
  p.drawArc(QRectF(26, 8, 42, 42), 70 * 16, 290 * 16);
  QPainterPath head;
  head.moveTo(63.5, 4.5);
  head.lineTo(65, 16.5);
  head.lineTo(54.5, 11.5);
  head.closeSubpath();
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0xd5, 0xdc, 0xe4));
  p.drawPath(head);
  p.setBrush(states[0]);
  p.drawRoundedRect(QRectF(39, 21, 16, 16), 3, 3);
}

/// A page corner turned down at the top right, 50 by 45.
void pagefold(QPainter& p) {
  QPainterPath fold;
  fold.moveTo(14, 0);
  fold.quadTo(18, 30, 50, 33);
  fold.lineTo(50, 0);
  fold.closeSubpath();
  QLinearGradient back(20, 24, 50, 0);
  back.setColorAt(0, QColor(255, 255, 255, 235));
  back.setColorAt(0.35, QColor(214, 220, 228, 220));
  back.setColorAt(1, QColor(150, 158, 168, 60));
  p.setPen(QPen(QColor(120, 128, 138, 110), 1));
  p.setBrush(back);
  p.drawPath(fold);
}

void indicator_colors(bool hover, QColor* rim, QColor* ground) {
  *rim = hover ? kBlue : QColor(0x6f, 0x76, 0x7e);
  *ground = hover ? QColor(0xe6, 0xf1, 0xff) : QColor(0xfd, 0xfd, 0xfd);
}

/// 19 by 20.
void check(QPainter& p, bool on, bool hover) {
  QColor rim, ground;
  indicator_colors(hover, &rim, &ground);
  p.setPen(QPen(rim, 1.4));
  p.setBrush(ground);
  p.drawRoundedRect(QRectF(2.2, 2.7, 14.6, 14.6), 3, 3);
  if (!on) return;
  p.setPen(glyph_pen(2.8, kBlue.darker(115)));
  p.setBrush(Qt::NoBrush);
  p.drawPolyline(QPolygonF({{5.6, 10.2}, {8.4, 13.2}, {13.6, 6.6}}));
}

/// 19 by 21.
void radio(QPainter& p, bool on, bool hover) {
  QColor rim, ground;
  indicator_colors(hover, &rim, &ground);
  p.setPen(QPen(rim, 1.4));
  p.setBrush(ground);
  p.drawEllipse(QPointF(9.5, 10.5), 7.3, 7.3);
  if (!on) return;
  p.setPen(Qt::NoPen);
  p.setBrush(kBlue.darker(115));
  p.drawEllipse(QPointF(9.5, 10.5), 3.9, 3.9);
}

bool render(const QString& folder, const QString& name, QSize size, const Draw& draw) {
  for (int scale = 1; scale <= 2; ++scale) {
    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    draw(painter);
    painter.end();
    const QString path = folder + "/" + name + (scale == 2 ? "@2x" : "") + ".png";
    if (!image.save(path, "PNG")) {
      std::cerr << "cannot write " << path.toStdString() << "\n";
      return false;
    }
  }
  return true;
}

/// False when a file could not be written.
bool render_all(const QString& folder) {
  const QSize action(40, 40), box(19, 20), dot(19, 21);
  bool good = render(folder, "go", action, go) && render(folder, "init", action, init) &&
              render(folder, "preferences", action, preferences) &&
              render(folder, "help", action, help) && render(folder, "view", action, view) &&
              render(folder, "Logo", QSize(302, 58), logo) &&
              render(folder, "pagefold", QSize(50, 45), pagefold);
  for (int state = 0; state < 4; ++state) {
    const bool on = state & 1, hover = state & 2;
    const QString suffix = QString(on ? "_on" : "_off") + (hover ? "_hover" : "");
    good = good &&
           render(folder, "check" + suffix, box, [=](QPainter& p) { check(p, on, hover); }) &&
           render(folder, "radio" + suffix, dot, [=](QPainter& p) { radio(p, on, hover); });
  }
  return good;
}

}  // namespace
}  // namespace kiva

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: kiva_pictures FOLDER\n";
    return 2;
  }
  return kiva::render_all(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
