#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "SIMULATOR_ZUC/dialogs.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "tests/support/process_end.h"

class QListWidget;
class QRadioButton;
class QTableWidget;

namespace kiva::test {

/// A window on the screen, dressed as the program dresses it, whose dialogs are answered here.
class WindowTest : public ::testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  /// What the window leaves on the error stream goes to `err`.
  void open_empty();
  void open(const std::string& file);
  /// Opens empty and loads through the button, with the file as the dialog's answer.
  void load_by_button(const QString& file);
  void press_load();

  // What a person does.
  void click_row(int row);
  void pick(QRadioButton* radio);
  void press_go();
  void press_init();
  void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  /// A file of that content in a folder of this test; gives its path.
  std::string write(const std::string& name, const std::string& content);
  static std::string example(const std::string& name);
  /// A module of n inputs and n outputs; output k copies input k.
  static std::string wide_module(int n);

  QTableWidget* inputs() const { return window->inputs_panel->tableWidget; }
  QTableWidget* outputs() const { return window->outputs_panel->tableWidget; }
  DebuggerPanel* debugger() const { return window->debugger_panel; }

  std::unique_ptr<FenPrincipale> window;
  QStringList messages;  ///< shown so far
  QStringList captions;  ///< of the file dialogs
  QString next_file;     ///< answer of the next file dialog; empty for a cancelled one
  std::string err;       ///< of the last open, load, or press
  QTemporaryDir folder;

 private:
  void capture(const std::function<void()>& call);
  void show();

  Dialogs before_;
};

/// The state's word that the row tells, after checking that its colour and its accessible text
/// tell the same.
std::string shown_word(const QTableWidget* table, int row);
std::string shown_word(const QListWidget* list, int row);

/// Lets the window work off its events.
void settle();

}  // namespace kiva::test
