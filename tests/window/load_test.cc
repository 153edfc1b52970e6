#include <QDir>
#include <QDockWidget>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "tests/window/window_test.h"

namespace kiva::test {

using Load = WindowTest;

TEST_F(Load, FromTheCommandLineFillsEveryPanelAndHidesTheLoadPanel) {
  open(example("counter"));
  EXPECT_EQ(err.rfind("Call from tarn with argument:" + example("counter") + "\n", 0), 0u) << err;
  EXPECT_FALSE(window->dock0->isVisible());
  EXPECT_FALSE(window->file_panel->isVisible());
  ASSERT_EQ(inputs()->rowCount(), 2);
  EXPECT_EQ(inputs()->columnCount(), 2);
  EXPECT_EQ(inputs()->horizontalHeaderItem(0)->text(), "Name");
  EXPECT_EQ(outputs()->horizontalHeaderItem(1)->text(), "Value");
  EXPECT_EQ(inputs()->item(0, 0)->text(), "inc");
  EXPECT_EQ(window->inputs_value[1]->text(), "--");
  EXPECT_EQ(inputs()->cellWidget(1, 1), window->inputs_value[1]);
  ASSERT_EQ(outputs()->rowCount(), 4);
  EXPECT_EQ(outputs()->item(3, 0)->text(), "carry");
  EXPECT_EQ(outputs()->item(3, 1), window->item_empty[3]);
  EXPECT_EQ(window->register_panel->listWidget->count(), window->nb_regs);
  EXPECT_EQ(window->locals_panel->listWidget->count(), window->nb_locals);
  EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Load, StartsWithOutputsUnknownInputsBottomAndRegistersAtTheirInitialValue) {
  open(example("counter"));
  for (int row = 0; row < outputs()->rowCount(); ++row)
    EXPECT_EQ(shown_word(outputs(), row), "unknown");
  for (int row = 0; row < inputs()->rowCount(); ++row)
    EXPECT_EQ(shown_word(inputs(), row), "bottom");
  for (int row = 0; row < window->nb_regs; ++row)
    EXPECT_EQ(shown_word(window->register_panel->listWidget, row), "zero");
  // A local that is a register's variable shows as the register; others are not known.
  EXPECT_EQ(shown_word(window->locals_panel->listWidget, 0), "unknown");
  const auto at = std::find(window->Tab_locals.begin(), window->Tab_locals.end(), "B0");
  ASSERT_NE(at, window->Tab_locals.end());
  EXPECT_EQ(shown_word(window->locals_panel->listWidget, int(at - window->Tab_locals.begin())),
            "zero");
  EXPECT_EQ(inputs()->selectedItems().size(), 2) << "the names stay selected";
  EXPECT_EQ(inputs()->currentRow(), 1);
  EXPECT_TRUE(debugger()->set->isChecked());
  EXPECT_FALSE(debugger()->reset->isChecked());
}

TEST_F(Load, ByButtonAsksOnceAndShowsTheSameModuleAfreshTheSecondTime) {
  load_by_button(QString::fromStdString(example("toggle")));
  EXPECT_EQ(captions, QStringList{"Ouvrir un fichier ZUC|Fichier ( *.zuc)"});
  EXPECT_NE(err.find("Start parsing :" + example("toggle") + "\n"), std::string::npos) << err;
  EXPECT_TRUE(window->dock0->isVisible());
  const Module* module = window->pautom;
  click_row(0);
  pick(debugger()->one);
  press_go();
  EXPECT_EQ(window->running()->state().instant, 1);
  press_load();
  EXPECT_EQ(captions.size(), 1) << "no second dialog";
  EXPECT_EQ(window->pautom, module);
  EXPECT_EQ(window->running()->state().instant, 0);
  EXPECT_EQ(shown_word(inputs(), 0), "bottom");
  EXPECT_EQ(shown_word(outputs(), 0), "unknown");
}

TEST_F(Load, TopAndBottomAreOfferedOnlyForAModuleThatIsNotFinalised) {
  open(example("rails"));
  EXPECT_TRUE(debugger()->top->isVisible());
  EXPECT_TRUE(debugger()->bottom->isVisible());
  std::string text = wide_module(1);
  text.replace(text.find("wide 0 0"), 8, "wide 0 1");
  open(write("final.zuc", text));
  EXPECT_FALSE(debugger()->top->isVisible());
  EXPECT_FALSE(debugger()->bottom->isVisible());
}

TEST_F(Load, AFileThatFailsIsToldAndTheNextOneLoads) {
  const QString broken =
      QString::fromStdString(write("broken.zuc", "module: M 0 0\ninput: A\noutput: B;\n"));
  load_by_button(broken);
  EXPECT_NE(err.find("ERROR about loading file : " + broken.toStdString()), std::string::npos)
      << err;
  ASSERT_EQ(messages.size(), 1);
  EXPECT_TRUE(messages[0].contains(broken + ":3: ")) << messages[0].toStdString();
  EXPECT_TRUE(window->empty());
  EXPECT_EQ(inputs()->rowCount(), 0);
  EXPECT_TRUE(window->file_panel->isVisible());
  next_file = QString::fromStdString(example("mini"));
  press_load();
  EXPECT_FALSE(window->empty());
  EXPECT_GT(inputs()->rowCount(), 0);
}

TEST_F(Load, ACancelledDialogTouchesNothing) {
  const QStringList before = QDir(folder.path()).entryList(QDir::Files);
  load_by_button("");
  EXPECT_NE(err.find("Start parsing :\nFILE NOT FOUND !\n"), std::string::npos) << err;
  EXPECT_TRUE(messages.isEmpty()) << "a person who cancels knows";
  EXPECT_FALSE(std::filesystem::exists(".log"));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), before);
}

TEST_F(Load, AMissingFileOnTheCommandLineLeavesTheLoadPanel) {
  const std::string missing = folder.filePath("none.zuc").toStdString();
  open(missing);
  EXPECT_NE(err.find("FILE NOT FOUND !\n"), std::string::npos) << err;
  EXPECT_TRUE(window->dock0->isVisible());
  EXPECT_TRUE(window->file_panel->isVisible());
  ASSERT_EQ(messages.size(), 1);
  EXPECT_TRUE(messages[0].contains(QString::fromStdString(missing)));
  EXPECT_FALSE(std::filesystem::exists(missing + ".log"));
}

TEST_F(Load, TheTraceLiesBesideTheFile) {
  const std::string file = write("wide.zuc", wide_module(2));
  std::ofstream(file + ".log") << "left from before";
  open(file);
  std::ifstream log(file + ".log");
  std::string line;
  std::getline(log, line);
  EXPECT_NE(line, "left from before");
  EXPECT_FALSE(line.empty());
}

TEST_F(Load, ATraceThatCannotBeWrittenDoesNotMatter) {
  const std::string file = write("wide.zuc", wide_module(2));
  std::filesystem::create_directory(file + ".log");
  open(file);
  EXPECT_EQ(inputs()->rowCount(), 2);
}

TEST_F(Load, FlaggedSignalsHaveNoRowAnywhere) {
  open_empty();
  std::string instance;
  window->pautom = window->parse(write("wide.zuc", wide_module(4)), instance);
  window->pautom->getInputSignalList()[1]->setValue();
  window->pautom->getOutputSignalList()[2]->setValue();
  press_load();
  EXPECT_EQ(window->Tab, (std::vector<std::string>{"I0", "I2", "I3"}));
  EXPECT_EQ(window->Tab_out, (std::vector<std::string>{"O0", "O1", "O3"}));
  EXPECT_EQ(window->nb_inputs, 3);
  EXPECT_EQ(inputs()->rowCount(), 3);
  // The second row is the third input.
  click_row(1);
  pick(debugger()->one);
  press_go();
  EXPECT_EQ(shown_word(outputs(), 0), "bottom");
  EXPECT_EQ(shown_word(outputs(), 1), "bottom") << "its input has no row and is never present";
  EXPECT_EQ(shown_word(outputs(), 2), "bottom");
  const Simulation* running = window->running();
  const long id = window->pautom->getSignalManager()->getSignalRefByName("O2")->getBddStatusId(
      window->pautom->getBddWood());
  EXPECT_EQ(running->state().context[id], 1);
  press_init();
  EXPECT_EQ(shown_word(inputs(), 1), "bottom");
}

TEST_F(Load, AnotherModuleIsOpenedAndAFailureLeavesTheOneThatRuns) {
  open(example("toggle"));
  press_go();
  EXPECT_EQ(window->windowTitle(), "toggle - KIVA");
  for (const std::string& wrong : {write("broken.zuc", "module: m"), folder.path().toStdString()})
    EXPECT_FALSE(window->open_file(QString::fromStdString(wrong)));
  EXPECT_EQ(messages.size(), 2);
  EXPECT_EQ(window->running()->state().instant, 1);
  EXPECT_EQ(window->Tab, std::vector<std::string>{"T"});
  next_file = QString::fromStdString(example("counter"));
  key(Qt::Key_O, Qt::ControlModifier);
  settle();
  EXPECT_EQ(window->windowTitle(), "counter - KIVA");
  EXPECT_EQ(window->running()->state().instant, 0);
  // A file that is dropped: one of several, whose module then stands first among the recent ones.
  QMimeData files;
  files.setUrls({QUrl("http://example.org/far.zuc"),
                 QUrl::fromLocalFile(QString::fromStdString(example("toggle")))});
  QDragEnterEvent over(QPoint(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &over);
  EXPECT_TRUE(over.isAccepted());
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &drop);
  EXPECT_EQ(window->windowTitle(), "toggle - KIVA");
  window->show_panels_menu();
  ASSERT_EQ(window->recent_menu->actions().size(), 2);
  window->recent_menu->actions().last()->trigger();
  EXPECT_EQ(window->windowTitle(), "counter - KIVA");
}

TEST_F(Load, TwoThousandRowsWork) {
  open(write("wide.zuc", wide_module(2000)));
  ASSERT_EQ(inputs()->rowCount(), 2000);
  EXPECT_EQ(inputs()->selectedItems().size(), 2000);
  inputs()->scrollToBottom();
  click_row(1999);
  pick(debugger()->one);
  press_go();
  EXPECT_EQ(shown_word(outputs(), 1998), "bottom");
  EXPECT_EQ(shown_word(outputs(), 1999), "one");
}

TEST_F(Load, AModuleWithoutInputsRuns) {
  std::string text = wide_module(1);
  text.replace(text.find("input: I0 ;"), 11, "");
  text.replace(text.find("output: O0 ;"), 12, "local: L0 L1 ;");
  open(write("quiet.zuc", text));
  EXPECT_EQ(inputs()->rowCount(), 0);
  press_go();
  EXPECT_EQ(window->running()->state().instant, 1);
  EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Load, TheTextOfAZuFileIsShownAndNothingElse) {
  open_empty();
  next_file = QString::fromStdString(write("m.zu", "module M:\n  emit O\n"));
  QTest::mouseClick(window->file_panel->pushButton_2, Qt::LeftButton);
  EXPECT_EQ(captions, QStringList{"Ouvrir un fichier ZU|Fichier ( *.zu)"});
  EXPECT_EQ(debugger()->plainTextEdit->toPlainText(), "module M:\n  emit O\n");
  EXPECT_TRUE(window->empty());
  next_file = "";
  QTest::mouseClick(window->file_panel->pushButton_2, Qt::LeftButton);
  EXPECT_EQ(debugger()->plainTextEdit->toPlainText(), "module M:\n  emit O\n");
}

TEST_F(Load, OfSourceTextGoesOnWithWhatIsSaved) {
  const auto text = [](const std::string& inputs, const std::string& body) {
    return "module m:\nInput: " + inputs + ";\nOutput: o;\n" + body + "\nend\n";
  };
  const auto file =
      QString::fromStdString(write("m.zu", text("x, a", "loop { wait a >> emit o }")));
  open_empty();
  ASSERT_TRUE(window->open_file(file));
  EXPECT_EQ(window->file_panel->lineEdit_4->text(), file);
  click_row(1);
  pick(debugger()->one);
  for (int instant = 0; instant < 3; ++instant) press_go();
  window->time()->back();
  EXPECT_EQ(shown_word(outputs(), 0), "one");

  const auto bar = [this] {
    const auto* shown = window->findChild<QStatusBar*>();
    return shown == nullptr || !shown->isVisible() ? QString() : shown->currentMessage();
  };
  write("m.zu", text("x, a", "loop { wait b >> emit o }"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar().contains("m.zu:4:13: error: \"b\""); }, 20000));
  EXPECT_EQ(window->running()->state().instant, 2) << "the older one runs";

  write("m.zu", text("a", "loop { wait 2 a >> emit o }"));
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return inputs()->rowCount() == 1 && !window->time()->busy(); }, 20000));
  EXPECT_EQ(window->running()->state().instant, 2);
  EXPECT_EQ(bar(), "");
  EXPECT_EQ(shown_word(outputs(), 0), "bottom");
  EXPECT_EQ(shown_word(inputs(), 0), "one");
  press_go();
  EXPECT_EQ(shown_word(outputs(), 0), "one");

  window->time()->set_saved(true);
  ASSERT_TRUE(window->open_file(QString::fromStdString(example("toggle"))));
  EXPECT_FALSE(window->open_file(QString::fromStdString(write("bad.zu", "module"))));
  EXPECT_NE(messages.join("").indexOf("bad.zu:1:7: error: "), -1)
      << messages.join("").toStdString();
  EXPECT_EQ(window->pautom->getName(), "toggle");
}

}  // namespace kiva::test
