#include "SIMULATOR_ZUC/scope/why_pane.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

namespace {

constexpr int instant_role = Qt::UserRole;       ///< to go to; of a change, in which to try it
constexpr int register_role = Qt::UserRole + 1;  ///< row of a register to be unfolded; -1 when done
constexpr int input_role = Qt::UserRole + 2;     ///< row of an input whose change is offered
constexpr long most_instants_back = 100000;

QString state_words(SignalState state) {
  switch (state) {
    case SignalState::one:
      return QObject::tr("present");
    case SignalState::bottom:
    case SignalState::zero:
      return QObject::tr("absent");
    case SignalState::top:
      return QObject::tr("both present and absent");
    case SignalState::unknown:
      break;
  }
  return QObject::tr("unknown");
}

SignalState opposite(SignalState state) {
  return state == SignalState::one ? SignalState::zero : SignalState::one;
}

/// Rows as high as their sentences need, which the toolkit's own trees do not know.
class Sentences : public QStyledItemDelegate {
 public:
  explicit Sentences(QTreeWidget* tree) : QStyledItemDelegate(tree), tree_(tree) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (index.column() != 0) return size;
    int width = tree_->isFirstColumnSpanned(index.row(), index.parent())
                    ? tree_->viewport()->width()
                    : tree_->columnWidth(0);
    for (QModelIndex at = index; at.isValid(); at = at.parent()) width -= tree_->indentation();
    const int margin = 2 * tree_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 2;
    QFont font = tree_->font();
    if (const QVariant own = index.data(Qt::FontRole); own.isValid()) font = own.value<QFont>();
    const QFontMetrics metrics(font);
    const QRect text =
        metrics.boundingRect(0, 0, std::max(1, width - margin - 2 * metrics.averageCharWidth()),
                             1 << 16, Qt::TextWordWrap, index.data().toString());
    // With less than the room of its layout the last line is cut short.
    size.setHeight(std::max(metrics.height(), text.height()) + metrics.height() / 3);
    return size;
  }

 private:
  QTreeWidget* tree_;
};

}  // namespace

WhyPane::WhyPane(TimeControl* time, const SourcePane* source, QWidget* parent)
    : QTreeWidget(parent),
      time_(time),
      source_(source),
      reasons_(time->recording().simulation()),
      names_(time->recording().simulation()),
      trial_(time->recording().simulation().module()) {
  setAccessibleName(tr("Why"));
  setFrameShape(QFrame::NoFrame);
  setColumnCount(2);
  setHeaderHidden(true);
  setWordWrap(true);
  setItemDelegate(new Sentences(this));
  setTextElideMode(Qt::ElideMiddle);  // of a name wider than the pane, begin and end
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::itemExpanded, this, &WhyPane::unfold);
  connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int column) {
    if (column == 1) follow_link(item);
  });
  connect(this, &QTreeWidget::itemActivated, this, &WhyPane::follow_link);
  connect(time_, &TimeControl::moved, this, &WhyPane::ask_again);
  ask_again();
}

void WhyPane::ask(SignalPlace signal) {
  signal_ = signal;
  asked_ = true;
  ask_again();
}

void WhyPane::ask_again() {
  clear();
  if (time_->busy()) return;
  const auto say = [this](const QString& text) {
    auto* item = new QTreeWidgetItem(this, {text});
    item->setFirstColumnSpanned(true);
    return item;
  };
  if (!asked_) {
    say(tr("Choose a signal in the waves: why it is what it is stands here."));
    return;
  }
  Recording& recording = time_->recording();
  const Recording::Position here = recording.position();
  const SignalState state = shown_state(recording.state_at(here), signal_);
  const QString name = QString::fromStdString(names_.name(signal_));
  QTreeWidgetItem* question =
      say(tr("Why is %1 %2 at %3?").arg(name, state_words(state)).arg(here.instant));
  QFont bold = font();
  bold.setBold(true);
  question->setFont(0, bold);
  if (here.instant == recording.first_instant()) {
    say(tr("Nothing has run yet: press Enter."));
  } else if (signal_.list == SignalPlace::input) {
    say(tr("It was chosen for this instant."));
  } else if (state == SignalState::unknown) {
    say(tr("Nothing that is known decides it."));
  } else {
    fill(invisibleRootItem(), signal_, here.instant);
  }
}

void WhyPane::fill(QTreeWidgetItem* parent, SignalPlace signal, long instant) {
  Recording& recording = time_->recording();
  const size_t branch = recording.position().branch;
  const SimulationState before = recording.state_at({branch, instant - 1});
  const Choices choices = recording.choices_at({branch, instant});
  const SimulationState after = recording.state_at({branch, instant});
  const std::vector<Cause> causes = reasons_.causes(signal, {before, choices, after});
  for (const Cause& cause : add_states(parent, causes, instant)) add_cause(parent, cause, instant);
  if (causes.empty()) new QTreeWidgetItem(parent, {tr("It is always so.")});
  if (parent != invisibleRootItem()) return;
  offer_changes(signal, instant, causes);
  const size_t inputs = names_.names(SignalPlace::input).size();
  const size_t registers = names_.names(SignalPlace::register_).size();
  const auto count = [&](Cause::Kind kind) {
    return static_cast<size_t>(std::ranges::count(causes, kind, &Cause::kind));
  };
  auto* rest = new QTreeWidgetItem(this);
  rest->setText(0, tr("%1 of %2 inputs and %3 of %4 registers do not matter")
                       .arg(inputs - std::min(inputs, count(Cause::input)))
                       .arg(inputs)
                       .arg(registers - std::min(registers, count(Cause::register_)))
                       .arg(registers));
  rest->setForeground(0, ScopeLook::current().faint);
  rest->setFirstColumnSpanned(true);
}

SignalPlace WhyPane::register_of(const Cause& cause) const {
  const std::vector<std::string>& registers = names_.names(SignalPlace::register_);
  const auto row = std::ranges::find(registers, cause.name) - registers.begin();
  return {SignalPlace::register_, static_cast<size_t>(row)};
}

/// A register tells what it says of the source, and in its tip its name.
QTreeWidgetItem* WhyPane::add_cause(QTreeWidgetItem* parent, const Cause& cause, long instant) {
  const QString name = QString::fromStdString(cause.name);
  const bool one = cause.state == SignalState::one;
  auto* item = new QTreeWidgetItem(parent);
  item->setText(0, tr("%1 is %2 at %3").arg(name, label_of(cause.state)).arg(instant));
  if (cause.kind == Cause::wire)
    item->setText(0, one ? tr("%1 is raised at %2").arg(name).arg(instant)
                         : tr("%1 is not raised at %2").arg(name).arg(instant));
  if (cause.kind != Cause::register_) return item;
  const SignalPlace reg = register_of(cause);
  const QString statement = source_->going_on(reg);
  if (!statement.isEmpty() && (one || cause.state == SignalState::zero)) {
    item->setToolTip(0, item->text(0));
    item->setText(0, one ? tr("%1 goes on at %2").arg(statement).arg(instant)
                         : tr("%1 does not go on at %2").arg(statement).arg(instant));
  }
  add_since(item, since(reg, instant));
  if (item->data(0, instant_role).isValid()) {
    item->setData(0, register_role, static_cast<int>(reg.row));
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
  }
  return item;
}

/// The registers that are bits of one automaton's code as one sentence, with themselves below it;
/// gives the causes that are not.
std::vector<Cause> WhyPane::add_states(QTreeWidgetItem* parent, const std::vector<Cause>& causes,
                                       long instant) {
  std::vector<Cause> others;
  std::vector<std::pair<std::vector<SourcePane::CodeBit>, std::vector<Cause>>> codes;
  for (const Cause& cause : causes) {
    const bool one = cause.state == SignalState::one;
    const SourcePane::CodeBit bit{register_of(cause), one};
    if (cause.kind != Cause::register_ || (!one && cause.state != SignalState::zero) ||
        source_->states_with({bit}).isEmpty()) {
      others.push_back(cause);
      continue;
    }
    const auto fits = std::ranges::find_if(codes, [&](const auto& code) {
      std::vector<SourcePane::CodeBit> with = code.first;
      with.push_back(bit);
      return !source_->states_with(with).isEmpty();
    });
    auto& [bits, members] = fits == codes.end() ? codes.emplace_back() : *fits;
    bits.push_back(bit);
    members.push_back(cause);
  }
  for (const auto& [bits, members] : codes) {
    auto* item = new QTreeWidgetItem(parent);
    item->setText(0, tr("the state is %1 at %2").arg(source_->states_with(bits)).arg(instant));
    long last = -1;
    for (const auto& [reg, one] : bits) last = std::max(last, since(reg, instant));
    add_since(item, last);
    for (const Cause& member : members) add_cause(item, member, instant);
  }
  return others;
}

/// The instant in which a register was moved to where it stood when that instant began; 0 for the
/// start, -1 for too long ago.
long WhyPane::since(SignalPlace reg, long instant) {
  Recording& recording = time_->recording();
  return recording.since(reg, {recording.position().branch, instant - 1}, most_instants_back);
}

void WhyPane::add_since(QTreeWidgetItem* item, long since) {
  if (since <= 0) {
    item->setText(
        0, item->text(0) + (since == 0 ? tr(", since the start") : tr(", for a very long time")));
    return;
  }
  item->setText(0, item->text(0) + tr(", since %1").arg(since));
  item->setText(1, tr("go to %1").arg(since));
  item->setForeground(1, ScopeLook::current().one);
  item->setData(0, instant_role, QVariant::fromValue<qlonglong>(since));
}

/// Inputs among the causes of which one alone, had it been otherwise, changes the signal.
void WhyPane::offer_changes(SignalPlace signal, long instant, const std::vector<Cause>& causes) {
  Recording& recording = time_->recording();
  if (trial_.asks_for_data()) return;
  const size_t branch = recording.position().branch;
  const SignalState now = shown_state(recording.state_at({branch, instant}), signal);
  const Choices choices = recording.choices_at({branch, instant});
  const std::vector<std::string>& inputs = names_.names(SignalPlace::input);
  for (const Cause& cause : causes) {
    if (cause.kind != Cause::input) continue;
    const auto row = static_cast<size_t>(std::ranges::find(inputs, cause.name) - inputs.begin());
    if (row == inputs.size()) continue;
    Choices other = choices;
    other.inputs[row] = opposite(choices.inputs[row]);
    trial_.restore(recording.state_at({branch, instant - 1}));
    apply(other, trial_);
    trial_.step(nullptr);
    const SignalState then = shown_state(trial_.state(), signal);
    if (then == now) continue;
    auto* item = new QTreeWidgetItem(this);
    item->setText(0, tr("Make %1 %2 at %3: it is %4 then")
                         .arg(QString::fromStdString(cause.name), label_of(other.inputs[row]))
                         .arg(instant)
                         .arg(state_words(then)));
    item->setText(1, tr("branch"));
    item->setForeground(1, ScopeLook::current().one);
    item->setData(0, instant_role, QVariant::fromValue<qlonglong>(instant));
    item->setData(0, input_role, static_cast<int>(row));
  }
}

void WhyPane::unfold(QTreeWidgetItem* item) {
  const QVariant reg = item->data(0, register_role);
  if (!reg.isValid() || reg.toInt() < 0 || time_->busy()) return;
  item->setData(0, register_role, -1);
  fill(item, {SignalPlace::register_, static_cast<size_t>(reg.toInt())},
       static_cast<long>(item->data(0, instant_role).toLongLong()));
}

void WhyPane::follow_link(QTreeWidgetItem* item) {
  const QVariant instant = item->data(0, instant_role);
  if (!instant.isValid() || time_->busy()) return;
  const size_t branch = time_->recording().position().branch;
  const auto to = static_cast<long>(instant.toLongLong());
  const QVariant input = item->data(0, input_role);
  if (!input.isValid()) {
    time_->to({branch, to});
    return;
  }
  Choices choices = time_->recording().choices_at({branch, to});
  const auto row = static_cast<size_t>(input.toInt());
  choices.inputs[row] = opposite(choices.inputs[row]);
  if (!time_->to({branch, to - 1})) return;
  apply(choices, time_->recording().simulation());
  time_->go();
}

bool WhyPane::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool own = key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Return;
    if (own && currentItem() != nullptr) {
      event->accept();
      return true;
    }
  }
  return QTreeWidget::event(event);
}

void WhyPane::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  scheduleDelayedItemsLayout();  // sentences wrap elsewhere
}

/// A name too long for the pane is whole in its tip.
bool WhyPane::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTreeWidget::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QTreeWidgetItem* item = itemAt(help->pos());
  if (item == nullptr) return true;
  const QString signal = item->toolTip(0).isEmpty() ? "" : "\n" + item->toolTip(0);
  QToolTip::showText(help->globalPos(), item->text(0) + signal, viewport());
  return true;
}

QString WhyPane::sentences() const {
  QString text;
  const std::function<void(const QTreeWidgetItem*, int)> add = [&](const QTreeWidgetItem* item,
                                                                   int depth) {
    for (int i = 0; i < item->childCount(); ++i) {
      const QTreeWidgetItem* child = item->child(i);
      text += QString(2 * depth, ' ') + child->text(0) +
              (child->text(1).isEmpty() ? "" : " [" + child->text(1) + "]") + '\n';
      add(child, depth + 1);
    }
  };
  add(invisibleRootItem(), 0);
  return text;
}

}  // namespace kiva
