// What the keys and buttons of the scope do.

#include <QLabel>
#include <QLineEdit>

#include "SIMULATOR_ZUC/dialogs.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "SIMULATOR_ZUC/window_look.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "engine/vcd_trace.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/source_properties.h"

namespace kiva {

namespace {
/// A run without end stops here, and can be taken up again.
constexpr long most_instants = 10'000'000;
}  // namespace

void ScopeWindow::go() {
  tell("");
  const Recording& recording = time_->recording();
  const SimulationState before = recording.simulation().state();
  // A server is waited for in the worker.
  if (recording.simulation().asks_for_data()) {
    time_->run(1, nullptr);
    return;
  }
  try {
    time_->go();
  } catch (const LibraryException& exception) {
    return tell(QString::fromStdString(exception.text()));
  } catch (const std::exception& exception) {
    return tell(QString::fromUtf8(exception.what()));
  }
  const SimulationState& after = recording.simulation().state();
  if (before.instant > 0 && before.shown_outputs == after.shown_outputs &&
      before.shown_locals == after.shown_locals &&
      before.shown_registers == after.shown_registers &&
      before.output_values == after.output_values)
    tell(tr("This instant changed nothing."));
}

void ScopeWindow::back() {
  time_->back();
}
void ScopeWindow::forward() {
  time_->forward();
}
void ScopeWindow::first() {
  time_->first();
}
void ScopeWindow::last() {
  time_->last();
}
void ScopeWindow::init() {
  time_->init();
}
void ScopeWindow::change_before() {
  if (!waves_->next_change(-1)) tell(tr("The chosen signal has not changed before."));
}
void ScopeWindow::change_after() {
  if (!waves_->next_change(1)) tell(tr("The chosen signal does not change any more."));
}
void ScopeWindow::pulse() {
  inputs_->toggle_pulse(std::max(0, inputs_->chosen()));
}

void ScopeWindow::next_branch() {
  const Recording& recording = time_->recording();
  const size_t next = (recording.position().branch + 1) % recording.branches();
  time_->to({next, recording.branch(next).last});
}

void ScopeWindow::run_or_stop() {
  if (time_->busy())
    time_->stop();
  else
    time_->run(most_instants, nullptr);
}

void ScopeWindow::toggle_made() {
  waves_->show_made(!waves_->shows_made());
}

void ScopeWindow::toggle_dark() {
  WindowLook::current().set_dark(!WindowLook::current().dark());
}

void ScopeWindow::toggle_safe() {
  WindowLook::current().set_safe_colours(!WindowLook::current().safe_colours());
}

void ScopeWindow::larger() {
  WindowLook::current().larger();
}
void ScopeWindow::smaller() {
  WindowLook::current().smaller();
}
void ScopeWindow::told_size() {
  WindowLook::current().set_scale(1);
}

void ScopeWindow::show_keys() {
  QString text;
  for (const Control& control : controls())
    text += QString("<b>%1</b> %2 &nbsp; ")
                .arg(QString(control.key).toHtmlEscaped(), tr(control.tells).toHtmlEscaped());
  tell(text +
       tr("<b>1 to 9</b> the next state of an input &nbsp; <b>Up, Down</b> the signal above, "
          "below &nbsp; <b>Shift+Left, Shift+Right</b> the second cursor &nbsp; "
          "<b>Escape</b> leaves and stops"));
}

void ScopeWindow::export_diagram() {
  if (diagram_->empty() || time_->busy()) return tell(tr("there is no automaton to write"));
  const QString name = dialogs().ask_save(this, tr("Write automaton"), tr("Pictures (*.svg)"));
  if (name.isEmpty()) return;
  WholeFile file(name.toStdString());
  if (file.opened()) file.out() << diagram_->view()->svg();
  const bool written = file.opened() && file.finish();
  tell((written ? tr("%1 is written") : tr("%1 cannot be written")).arg(name));
}

void ScopeWindow::export_dump() {
  if (time_->busy()) return;
  const QString name =
      dialogs().ask_save(this, tr("Write waves"), tr("Value change dumps (*.vcd)"));
  if (name.isEmpty()) return;
  Recording& recording = time_->recording();
  const size_t branch = recording.position().branch;
  WholeFile file(name.toStdString());
  VcdTrace trace(recording.simulation());
  if (file.opened()) {
    trace.begin(file.out());
    for (long instant = recording.first_instant() + 1; instant <= recording.branch(branch).last;
         ++instant)
      trace.write(file.out(), recording.state_at({branch, instant}));
  }
  if (!file.opened() || !file.finish())
    tell(tr("%1 cannot be written").arg(name));
  else
    tell(tr("%1 is written").arg(name));
}

void ScopeWindow::save() {
  if (time_->busy()) return;
  const QString name =
      dialogs().ask_save(this, tr("Save"), tr("Sessions (*.kivasession);;Stimuli (*.stimuli)"));
  if (name.isEmpty()) return;
  const QString problem = time_->save(name);
  tell(problem.isEmpty() ? tr("%1 is saved").arg(name) : problem);
}

void ScopeWindow::open() {
  if (time_->busy()) return;
  const QString name = dialogs().ask_file(
      this, tr("Open"), tr("Sessions and stimuli (*.kivasession *.stimuli *.stim)"));
  if (name.isEmpty()) return;
  const QString problem = time_->open(name);
  tell(problem.isEmpty() ? tr("%1 is open").arg(name) : problem);
}

void ScopeWindow::ask(Asked what) {
  asked_ = what;
  tell("");
  prompt_->clear();
  const QString texts[] = {QString(),
                           tr("instant"),
                           tr("until, as in: drink and instant > 9"),
                           tr("find a signal"),
                           tr("mark this instant as"),
                           tr("run how many instants"),
                           tr("never, as in: open and closing, or: reach closing")};
  prompt_->setPlaceholderText(texts[static_cast<int>(what)]);
  prompt_->setAccessibleName(prompt_->placeholderText());
  prompt_->show();
  prompt_->setFocus();
}

void ScopeWindow::run_until(const QString& text) {
  try {
    auto condition =
        std::make_shared<Condition>(text.toStdString(), time_->recording().simulation());
    time_->run(most_instants, condition);
  } catch (const ConditionError& error) {
    tell(tr("character %1: %2")
             .arg(error.character)
             .arg(QString::fromStdString(translated(error.reason))));
  }
}

/// `never` is meant where no other kind stands first.
void ScopeWindow::prove(const QString& text) {
  const QString first = text.section(' ', 0, 0);
  proof::Property property{proof::Property::never, text.toStdString()};
  if (proof::find_kind(first.toStdString(), property.kind))
    property.text = text.mid(first.size()).trimmed().toStdString();
  time_->prove({property});
}

void ScopeWindow::prove_written() {
  if (!source_->has_source()) return ask_property();
  std::vector<proof::Property> properties;
  proof::Property::Kind kind{};
  for (const SourceProperty& written :
       source_properties(source_->source()->instances().front().file))
    if (proof::find_kind(written.word, kind)) properties.push_back({kind, written.text});
  if (properties.empty()) return ask_property();
  tell("");
  time_->prove(properties);
}

void ScopeWindow::answered() {
  const QString text = prompt_->text();
  const Asked what = std::exchange(asked_, Asked::nothing);
  prompt_->hide();
  waves_->setFocus();
  bool is_number = false;
  const auto number = static_cast<long>(text.toLongLong(&is_number));
  const Recording::Position here = time_->recording().position();
  switch (what) {
    case Asked::instant:
      if (!is_number || !time_->to({here.branch, number}))
        tell(tr("\"%1\" is no instant of this branch").arg(text));
      break;
    case Asked::instants:
      if (!is_number || number < 1 || !time_->run(number, nullptr))
        tell(tr("\"%1\" is no number of instants").arg(text));
      break;
    case Asked::condition:
      run_until(text);
      break;
    case Asked::signal:
      if (!waves_->find(text)) tell(tr("No signal that is shown has \"%1\" in its name").arg(text));
      break;
    case Asked::mark:
      time_->mark(text);
      break;
    case Asked::property:
      prove(text);
      break;
    case Asked::nothing:
      break;
  }
}

}  // namespace kiva
