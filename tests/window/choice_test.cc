#include <QHeaderView>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include "tests/window/window_test.h"

namespace kiva::test {

class Choice : public WindowTest {
 protected:
  Choice() { open(example("rails")); }

  QRadioButton* radio(const std::string& word) {
    if (word == "one") return debugger()->one;
    if (word == "zero") return debugger()->zero;
    if (word == "top") return debugger()->top;
    return debugger()->bottom;
  }
  /// The checked radios, by their words.
  std::vector<std::string> checked() {
    std::vector<std::string> words;
    for (const char* word : {"one", "zero", "top", "bottom"})
      if (radio(word)->isChecked()) words.push_back(word);
    return words;
  }
};

TEST_F(Choice, ARadioBeforeAnyRowSaysSoAndStaysClear) {
  pick(debugger()->one);
  EXPECT_EQ(messages, QStringList{"No Input Selected !!"});
  EXPECT_TRUE(checked().empty());
  EXPECT_EQ(shown_word(inputs(), 0), "bottom");
  pick(debugger()->one);
  EXPECT_EQ(messages.size(), 2) << "the radio was cleared, so it can be picked again";
}

TEST_F(Choice, ARadioLeftWithNoRowSelectedSaysNothing) {
  window->set_ColorBleu(false);
  window->set_ColorNoir(false);
  EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Choice, EveryStateReachesTheChosenRowAlone) {
  for (const char* word : {"one", "zero", "top", "bottom", "one"}) {
    click_row(1);
    pick(radio(word));
    EXPECT_EQ(shown_word(inputs(), 1), word);
    EXPECT_EQ(shown_word(inputs(), 0), "bottom");
    EXPECT_EQ(checked(), std::vector<std::string>{word});
  }
}

TEST_F(Choice, AClickShowsTheRowsOwnStateAndChangesNone) {
  click_row(0);
  pick(debugger()->one);
  click_row(1);
  EXPECT_EQ(checked(), std::vector<std::string>{"bottom"});
  pick(debugger()->zero);
  for (int round = 0; round < 2; ++round) {
    click_row(0);
    EXPECT_EQ(checked(), std::vector<std::string>{"one"});
    EXPECT_EQ(shown_word(inputs(), 0), "one");
    click_row(1);
    EXPECT_EQ(checked(), std::vector<std::string>{"zero"});
    EXPECT_EQ(shown_word(inputs(), 1), "zero");
  }
}

TEST_F(Choice, TheSameRadioWorksAgainAfterInit) {
  click_row(0);
  pick(debugger()->one);
  press_init();
  EXPECT_TRUE(checked().empty());
  EXPECT_EQ(shown_word(inputs(), 0), "bottom");
  EXPECT_EQ(window->couleur_signal->selected_row(), 0) << "the row is still the chosen one";
  EXPECT_EQ(inputs()->currentRow(), 0) << "and shows as such";
  pick(debugger()->one);
  EXPECT_EQ(shown_word(inputs(), 0), "one");
  EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Choice, AClickIntoTheEditorChoosesNoRow) {
  QTest::mouseClick(window->inputs_value[0], Qt::LeftButton);
  EXPECT_EQ(window->couleur_signal->selected_row(), -1);
  QTest::keyClicks(window->inputs_value[0], "42");
  EXPECT_TRUE(window->inputs_value[0]->text().contains("42"));
}

TEST_F(Choice, TheRowsNumberAndTheKeyboardChooseToo) {
  QHeaderView* numbers = inputs()->verticalHeader();
  QTest::mouseClick(numbers->viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(5, numbers->sectionViewportPosition(1) + 5));
  EXPECT_EQ(window->couleur_signal->selected_row(), 1);
  pick(debugger()->one);
  EXPECT_EQ(shown_word(inputs(), 1), "one");

  inputs()->setFocus();
  inputs()->setCurrentCell(1, 0, QItemSelectionModel::NoUpdate);
  QTest::keyClick(inputs(), Qt::Key_Up);
  EXPECT_EQ(window->couleur_signal->selected_row(), 1) << "moving is not choosing";
  QTest::keyClick(inputs(), Qt::Key_Space);
  EXPECT_EQ(window->couleur_signal->selected_row(), 0);
  QTest::keyClick(inputs(), Qt::Key_Down);
  QTest::keyClick(inputs(), Qt::Key_Return);
  EXPECT_EQ(window->couleur_signal->selected_row(), 1);
  EXPECT_EQ(window->running()->state().instant, 0) << "that Return chose";
  QTest::keyClick(inputs(), Qt::Key_Return);
  EXPECT_EQ(window->running()->state().instant, 1) << "on the chosen row it is Go";
  QTest::keyClick(inputs(), Qt::Key_F2);
  EXPECT_TRUE(window->inputs_value[1]->hasFocus());
  QTest::keyClick(window->inputs_value[1], Qt::Key_Return);
  EXPECT_EQ(window->running()->state().instant, 2) << "in a value's editor, too";
  QTest::keyClick(inputs(), Qt::Key_Space);
  EXPECT_EQ(shown_word(inputs(), 1), "zero") << "Space on the chosen row goes through its states";
}

TEST_F(Choice, TheBoxesAndTheSetButtonMoveTheFlags) {
  EXPECT_TRUE(window->set_or_reset->get_Set());
  debugger()->set->click();
  EXPECT_FALSE(window->set_or_reset->get_Set());
  debugger()->reset->click();
  EXPECT_TRUE(window->set_or_reset->get_Reset());
  press_go();
  EXPECT_FALSE(window->set_or_reset->get_Reset());
  EXPECT_FALSE(debugger()->reset->isChecked());
  window->set->click();
  EXPECT_TRUE(window->set_or_reset->get_Set());
  EXPECT_TRUE(debugger()->set->isChecked());
  press_go();
  EXPECT_FALSE(window->set_or_reset->get_Set());
  EXPECT_TRUE(debugger()->set->isChecked()) << "the box keeps its tick";
  window->set->click();
  EXPECT_TRUE(window->set_or_reset->get_Set()) << "ticked already, raised all the same";
}

using EmptyWindow = WindowTest;

TEST_F(EmptyWindow, EveryControlIsHarmless) {
  open_empty();
  debugger()->set->click();
  debugger()->reset->click();
  EXPECT_TRUE(window->set_or_reset->get_Reset());
  window->set->click();
  pick(debugger()->top);
  EXPECT_EQ(messages, QStringList{"No Input Selected !!"});
  press_go();
  EXPECT_EQ(err, "Zuc file not loaded\n");
  press_init();
  EXPECT_EQ(err, "Zuc file not loaded\n");
}

TEST(SignalColor, OneColourAtATimeAndRedMeansNoChoice) {
  QTableWidget table(1, 2);
  table.setItem(0, 0, new QTableWidgetItem("I"));
  Signal_color color;
  EXPECT_EQ(color.Get_Signal_color(), "rouge");
  EXPECT_EQ(color.chosen_state(), SignalState::bottom);
  color.Set_vert(&table, nullptr, 0);
  EXPECT_EQ(color.Get_Signal_color(), "vert");
  EXPECT_EQ(table.item(0, 0)->background().color(), QColor(Qt::green));
  color.Set_noir(&table, nullptr, 0);
  EXPECT_EQ(color.Get_Signal_color(), "noir");
  EXPECT_EQ(table.item(0, 0)->background().color(), QColor(Qt::white));
  color.Set_jaune_test(&table, table.model()->index(0, 0));
  EXPECT_EQ(color.Get_Signal_color(), "rouge");
  EXPECT_EQ(table.palette().color(QPalette::Highlight), QColor(Qt::cyan));
  EXPECT_TRUE(table.item(0, 0)->isSelected());
}

TEST(SetResetColor, BothAreGreen) {
  QCheckBox set, reset;
  Set_Reset_Color color;
  EXPECT_EQ(color.Get_Set_Reset_color(), "vert");
  color.Set_bleu(&set);
  EXPECT_EQ(color.Get_Set_Reset_color(), "bleu");
  EXPECT_EQ(set.palette().color(QPalette::Highlight), QColor(Qt::blue));
  color.Set_jaune(&set);
  EXPECT_EQ(color.Get_Set_Reset_color(), "jaune");
  color.set_vert(&set, &reset);
  EXPECT_EQ(color.Get_Set_Reset_color(), "vert");
  EXPECT_EQ(reset.palette().color(QPalette::Highlight), QColor(Qt::green));
}

}  // namespace kiva::test
