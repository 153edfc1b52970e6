#include "SIMULATOR_ZUC/time_control.h"

#include <QFile>

#include "base/whole_file.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"

namespace kiva {

TimeControl::TimeControl(Simulation* simulation, std::function<Sock()> socket)
    : simulation_(simulation), recording_(simulation), socket_(std::move(socket)) {}

TimeControl::~TimeControl() {
  stop_ = true;
  if (worker_.joinable()) worker_.join();
}

bool TimeControl::moved_if(bool done) {
  if (!done) return false;
  ++version_;
  Q_EMIT moved();
  return true;
}

void TimeControl::end_pulses() {
  for (size_t row : pulses_) {
    simulation_->choose_input(row, SignalState::zero);
    simulation_->type_input(row, "--");
  }
}

bool TimeControl::go() {
  if (busy_) return false;
  recording_.go(socket_());
  end_pulses();
  return moved_if(true);
}

bool TimeControl::init() {
  if (busy_) return false;
  recording_.init();
  return moved_if(true);
}

bool TimeControl::back() {
  return moved_if(!busy_ && recording_.back());
}

bool TimeControl::forward() {
  return moved_if(!busy_ && recording_.forward());
}

bool TimeControl::to(Recording::Position position) {
  return moved_if(!busy_ && recording_.to(position));
}

bool TimeControl::first() {
  return !busy_ && to({recording_.position().branch, recording_.first_instant()});
}

bool TimeControl::last() {
  const size_t branch = recording_.position().branch;
  return !busy_ && to({branch, recording_.branch(branch).last});
}

void TimeControl::set_pulse(size_t row, bool pulse) {
  if (pulse)
    pulses_.insert(row);
  else
    pulses_.erase(row);
}

bool TimeControl::choose(size_t row, SignalState state) {
  if (busy_) return false;
  simulation_->choose_input(row, state);
  Q_EMIT choices_changed();
  return true;
}

bool TimeControl::type(size_t row, const std::string& text) {
  if (busy_) return false;
  simulation_->type_input(row, text);
  Q_EMIT choices_changed();
  return true;
}

bool TimeControl::run(long instants, std::shared_ptr<Condition> until) {
  if (busy_) return false;
  if (worker_.joinable()) worker_.join();
  busy_ = true;
  stop_ = false;
  progress_ = recording_.position().instant;
  Q_EMIT busy_changed(true);
  Session* session = &Session::current();
  worker_ = std::thread([this, instants, until, session] {
    const Session::Use use(*session);
    work(instants, until.get());
  });
  return true;
}

void TimeControl::mark(const QString& text) {
  if (busy_) return;
  const Recording::Position here = recording_.owner(recording_.position());
  std::erase_if(marks_, [&](const auto& mark) { return mark.first == here; });
  if (!text.isEmpty()) marks_.emplace_back(here, text.toStdString());
  ++marks_made_;
  Q_EMIT marked();
}

long TimeControl::work_done() const {
  long instants = 0;
  for (size_t branch = 0; branch < recording_.branches(); ++branch)
    instants += recording_.branch(branch).last - recording_.branch(branch).from;
  return instants + marks_made_;
}

bool TimeControl::unsaved() const {
  return busy_ || (work_done() > 0 && work_done() != saved_);
}

QString TimeControl::write_session(const QString& name) {
  if (busy_) return tr("a run is under way");
  const std::string text =
      name.endsWith(".stimuli") ? stimuli_text(recording_) : session_text(recording_, marks_);
  WholeFile file(QFile::encodeName(name).toStdString());
  if (file.opened()) file.out() << text;
  return file.opened() && file.finish() ? QString() : tr("%1 cannot be written").arg(name);
}

QString TimeControl::save(const QString& name) {
  const QString problem = write_session(name);
  if (problem.isEmpty()) saved_ = work_done();
  return problem;
}

QString TimeControl::open(const QString& name) {
  if (busy_) return tr("a run is under way");
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) return tr("%1 cannot be read").arg(name);
  std::string problem;
  marks_.clear();
  try {
    recording_.to({0, recording_.branch(0).from});
    problem = open_session(file.readAll().toStdString(), recording_, socket_(), marks_);
  } catch (const LibraryException& exception) {
    problem = exception.text();
  }
  saved_ = work_done();
  moved_if(true);
  Q_EMIT marked();
  return problem.empty() ? QString() : name + ": " + QString::fromStdString(problem);
}

void TimeControl::work(long instants, const Condition* until) {
  QString told;
  try {
    bool first = true;
    const Recording::Stopped stopped = recording_.run(
        instants, socket_(),
        [&] {
          if (!first) end_pulses();
          first = false;
        },
        [&](const SimulationState& state) {
          progress_ = state.instant;
          return until != nullptr && until->holds(state);
        },
        &stop_);
    if (stopped == Recording::Stopped::asked) told = tr("Stopped");
    if (stopped == Recording::Stopped::done && until != nullptr)
      told = tr("In none of these instants holds %1").arg(QString::fromStdString(until->text()));
  } catch (const LibraryException& exception) {
    told = QString::fromStdString(exception.text());
  } catch (const std::exception& exception) {
    told = QString::fromUtf8(exception.what());
  }
  QMetaObject::invokeMethod(
      this, [this, told] { ended(told); }, Qt::QueuedConnection);
}

void TimeControl::ended(const QString& told) {
  worker_.join();
  end_pulses();
  busy_ = false;
  Q_EMIT busy_changed(false);
  moved_if(true);
  Q_EMIT run_ended(told);
}

}  // namespace kiva
