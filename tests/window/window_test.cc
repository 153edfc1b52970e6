#include "tests/window/window_test.h"

#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>
#include <fstream>

#include "SIMULATOR_ZUC/application.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/window_look.h"

namespace kiva::test {

WindowTest::WindowTest() : before_(dialogs()) {
  dialogs().show_message = [this](QWidget*, const QString& text) { messages << text; };
  dialogs().ask_file = [this](QWidget*, const QString& caption, const QString& filter) {
    captions << caption + "|" + filter;
    return next_file;
  };
  WindowLook& look = WindowLook::current();
  look.set_scale(1);
  look.set_dark(false);
  look.set_safe_colours(false);
}

WindowTest::~WindowTest() {
  dialogs() = before_;
}

void WindowTest::capture(const std::function<void()>& call) {
  const Outcome outcome = run_captured(call);
  err = outcome.err;
  EXPECT_FALSE(outcome.ended);
}

void WindowTest::show() {
  dress_window(*window);
  window->show();
  window->activateWindow();
  settle();
}

void WindowTest::open_empty() {
  capture([&] {
    window = std::make_unique<FenPrincipale>();
    show();
  });
}

void WindowTest::open(const std::string& file) {
  capture([&] {
    window = std::make_unique<FenPrincipale>(file);
    show();
  });
}

void WindowTest::load_by_button(const QString& file) {
  open_empty();
  next_file = file;
  press_load();
}

void WindowTest::press_load() {
  capture([&] {
    QTest::mouseClick(window->file_panel->pushButton_3, Qt::LeftButton);
    settle();
  });
}

void WindowTest::click_row(int row) {
  const QRect cell = inputs()->visualItemRect(inputs()->item(row, 0));
  QTest::mouseClick(inputs()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

void WindowTest::pick(QRadioButton* radio) {
  QTest::mouseClick(radio, Qt::LeftButton, Qt::NoModifier, QPoint(10, radio->height() / 2));
}

void WindowTest::press_go() {
  capture([&] { QTest::mouseClick(window->go, Qt::LeftButton); });
}

void WindowTest::press_init() {
  capture([&] { QTest::mouseClick(window->reset, Qt::LeftButton); });
}

void WindowTest::key(int key, Qt::KeyboardModifiers modifiers) {
  QWidget* focus = window->focusWidget();
  QTest::keyClick(focus == nullptr ? window.get() : focus, static_cast<Qt::Key>(key), modifiers);
}

std::string WindowTest::write(const std::string& name, const std::string& content) {
  const std::string path = folder.filePath(QString::fromStdString(name)).toStdString();
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

std::string WindowTest::example(const std::string& name) {
  return std::string(KIVA_EXAMPLES) + "/" + name + "/" + name + ".zuc";
}

std::string WindowTest::wide_module(int n) {
  std::string inputs, outputs, nodes, expressions;
  for (int k = 0; k < n; ++k) {
    const std::string number = std::to_string(k);
    inputs += " I" + number;
    outputs += " O" + number;
    for (int rail = 0; rail < 2; ++rail) {
      const std::string read = std::to_string(2 * k + rail);
      const std::string node = std::to_string(2 * k + rail + 1);
      nodes += node + ": " + read + ":0:0,-1\n";
      expressions +=
          "1 0 " + std::to_string(2 * (n + k) + rail) + ":" + node + ",1,(" + read + " )\n";
    }
  }
  return "module: wide 0 0\ninput:" + inputs + " ;\noutput:" + outputs +
         " ;\nconnexion: S R T;\nequation_def:\n" + std::to_string(2 * n + 1) +
         "\n0: -1:-3:-3,1\n" + nodes + "expressions:\n" + expressions + "end:\n";
}

namespace {

template <typename Item>
std::string checked_word(const Item* item) {
  if (item == nullptr) return "no item";
  for (SignalState state : {SignalState::one, SignalState::zero, SignalState::top,
                            SignalState::bottom, SignalState::unknown}) {
    if (item->toolTip() != item->text() + ": " + label_of(state)) continue;
    EXPECT_EQ(item->background().color(), background_of(state));
    EXPECT_EQ(item->data(Qt::AccessibleTextRole).toString(), item->text() + ": " + label_of(state));
    return std::string(look_of(state).word);
  }
  return "no state";
}

}  // namespace

std::string shown_word(const QTableWidget* table, int row) {
  return checked_word(table->item(row, 0));
}

std::string shown_word(const QListWidget* list, int row) {
  return checked_word(list->item(row));
}

void settle() {
  for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
}

}  // namespace kiva::test
