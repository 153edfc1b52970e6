#include <gtest/gtest.h>

#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QResource>
#include <QStyle>
#include <QTableWidget>
#include <QTest>

#include "SIMULATOR_ZUC/panels/debuggerpanel.h"
#include "SIMULATOR_ZUC/panels/filepanel.h"
#include "SIMULATOR_ZUC/panels/inputsdialog.h"
#include "SIMULATOR_ZUC/panels/localspanel.h"
#include "SIMULATOR_ZUC/panels/outputspanel.h"
#include "SIMULATOR_ZUC/panels/registerpanel.h"
#include "SIMULATOR_ZUC/ressource.h"
#include "tests/window/window_test.h"

namespace kiva::test {

/// Shows the panel at its own size, where the view must have the told place; then at another, where
/// it must keep its distances to all four edges.
void expect_view_at(QDialog& panel, QWidget* view, QSize size, QRect told) {
  EXPECT_EQ(panel.size(), size);
  EXPECT_EQ(panel.windowTitle(), "Dialog");
  panel.show();
  settle();
  EXPECT_EQ(view->geometry(), told);
  const QSize more(-40, 25);
  panel.resize(size + more);
  settle();
  EXPECT_EQ(view->geometry(), QRect(told.topLeft(), told.size() + more));
}

TEST(Panels, ViewsKeepTheirPlace) {
  InputsDialog inputs;
  EXPECT_EQ(inputs.objectName(), "Inputs_form");
  expect_view_at(inputs, inputs.tableWidget, {277, 305}, {10, 30, 241, 250});
  OutputsPanel outputs;
  expect_view_at(outputs, outputs.tableWidget, {329, 305}, {15, 11, 291, 241});
  LocalsPanel locals;
  expect_view_at(locals, locals.listWidget, {200, 305}, {10, 20, 180, 221});
  RegisterPanel registers;
  expect_view_at(registers, registers.listWidget, {200, 305}, {10, 30, 180, 221});
}

TEST(Panels, EscapeAndReturnLeaveAPanelAlone) {
  FilePanel load;
  int pressed = 0;
  QObject::connect(load.pushButton_3, &QPushButton::clicked, [&] { ++pressed; });
  load.show();
  for (Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) QTest::keyClick(load.lineEdit_4, key);
  EXPECT_TRUE(load.isVisible());
  EXPECT_EQ(pressed, 0);
  QTest::keyClick(load.pushButton_3, Qt::Key_Return);
  EXPECT_EQ(pressed, 1);
}

TEST(Resources, EveryPictureHasItsSize) {
  const struct {
    const char* name;
    QSize size;
  } pictures[] = {
      {"go", {40, 40}},
      {"init", {40, 40}},
      {"preferences", {40, 40}},
      {"help", {40, 40}},
      {"view", {40, 40}},
      {"Logo", {302, 58}},
      {"pagefold", {50, 45}},
      {"check_off", {19, 20}},
      {"check_off_hover", {19, 20}},
      {"check_on", {19, 20}},
      {"check_on_hover", {19, 20}},
      {"radio_off", {19, 21}},
      {"radio_off_hover", {19, 21}},
      {"radio_on", {19, 21}},
      {"radio_on_hover", {19, 21}},
  };
  for (const auto& picture : pictures) {
    const QString path = QString(":/img/%1").arg(picture.name);
    EXPECT_EQ(QImage(path + ".png").size(), picture.size) << picture.name;
    EXPECT_EQ(QImage(path + "@2x.png").size(), 2 * picture.size) << picture.name;
  }
}

TEST(Resources, TheStyleSheetIsCompressedAndExpands) {
  const QResource resource(":/style/style.qss");
  ASSERT_TRUE(resource.isValid());
  EXPECT_EQ(resource.compressionAlgorithm(), QResource::ZlibCompression);
  const QString sheet = stringFromResource(":/style/style.qss");
  EXPECT_LT(resource.size(), sheet.size());
  for (const char* rule : {"QHeaderView::section", "QPushButton:default:hover", "QToolTip",
                           "QToolButton[kind=\"toolbar\"]:checked", "radio_on_hover.png"})
    EXPECT_TRUE(sheet.contains(rule)) << rule;
  EXPECT_TRUE(stringFromResource(":/no/such/file").isEmpty());
}

using Style = WindowTest;

TEST_F(Style, IsPlastiqueWithTheSheetOverIt) {
  open_empty();
  // Qt 6 has no such plugin.
  EXPECT_EQ(QApplication::style()->objectName().toLower(),
            QT_VERSION_MAJOR < 6 ? "plastique" : "fusion");
  EXPECT_EQ(window->size(), QSize(945, 680));
  // Rows of the sheet, read back from what is painted.
  const QImage load = window->file_panel->grab().toImage();
  EXPECT_EQ(load.pixelColor(900, 0).name(), "#e0e0e0");
  EXPECT_GT(load.pixelColor(900, load.height() - 1).lightness(), 250);
  const QImage button = window->file_panel->pushButton_2->grab().toImage();
  EXPECT_EQ(button.pixelColor(button.width() / 2, 0).name(), "#a0a0a0");
  const QImage editor = window->file_panel->lineEdit_3->grab().toImage();
  EXPECT_EQ(editor.pixelColor(40, 0).name(), "#8b8b8b");
  EXPECT_NEAR(editor.pixelColor(40, 2).red(), 0xf4, 3);
}

TEST_F(Style, HeadersAreDarkAndColumnsShareTheWidth) {
  open(example("rails"));
  for (QTableWidget* table : {inputs(), outputs()}) {
    const QHeaderView* header = table->horizontalHeader();
    EXPECT_NEAR(header->sectionSize(0), header->sectionSize(1), 1);
    EXPECT_EQ(header->length(), table->viewport()->width());
    const QImage picture = table->horizontalHeader()->viewport()->grab().toImage();
    EXPECT_NEAR(picture.pixelColor(6, 2).red(), 0x60, 4);
  }
}

}  // namespace kiva::test
