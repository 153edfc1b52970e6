#include "SIMULATOR_ZUC/time_control.h"

#include <QFile>
#include <algorithm>
#include <fstream>
#include <optional>
#include <sstream>

#include "base/translation.h"
#include "base/whole_file.h"
#include "engine/expectations.h"
#include "proof/question.h"
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

bool TimeControl::run(long instants, const std::shared_ptr<Condition>& until) {
  if (busy_) return false;
  start([this, instants, until](Ended& end) { work(instants, until.get(), end); });
  return true;
}

void TimeControl::start(const Job& job) {
  if (worker_.joinable()) worker_.join();
  busy_ = true;
  stop_ = false;
  progress_ = recording_.position().instant;
  Q_EMIT busy_changed(true);
  Session* session = &Session::current();
  worker_ = std::thread([this, job, session] {
    const Session::Use use(*session);
    Ended end;
    try {
      job(end);
    } catch (const LibraryException& exception) {
      end.told = QString::fromStdString(exception.text());
    } catch (const std::exception& exception) {
      end.told = QString::fromUtf8(exception.what());
    }
    QMetaObject::invokeMethod(
        this, [this, end] { ended(end); }, Qt::QueuedConnection);
  });
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
  if (!name.endsWith(".kivasession")) return open_stimuli(name);
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

void TimeControl::work(long instants, const Condition* until, Ended& end) {
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
  if (stopped == Recording::Stopped::asked) end.told = tr("Stopped");
  if (stopped == Recording::Stopped::done && until != nullptr)
    end.told = tr("In none of these instants holds %1").arg(QString::fromStdString(until->text()));
}

std::vector<TimeControl::Line> TimeControl::read_stimuli(std::istream& in) const {
  std::vector<Line> lines;
  StimuliReader reader(in, *simulation_);
  while (std::optional<Stimulus> stimulus = reader.next())
    lines.push_back({std::move(*stimulus), reader.line()});
  return lines;
}

QString TimeControl::open_stimuli(const QString& name) {
  std::ifstream in(QFile::encodeName(name).toStdString());
  if (!in) return tr("%1 cannot be read").arg(name);
  std::vector<Line> lines;
  try {
    lines = read_stimuli(in);
  } catch (const StimuliError& error) {
    return QString("%1:%2: %3")
        .arg(name)
        .arg(error.line)
        .arg(QString::fromStdString(translated(error.reason)));
  }
  start([this, name, lines](Ended& end) { run_stimuli(name, lines, end); });
  return {};
}

/// From the load on.
void TimeControl::run_stimuli(const QString& name, const std::vector<Line>& lines, Ended& end) {
  const bool was_saved = work_done() == 0 || work_done() == saved_;
  const Recording::Position load{0, recording_.branch(0).from};
  recording_.to(load);
  size_t at = 0;
  const auto note = [&](const SimulationState& state) {
    const Line& line = lines[at++];
    progress_ = state.instant;
    for (const std::string& reason : unmet(line.stimulus.expectations, state, *simulation_)) {
      const long instant = load.instant + static_cast<long>(at);
      if (end.marks.empty())
        end.told = QString("%1:%2: %3")
                       .arg(name)
                       .arg(line.number)
                       .arg(tr("instant %1: %2")
                                .arg(instant)
                                .arg(QString::fromStdString(translated(reason))));
      if (end.marks.empty() || end.marks.back().first != instant)
        end.marks.emplace_back(instant, reason.substr(0, reason.find(',')));
    }
    return false;
  };
  const Recording::Stopped stopped = recording_.run(
      static_cast<long>(lines.size()), socket_(), [&] { apply(lines[at].stimulus, *simulation_); },
      note, &stop_);
  if (was_saved) set_saved(true);
  if (stopped == Recording::Stopped::asked) end.told = tr("Stopped");
  if (end.told.isEmpty()) end.told = tr("%1: %2 instants agree").arg(name).arg(lines.size());
}

bool TimeControl::prove(const std::vector<proof::Property>& properties) {
  if (busy_) return false;
  start([this, properties](Ended& end) { prove_in_worker(properties, end); });
  return true;
}

/// The first property that does not hold ends it.
void TimeControl::prove_in_worker(const std::vector<proof::Property>& properties, Ended& end) {
  const Recording::Position here = recording_.position();
  const auto add = [&](const QString& told) {
    end.told += (end.told.isEmpty() ? "" : "; ") + told;
  };
  proof::ProverOptions options;
  options.asked = &stop_;
  try {
    proof::Question question(*simulation_, false);
    for (const proof::Property& property : properties)
      if (property.kind == proof::Property::assume) question.assume(property.text);
    for (const proof::Property& property : properties) {
      if (property.kind == proof::Property::assume) continue;
      const bool reach = property.kind == proof::Property::reach;
      const QString what =
          proof::word(property.kind) + QString(" %1: ").arg(QString::fromStdString(property.text));
      const proof::Machine machine = question.machine(property);
      const proof::Answer answer = proof::prove(machine, options);
      if (answer.verdict == proof::Verdict::fails) {
        const std::string run = question.shown(property, answer.run);
        std::istringstream in(run);
        run_stimuli({}, read_stimuli(in), end);
        end.told.clear();
        add(what + (reach ? tr("reached in instant %1") : tr("fails in instant %1"))
                       .arg(answer.run.size()));
        return;
      }
      add(what +
          (answer.verdict == proof::Verdict::unknown ? tr("not known: ")
           : reach                                   ? tr("never reached: ")
                                                     : tr("holds: ")) +
          QString::fromStdString(translated(answer.how)));
      if (stop_) return;
    }
  } catch (const ConditionError& error) {
    add(tr("character %1: %2")
            .arg(error.character)
            .arg(QString::fromStdString(translated(error.reason))));
  } catch (const proof::MachineError& error) {
    add(QString::fromStdString(translated(error.reason)));
    recording_.to(here);
  }
}

Past TimeControl::past() {
  const Recording::Position here = recording_.position();
  Past past{simulation_->input_names(),
            recording_.branch(here.branch).initialised,
            {},
            choices_of(simulation_->state()),
            !unsaved()};
  for (long instant = recording_.first_instant() + 1; instant <= here.instant; ++instant)
    past.instants.push_back(recording_.choices_at({here.branch, instant}));
  return past;
}

Choices TimeControl::by_name(const Choices& choices, const std::vector<std::string>& inputs) const {
  Choices ours = choices_of(simulation_->state());
  ours.set = choices.set;
  ours.reset = choices.reset;
  const std::vector<std::string>& names = simulation_->input_names();
  for (size_t row = 0; row < names.size(); ++row) {
    const auto its = std::find(inputs.begin(), inputs.end(), names[row]);
    if (its == inputs.end()) continue;
    const auto at = static_cast<size_t>(its - inputs.begin());
    ours.inputs[row] = choices.inputs[at];
    ours.texts[row] = choices.texts[at];
  }
  return ours;
}

void TimeControl::replay(const Past& past) {
  if (busy_) return;
  if (past.initialised) recording_.init();
  start([this, past](Ended&) {
    size_t at = 0;
    recording_.run(
        static_cast<long>(past.instants.size()), socket_(),
        [&] { apply(by_name(past.instants[at++], past.inputs), *simulation_); },
        [&](const SimulationState& state) {
          progress_ = state.instant;
          return false;
        },
        &stop_);
    apply(by_name(past.next, past.inputs), *simulation_);
    if (past.saved) set_saved(true);
  });
}

void TimeControl::ended(const Ended& end) {
  worker_.join();
  end_pulses();
  busy_ = false;
  for (const auto& [instant, text] : end.marks)
    marks_.emplace_back(recording_.owner({recording_.position().branch, instant}), text);
  Q_EMIT busy_changed(false);
  moved_if(true);
  if (!end.marks.empty()) {
    Q_EMIT marked();
    to({recording_.position().branch, end.marks.front().first});
  }
  Q_EMIT run_ended(end.told);
}

}  // namespace kiva
