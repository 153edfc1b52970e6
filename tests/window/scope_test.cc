// The scope: one instant everywhere, the keys, and what is drawn against what the trace says.

#include "SIMULATOR_ZUC/scope/scope_window.h"

#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <random>

#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "tarn/zu/source_map.h"
#include "tests/support/random_module.h"
#include "tests/window/window_test.h"

namespace kiva::test {
namespace {

/// Input a; o is R0, N0 is a, N1 is not a.
const char* const keeper_of_waits =
    "module: w 0 1\ninput: a ;\noutput: o ;\nlocal: R0 N0 R1 N1 ;\nregister: N0 R0 0; N1 R1 0;\n"
    "connexion: S R T;\nequation_def: 3\n0: -1:-3:-3,1\n1: 0:0:0,-1\n2: 4:0:0,-1\n"
    "expressions:\n1 0 2:2,1,(4 )\n1 0 3:2,-1,(4 )\n1 0 6:1,1,(0 )\n1 0 7:1,-1,(0 )\n1 0 "
    "10:1,-1,(0 )\n"
    "1 0 11:1,1,(0 )\nend:\n";

class Scope : public WindowTest {
 protected:
  void open_scope(const std::string& file) {
    open(file);
    QTest::keyClick(window.get(), Qt::Key_F9);
    settle();
    scope = window->scope();
    ASSERT_NE(scope, nullptr);
  }
  void press(const char* keys) {
    QTest::keySequence(scope, QKeySequence(keys));
    settle();
  }
  void answer(const QString& text) {
    QTest::keyClicks(scope->prompt(), text);
    QTest::keyClick(scope->prompt(), Qt::Key_Return);
    settle();
  }
  void wait_for_run() {
    while (window->time()->busy()) QTest::qWait(5);
    settle();
  }
  long instant() { return window->time()->recording().position().instant; }

  /// The state that the picture shows, from heights and colours alone.
  static SignalState drawn(const QImage& picture, QRect cell) {
    const ScopeLook& look = ScopeLook::current();
    const int x = cell.left() + cell.width() / 2 + 4;
    const auto at = [&](int y) { return picture.pixelColor(x, y); };
    if (at(cell.top() + 8) == look.top) return SignalState::top;
    if (at(cell.top() + 5) == look.one) return SignalState::one;
    int dots = 0, hatches = 0;
    for (int i = 0; i < 10; ++i) {
      dots += picture.pixelColor(cell.left() + 6 + i, cell.bottom() - 4) != look.pane;
      hatches += picture.pixelColor(cell.left() + 6 + i, cell.top() + 10) != look.pane;
    }
    if (hatches > 0) return SignalState::unknown;
    return dots == 10 ? SignalState::zero : SignalState::bottom;
  }

  ScopeWindow* scope = nullptr;
};

TEST_F(Scope, ShowsOneInstantEverywhereAndTheKeysMoveIt) {
  open_scope(example("toggle"));
  for (const char* key : {"1", "Return", "1", "Return", "Return"}) press(key);
  EXPECT_EQ(instant(), 3);
  EXPECT_EQ(shown_word(outputs(), 0), "one");
  press("Left");
  press("Home");
  EXPECT_EQ(instant(), 0);
  EXPECT_EQ(shown_word(outputs(), 0), "unknown") << "the told window goes along";
  press("End");
  press("Ctrl+Left");
  EXPECT_EQ(instant(), 1) << "Q has been present since then";
  EXPECT_EQ(shown_word(inputs(), 0), "one");
  press("Return");
  EXPECT_EQ(window->time()->recording().branches(), 2u) << "another choice begins a branch";
  EXPECT_EQ(window->time_line(), "toggle: instant 2 of 2, branch 1: from 1 of main");
  press("B");
  EXPECT_EQ(window->time()->recording().position(), (Recording::Position{0, 3}));
  press("G");
  answer("2");
  EXPECT_EQ(instant(), 2);
  press("P");
  press("1");
  press("Return");
  EXPECT_EQ(window->running()->state().inputs[0], SignalState::zero) << "a pulse has ended";
  press("I");
  EXPECT_EQ(instant(), 0);
  press_go();
  EXPECT_EQ(instant(), 1) << "Go of the told window is the same run";
}

TEST_F(Scope, RunsInTheWorkerUntilAndStops) {
  open_scope(example("counter"));
  press("1");
  press("U");
  answer("carry");
  wait_for_run();
  EXPECT_EQ(instant(), 8);
  press("Shift+Return");
  answer("100");
  wait_for_run();
  EXPECT_EQ(instant(), 108);
  press("Space");
  EXPECT_TRUE(window->time()->busy());
  EXPECT_FALSE(window->inputs_panel->isEnabled());
  EXPECT_FALSE(window->time()->back());
  while (window->time()->progress() == 108) QTest::qWait(1);  // a busy machine
  press("Space");
  wait_for_run();
  EXPECT_GT(instant(), 108);
  press("U");
  answer("carry and");
  EXPECT_FALSE(window->time()->busy());
}

TEST_F(Scope, TellsWhyAndOffersAChange) {
  open_scope(example("toggle"));
  for (const char* key : {"1", "Return", "1", "Return"}) press(key);
  EXPECT_EQ(
      scope->why()->sentences(),
      "Why is Q present at 2?\nT is Zero at 2\nR is One at 2, since 1 [go to 1]\n"
      "Make T One at 2: it is absent then [branch]\n0 of 1 inputs and 0 of 1 registers do not "
      "matter\n");
  QTreeWidgetItem* change = scope->why()->topLevelItem(3);
  Q_EMIT scope->why()->itemClicked(change, 1);
  settle();
  EXPECT_EQ(window->time()->recording().position(), (Recording::Position{1, 2}));
  EXPECT_EQ(shown_word(outputs(), 0), "zero");
}

TEST_F(Scope, DrawsWhatTheRecordingHolds) {
  std::mt19937 random(8);
  for (int round = 0; round < 6; ++round) {
    open_scope(write("m.zuc", random_module(random)));
    TimeControl& time = *window->time();
    for (int i = 0; i < 12; ++i) {
      for (size_t row = 0; row < window->running()->input_rows().size(); ++row)
        time.choose(row, static_cast<SignalState>(random() % 4));
      ASSERT_TRUE(time.go());
    }
    time.first();
    WaveView* waves = scope->waves();
    waves->show_made(true);
    scope->resize(1180, 1400);
    settle();
    const QImage picture = waves->viewport()->grab().toImage();
    int compared = 0;
    for (int row = 0; row < static_cast<int>(waves->rows().size()); ++row) {
      if (waves->rows()[static_cast<size_t>(row)].title) continue;
      for (long at = 1; at <= 12; ++at) {
        const QRect cell = waves->cell(row, at);
        if (!waves->viewport()->rect().contains(cell)) continue;
        const double scale = picture.devicePixelRatio();
        if (scale != 1.0) continue;
        ASSERT_EQ(drawn(picture, cell), shown_state(time.recording().state_at({0, at}),
                                                    waves->rows()[static_cast<size_t>(row)].place))
            << "row " << row << " instant " << at;
        ++compared;
      }
    }
    EXPECT_GT(compared, 60);
  }
}

TEST_F(Scope, LightsTheSource) {
  // A text of two waits, one behind the other, and the map that tells of them.
  const std::string source = write("w.zu", "wait a >> wait b\n");
  const std::string module = write("w.zuc", keeper_of_waits);
  const auto wait = [&](int column, const std::string& n) {
    return R"({"span":[")" + source + "\",1," + std::to_string(column) + ",1," +
           std::to_string(column + 5) + R"(],"leaf":true,"set":"S)" + n +
           R"(","reset":"none","end":"none","active":["R)" + n + R"("],"next":["N)" + n + "\"]}";
  };
  std::string map = R"({"module":"w","zuc":")" + file_hash(module) + R"(","sources":{")" + source +
                    "\":\"" + file_hash(source) +
                    R"("},"locals":[],"instances":[{"module":"w","path":"w","statements":[)" +
                    wait(1, "0") + "," + wait(11, "1") + "]}]}";
  write("w.zuc.map", map);
  open_scope(module);
  const auto lit = [&] {
    std::string words;
    for (const QTextEdit::ExtraSelection& mark : scope->source()->text(0)->extraSelections())
      if (mark.cursor.hasSelection()) words += mark.cursor.selectedText().toStdString() + ";";
    return words;
  };
  EXPECT_EQ(lit(), "") << "nothing has run";
  press("1");
  press("Return");
  EXPECT_EQ(lit(), "wait a;");
  press("1");
  press("Return");
  EXPECT_EQ(lit(), "wait a;wait b;");
  const SourceText* text = scope->source()->text(0);
  EXPECT_EQ(text->signs_of_line(1).toStdString(), "\u25cf\u2715") << "one waits, one has gone";
  EXPECT_EQ(text->words_at(1, 3).toStdString(), "killed now");
  EXPECT_EQ(text->words_at(1, 13).toStdString(), "waits or goes on");
  scope->waves()->choose_place({SignalPlace::input, 0});
  EXPECT_EQ(text->marked_lines(), std::vector<int>{1});
  ASSERT_EQ(scope->source()->signals_of_line(1).size(), 1U) << "b is no signal of the module";
  press("Left");
  EXPECT_EQ(lit(), "wait a;");
  press("Right");
  scope->waves()->choose_place({SignalPlace::output, 0});
  const QString goes_on = "\"wait a\" (line 1) goes on at 2, since 1 [go to 1]\n";
  EXPECT_TRUE(scope->why()->sentences().contains("\n" + goes_on)) << "a register is a statement";
  write("w.zu", "another text\n");
  press("Left");
  press("Right");
  EXPECT_EQ(lit(), "") << "a text that has changed is not lit";
  EXPECT_TRUE(scope->why()->sentences().contains("\nR0 is One at 2")) << "nor cited";
  write("w.zu", "wait a >> wait b\n");
  map.replace(
      map.find("\"statements\""), 0,
      R"("states":[{"name":"A","span":[")" + source + R"(",1,1,1,6],"code":1,"final":false}],)");
  write("w.zuc.map", map);
  open_scope(module);
  for (const char* key : {"1", "Return", "Return"}) press(key);
  scope->waves()->choose_place({SignalPlace::output, 0});
  EXPECT_TRUE(
      scope->why()->sentences().contains("\nthe state is A at 2, since 1 [go to 1]\n  " + goes_on));
  write("w.zuc", std::string(keeper_of_waits) + '\n');
  open_scope(module);
  EXPECT_FALSE(scope->source()->has_source()) << "the map is that of another text";
}

TEST_F(Scope, RunsStimuliAndMarksWhatDiffers) {
  open_scope(example("toggle"));
  const QString file =
      QString::fromStdString(write("t.stimuli", "T -> Q\n# kept\n-> !Q\nT -> Q\n"));
  dialogs().ask_file = [&](QWidget*, const QString&, const QString&) { return file; };
  QString told;
  QObject::connect(window->time(), &TimeControl::run_ended,
                   [&](const QString& text) { told = text; });
  press("O");
  wait_for_run();
  EXPECT_EQ(told, file + ":3: instant 2: expected not Q, is present; present: Q");
  EXPECT_EQ(instant(), 2);
  const Marks marked = window->time()->marks();
  ASSERT_EQ(marked.size(), 2U);
  EXPECT_EQ(marked[1].first.instant, 3);
  EXPECT_EQ(marked[1].second, "expected Q");
  EXPECT_FALSE(window->time()->unsaved());

  write("t.stimuli", "T -> Q\n-> Q\n");
  press("O");
  wait_for_run();
  EXPECT_EQ(told, file + ": 2 instants agree");
  EXPECT_EQ(instant(), 2);
  write("t.stimuli", "T\nX\n");
  EXPECT_TRUE(window->time()->open(file).startsWith(file + ":2: "));
}

TEST_F(Scope, ProvesAndMakesTheRunThatFails) {
  open_scope(example("toggle"));
  QString told;
  QObject::connect(window->time(), &TimeControl::run_ended,
                   [&](const QString& text) { told = text; });
  const auto prove = [&](const char* text) {
    press("N");  // there is no source with properties
    scope->prompt()->setText(text);
    press("Return");
    wait_for_run();
    return told;
  };
  EXPECT_EQ(prove("Q and Q'"), "never Q and Q': fails in instant 2");
  EXPECT_EQ(instant(), 2);
  EXPECT_TRUE(prove("always Q or not Q").startsWith("always Q or not Q: holds: "));
  EXPECT_EQ(instant(), 2) << "nothing is run where it holds";
  EXPECT_EQ(prove("Q and"), "character 6: the expression ends too early");
  EXPECT_EQ(prove("reach Q"), "reach Q: reached in instant 1");
  EXPECT_EQ(instant(), 1);
}

TEST_F(Scope, DrawsRegistersWhereThereIsNoAutomaton) {
  open_scope(write("w.zuc", keeper_of_waits));
  ASSERT_FALSE(scope->diagram()->empty());
  DiagramView* view = scope->diagram()->view();
  EXPECT_EQ(view->told(), "") << "nothing has run";
  press("1");
  press("Return");
  EXPECT_EQ(view->told(), "next R0");
  press("Return");
  EXPECT_EQ(view->told(), "in R0, next R0") << "a choice stays";
  press("Left");
  EXPECT_EQ(view->told(), "next R0");
  const int before = view->width();
  press("]");
  EXPECT_GT(view->width(), before);
  const QString file = folder.path() + "/drawn.svg";
  dialogs().ask_save = [&](QWidget*, const QString&, const QString&) { return file; };
  press("X");
  QFile drawn(file);
  ASSERT_TRUE(drawn.open(QIODevice::ReadOnly));
  EXPECT_TRUE(drawn.readAll().startsWith("<svg "));
}

TEST_F(Scope, FitsItsTextsAndNamesItsWidgets) {
  open_scope(write("m.zuc", wide_module(12)));
  scope->resize(1000, 620);
  press("Return");
  for (const char* key : {"D", "C", "?"}) {
    press(key);
    for (const QWidget* widget : scope->findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      const bool is_control = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                              qobject_cast<const QLineEdit*>(widget) != nullptr;
      if (is_control) {
        EXPECT_NE(widget->accessibleName(), "") << widget->metaObject()->className();
        EXPECT_GE(widget->width(), widget->minimumSizeHint().width());
      }
      if (const auto* label = qobject_cast<const QLabel*>(widget);
          label != nullptr && !label->wordWrap()) {
        EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
      }
    }
  }
}

}  // namespace
}  // namespace kiva::test
