#pragma once

#include <QMainWindow>
#include <QModelIndex>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "SIMULATOR_ZUC/classic/evaluation.h"
#include "SIMULATOR_ZUC/panels/debuggerpanel.h"
#include "SIMULATOR_ZUC/panels/filepanel.h"
#include "SIMULATOR_ZUC/panels/header.h"
#include "SIMULATOR_ZUC/panels/inputsdialog.h"
#include "SIMULATOR_ZUC/panels/localspanel.h"
#include "SIMULATOR_ZUC/panels/outputspanel.h"
#include "SIMULATOR_ZUC/panels/registerpanel.h"
#include "SIMULATOR_ZUC/panels/titlebar.h"
#include "SIMULATOR_ZUC/set_reset.h"
#include "SIMULATOR_ZUC/signal_color.h"
#include "SIMULATOR_ZUC/source_watch.h"
#include "SIMULATOR_ZUC/time_control.h"
#include "base/sock.h"
#include "engine/simulation.h"
#include "ui_mainfrm.h"

class QDockWidget;
class QLineEdit;
class QMenu;
class QTableWidgetItem;
class QTimer;
class QToolButton;

namespace kiva {

class CalculValue;
class PluginManager;
class Recovery;
class ScopeWindow;
class ServerLine;
struct PanelRow;

/// The main window. The person's choices stand in the simulation alone: rows, radios, boxes and
/// editors show and change them there. Every step is the engine's. No failure of a load or a step
/// leaves it: each is told on the error stream and in a message, and the window stays usable.
class FenPrincipale : public QMainWindow, public Ui::MainWindow {
  Q_OBJECT

 public:
  /// Empty, with its Load panel.
  FenPrincipale();
  /// Shows the module of that file; empty when it cannot be read.
  explicit FenPrincipale(std::string file);
  ~FenPrincipale() override;

  /// Reads a ZUC file; null, with a line on the error stream, when that fails. The parser's trace
  /// goes beside the file.
  Module* parse(const std::string& file, std::string& instance);
  /// The context of the running simulation, one entry for each variable; null without a module.
  const std::vector<int>* context() const;
  const Simulation* running() const { return simulation_.get(); }
  Simulation* simulation() { return simulation_.get(); }
  /// The past of the running module, and the moves in it; null without a module.
  TimeControl* time() const { return time_.get(); }
  /// The second window, where it has been opened.
  ScopeWindow* scope() const { return scope_.get(); }

  /// Keeps the run of the module for a later start; null without a module.
  Recovery* recovery() const { return recovery_.get(); }

  /// Connects to the evaluation server, and shows from now on how that stands; the window lives on
  /// meanwhile. Instants that ask for values run in a worker, and lack none.
  void connect_server(const std::string& host, unsigned short port);
  /// Null until then.
  ServerLine* server_line() const { return server_line_; }

  /// A modal message.
  void No_input_selected();
  // Each gives its radio the state and unchecks the other three.
  void Check_bleu(bool b);
  void Check_jaune(bool b);
  void Check_vert(bool b);
  void Check_noir(bool b);
  /// No radio stays checked, and no slot runs.
  void Check_nothing();

  /// No module, until a load succeeds.
  bool empty() const { return pautom == nullptr; }
  /// The docks in the order of their numbers, and their title bars.
  const std::vector<QDockWidget*>& docks() const { return docks_; }
  const std::vector<TitleBar*>& title_bars() const { return titles_; }
  /// Takes the scale and the colours of WindowLook.
  void dress();
  /// The toolkit's menu of docks is switched off.
  QMenu* createPopupMenu() override { return nullptr; }

  std::vector<QLineEdit*> inputs_value;       ///< by input row
  std::vector<QTableWidgetItem*> item_empty;  ///< column "Value", by output row
  std::vector<std::string> Tab;
  std::vector<std::string> Tab_out;
  std::vector<std::string> Tab_locals;
  std::vector<std::string> Tab_registers;
  int numsocket = 0;
  Sock socket_client = nullptr;
  int nb_inputs = 0;
  int nb_outputs = 0;
  int nb_regs = 0;
  int nb_locals = 0;
  bool valued = false;
  bool valuedO = false;
  QToolButton* go = nullptr;
  QToolButton* reset = nullptr;
  QToolButton* set = nullptr;
  QToolButton* config = nullptr;
  QToolButton* help = nullptr;
  QToolButton* scope_button = nullptr;
  Header* header = nullptr;
  TitleBar *title0 = nullptr, *title1 = nullptr, *title2 = nullptr, *title3 = nullptr,
           *title4 = nullptr, *title5 = nullptr;
  QDockWidget *dock0 = nullptr, *dock1 = nullptr, *dock2 = nullptr, *dock3 = nullptr,
              *dock4 = nullptr, *dock5 = nullptr;
  InputsDialog* inputs_panel = nullptr;
  LocalsPanel* locals_panel = nullptr;
  FilePanel* file_panel = nullptr;
  RegisterPanel* register_panel = nullptr;
  OutputsPanel* outputs_panel = nullptr;
  DebuggerPanel* debugger_panel = nullptr;
  Module* pautom = nullptr;
  std::unique_ptr<List_Signal_color> couleur_signal;
  std::unique_ptr<set_reset> set_or_reset;
  std::unique_ptr<Signal_eval> bdd_eval;
  QString message;
  QTimer* data_timer = nullptr;
  CalculValue* thread_calcul = nullptr;
  PluginManager* pluginManager = nullptr;
  QMenu* panels_menu = nullptr;  ///< of the button `config`: one entry for each panel
  QMenu* recent_menu = nullptr;  ///< in it: the files opened last

 Q_SIGNALS:
  void Module_Parsed(Module* module);
  void Context_send(int* context);

 public Q_SLOTS:
  /// Asks for a file unless a module is there, and shows the module at its start.
  void afficherAll();
  /// Shows the text of a ZU file.
  void afficher_ZU();
  /// The row of the index takes the next choices; the radios show its state.
  void Set_ListColor(QModelIndex index);
  void set_ColorBleu(bool b);
  void set_ColorVert(bool b);
  void set_ColorJaune(bool b);
  void set_ColorNoir(bool b);
  void set_checked(bool b);
  void reset_checked(bool b);
  /// One instant.
  void Simuler();
  /// Back to the start.
  void Initialise();
  void messageReceived(QString text);

  /// Raises the set flag for the next instant and ticks its box.
  void raise_set();
  void show_help();
  void show_panels_menu();
  /// Shows another module, or one of a source text, which is then shown anew with the instants so
  /// far each time that it is saved; false, with a message, and the one that runs as it was where
  /// that fails.
  bool open_file(const QString& name);
  /// Asks for its file.
  void ask_open();
  /// What stands under the legend.
  QString time_line() const;
  /// Opens the scope on the running module; says so where there is none.
  void show_scope();
  /// Everything as the simulation has it: after a move in time, or a choice made elsewhere.
  void show_instant();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void create_gui();
  void load_data_ui();
  void create_docks();
  void create_dock(const PanelRow& row);
  void create_tool_buttons();
  QToolButton* create_tool_button(const char* icon, const QString& tip, QPoint at);
  void connect_all();
  void create_panels_menu();
  void create_look_menu();
  void fill_recent_menu();
  void create_keys();
  void order_focus();
  void fit_tool_buttons();
  void fit_docks();
  void share_height();
  QString key_texts() const;

  void clear_panels();
  void fill_inputs();
  void fill_outputs();
  void fill_locals_and_registers();
  void start_choices();
  void start_time();
  bool show_module(const QString& module_file, const QString& name);
  bool open_source(const QString& name);
  void reload_source();
  void tell_of_source();
  void offer_recovery();
  /// False where a person wants to keep the run that is shown, or its file could not be written.
  bool may_leave_run();
  void step_ended(const QString& told);
  void reset_flags();
  void paint_all();
  void choose_row(int row);
  /// The row's input goes on to the next state that the radios offer.
  void step_row(int row);
  void point_at_chosen_row();
  void show_chosen_state();
  /// The common part of the four radio slots.
  void choose_colour(bool b, void (FenPrincipale::*check)(bool), const char* word,
                     void (List_Signal_color::*colour)(FenPrincipale*, const std::string*));
  void check_only(class QRadioButton* radio, bool b);
  /// Runs `action`; tells of its exception as one of that operation. False after an exception.
  bool guarded(const char* operation, const std::function<void()>& action);
  /// Tells on the error stream and in a message.
  void complain(const std::string& text);
  void tell(const std::string& text);
  void tell_of_failed_load();

  std::vector<QDockWidget*> docks_;
  std::vector<TitleBar*> titles_;
  std::unique_ptr<Simulation> simulation_;
  std::unique_ptr<TimeControl> time_;
  std::unique_ptr<Recovery> recovery_;
  std::unique_ptr<ScopeWindow> scope_;
  std::unique_ptr<SourceWatch> watch_;  ///< null for a module without
  QString module_file_;                 ///< of the running module
  QString shown_name_;                  ///< what a person has opened
  ServerLine* server_line_ = nullptr;
  bool stepping_ = false;     ///< the worker runs an instant for the button
  std::string load_problem_;  ///< of the last file: name, line and reason
  class QDialog* help_dialog_ = nullptr;
};

}  // namespace kiva
