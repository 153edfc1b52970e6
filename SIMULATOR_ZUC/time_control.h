#pragma once

#include <QObject>
#include <atomic>
#include <functional>
#include <memory>
#include <set>
#include <thread>

#include "engine/condition.h"
#include "engine/recording.h"

namespace kiva {

/// Time, for the windows: the recording of the running module, and a worker that runs more than one
/// instant. While it is busy nobody else touches recording or simulation, and every move here says
/// false.
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
  bool run(long instants, std::shared_ptr<Condition> until);
  void stop() { stop_ = true; }
  /// Runs what a session's text holds, from the load on; `mark` gets its marks. Why it cannot be
  /// used, empty if it could.
  QString open(const std::string& session,
               const std::function<void(long instant, const QString& text)>& mark);

  /// An input that is a pulse is Zero again behind each instant.
  bool is_pulse(size_t row) const { return pulses_.contains(row); }
  void set_pulse(size_t row, bool pulse);
  /// A choice for the next instant, as the told window makes them.
  bool choose(size_t row, SignalState state);
  bool type(size_t row, const std::string& text);

 Q_SIGNALS:
  /// Another instant is shown.
  void moved();
  /// Something else is chosen for the next one.
  void choices_changed();
  void busy_changed(bool busy);
  /// A run has come to its end; `told` is empty, or says why it ended early.
  void run_ended(QString told);

 private:
  bool moved_if(bool done);
  void end_pulses();
  void work(long instants, const Condition* until);
  void ended(const QString& told);

  Simulation* simulation_;
  Recording recording_;
  std::function<Sock()> socket_;
  std::set<size_t> pulses_;
  std::thread worker_;
  bool busy_ = false;
  long version_ = 0;
  std::atomic<bool> stop_ = false;
  std::atomic<long> progress_ = 0;
};

}  // namespace kiva
