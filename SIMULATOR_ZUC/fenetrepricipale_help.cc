// The keyboard, and the short help.

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"

namespace kiva {

namespace {

/// Gives the widget a key: a button is clicked by it, anything else gets the focus.
void give_key(QWidget* widget, const char* key) {
  auto* shortcut = new QShortcut(QKeySequence(key), widget);
  if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    QObject::connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
  } else {
    QObject::connect(shortcut, &QShortcut::activated, widget,
                     [widget] { widget->setFocus(Qt::ShortcutFocusReason); });
  }
  widget->setAccessibleDescription(QObject::tr("Key: %1").arg(key));
}

bool is_editor(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

bool is_return(const QKeyEvent* event) {
  return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

}  // namespace

void FenPrincipale::create_keys() {
  give_key(go, "F5");
  give_key(reset, "F6");
  give_key(set, "F7");
  give_key(config, "F8");
  give_key(help, "F1");
  give_key(scope_button, "F9");
  give_key(file_panel->pushButton_3, "Alt+N");
  give_key(file_panel->pushButton_2, "Ctrl+U");
  give_key(file_panel->lineEdit_4, "Alt+Z");
  give_key(file_panel->lineEdit_3, "Alt+U");
  give_key(inputs_panel->tableWidget, "Alt+I");
  give_key(locals_panel->listWidget, "Alt+L");
  give_key(register_panel->listWidget, "Alt+G");
  give_key(outputs_panel->tableWidget, "Alt+O");
  give_key(debugger_panel->one, "Alt+1");
  give_key(debugger_panel->zero, "Alt+0");
  give_key(debugger_panel->top, "Alt+T");
  give_key(debugger_panel->bottom, "Alt+B");
  give_key(debugger_panel->set, "Alt+S");
  give_key(debugger_panel->reset, "Alt+R");
  give_key(debugger_panel->plainTextEdit, "Alt+X");
  inputs_panel->tableWidget->installEventFilter(this);
}

void FenPrincipale::order_focus() {
  const std::vector<QWidget*> order = {
      go,
      set,
      reset,
      config,
      help,
      scope_button,
      file_panel->lineEdit_4,
      file_panel->pushButton_3,
      file_panel->lineEdit_3,
      file_panel->pushButton_2,
      inputs_panel->tableWidget,
      locals_panel->listWidget,
      register_panel->listWidget,
      outputs_panel->tableWidget,
      debugger_panel->zero,
      debugger_panel->one,
      debugger_panel->top,
      debugger_panel->bottom,
      debugger_panel->set,
      debugger_panel->reset,
      debugger_panel->plainTextEdit,
  };
  for (size_t next = 1; next < order.size(); ++next) setTabOrder(order[next - 1], order[next]);
}

// In the inputs table Space chooses the current row, and so does Return on a row that is not the
// chosen one; F2 goes to the row's editor. Any other Return goes on to the window.
bool FenPrincipale::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || watched != inputs_panel->tableWidget)
    return QMainWindow::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const int row = inputs_panel->tableWidget->currentRow();
  if (row < 0 || row >= nb_inputs) return false;
  if (key->key() == Qt::Key_F2) {
    inputs_value[row]->setFocus(Qt::ShortcutFocusReason);
    inputs_value[row]->selectAll();
    return true;
  }
  if (key->key() == Qt::Key_Space && row == couleur_signal->selected_row()) {
    step_row(row);
    return true;
  }
  if (key->key() == Qt::Key_Space || (is_return(key) && row != couleur_signal->selected_row())) {
    choose_row(row);
    return true;
  }
  return false;
}

void FenPrincipale::keyPressEvent(QKeyEvent* event) {
  QWidget* focus = focusWidget();
  const bool is_value = std::ranges::find(inputs_value, focus) != inputs_value.end();
  if (!is_return(event) || (is_editor(focus) && !is_value)) {
    QMainWindow::keyPressEvent(event);
    return;
  }
  if ((event->modifiers() & Qt::ShiftModifier) != 0 && time_ != nullptr) {
    show_scope();
    scope_->ask_run();
    return;
  }
  auto* pressed = qobject_cast<QToolButton*>(focus);
  (pressed != nullptr ? pressed : go)->click();
}

QString FenPrincipale::key_texts() const {
  return tr(
      "<p><b>F5</b> or <b>Return</b> Go &nbsp; <b>F6</b> Init &nbsp; <b>F7</b> Set &nbsp; "
      "<b>F8</b> Preferences &nbsp; <b>F1</b> Help &nbsp; <b>F9</b> Scope<br>"
      "<b>Alt+I</b> inputs: <b>Space</b> or <b>Return</b> chooses the row, <b>Space</b> again goes "
      "through its states, <b>F2</b> edits its value<br>"
      "<b>Alt+1</b> One &nbsp; <b>Alt+0</b> Zero &nbsp; <b>Alt+T</b> Top &nbsp; "
      "<b>Alt+B</b> Bottom &nbsp; <b>Alt+S</b> Set &nbsp; <b>Alt+R</b> Reset<br>"
      "<b>Ctrl+O</b> open another module &nbsp; <b>Alt+N</b> load ZUC &nbsp; <b>Ctrl+U</b> load ZU "
      "&nbsp; <b>Alt+L</b> locals "
      "&nbsp; <b>Alt+G</b> registers &nbsp; <b>Alt+O</b> outputs</p>");
}

void FenPrincipale::show_help() {
  if (help_dialog_ == nullptr) {
    const struct {
      SignalState state;
      QString meaning;
    } rows[] = {
        {SignalState::one, tr("present")},
        {SignalState::zero, tr("absent")},
        {SignalState::top, tr("both at once: a contradiction")},
        {SignalState::bottom, tr("neither: not determined")},
        {SignalState::unknown, tr("not computed yet, or it depends on something unknown")},
    };
    QString text = tr("<h3>What the colours mean</h3>") + "<table cellspacing=\"2\">";
    for (const auto& row : rows) {
      text +=
          QString(
              "<tr><td bgcolor=\"%1\"><font color=\"%2\">&nbsp;<b>%3</b>&nbsp;</font></td>"
              "<td>&nbsp;%4</td></tr>")
              .arg(background_of(row.state).name(), text_colour_on(background_of(row.state)).name(),
                   label_of(row.state), row.meaning);
    }
    text += "</table>";
    text +=
        tr("<h3>How an instant runs</h3>"
           "<p>Choose a row of the inputs, then its state. The row keeps it until you change "
           "it. <b>Go</b> runs one instant: every output, local and register takes its colour; "
           "registers show the state for the next instant. <b>Set</b> starts the module in the "
           "next instant, <b>Init</b> puts everything back to the start. "
           "<b>Preferences</b> brings a closed panel back.</p><h3>Keys</h3>");
    help_dialog_ = new QDialog(this);
    help_dialog_->setObjectName("help_dialog");
    help_dialog_->setWindowTitle(tr("KIVA: help"));
    help_dialog_->setAccessibleName(tr("Help"));
    auto* label = new QLabel(text + key_texts());
    label->setWordWrap(true);
    constexpr int width = 560;
    label->ensurePolished();
    label->setMinimumSize(width, label->heightForWidth(width));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, help_dialog_, &QDialog::reject);
    auto* layout = new QVBoxLayout(help_dialog_);
    layout->addWidget(label);
    layout->addWidget(buttons);
  }
  help_dialog_->show();
  help_dialog_->raise();
}

}  // namespace kiva
