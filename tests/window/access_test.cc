#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QAction>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>
#include <set>

#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "tests/window/window_test.h"

namespace kiva::test {

class Access : public WindowTest {
 protected:
  /// What a person can reach: all that takes the focus or a click.
  std::vector<QWidget*> reachable() {
    std::vector<QWidget*> found;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      const bool takes_part = widget->focusPolicy() != Qt::NoFocus ||
                              qobject_cast<QAbstractButton*>(widget) != nullptr ||
                              qobject_cast<TitleBar*>(widget) != nullptr;
      if (takes_part && widget->isVisibleTo(window.get())) found.push_back(widget);
    }
    return found;
  }
  static QString name_of(QWidget* widget) {
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(widget);
    return access == nullptr ? QString() : access->text(QAccessible::Name);
  }
};

TEST_F(Access, TheWavesTellTheChosenSignal) {
  open(example("rails"));
  press_go();
  window->show_scope();
  settle();
  QWidget* waves = window->scope()->waves();
  const QString first = waves->accessibleDescription();
  EXPECT_TRUE(first.endsWith(" at 1")) << first.toStdString();
  QTest::keyClick(waves, Qt::Key_Down);
  EXPECT_TRUE(waves->accessibleDescription().endsWith(" at 1"));
  EXPECT_NE(waves->accessibleDescription(), first) << "the signal below";
}

TEST_F(Access, EveryReachableWidgetHasAKey) {
  load_by_button(QString::fromStdString(example("rails")));
  std::set<QWidget*> by_tab;
  QWidget* start = window->go;
  QWidget* at = start;
  do {
    if (at->focusPolicy() & Qt::TabFocus) by_tab.insert(at);
    at = at->nextInFocusChain();
  } while (at != start);
  std::set<QString> keys;
  for (QWidget* widget : reachable()) {
    if (qobject_cast<TitleBar*>(widget) != nullptr) continue;  // its dock closes by the list, F8
    if (widget->focusProxy() != nullptr) continue;
    const auto* shortcut = widget->findChild<QShortcut*>(QString(), Qt::FindDirectChildrenOnly);
    const bool is_value = std::count(window->inputs_value.begin(), window->inputs_value.end(),
                                     qobject_cast<QLineEdit*>(widget)) > 0;
    if (is_value) {
      EXPECT_TRUE(by_tab.count(widget) > 0) << "a value's editor is next by Tab, or by F2";
      continue;
    }
    if (qobject_cast<QAbstractScrollArea*>(widget) == nullptr &&
        qobject_cast<QAbstractButton*>(widget) == nullptr &&
        qobject_cast<QLineEdit*>(widget) == nullptr)
      continue;
    if (shortcut == nullptr && widget->parentWidget() != nullptr &&
        qobject_cast<QTableView*>(widget->parentWidget()) != nullptr)
      continue;  // headers and corner belong to their table
    ASSERT_NE(shortcut, nullptr) << widget->metaObject()->className() << " "
                                 << name_of(widget).toStdString();
    EXPECT_TRUE(keys.insert(shortcut->key().toString()).second)
        << shortcut->key().toString().toStdString() << " stands for two widgets";
  }
  EXPECT_TRUE(keys.count("F5") && keys.count("F6"));
}

TEST_F(Access, TabGoesFromTheTableThroughItsRows) {
  open(example("rails"));
  inputs()->setFocus();
  for (QLineEdit* editor : window->inputs_value) {
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), editor);
  }
  QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(window->focusWidget(), window->locals_panel->listWidget);
}

TEST_F(Access, TheKeysWork) {
  open(example("rails"));
  inputs()->setFocus();
  inputs()->setCurrentCell(0, 0, QItemSelectionModel::NoUpdate);
  key(Qt::Key_Space);
  key(Qt::Key_1, Qt::AltModifier);
  EXPECT_EQ(shown_word(inputs(), 0), "one");
  key(Qt::Key_F5);
  EXPECT_EQ(window->running()->state().instant, 1);
  debugger()->one->setFocus();
  key(Qt::Key_Return);
  EXPECT_EQ(window->running()->state().instant, 2);
  debugger()->plainTextEdit->setFocus();
  key(Qt::Key_Return);
  EXPECT_EQ(window->running()->state().instant, 2) << "an editor keeps its Return";
  key(Qt::Key_F5);
  EXPECT_EQ(window->running()->state().instant, 3);
  key(Qt::Key_F6);
  EXPECT_EQ(window->running()->state().instant, 0);
  window->help->setFocus();
  key(Qt::Key_Return);
  EXPECT_EQ(window->running()->state().instant, 0)
      << "Return presses the button that has the focus";
  const auto* help = window->findChild<QDialog*>("help_dialog");
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  settle();
  const auto* text = help->findChild<QLabel*>();
  ASSERT_NE(text, nullptr);
  EXPECT_GE(text->height(), text->heightForWidth(text->width())) << "its last lines are cut off";
}

TEST_F(Access, ToolButtonsHaveTheirTexts) {
  open_empty();
  const struct {
    QToolButton* button;
    const char* text;
    const char* tip;
    QPoint at;
  } told[] = {
      {window->go, "Go", "Go", {40, 10}},
      {window->set, "Set", "Set", {100, 10}},
      {window->reset, "Init", "Reset", {200, 10}},
      {window->config, "Preferences", "Configure Personal finances", {300, 10}},
      {window->help, "Help", "Show about dialog", {400, 10}},
  };
  const QToolButton* before = nullptr;
  for (const auto& row : told) {
    EXPECT_EQ(row.button->text(), row.text);
    EXPECT_EQ(row.button->toolTip(), row.tip);
    EXPECT_EQ(row.button->statusTip(), row.tip);
    EXPECT_EQ(row.button->pos(), row.at);
    EXPECT_EQ(row.button->iconSize(), QSize(40, 40));
    EXPECT_EQ(row.button->property("kind").toString(), "toolbar");
    EXPECT_TRUE(window->header->rect().contains(row.button->geometry())) << row.text;
    EXPECT_FALSE(before != nullptr && before->geometry().intersects(row.button->geometry()))
        << row.text << " " << row.button->width();
    before = row.button;
  }
}

/// Also run with larger scale factors; each run leaves its picture.
using ScaledWindow = WindowTest;

TEST_F(ScaledWindow, NothingIsCutOff) {
  for (const char* kind : {"empty", "running"}) {
    const bool running = std::string(kind) == "running";
    if (running) {
      open(example("rails"));
      click_row(0);
      pick(debugger()->one);
      click_row(1);
      pick(debugger()->zero);
      press_go();
    } else {
      open_empty();
    }
    settle();
    const qreal ratio = window->devicePixelRatioF();
    const QByteArray wanted = qgetenv("QT_SCALE_FACTOR");
    EXPECT_DOUBLE_EQ(ratio, wanted.isEmpty() ? 1 : wanted.toDouble());
    const QPixmap picture = window->grab();
    EXPECT_EQ(picture.size(), QSize(qRound(945 * ratio), qRound(680 * ratio)));
    EXPECT_TRUE(picture.save(QString("%1/window-%2-%3.png").arg(KIVA_PICTURES, kind).arg(ratio)));
    EXPECT_FALSE(QFontInfo(window->font()).family().isEmpty());
    EXPECT_GE(QFontInfo(window->font()).pixelSize(), 12);
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->text().isEmpty()) continue;
      EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()))
          << button->text().toStdString();
      EXPECT_GE(button->height(), button->fontMetrics().height()) << button->text().toStdString();
      const QPoint corner = button->mapTo(window.get(), QPoint(button->width(), button->height()));
      EXPECT_LE(corner.x(), 945) << button->text().toStdString();
      EXPECT_LE(corner.y(), 680) << button->text().toStdString();
      const QRect in_parent = button->parentWidget()->rect();
      EXPECT_TRUE(in_parent.contains(button->geometry())) << button->text().toStdString();
    }
    for (const TitleBar* bar : window->title_bars()) {
      if (!bar->isVisible()) continue;
      EXPECT_LT(4 + bar->fontMetrics().horizontalAdvance(bar->titleText()), bar->width() - 31);
    }
    for (QGroupBox* box : window->findChildren<QGroupBox*>()) {
      QFont bold = box->font();
      bold.setBold(true);
      EXPECT_LE(QFontMetrics(bold).horizontalAdvance(box->title()) + 14, box->width());
    }
  }
}

}  // namespace kiva::test
