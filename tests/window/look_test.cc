// The look of the windows: every scale without a cut word, both themes and palettes legible.

#include "SIMULATOR_ZUC/window_look.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <cmath>
#include <set>

#include "SIMULATOR_ZUC/application.h"
#include "SIMULATOR_ZUC/cut_name.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "tests/window/window_test.h"

namespace kiva::test {
namespace {

/// Texts that do not fit their buttons and labels, or stand outside the window.
std::string cut_texts(const QWidget& window) {
  std::string cut;
  const auto check = [&](const QWidget* widget, const QString& text) {
    const QPoint corner = widget->mapTo(&window, QPoint(widget->width(), widget->height()));
    const bool fits = widget->width() >= widget->fontMetrics().horizontalAdvance(text) &&
                      widget->height() >= widget->fontMetrics().height();
    const bool inside = corner.x() <= window.width() && corner.y() <= window.height();
    if (!fits || !inside) cut += text.toStdString() + (fits ? " (outside)\n" : "\n");
  };
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
    if (button->isVisible() && !button->text().isEmpty()) check(button, button->text());
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->isVisible() && !label->wordWrap() && label->textFormat() != Qt::RichText &&
        !label->text().contains('<'))
      check(label, label->text());
  return cut;
}

double luminance(const QColor& colour) {
  const auto linear = [](double c) {
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}
double contrast(const QColor& a, const QColor& b) {
  const double one = luminance(a) + 0.05, other = luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

using Look = WindowTest;

TEST_F(Look, NoScaleCutsAWord) {
  open(example("rails"));
  window->show_scope();
  ScopeWindow* scope = window->scope();
  const QSize told = window->size();
  const QRect inputs_at = inputs()->geometry();
  for (double scale : {0.75, 1.5, 2.0, 3.0, 1.0}) {
    WindowLook::current().set_scale(scale);
    scope->resize(static_cast<int>(1180 * scale), static_cast<int>(700 * scale));
    settle();
    EXPECT_EQ(window->size(), QSize(qRound(told.width() * scale), qRound(told.height() * scale)));
    EXPECT_EQ(cut_texts(*window), "") << scale;
    EXPECT_EQ(cut_texts(*scope), "") << scale;
    for (const auto& [picture, widget] :
         {std::pair<const char*, QWidget*>{"told", window.get()}, {"scope", scope}})
      EXPECT_TRUE(
          widget->grab().save(QString("%1/look-%2-%3.png").arg(KIVA_PICTURES, picture).arg(scale)));
  }
  EXPECT_EQ(inputs()->pos(), inputs_at.topLeft()) << "scale 1 is as told";
  // On a small screen the windows stay within it, and nothing but the lists becomes smaller.
  const QSize room(1920, 1080);
  WindowLook::current().set_room(room);
  WindowLook::current().set_scale(2);
  scope->resize(room);
  settle();
  EXPECT_EQ(window->size(), QSize(2 * told.width(), room.height()));
  EXPECT_EQ(cut_texts(*window), "");
  WindowLook::current().set_scale(3);
  settle();
  EXPECT_EQ(window->size(), room);
  EXPECT_LE(scope->minimumSizeHint().width(), room.width());
  EXPECT_LE(window->scope_button->geometry().right(), room.width());
  WindowLook::current().set_room(QSize(1 << 14, 1 << 14));
  WindowLook::current().set_scale(1);
  settle();
  EXPECT_NEAR(inputs()->width(), inputs_at.width(), 6) << "docks share what larger bars needed";
}

TEST(CutName, TellsTheNamesApartAndFits) {
  const QFontMetrics metrics{QFont("DejaVu Sans")};
  const QStringList names{"ACTIFwashSU_0@wash_i1",    "ACTIFwashSU_1@wash_i1",
                          "ACTIFwashA_1@wash_i1",     "an_input_that_is_long_05",
                          "an_input_that_is_long_15", "short"};
  for (int width = metrics.horizontalAdvance("an_input_0"); width < 200; width += 7) {
    std::set<QString> seen;
    for (const QString& name : names) {
      const QString text =
          cut_name(name, metrics, width, names.size(), [&](int i) { return names[i]; });
      EXPECT_TRUE(seen.insert(text).second) << text.toStdString() << " at " << width;
      EXPECT_LE(metrics.horizontalAdvance(text), width) << text.toStdString();
    }
  }
}

TEST_F(Look, ThePreferencesChangeItAndItsTextsAreLegible) {
  open(example("toggle"));
  WindowLook& look = WindowLook::current();
  const auto press = [this](const QString& text) {
    for (QAction* action : window->panels_menu->actions())
      if (action->text() == text) action->trigger();
    settle();
  };
  const QColor told = background_of(SignalState::one);
  press("Larger");
  EXPECT_EQ(look.scale(), 1.25);
  press("Told size");
  EXPECT_EQ(look.scale(), 1);
  for (const bool safe : {false, true}) {
    EXPECT_EQ(look.safe_colours(), safe);
    for (const bool dark : {false, true}) {
      EXPECT_EQ(look.dark(), dark);
      const ScopeLook& scope = ScopeLook::current();
      for (const QColor& text : {scope.text, scope.faint, scope.accent, scope.one})
        EXPECT_GE(contrast(text, scope.pane), 4.5) << text.name().toStdString();
      for (const QColor& ground : {scope.one_fill, scope.started, scope.ended, scope.killed})
        EXPECT_GE(contrast(scope.text, ground), 4.5) << ground.name().toStdString();
      for (int state = 0; state < 5; ++state) {
        const QColor ground = background_of(static_cast<SignalState>(state));
        EXPECT_GE(contrast(text_colour_on(ground), ground), 4.5) << state;
      }
      press("Dark");
    }
    press("Colours without red and green");
  }
  EXPECT_EQ(background_of(SignalState::one), told) << "the told colours again";
}

TEST_F(Look, TheScopeOpensBesideWhereThereIsRoom) {
  QRect place;
  EXPECT_FALSE(place_beside(QRect(0, 0, 1440, 900), QSize(945, 680), place));
  ASSERT_TRUE(place_beside(QRect(0, 0, 1920, 1080), QSize(945, 680), place));
  EXPECT_TRUE(QRect(945, 0, 975, 1080).contains(place));
}

}  // namespace
}  // namespace kiva::test
