#include "SIMULATOR_ZUC/scope/scope_window.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <utility>

#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "SIMULATOR_ZUC/state_folder.h"
#include "SIMULATOR_ZUC/window_look.h"

namespace kiva {

namespace {
constexpr int progress_every = 50;  // milliseconds
}  // namespace

std::span<const ScopeWindow::Control> ScopeWindow::controls() {
  static const Control all[] = {
      {"Home", "|\u25c0", QT_TR_NOOP("to the first instant"), &ScopeWindow::first},
      {"Left", "\u25c0", QT_TR_NOOP("an instant back"), &ScopeWindow::back},
      {"Return", "Go \u25b6", QT_TR_NOOP("Go: one instant with the choices"), &ScopeWindow::go},
      {"Right", "\u25b6", QT_TR_NOOP("an instant on, as it was"), &ScopeWindow::forward},
      {"End", "\u25b6|", QT_TR_NOOP("to the last instant"), &ScopeWindow::last},
      {"Shift+Return", "N", QT_TR_NOOP("run so many instants"), &ScopeWindow::ask_run},
      {"U", QT_TR_NOOP("until"), QT_TR_NOOP("run until a condition holds"),
       &ScopeWindow::ask_until},
      {"Space", QT_TR_NOOP("run"), QT_TR_NOOP("run on, and stop"), &ScopeWindow::run_or_stop},
      {"G", nullptr, QT_TR_NOOP("to an instant by its number"), &ScopeWindow::ask_instant},
      {"Ctrl+Left", nullptr, QT_TR_NOOP("to the change of the chosen signal before"),
       &ScopeWindow::change_before},
      {"Ctrl+Right", nullptr, QT_TR_NOOP("to its next change"), &ScopeWindow::change_after},
      {"/", nullptr, QT_TR_NOOP("find a signal"), &ScopeWindow::ask_signal},
      {"P", nullptr, QT_TR_NOOP("the input chosen last is a pulse, or a level"),
       &ScopeWindow::pulse},
      {"B", nullptr, QT_TR_NOOP("show the next branch"), &ScopeWindow::next_branch},
      {"M", nullptr, QT_TR_NOOP("mark this instant"), &ScopeWindow::ask_mark},
      {"I", nullptr, QT_TR_NOOP("Init: back to the start"), &ScopeWindow::init},
      {"+", nullptr, QT_TR_NOOP("wider instants"), &ScopeWindow::zoom_in},
      {"-", nullptr, QT_TR_NOOP("narrower instants"), &ScopeWindow::zoom_out},
      {"Ctrl+Up", nullptr, QT_TR_NOOP("the chosen row one up"), &ScopeWindow::row_up},
      {"Ctrl+Down", nullptr, QT_TR_NOOP("the chosen row one down"), &ScopeWindow::row_down},
      {"H", nullptr, QT_TR_NOOP("show or hide what the compiler made"), &ScopeWindow::toggle_made},
      {"E", nullptr, QT_TR_NOOP("write the branch as a value change dump"),
       &ScopeWindow::export_dump},
      {"X", nullptr, QT_TR_NOOP("write the automaton that is shown as SVG"),
       &ScopeWindow::export_diagram},
      {"]", nullptr, QT_TR_NOOP("a larger automaton"), &ScopeWindow::diagram_larger},
      {"[", nullptr, QT_TR_NOOP("a smaller automaton"), &ScopeWindow::diagram_smaller},
      {"S", nullptr, QT_TR_NOOP("save the session, or the branch as stimuli"), &ScopeWindow::save},
      {"O", nullptr, QT_TR_NOOP("open a session, or run stimuli"), &ScopeWindow::open},
      {"N", QT_TR_NOOP("prove"),
       QT_TR_NOOP("prove the properties that the source has as comments, ;; @never"),
       &ScopeWindow::prove_written},
      {"Shift+N", nullptr, QT_TR_NOOP("prove that a condition never holds, or show how it does"),
       &ScopeWindow::ask_property},
      {"D", nullptr, QT_TR_NOOP("dark or light"), &ScopeWindow::toggle_dark},
      {"C", nullptr, QT_TR_NOOP("colours that are told apart without red and green"),
       &ScopeWindow::toggle_safe},
      {"Ctrl++", nullptr, QT_TR_NOOP("larger"), &ScopeWindow::larger},
      {"Ctrl+-", nullptr, QT_TR_NOOP("smaller"), &ScopeWindow::smaller},
      {"Ctrl+0", nullptr, QT_TR_NOOP("told size"), &ScopeWindow::told_size},
      {"?", "?", QT_TR_NOOP("the keys"), &ScopeWindow::show_keys},
  };
  return all;
}

ScopeWindow::ScopeWindow(TimeControl* time, const QString& file)
    : time_(time),
      file_(file),
      waves_(new WaveView(time)),
      inputs_(new InputsPane(time)),
      line_(new TimeLine(time)),
      source_(new SourcePane(time, file)),
      why_(new WhyPane(time, source_)),
      diagram_(new DiagramPane(time, file)) {
  const QString module = QString::fromStdString(time->recording().simulation().module()->getName());
  setWindowTitle(tr("%1 - scope").arg(module));
  setObjectName("scope");
  resize(1180, 700);

  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(make_bar());
  auto* sides = new QSplitter(Qt::Horizontal);
  sides->addWidget(make_panes());
  sides->addWidget(make_side());
  sides->setSizes({740, 440});
  layout->addWidget(sides, 1);
  prompt_ = new QLineEdit;
  prompt_->hide();
  layout->addWidget(prompt_);
  told_ = new QLabel;
  told_->setWordWrap(true);
  told_->setAccessibleName(tr("Message"));
  told_->hide();
  layout->addWidget(told_);
  setCentralWidget(page);
  make_keys();

  connect_all();
  const QSettings settings(state_file(), QSettings::IniFormat);
  if (restoreGeometry(settings.value("scope/geometry").toByteArray()))
    scale_ = WindowLook::current().scale();
  dress();
  refresh();
  if (source_->has_source()) waves_->set_declared(source_->source()->declared());
  // What a person asks first: why the first output is what it is.
  for (size_t row = 0; row < waves_->rows().size(); ++row)
    if (!waves_->rows()[row].title && waves_->rows()[row].place.list == SignalPlace::output) {
      waves_->choose(static_cast<int>(row));
      break;
    }
  tell(first_keys());
  waves_->setFocus();
}

void ScopeWindow::connect_all() {
  connect(time_, &TimeControl::moved, this, &ScopeWindow::refresh);
  connect(time_, &TimeControl::busy_changed, this, &ScopeWindow::refresh);
  connect(time_, &TimeControl::run_ended, this, &ScopeWindow::tell);
  connect(waves_, &WaveView::chosen_changed, this, [this] {
    const SignalPlace chosen = waves_->rows()[static_cast<size_t>(waves_->chosen())].place;
    why_->ask(chosen);
    source_->show_signal(chosen);
  });
  connect(source_, &SourcePane::signal_wanted, waves_, &WaveView::choose_place);
  connect(&WindowLook::current(), &WindowLook::changed, this, &ScopeWindow::dress);
  auto* progress = new QTimer(this);
  connect(progress, &QTimer::timeout, this, [this] {
    if (!time_->busy()) return;
    status_->setText(status());
    waves_->viewport()->update();
  });
  progress->start(progress_every);
}

QWidget* ScopeWindow::framed(const QString& title, QWidget* pane) {
  auto* frame = new QFrame;
  frame->setObjectName("pane");
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(8, 6, 8, 8);
  layout->setSpacing(4);
  auto* label = new QLabel(title);
  label->setObjectName("title");
  layout->addWidget(label);
  layout->addWidget(pane, 1);
  return frame;
}

/// The run, and what comes next.
QWidget* ScopeWindow::make_panes() {
  auto* below = new QSplitter(Qt::Horizontal);
  below->addWidget(framed(tr("Next instant"), inputs_));
  below->addWidget(framed(tr("Why"), why_));
  below->setSizes({420, 580});
  auto* panes = new QSplitter(Qt::Vertical);
  panes->addWidget(framed(tr("Waves"), waves_));
  QWidget* run = framed(tr("Run"), line_);
  run->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  panes->addWidget(run);
  panes->addWidget(below);
  panes->setStretchFactor(0, 3);
  panes->setStretchFactor(2, 2);
  panes->setSizes({330, 80, 250});
  return panes;
}

/// The program beside its run.
QWidget* ScopeWindow::make_side() {
  auto* side = new QSplitter(Qt::Vertical);
  side->addWidget(framed(tr("Source"), source_));
  QWidget* drawn = framed(tr("Automaton"), diagram_);
  side->addWidget(drawn);
  drawn->setVisible(!diagram_->empty());
  side->setSizes({360, 300});
  return side;
}

QWidget* ScopeWindow::make_bar() {
  auto* bar = new QWidget;
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  name_ = new ModuleLabel;
  name_->setAccessibleName(tr("Module"));
  layout->addWidget(name_);
  layout->addStretch(1);
  for (const Control& control : controls()) {
    if (control.text == nullptr) continue;
    auto* button = new QToolButton;
    button->setText(tr(control.text));
    button->setToolTip(tr("%1 (%2)").arg(tr(control.tells), QString(control.key)));
    button->setAccessibleName(tr(control.tells));
    button->setAccessibleDescription(tr("Key: %1").arg(control.key));
    connect(button, &QToolButton::clicked, this, control.act);
    if (control.act == &ScopeWindow::go) button->setObjectName("go");
    if (control.act == &ScopeWindow::run_or_stop) run_button_ = button;
    layout->addWidget(button);
  }
  layout->addStretch(1);
  branch_ = new QComboBox;
  branch_->setAccessibleName(tr("Branch"));
  branch_->view()->setAccessibleName(tr("Branches"));
  branch_->setToolTip(tr("the branch that is shown (B)"));
  branch_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  branch_->setFocusPolicy(Qt::TabFocus);
  connect(branch_, qOverload<int>(&QComboBox::activated), this, [this](int branch) {
    const auto to = static_cast<size_t>(branch);
    time_->to({to, time_->recording().branch(to).last});
  });
  layout->addWidget(branch_);
  status_ = new QLabel;
  status_->setAccessibleName(tr("Instant"));
  layout->addWidget(status_);
  return bar;
}

void ScopeWindow::make_keys() {
  for (const Control& control : controls()) {
    auto* key = new QShortcut(QKeySequence(control.key), this);
    connect(key, &QShortcut::activated, this, [this, &control] {
      // While something is asked, Return answers and the other keys are its text.
      if (!prompt_->isVisible())
        (this->*control.act)();
      else if (control.act == &ScopeWindow::go)
        answered();
    });
  }
  for (int number = 1; number <= 9; ++number) {
    auto* key = new QShortcut(QKeySequence(QString::number(number)), this);
    connect(key, &QShortcut::activated, this, [this, number] { inputs_->step_input(number - 1); });
  }
  auto* leave = new QShortcut(QKeySequence("Escape"), this);
  connect(leave, &QShortcut::activated, this, [this] {
    time_->stop();
    asked_ = Asked::nothing;
    prompt_->hide();
    tell("");
    waves_->setFocus();
  });
}

QString ScopeWindow::status() const {
  const Recording& recording = time_->recording();
  if (time_->busy()) return tr("running: instant %1").arg(time_->progress());
  const Recording::Position here = recording.position();
  return tr("instant %1 of %2").arg(here.instant).arg(recording.branch(here.branch).last);
}

void ScopeWindow::refresh() {
  const bool busy = time_->busy();
  status_->setText(status());
  run_button_->setText(busy ? tr("Stop") : tr("run"));
  branch_->setEnabled(!busy);
  if (busy) return;
  const Recording& recording = time_->recording();
  const auto branches = static_cast<int>(recording.branches());
  for (int branch = branch_->count(); branch < branches; ++branch)
    branch_->addItem(TimeLine::branch_name(recording, static_cast<size_t>(branch)));
  branch_->setCurrentIndex(static_cast<int>(recording.position().branch));
  branch_->setVisible(branches > 1);
}

/// What a newcomer presses.
QString ScopeWindow::first_keys() const {
  QStringList keys;
  const std::vector<std::string>& inputs = time_->recording().simulation().input_names();
  for (size_t row = 0; row < std::min<size_t>(inputs.size(), 4); ++row)
    keys += QString("<b>%1</b> %2")
                .arg(row + 1)
                .arg(QString::fromStdString(inputs[row]).toHtmlEscaped());
  if (inputs.size() > 4) keys += QString::fromUtf8("\u2026");
  return tr("Press %1<b>Return</b> for an instant, <b>Left</b> to go back, <b>?</b> for all keys.")
      .arg(keys.isEmpty() ? QString() : keys.join(", ") + tr(" to choose inputs, "));
}

void ScopeWindow::tell(const QString& text) {
  told_->setText(text);
  told_->setVisible(!text.isEmpty());
}

/// The window grows and shrinks with what is in it, as far as the screen goes.
void ScopeWindow::follow_scale() {
  const double scale = WindowLook::current().scale();
  const double grown = scale / std::exchange(scale_, scale);
  if (grown == 1) return;
  const QSize room = screen()->availableSize();
  resize((QSizeF(size()) * grown).toSize().boundedTo(room));
}

void ScopeWindow::dress() {
  follow_scale();
  const ScopeLook& look = ScopeLook::current();
  setStyleSheet(
      QString(
          "QWidget { font-size: %8px; }"
          "QMainWindow, QWidget { background: %1; color: %2; }"
          "QFrame#pane, QFrame#pane > QWidget, QTreeWidget, QScrollArea, QScrollArea > QWidget, "
          "QScrollArea > QWidget > QWidget { background: %3; }"
          "QFrame#pane { border: 1px solid %4; border-radius: 6px; }"
          "QLabel { background: transparent; } QLabel#title { font-weight: bold; }"
          "QLabel#faint { color: %5; }"
          "QToolButton, QPushButton { background: %3; border: 1px solid %4; "
          "border-radius: 5px; padding: 4px 8px; min-height: 16px; }"
          "QPushButton:checked, QToolButton#go { background: %6; color: %3; }"
          "QToolButton:focus, QPushButton:focus, QComboBox:focus { border: 1px solid %7; }"
          "QLineEdit, QComboBox { background: %3; border: 1px solid %4; padding: 3px; }"
          "QToolTip { background: %3; color: %2; border: 1px solid %4; }")
          .arg(look.paper.name(), look.text.name(), look.pane.name(), look.line.name(),
               look.faint.name(), look.one.name(), look.accent.name(),
               QString::number(ScopeLook::px(13))));
  const QString module =
      QString::fromStdString(time_->recording().simulation().module()->getName());
  name_->set_names(module, QFileInfo(file_).fileName());
  waves_->look_changed();
  inputs_->look_changed();
  why_->ask_again();
  line_->follow();
  source_->look_changed();
  diagram_->look_changed();
}

void ScopeWindow::closeEvent(QCloseEvent* event) {
  QSettings settings(state_file(), QSettings::IniFormat);
  settings.setValue("scope/geometry", saveGeometry());
  event->accept();
}

}  // namespace kiva
