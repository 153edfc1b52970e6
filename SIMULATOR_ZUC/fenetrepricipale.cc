// The window's life: construction, loading a file, and how failures are told.

#include "SIMULATOR_ZUC/fenetrepricipale.h"

#include <QDebug>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QTimer>
#include <iostream>

#include "SIMULATOR_ZUC/dialogs.h"
#include "SIMULATOR_ZUC/recovery.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "SIMULATOR_ZUC/server_line.h"
#include "tarn/model/sexception.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva {

FenPrincipale::FenPrincipale() {
  setupUi(this);
  create_gui();
  load_data_ui();
  start_choices();
}

FenPrincipale::FenPrincipale(std::string file) {
  setupUi(this);
  std::cerr << "Call from tarn with argument:" << file << std::endl;
  module_file_ = QFile::decodeName(file.c_str());
  std::string instance;
  if (!guarded("FenPrincipale", [&] { pautom = parse(file, instance); })) pautom = nullptr;
  create_gui();
  load_data_ui();
  start_choices();
  if (pautom != nullptr) {
    afficherAll();
  } else {
    // The message waits for the window.
    QTimer::singleShot(0, this, &FenPrincipale::tell_of_failed_load);
  }
}

FenPrincipale::~FenPrincipale() {
  if (server_line_ != nullptr) server_line_->cancel();
}

void FenPrincipale::start_choices() {
  couleur_signal = std::make_unique<List_Signal_color>();
  set_or_reset = std::make_unique<set_reset>();
  bdd_eval = std::make_unique<Signal_eval>();
}

/// The module at its start, with nothing behind it.
void FenPrincipale::start_time() {
  const bool scope_open = scope_ != nullptr && scope_->isVisible();
  scope_.reset();
  if (recovery_ != nullptr) recovery_->forget();
  recovery_.reset();
  time_.reset();
  simulation_->load();
  time_ = std::make_unique<TimeControl>(simulation_.get(), [this] { return socket_client; });
  connect(time_.get(), &TimeControl::moved, this, &FenPrincipale::show_instant);
  connect(time_.get(), &TimeControl::choices_changed, this, &FenPrincipale::show_instant);
  connect(time_.get(), &TimeControl::run_ended, this, &FenPrincipale::step_ended);
  // What the worker runs nobody else may touch.
  connect(time_.get(), &TimeControl::busy_changed, this, [this](bool busy) {
    for (QWidget* panel : std::initializer_list<QWidget*>{inputs_panel, debugger_panel, file_panel})
      panel->setEnabled(!busy);
  });
  const QString& name = shown_name_.isEmpty() ? module_file_ : shown_name_;
  recovery_ = std::make_unique<Recovery>(time_.get(), name);
  if (recovery_->found()) QTimer::singleShot(0, this, &FenPrincipale::offer_recovery);
  if (scope_open) QTimer::singleShot(0, this, &FenPrincipale::show_scope);
}

const std::vector<int>* FenPrincipale::context() const {
  return simulation_ == nullptr ? nullptr : &simulation_->state().context;
}

void FenPrincipale::tell(const std::string& text) {
  dialogs().show_message(this, QString::fromStdString(text));
}

void FenPrincipale::complain(const std::string& text) {
  std::cerr << text << std::endl;
  tell(text);
}

bool FenPrincipale::guarded(const char* operation, const std::function<void()>& action) {
  std::string text = std::string("***error:FenPrincipale:") + operation + ": ";
  try {
    action();
    return true;
  } catch (const LibraryException& exception) {
    text += exception.text();
  } catch (const std::exception& exception) {
    text += exception.what();
  }
  complain(text);
  return false;
}

Module* FenPrincipale::parse(const std::string& file, std::string& instance) {
  const ZucRead read = read_zuc_file(file, instance, "");
  load_problem_ = read.problem;
  if (!read.opened) {
    std::cerr << "FILE NOT FOUND !" << std::endl;
  } else if (read.module == nullptr) {
    std::cerr << read.problem << "\nERROR about loading file : " << file << std::endl;
  }
  return read.module;
}

void FenPrincipale::tell_of_failed_load() {
  tell("The module cannot be loaded.\n" + load_problem_);
}

void FenPrincipale::afficherAll() {
  valued = valuedO = false;
  clear_panels();
  if (pautom == nullptr) {
    const QString name =
        dialogs().ask_file(this, tr("Ouvrir un fichier ZUC"), tr("Fichier ( *.zuc)"));
    const std::string file = QFile::encodeName(name).toStdString();
    std::cerr << "Start parsing :" << file << std::endl;
    std::string instance;
    if (!guarded("afficherAll", [&] { pautom = parse(file, instance); })) return;
    if (pautom == nullptr) {
      if (!name.isEmpty()) tell_of_failed_load();
      return;
    }
    file_panel->lineEdit_4->setText(name);
    module_file_ = shown_name_ = name;
  }
  const bool shown = guarded("afficherAll", [&] {
    if (simulation_ == nullptr) simulation_ = std::make_unique<Simulation>(pautom);
    start_time();
    setWindowTitle(QString::fromStdString(pautom->getName()) + " - KIVA");
    debugger_panel->bottom->setVisible(pautom->getFinalised() == 0);
    debugger_panel->top->setVisible(pautom->getFinalised() == 0);
    fill_inputs();
    fill_outputs();
    fill_locals_and_registers();
    set_or_reset = std::make_unique<set_reset>(simulation_.get());
    bdd_eval = std::make_unique<Signal_eval>();
    couleur_signal->List_initializing(nb_inputs, this, Tab.data());
    point_at_chosen_row();
    reset_flags();
    paint_all();
  });
  if (shown) return;
  // A module that cannot be shown is not there: the next load asks for another file.
  clear_panels();
  start_choices();
  scope_.reset();
  recovery_.reset();
  time_.reset();
  simulation_.reset();
  pautom = nullptr;
}

void FenPrincipale::afficher_ZU() {
  const QString name = dialogs().ask_file(this, tr("Ouvrir un fichier ZU"), tr("Fichier ( *.zu)"));
  if (name.isEmpty()) return;
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
    complain("The file cannot be read: " + name.toStdString() + ": " +
             file.errorString().toStdString());
    return;
  }
  debugger_panel->plainTextEdit->setPlainText(QString::fromUtf8(file.readAll()));
  file_panel->lineEdit_3->setText(name);
}

void FenPrincipale::clear_panels() {
  for (QTableWidget* table : {inputs_panel->tableWidget, outputs_panel->tableWidget}) {
    table->clearContents();
    table->setRowCount(0);
  }
  locals_panel->listWidget->clear();
  register_panel->listWidget->clear();
  inputs_value.clear();
  item_empty.clear();
  Tab.clear();
  Tab_out.clear();
  Tab_locals.clear();
  Tab_registers.clear();
  nb_inputs = nb_outputs = nb_locals = nb_regs = 0;
}

void FenPrincipale::fill_inputs() {
  for (Signal* signal : pautom->getInputSignalList())
    if (signal->isValued(pautom)) valued = true;
  Tab = simulation_->input_names();
  nb_inputs = static_cast<int>(Tab.size());
  QTableWidget* table = inputs_panel->tableWidget;
  table->setRowCount(nb_inputs);
  table->setColumnCount(2);
  table->setHorizontalHeaderLabels({tr("Name"), tr("Value")});
  QWidget* before = table;
  for (int row = 0; row < nb_inputs; ++row) {
    const QString name = QString::fromStdString(Tab[row]);
    auto* editor = new QLineEdit("--");
    editor->setAccessibleName(tr("Value of %1").arg(name));
    auto* below = new QTableWidgetItem;  // who walks the cells meets this and not the editor
    const auto tell = [below, editor] {
      below->setData(Qt::AccessibleTextRole, editor->accessibleName() + ": " + editor->text());
    };
    tell();
    connect(editor, &QLineEdit::textChanged, this, [this, row, tell](const QString& text) {
      simulation_->type_input(static_cast<size_t>(row), text.toStdString());
      tell();
    });
    inputs_value.push_back(editor);
    table->setItem(row, 1, below);
    table->setCellWidget(row, 1, editor);
    table->setItem(row, 0, new QTableWidgetItem(name));
    setTabOrder(before, editor);
    before = editor;
  }
}

void FenPrincipale::fill_outputs() {
  for (Signal* signal : pautom->getOutputSignalList())
    if (signal->isValued(pautom, pautom->getBddWood())) valuedO = true;
  Tab_out = simulation_->output_names();
  nb_outputs = static_cast<int>(Tab_out.size());
  QTableWidget* table = outputs_panel->tableWidget;
  table->setRowCount(nb_outputs);
  table->setColumnCount(2);
  table->setHorizontalHeaderLabels({tr("Name"), tr("Value")});
  for (int row = 0; row < nb_outputs; ++row) {
    table->setItem(row, 0, new QTableWidgetItem(QString::fromStdString(Tab_out[row])));
    item_empty.push_back(new QTableWidgetItem("--"));
    table->setItem(row, 1, item_empty.back());
  }
}

void FenPrincipale::fill_locals_and_registers() {
  for (Signal* signal : pautom->getLocalSignalList())
    if (signal->isValued(pautom)) valued = true;
  Tab_locals = simulation_->local_names();
  Tab_registers = simulation_->register_names();
  nb_locals = static_cast<int>(Tab_locals.size());
  nb_regs = static_cast<int>(Tab_registers.size());
  const auto fill = [](QListWidget* list, const std::vector<std::string>& names) {
    for (const std::string& name : names) list->addItem(QString::fromStdString(name));
  };
  fill(locals_panel->listWidget, Tab_locals);
  fill(register_panel->listWidget, Tab_registers);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a slot by its told signature
void FenPrincipale::messageReceived(QString text) {
  message = text;
  qDebug() << text;
}

}  // namespace kiva
