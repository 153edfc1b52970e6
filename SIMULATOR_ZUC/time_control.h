#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <set>
#include <thread>

#include "engine/condition.h"
#include "engine/recording.h"
#include "engine/session_file.h"
#include "engine/stimuli.h"
#include "proof/property.h"

namespace kiva {

/// Time, for the windows: the recording of the running module, and a worker that runs more than one
/// instant. While it is busy nobody else touches recording or simulation, and every move here says
/// false.
/// The instants that led to the one that is shown, and what is chosen for the next.
struct Past {
  std::vector<std::string> inputs;
  bool initialised = false;  ///< they begin at an Init
  std::vector<Choices> instants;
  Choices next;
  bool saved = true;
};

class TimeControl : public QObject {
  Q_OBJECT

 public:
  /// `socket` gives the connection to the evaluation server, null for none.
  TimeControl(Simulation* simulation, std::function<Sock()> socket);
  /// Stops and waits.
  ~TimeControl() override;

  Recording& recording() { return recording_; }
  bool busy() const { return busy_; }
  /// The instant that the worker has reached.
  long progress() const { return progress_; }
  /// Goes up with every move: what has been looked up for another number is old.
  long version() const { return version_; }

  /// One instant, on the spot; an exception of the engine passes and leaves everything as it was.
  bool go();
  bool init();
  bool back();
  bool forward();
  bool to(Recording::Position position);
  bool first();
  bool last();
  /// Runs so many instants in the worker, or until the condition holds (may be null).
  bool run(long instants, const std::shared_ptr<Condition>& until);
  void stop() { stop_ = true; }

  /// Instants that a person has named, each of the branch in which it was run.
  const Marks& marks() const { return marks_; }
  /// Names the instant that is shown; an empty text takes the name away.
  void mark(const QString& text);

  /// There are instants or marks that have not been saved.
  bool unsaved() const;
  /// Takes what is there for saved, or for unsaved.
  void set_saved(bool saved) { saved_ = saved ? work_done() : -1; }
  /// Writes the session, or the branch that is shown as stimuli where the name ends so. Why it
  /// cannot be written, empty if it could.
  QString save(const QString& name);
  /// The same of a session, which stays as unsaved as it was.
  QString write_session(const QString& name);
  /// Runs what a session's file holds, from the load on. Why it cannot be used, empty if it could.
  /// A file of another name holds stimuli: the worker runs them, and marks the instants that are
  /// not as they await.
  QString open(const QString& name);
  /// Has the worker prove properties in all runs from the load on in which what others of them
  /// assume holds, for at most a minute each; where one does not hold, or what was to be reached
  /// is, the run to that instant is made.
  bool prove(const std::vector<proof::Property>& properties);

  Past past();
  /// Runs them in the worker, at the start of a module whose inputs may be others: they are found
  /// by name, and new ones are Zero.
  void replay(const Past& past);

  /// An input that is a pulse is Zero again behind each instant.
  bool is_pulse(size_t row) const { return pulses_.contains(row); }
  void set_pulse(size_t row, bool pulse);
  /// A choice for the next instant, as the told window makes them.
  bool choose(size_t row, SignalState state);
  bool type(size_t row, const std::string& text);

 Q_SIGNALS:
  /// Another instant is shown.
  void moved();
  void marked();
  /// Something else is chosen for the next one.
  void choices_changed();
  void busy_changed(bool busy);
  /// A run has come to its end; `told` is empty, or says why it ended early.
  void run_ended(QString told);

 private:
  bool moved_if(bool done);
  long work_done() const;
  void end_pulses();
  /// What a run leaves to be told: why it ended early, and what the instants shall be called.
  struct Ended {
    QString told;
    std::vector<std::pair<long, std::string>> marks = {};
  };
  using Job = std::function<void(Ended& end)>;
  QString open_stimuli(const QString& name);
  /// Stimuli, each with its line.
  struct Line {
    Stimulus stimulus;
    long number;
  };
  /// Throws StimuliError.
  std::vector<Line> read_stimuli(std::istream& in) const;
  void run_stimuli(const QString& name, const std::vector<Line>& lines, Ended& end);
  void prove_in_worker(const std::vector<proof::Property>& properties, Ended& end);
  Choices by_name(const Choices& choices, const std::vector<std::string>& inputs) const;
  void start(const Job& job);
  void work(long instants, const Condition* until, Ended& end);
  void ended(const Ended& end);

  Simulation* simulation_;
  Recording recording_;
  std::function<Sock()> socket_;
  std::set<size_t> pulses_;
  Marks marks_;
  long marks_made_ = 0;
  long saved_ = 0;  ///< what `work_done` gave then
  std::thread worker_;
  bool busy_ = false;
  long version_ = 0;
  std::atomic<bool> stop_ = false;
  std::atomic<long> progress_ = 0;
};

}  // namespace kiva
