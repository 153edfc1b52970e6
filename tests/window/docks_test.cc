#include <QDockWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>
#include <QToolButton>

#include "tests/window/window_test.h"

namespace kiva::test {

class Docks : public WindowTest {
 protected:
  QDockWidget* dock(int number) { return window->docks()[number]; }
  TitleBar* bar(int number) { return window->title_bars()[number]; }

  void close_by_button(int number) {
    TitleBar* title = bar(number);
    QTest::mouseClick(title, Qt::LeftButton, Qt::NoModifier, QPoint(title->width() - 16, 8));
    settle();
  }

  /// With the left button; what the widget ignores goes on to its parent.
  static void send(QWidget* widget, QEvent::Type type, QPoint at) {
    QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
  }

  /// Every dock still shown in the window is wholly inside it, wide enough to be used, and its
  /// close button with it.
  void expect_usable(const char* when) {
    settle();
    for (int number = 0; number < 6; ++number) {
      if (!dock(number)->isVisible() || dock(number)->isFloating()) continue;
      const QRect place = dock(number)->geometry();
      const std::string which = std::string(when) + ": " + bar(number)->titleText().toStdString();
      EXPECT_TRUE(window->rect().contains(place)) << which;
      EXPECT_GE(place.width(), number == 0 || number == 5 ? window->width() : 150) << which;
      EXPECT_GE(place.height(), number == 0 ? 100 : 130) << which;
      EXPECT_GE(bar(number)->width(), place.width() - 2) << which;
    }
    for (const QWidget* view :
         std::initializer_list<QWidget*>{inputs(), outputs(), window->locals_panel->listWidget,
                                         window->register_panel->listWidget}) {
      if (!view->isVisible()) continue;
      EXPECT_TRUE(view->parentWidget()->rect().contains(view->geometry())) << when;
      EXPECT_GE(view->width(), 100) << when;
    }
  }
};

TEST_F(Docks, StandAsTold) {
  open_empty();
  const struct {
    const char* name;
    const char* title;
    QSize most;
  } told[] = {
      {"Inputs_Dialog", "Load Panel", {QWIDGETSIZE_MAX, 120}},
      {"Inputs_Dialog", "Inputs Panel", {260, 310}},
      {"Locals_Dialog", "Locals Panel", {200, 310}},
      {"Locals_Dialog", "Registers Panel", {200, 310}},
      {"Outputs_Dialog", "Outputs Panel", {329, 310}},
      {"Outputs_Dialog", "Debugger Panel", {QWIDGETSIZE_MAX, 180}},
  };
  for (int number = 0; number < 6; ++number) {
    EXPECT_EQ(dock(number)->objectName(), told[number].name);
    EXPECT_EQ(bar(number)->titleText(), told[number].title);
    EXPECT_EQ(dock(number)->maximumHeight(), told[number].most.height());
    if (told[number].most.width() != QWIDGETSIZE_MAX) {
      EXPECT_EQ(dock(number)->maximumWidth(), told[number].most.width());
    }
    EXPECT_EQ(dock(number)->titleBarWidget(), bar(number));
    EXPECT_EQ(dock(number)->allowedAreas(),
              number == 5 ? Qt::DockWidgetAreas(Qt::BottomDockWidgetArea)
                          : Qt::LeftDockWidgetArea | Qt::BottomDockWidgetArea);
  }
  EXPECT_EQ(window->title3->parentWidget(), window->dock3);
  EXPECT_EQ(window->createPopupMenu(), nullptr);
  expect_usable("at the start");
  for (int number = 1; number < 4; ++number) EXPECT_LT(dock(number)->x(), dock(number + 1)->x());
  EXPECT_LT(dock(0)->y(), dock(1)->y());
}

TEST_F(Docks, ClosedByTheirButtonEachInTurn) {
  for (int number = 0; number < 6; ++number) {
    load_by_button(QString::fromStdString(example("counter")));
    close_by_button(number);
    EXPECT_FALSE(dock(number)->isVisible());
    expect_usable("closed");
  }
}

TEST_F(Docks, DraggedByTheirBarEachInTurn) {
  for (int number = 0; number < 6; ++number) {
    load_by_button(QString::fromStdString(example("counter")));
    TitleBar* title = bar(number);
    send(title, QEvent::MouseButtonPress, QPoint(40, 8));
    send(title, QEvent::MouseMove, QPoint(60, 60));
    settle();
    send(dock(number), QEvent::MouseMove, QPoint(90, 200));
    EXPECT_TRUE(dock(number)->isFloating()) << number;
    send(dock(number), QEvent::MouseButtonRelease, QPoint(90, 200));
    expect_usable("dragged out");
    if (dock(number)->isFloating()) {
      dock(number)->setFloating(false);
      expect_usable("put back");
    }
  }
}

TEST_F(Docks, HiddenEachInTurnFromTheListOfPanelsAndBroughtBack) {
  open(example("counter"));
  window->config->click();
  const QList<QAction*> entries = window->panels_menu->actions();
  ASSERT_GT(entries.size(), 6) << "and what opens other modules";
  EXPECT_TRUE(window->panels_menu->isVisible());
  window->panels_menu->hide();
  for (int number = 5; number >= 0; --number) {
    EXPECT_EQ(entries[number]->text(), bar(number)->titleText());
    EXPECT_EQ(entries[number]->isChecked(), number != 0) << "a file hides the Load panel";
    if (number == 0) continue;
    entries[number]->trigger();
    EXPECT_FALSE(dock(number)->isVisible());
    expect_usable("hidden");
    entries[number]->trigger();
    EXPECT_TRUE(dock(number)->isVisible());
    expect_usable("brought back");
  }
  entries[0]->trigger();
  settle();
  EXPECT_TRUE(window->file_panel->isVisible());
  EXPECT_TRUE(window->title0->isVisible());
  expect_usable("the Load panel brought back");
  for (int number = 0; number < 6; ++number) close_by_button(number);
  for (QAction* entry : entries) entry->trigger();
  expect_usable("all closed, all brought back");
}

}  // namespace kiva::test
