// Sizes of the style sheet are scaled where they stand as pixels; the dark theme turns the
// lightness of its greys round and leaves its colours.

#include "SIMULATOR_ZUC/window_look.h"

#include <QRegularExpression>
#include <QSettings>
#include <algorithm>
#include <array>
#include <cmath>

#include "SIMULATOR_ZUC/ressource.h"

namespace kiva {

namespace {

constexpr std::array<double, 9> scales{0.75, 1, 1.25, 1.5, 1.75, 2, 2.25, 2.5, 3};

QString with_each(const QString& text, const QRegularExpression& pattern,
                  const std::function<QString(const QRegularExpressionMatch&)>& replacement) {
  QString made;
  int from = 0;
  for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    made += text.mid(from, match.capturedStart() - from) + replacement(match);
    from = match.capturedEnd();
  }
  return made + text.mid(from);
}

QColor turned(const QColor& colour) {
  if (colour.hslSaturation() > 60) return colour;
  // Black on white becomes nearly white on nearly black.
  return QColor::fromHsl(colour.hslHue(), colour.hslSaturation(),
                         30 + (255 - colour.lightness()) * 205 / 255);
}

}  // namespace

WindowLook& WindowLook::current() {
  static WindowLook look;
  return look;
}

WindowLook::WindowLook() {
  const QSettings settings;
  scale_ = std::clamp(settings.value("look/scale", 1.0).toDouble(), scales.front(), scales.back());
  dark_ = settings.value("look/dark").toBool();
  safe_ = settings.value("look/safe").toBool();
}

int WindowLook::px(int told) const {
  const auto scaled = static_cast<int>(std::lround(told * scale_));
  return told > 0 ? std::max(1, scaled) : scaled;
}

QString WindowLook::style_sheet() const {
  QString sheet = stringFromResource(":/style/style.qss");
  if (scale_ != 1) {
    static const QRegularExpression pixels("\\b(\\d+)px");
    sheet = with_each(sheet, pixels, [this](const QRegularExpressionMatch& match) {
      return QString::number(px(match.captured(1).toInt())) + "px";
    });
  }
  if (!dark_) return sheet;
  static const QRegularExpression colours("#[0-9a-fA-F]{6}\\b|(?<=: )(white|black)(?=;)");
  sheet = with_each(sheet, colours, [](const QRegularExpressionMatch& match) {
    return turned(QColor(match.captured())).name();
  });
  return sheet +
         "QWidget { color: #ececec; } QToolButton[kind=\"toolbar\"] { color: white; }"
         "QRadioButton#one, QRadioButton#zero, QRadioButton#bottom, QRadioButton#top {"
         " background-color: #2a2d33; }"
         "QScrollBar { background-color: #4a4f58; } QMenu { background-color: #2a2d33; }"
         "QToolTip { background-color: #2a2d33; color: #ececec; }";
}

QColor WindowLook::state_colour(SignalState state) const {
  static constexpr std::array<QRgb, 5> safe{0xff005a8f, 0xfff0e442, 0xff8a4f7d, 0xffffffff,
                                            0xffd55e00};
  return safe_ ? QColor(safe[static_cast<size_t>(state)])
               : QColor::fromRgb(look_of(state).background);
}

void WindowLook::set_room(const QSize& room) {
  if (std::exchange(room_, room) != room) Q_EMIT changed();
}

void WindowLook::step(int steps) {
  const auto at = std::ranges::lower_bound(scales, scale_ - 0.01);
  const auto number = std::clamp<long>(at - scales.begin() + steps, 0, scales.size() - 1);
  set_scale(scales[static_cast<size_t>(number)]);
}

void WindowLook::set_scale(double scale) {
  if (scale == scale_) return;
  scale_ = std::clamp(scale, scales.front(), scales.back());
  keep();
}

void WindowLook::set_dark(bool dark) {
  if (std::exchange(dark_, dark) != dark) keep();
}

void WindowLook::set_safe_colours(bool safe) {
  if (std::exchange(safe_, safe) != safe) keep();
}

void WindowLook::keep() {
  QSettings settings;
  settings.setValue("look/scale", scale_);
  settings.setValue("look/dark", dark_);
  settings.setValue("look/safe", safe_);
  Q_EMIT changed();
}

}  // namespace kiva
