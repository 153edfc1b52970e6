#include "SIMULATOR_ZUC/panels/titlebar.h"

#include <gtest/gtest.h>

#include <QDockWidget>
#include <QImage>
#include <QMainWindow>
#include <QMouseEvent>

#include "SIMULATOR_ZUC/panels/header.h"
#include "tests/window/window_test.h"

namespace kiva::test {

class OpenTitleBar : public TitleBar {
 public:
  using TitleBar::bpress;
  using TitleBar::but_press;
  using TitleBar::rightPm;
  using TitleBar::TitleBar;
};

/// A dock of 300 pixels width whose bar takes events one by one. The close button ends one pixel
/// before the bar's right edge.
class TitleBarTest : public ::testing::Test {
 protected:
  TitleBarTest() {
    main.resize(300, 200);
    dock = new QDockWidget(&main);
    bar = new OpenTitleBar(dock);
    bar->setTitleText("Bar");
    dock->setTitleBarWidget(bar);
    dock->setWidget(new QWidget);
    main.addDockWidget(Qt::LeftDockWidgetArea, dock);
    main.show();
    settle();
    bar->resize(300, 20);
  }

  /// True when the bar accepted the event.
  bool send(QEvent::Type type, QPoint at) {
    const bool held = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, bar->mapToGlobal(at), Qt::LeftButton,
                      held ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    event.accept();
    // Straight to the bar, so that what it ignores does not start a drag.
    static_cast<QObject*>(bar)->event(&event);
    return event.isAccepted();
  }
  bool press(QPoint at) { return send(QEvent::MouseButtonPress, at); }
  bool move(QPoint at) { return send(QEvent::MouseMove, at); }
  bool release(QPoint at) { return send(QEvent::MouseButtonRelease, at); }

  QMainWindow main;
  QDockWidget* dock;
  OpenTitleBar* bar;
  const QPoint on_button{285, 8};
  const QPoint on_title{100, 8};
  const QPoint below_button{285, 60};  ///< outside the hover zone, inside the close zone
};

TEST_F(TitleBarTest, PressOnTheButtonIsTakenAndElsewhereLeftToTheDock) {
  EXPECT_FALSE(press(on_title));
  EXPECT_TRUE(bar->but_press);
  EXPECT_FALSE(bar->bpress);
  EXPECT_TRUE(press(on_button));
  EXPECT_TRUE(bar->bpress);
}

TEST_F(TitleBarTest, TheZonesEndWhereTheyAreTold) {
  // Presses: |w - 8 - x| < 20. Moves: |h - 10 - y| < 10 and |w - 16 - x| < 15.
  EXPECT_FALSE(press({272, 5}));
  EXPECT_TRUE(press({273, 5}));
  EXPECT_TRUE(press({299, 19}));
  EXPECT_FALSE(move({269, 5}));
  EXPECT_TRUE(move({270, 5}));
  EXPECT_TRUE(move({298, 19}));
  EXPECT_FALSE(move({299, 19}));
  EXPECT_FALSE(move({285, 0}));
  EXPECT_FALSE(move({285, 20}));
}

TEST_F(TitleBarTest, MovesMatterOnlyWhileAButtonIsDown) {
  EXPECT_FALSE(move(on_button));
  EXPECT_FALSE(bar->bpress);
  press(on_button);
  EXPECT_FALSE(move(on_title));
  EXPECT_FALSE(bar->bpress);
  EXPECT_TRUE(move(on_button));
  EXPECT_TRUE(bar->bpress);
}

TEST_F(TitleBarTest, ReleaseOnTheButtonClosesTheDock) {
  press(on_button);
  EXPECT_TRUE(release(on_button));
  EXPECT_FALSE(dock->isVisible());
  EXPECT_FALSE(bar->bpress);
  EXPECT_FALSE(bar->but_press);
}

TEST_F(TitleBarTest, ReleaseAwayFromTheButtonLeavesTheDockOpen) {
  press(on_button);
  move(on_title);
  EXPECT_FALSE(release(on_title));
  EXPECT_TRUE(dock->isVisible());
  EXPECT_TRUE(bar->but_press) << "a release that finds the button up changes nothing";

  press(on_button);
  EXPECT_FALSE(release(on_title)) << "pressed, and released elsewhere without a move";
  EXPECT_TRUE(dock->isVisible());
  EXPECT_FALSE(bar->bpress);
  EXPECT_FALSE(bar->but_press);
}

TEST_F(TitleBarTest, AHoverAfterAReleaseOutsideStillHoldsTheButton) {
  press(on_title);
  EXPECT_FALSE(release(on_title));
  EXPECT_TRUE(move(on_button));
  EXPECT_TRUE(bar->bpress);
  EXPECT_TRUE(release(below_button));
  EXPECT_FALSE(dock->isVisible());
}

TEST_F(TitleBarTest, PaintsTheCloseButtonLightAndDark) {
  const auto button_colour = [&](int x, int y) {
    return bar->grab().toImage().pixelColor(300 - 30 - 1 + x, 2 + y);
  };
  EXPECT_EQ(button_colour(16, 5), QColor(Qt::white)) << "the cross";
  EXPECT_EQ(button_colour(5, 0), QColor(66, 67, 70));
  EXPECT_EQ(button_colour(0, 5), QColor(71, 71, 74));
  EXPECT_EQ(button_colour(5, 12), QColor(88, 88, 90));
  press(on_button);
  EXPECT_EQ(button_colour(16, 5), QColor(83, 31, 31));
  EXPECT_EQ(button_colour(5, 0), QColor(Qt::black));
  EXPECT_EQ(button_colour(5, 12), QColor(Qt::black));
}

TEST(TitleBarSize, KnowsItsWidthOnlyAfterThePaint) {
  OpenTitleBar bar;
  EXPECT_EQ(bar.minimumSizeHint(), QSize(0, 20));
  bar.resize(100, 20);
  bar.grab();
  EXPECT_EQ(bar.minimumSizeHint(), QSize(30, 20));
  EXPECT_EQ(bar.sizeHint(), QSize(30, 20));
}

TEST(TitleBarSize, StandsUprightInADockWithVerticalBar) {
  QDockWidget dock;
  auto* bar = new OpenTitleBar(&dock);
  dock.setTitleBarWidget(bar);
  bar->resize(100, 20);
  bar->grab();
  dock.setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetVerticalTitleBar);
  EXPECT_EQ(bar->minimumSizeHint(), QSize(20, 30));
}

TEST(HeaderPicture, GradientUnderTheBanner) {
  Header header;
  header.resize(900, 80);
  EXPECT_EQ(header.minimumHeight(), 80);
  EXPECT_EQ(header.maximumHeight(), 80);
  const QImage picture = header.grab().toImage();
  EXPECT_NEAR(picture.pixelColor(20, 0).red(), 15, 2);
  EXPECT_NEAR(picture.pixelColor(20, 79).green(), 15 + 98 * 79.5 / 100, 2);
  const QImage banner(":/img/Logo.png");
  bool drawn = false;
  for (int x = 0; x < banner.width(); ++x)
    drawn = drawn || picture.pixelColor(500 + x, 10 + 25).lightness() > 200;
  EXPECT_TRUE(drawn);
}

}  // namespace kiva::test
