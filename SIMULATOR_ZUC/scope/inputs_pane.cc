#include "SIMULATOR_ZUC/scope/inputs_pane.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <algorithm>
#include <climits>

#include "SIMULATOR_ZUC/cut_name.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

namespace {
// A row has up to eight widgets; who has more inputs than this chooses them in the main window.
constexpr size_t most_rows = 200;

/// A name of which begin and end can be read in any width.
class NameLabel : public QLabel {
 public:
  NameLabel(const std::vector<std::string>& names, size_t row)
      : names_(names), name_(QString::fromStdString(names[row])) {
    setAccessibleName(name_);
    setToolTip(name_);
  }
  QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(name_) + 2, fontMetrics().height()};
  }
  QSize minimumSizeHint() const override {
    return sizeHint().boundedTo({ScopeLook::px(100), INT_MAX});
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QString text = cut_name(
        name_, fontMetrics(), width(), static_cast<int>(names_.size()),
        [this](int row) { return QString::fromStdString(names_[static_cast<size_t>(row)]); });
    QPainter(this).drawText(rect(), Qt::AlignVCenter, text);
  }

 private:
  const std::vector<std::string>& names_;
  QString name_;
};

}  // namespace

InputsPane::InputsPane(TimeControl* time, QWidget* parent)
    : QScrollArea(parent), time_(time), offered_{SignalState::one, SignalState::zero} {
  setAccessibleName(tr("Next instant"));
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  const Simulation& simulation = time_->recording().simulation();
  if (simulation.module()->getFinalised() == 0)
    offered_.insert(offered_.end(), {SignalState::top, SignalState::bottom});
  auto* page = new QWidget;
  auto* grid = new QGridLayout(page);
  grid->setHorizontalSpacing(4);
  grid->setVerticalSpacing(4);
  const size_t rows = std::min(simulation.input_rows().size(), most_rows);
  for (size_t row = 0; row < rows; ++row)
    inputs_.push_back(make_input(static_cast<int>(row), grid));
  QString below = tr("set, reset: the main window");
  if (rows == 0) below = tr("The module has no inputs. %1").arg(below);
  if (rows < simulation.input_rows().size())
    below = tr("%1 more inputs: the main window").arg(simulation.input_rows().size() - rows);
  auto* note = new QLabel(below);
  note->setObjectName("faint");
  note->setWordWrap(true);
  grid->addWidget(note, static_cast<int>(rows), 0, 1, -1);
  grid->setRowStretch(static_cast<int>(rows) + 1, 1);
  grid->setColumnStretch(1, 1);
  setWidget(page);
  connect(time_, &TimeControl::moved, this, &InputsPane::refresh);
  connect(time_, &TimeControl::choices_changed, this, &InputsPane::refresh);
  connect(time_, &TimeControl::busy_changed, this, &InputsPane::refresh);
  look_changed();
  refresh();
}

InputsPane::Input InputsPane::make_input(int row, QGridLayout* grid) {
  const Simulation& simulation = time_->recording().simulation();
  const QString name = QString::fromStdString(simulation.input_names()[static_cast<size_t>(row)]);
  auto* number = new QLabel(row < 9 ? QString::number(row + 1) : QString());
  number->setObjectName("faint");
  grid->addWidget(number, row, 0);
  grid->addWidget(new NameLabel(simulation.input_names(), static_cast<size_t>(row)), row, 1);
  Input input{};
  int column = 2;
  for (SignalState state : offered_) {
    auto* button = new QPushButton(QString(QChar(letter_of(state))));
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(tr("%1 %2").arg(name, label_of(state)));
    button->setToolTip(row < 9 ? tr("%1 is %2 (key %3)").arg(name, label_of(state)).arg(row + 1)
                               : tr("%1 is %2").arg(name, label_of(state)));
    connect(button, &QPushButton::clicked, this, [this, row, state] {
      chosen_ = row;
      time_->choose(static_cast<size_t>(row), state);
      refresh();
    });
    grid->addWidget(button, row, column++);
    input.states.push_back(button);
  }
  input.pulse = new QPushButton(tr("level"));
  input.pulse->setCheckable(true);
  input.pulse->setFocusPolicy(Qt::TabFocus);
  input.pulse->setAccessibleName(tr("%1 is a pulse").arg(name));
  input.pulse->setToolTip(tr("a pulse is Zero again behind one instant (key p)"));
  connect(input.pulse, &QPushButton::clicked, this, [this, row] { toggle_pulse(row); });
  grid->addWidget(input.pulse, row, column++);
  if (simulation.input_rows()[static_cast<size_t>(row)]->isValued(simulation.module())) {
    input.value = new QLineEdit;
    input.value->setMinimumWidth(60);
    input.value->setAccessibleName(tr("Value of %1").arg(name));
    connect(input.value, &QLineEdit::textEdited, this, [this, row](const QString& text) {
      time_->type(static_cast<size_t>(row), text.toStdString());
    });
    grid->addWidget(input.value, row, column);
  }
  return input;
}

void InputsPane::step_input(int row) {
  if (row < 0 || row >= rows()) return;
  chosen_ = row;
  const Simulation& simulation = time_->recording().simulation();
  const SignalState now = simulation.state().inputs[static_cast<size_t>(row)];
  const auto at = std::ranges::find(offered_, now);
  // From what is not offered, and from the last one, to the first.
  const bool first = at == offered_.end() || at + 1 == offered_.end();
  time_->choose(static_cast<size_t>(row), first ? offered_.front() : *(at + 1));
}

void InputsPane::toggle_pulse(int row) {
  if (row < 0 || row >= rows()) return;
  chosen_ = row;
  time_->set_pulse(static_cast<size_t>(row), !time_->is_pulse(static_cast<size_t>(row)));
  refresh();
}

void InputsPane::look_changed() {
  for (const Input& input : inputs_)
    for (QPushButton* button : input.states) button->setFixedWidth(ScopeLook::px(30));
  // Wide enough for all of a row but the end of a long name and of a value.
  const int wanted = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
  setMinimumWidth(std::min(wanted, ScopeLook::px(340)));
}

void InputsPane::refresh() {
  setEnabled(!time_->busy());
  if (time_->busy()) return;
  const SimulationState& state = time_->recording().simulation().state();
  for (size_t row = 0; row < inputs_.size(); ++row) {
    const Input& input = inputs_[row];
    for (size_t i = 0; i < offered_.size(); ++i)
      input.states[i]->setChecked(state.inputs[row] == offered_[i]);
    const bool pulse = time_->is_pulse(row);
    input.pulse->setChecked(pulse);
    input.pulse->setText(pulse ? tr("pulse") : tr("level"));
    const QString text = QString::fromStdString(state.input_texts[row]);
    if (input.value != nullptr && input.value->text() != text) input.value->setText(text);
  }
}

}  // namespace kiva
