#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTableWidget>
#include <QToolButton>
#include <fstream>
#include <nlohmann/json.hpp>

#include "SIMULATOR_ZUC/row_state.h"
#include "engine/stimuli.h"
#include "tarn/model/data.h"
#include "tarn/model/sexception.h"
#include "tests/window/window_test.h"

namespace kiva::test {

using json = nlohmann::ordered_json;

/// Drives the window by hand through the stimuli of an example, and reads what it shows.
class Replay : public WindowTest, public ::testing::WithParamInterface<const char*> {
 protected:
  QRadioButton* radio(SignalState state) {
    if (state == SignalState::one) return debugger()->one;
    if (state == SignalState::zero) return debugger()->zero;
    return state == SignalState::top ? debugger()->top : debugger()->bottom;
  }
  void set_up_instant(const Stimulus& stimulus) {
    std::vector<SignalState> states(window->nb_inputs, SignalState::zero);
    std::vector<std::string> texts(window->nb_inputs, "--");
    for (const Stimulus::Choice& choice : stimulus.choices) {
      states[choice.row] = choice.state;
      texts[choice.row] = choice.text;
    }
    for (int row = 0; row < window->nb_inputs; ++row) {
      click_row(row);
      pick(radio(states[row]));
      window->inputs_value[row]->setText(QString::fromStdString(texts[row]));
    }
    if (stimulus.set) window->set->click();
    if (stimulus.reset) debugger()->reset->setChecked(true);
  }
  json shown(int instant) {
    json line = {{"instant", instant},
                 {"outputs", json::object()},
                 {"locals", json::object()},
                 {"registers", json::object()}};
    for (int row = 0; row < outputs()->rowCount(); ++row)
      line["outputs"][outputs()->item(row, 0)->text().toStdString()] = {
          shown_word(outputs(), row), outputs()->item(row, 1)->text().toStdString()};
    const auto add = [&](const char* key, const QListWidget* list) {
      for (int row = 0; row < list->count(); ++row)
        line[key][list->item(row)->text().toStdString()] = shown_word(list, row);
    };
    add("locals", window->locals_panel->listWidget);
    add("registers", window->register_panel->listWidget);
    return line;
  }
};

TEST_P(Replay, ShowsTheTraceOfTheExample) {
  const std::string base = example(GetParam()).substr(0, example(GetParam()).size() - 4);
  open(base + ".zuc");
  std::ifstream stimuli(base + ".stimuli"), trace(base + ".trace");
  StimuliReader reader(stimuli, *window->running());
  std::string expected;
  int instant = 0;
  while (const auto stimulus = reader.next()) {
    set_up_instant(*stimulus);
    press_go();
    ASSERT_TRUE(std::getline(trace, expected));
    EXPECT_EQ(shown(++instant), json::parse(expected));
  }
  EXPECT_FALSE(std::getline(trace, expected));
  EXPECT_GE(instant, 3);
  EXPECT_TRUE(messages.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Examples, Replay,
                         ::testing::Values("chain", "counter", "handshake", "mini", "rails",
                                           "toggle"));

using Step = WindowTest;

/// The colour that fills the cell, away from its text and its frame.
QColor painted(const QAbstractItemView* view, const QModelIndex& index) {
  const QRect cell = view->visualRect(index);
  const QImage picture = view->viewport()->grab().toImage();
  return picture.pixelColor(cell.right() - 6, cell.top() + 4);
}

TEST_F(Step, EveryStateHasItsColourOnTheScreenWhateverIsSelected) {
  open(example("rails"));
  // A and B are Bottom and all names are selected: white, not the highlight.
  EXPECT_EQ(painted(inputs(), inputs()->model()->index(0, 0)), QColor(Qt::white));
  EXPECT_EQ(painted(inputs(), inputs()->model()->index(1, 0)), QColor(Qt::white));
  EXPECT_EQ(painted(outputs(), outputs()->model()->index(0, 0)), QColor(Qt::red));

  const struct {
    QRadioButton* a;
    QRadioButton* b;
    QColor join, meet;
  } cases[] = {
      {debugger()->one, debugger()->zero, Qt::blue, Qt::yellow},
      {debugger()->top, debugger()->zero, Qt::green, Qt::yellow},
      {debugger()->bottom, debugger()->bottom, Qt::white, Qt::white},
      {debugger()->top, debugger()->one, Qt::blue, Qt::green},
  };
  for (const auto& choice : cases) {
    click_row(0);
    pick(choice.a);
    click_row(1);
    pick(choice.b);
    press_go();
    outputs()->selectAll();
    EXPECT_EQ(painted(outputs(), outputs()->model()->index(0, 0)), choice.join);
    EXPECT_EQ(painted(outputs(), outputs()->model()->index(1, 0)), choice.meet);
    outputs()->setCurrentCell(0, 0);
    EXPECT_EQ(painted(outputs(), outputs()->model()->index(0, 0)), choice.join);
  }
  EXPECT_EQ(painted(inputs(), inputs()->model()->index(0, 0)), QColor(Qt::green));
  EXPECT_EQ(painted(inputs(), inputs()->model()->index(1, 0)), QColor(Qt::blue));
}

TEST_F(Step, TextIsReadableOnEveryColourAndTheCurrentRowIsFramed) {
  open(example("rails"));
  click_row(0);
  pick(debugger()->one);
  click_row(1);
  pick(debugger()->zero);
  const auto ink = [&](int row) {
    // The pixel of the cell that differs most from its ground, inside the frame.
    const QRect cell = inputs()->visualItemRect(inputs()->item(row, 0)).adjusted(3, 3, -3, -3);
    const QImage picture = inputs()->viewport()->grab(cell).toImage();
    const QColor ground = background_of(row == 0 ? SignalState::one : SignalState::zero);
    QColor found = ground;
    int most = 0;
    for (int x = 0; x < picture.width(); ++x)
      for (int y = 0; y < picture.height(); ++y) {
        const QColor c = picture.pixelColor(x, y);
        const int far = std::abs(c.red() - ground.red()) + std::abs(c.green() - ground.green()) +
                        std::abs(c.blue() - ground.blue());
        if (far > most) {
          most = far;
          found = c;
        }
      }
    return found.lightness();
  };
  EXPECT_GT(ink(0), 220) << "white on blue";
  EXPECT_LT(ink(1), 60) << "black on yellow";
  const QRect cell = inputs()->visualItemRect(inputs()->item(1, 0));
  const QImage picture = inputs()->viewport()->grab().toImage();
  EXPECT_EQ(picture.pixelColor(cell.left() + 20, cell.top()), QColor(Qt::black)) << "current row";
  const QRect other = inputs()->visualItemRect(inputs()->item(0, 0));
  EXPECT_NE(picture.pixelColor(other.left() + 20, other.top()), QColor(Qt::black));
}

TEST_F(Step, AListShowsItsStatesToo) {
  open(example("counter"));
  QListWidget* registers = window->register_panel->listWidget;
  click_row(0);
  pick(debugger()->one);
  click_row(1);
  pick(debugger()->zero);
  press_go();
  registers->selectAll();
  EXPECT_EQ(painted(registers, registers->model()->index(0, 0)), QColor(Qt::blue));
  EXPECT_EQ(painted(registers, registers->model()->index(1, 0)), QColor(Qt::yellow));
}

TEST_F(Step, TheWayBackToTheStart) {
  open(example("counter"));
  click_row(0);
  pick(debugger()->one);
  window->inputs_value[0]->setText("7");
  press_go();
  press_go();
  press_init();
  EXPECT_EQ(window->running()->state().instant, 0);
  EXPECT_EQ(window->inputs_value[0]->text(), "--");
  EXPECT_EQ(shown_word(inputs(), 0), "bottom");
  EXPECT_TRUE(window->set_or_reset->get_Set());
  EXPECT_TRUE(debugger()->set->isChecked());
  for (int row = 0; row < window->nb_regs; ++row)
    EXPECT_EQ(shown_word(window->register_panel->listWidget, row), "zero");
  // The outputs hang on inputs that nobody has chosen yet.
  EXPECT_EQ(shown_word(outputs(), 3), "unknown");
}

TEST_F(Step, GoneAndTakenAgainGivesTheSame) {
  open(example("handshake"));
  const auto run = [&] {
    std::vector<SimulationState> seen;
    for (int instant = 0; instant < 5; ++instant) {
      click_row(instant % window->nb_inputs);
      pick(instant % 3 == 2 ? debugger()->zero : debugger()->one);
      press_go();
      seen.push_back(window->running()->state());
    }
    return seen;
  };
  press_init();
  const std::vector<SimulationState> first = run();
  press_init();
  EXPECT_EQ(run(), first);
}

/// The value of a signal, which cannot be had while `broken` holds.
class FragileValue : public DataSignalValue {
 public:
  using DataSignalValue::DataSignalValue;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override {
    if (broken) throw IllegalOperationException("no value for", "X");
    return "true";
  }
  bool broken = true;
};

TEST_F(Step, AnExceptionIsToldAndTheWindowLivesOn) {
  std::string text = wide_module(1);
  text.replace(text.find("output: O0 ;"), 12, "output: O0 X ;");
  open_empty();
  std::string instance;
  window->pautom = window->parse(write("fragile.zuc", text), instance);
  static FragileValue value(window->pautom->getInputSignal("I0"));
  window->pautom->addSignalBinding(&value, window->pautom->getOutputSignal("X"));
  press_load();
  click_row(0);
  pick(debugger()->one);
  const SimulationState before = window->running()->state();
  press_go();
  const QString told = "***error:FenPrincipale:Simuler: IllegalOperationException: no value for X";
  EXPECT_EQ(messages, QStringList{told});
  EXPECT_EQ(err, told.toStdString() + "\n");
  EXPECT_EQ(window->running()->state(), before) << "half an instant is none";
  EXPECT_TRUE(window->set_or_reset->get_Set()) << "the flags still stand for that instant";
  value.broken = false;
  press_go();
  EXPECT_EQ(window->running()->state().instant, 1);
  EXPECT_EQ(shown_word(outputs(), 0), "one");
  EXPECT_EQ(shown_word(outputs(), 1), "one");
}

TEST_F(Step, AValuedOutputKeepsItsTextUntilInit) {
  open_empty();
  std::string instance;
  window->pautom = window->parse(write("wide.zuc", wide_module(2)), instance);
  Module* module = window->pautom;
  static DataValue value("42");
  // O1 triggers the value of O0.
  static DataBinding binding(module->getOutputSignal("O1"), &value, module->getOutputSignal("O0"));
  module->addBinding(&binding);
  press_load();
  for (int row : {0, 1}) {
    click_row(row);
    pick(debugger()->one);
  }
  press_go();
  EXPECT_EQ(outputs()->item(0, 1)->text(), "42");
  EXPECT_EQ(outputs()->item(1, 1)->text(), "--");
  click_row(0);
  pick(debugger()->zero);
  press_go();
  EXPECT_EQ(shown_word(outputs(), 0), "zero");
  EXPECT_EQ(outputs()->item(0, 1)->text(), "42");
  press_init();
  EXPECT_EQ(outputs()->item(0, 1)->text(), "--");
}

TEST_F(Step, AModuleThatCannotBeShownIsNotThere) {
  open_empty();
  std::string instance;
  Module* other = window->parse(example("counter"), instance);
  window->pautom = window->parse(example("rails"), instance);
  // A local that the module knows no variables of.
  window->pautom->addLocalSignal(other->getInputSignal("inc"));
  press_load();
  ASSERT_EQ(messages.size(), 1);
  EXPECT_TRUE(messages[0].startsWith("***error:FenPrincipale:afficherAll: "));
  EXPECT_TRUE(window->empty());
  EXPECT_EQ(inputs()->rowCount(), 0);
  next_file = QString::fromStdString(example("toggle"));
  press_load();
  EXPECT_FALSE(window->empty());
}

TEST(SignalEval, PaintsAnyContext) {
  std::string text =
      "module: one 0 0\ninput: A B C D E ;\nconnexion: S R T;\nequation_def:\n1\n"
      "0: -1:-3:-3,1\nexpressions:\nend:\n";
  QTemporaryDir folder;
  const std::string file = folder.filePath("one.zuc").toStdString();
  std::ofstream(file) << text;
  FenPrincipale window;
  std::string instance;
  Module* module = window.parse(file, instance);
  ASSERT_NE(module, nullptr);
  std::vector<int> context(module->getBddWood()->my_bdd_manager()->Nb_bdd_vars(), 2);
  const int pairs[] = {1, 0, 0, 1, 1, 1, 0, 0, 1, 2};
  std::copy(std::begin(pairs), std::end(pairs), context.begin());
  const std::string names[] = {"A", "B", "C", "D", "E"};
  QTableWidget table(5, 1);
  QListWidget list;
  for (int row = 0; row < 5; ++row) {
    table.setItem(row, 0, new QTableWidgetItem(QString::fromStdString(names[row])));
    list.addItem(QString::fromStdString(names[row]));
  }
  Signal_eval evaluator;
  evaluator.context_evaluate_color(&list, module, context.data(), names, 0);
  EXPECT_EQ(list.item(0)->background(), QBrush()) << "no rows, nothing painted";
  evaluator.context_evaluate_color(&list, module, context.data(), names, 5);
  evaluator.context_evaluate_color_outputs(&table, module, context.data(), names, 5);
  const char* words[] = {"one", "zero", "top", "bottom", "unknown"};
  for (int row = 0; row < 5; ++row) {
    EXPECT_EQ(shown_word(&list, row), words[row]);
    EXPECT_EQ(shown_word(&table, row), words[row]);
  }

  QTableWidget texts(5, 1);
  for (int row = 0; row < 5; ++row) texts.setItem(row, 0, new QTableWidgetItem("x"));
  evaluator.bdds_evaluate_color(&texts, module, context.data(), names, 5);
  EXPECT_EQ(texts.item(0, 0)->foreground().color(), QColor(Qt::blue));
  EXPECT_EQ(texts.item(1, 0)->background().color(), QColor(Qt::yellow));
  EXPECT_EQ(texts.item(2, 0)->background().color(), QColor(Qt::green));
  EXPECT_EQ(texts.item(3, 0)->foreground().color(), QColor(Qt::white));
  EXPECT_EQ(texts.item(4, 0)->foreground().color(), QColor(Qt::red));
  EXPECT_FALSE(texts.item(3, 0)->isSelected());
}

}  // namespace kiva::test
