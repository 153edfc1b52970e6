#pragma once

#include "base/connection.h"
#include "engine/simulation.h"

namespace kiva {

/// Steps of a simulation whose values come from an evaluation server or not at all: an instant that
/// lacks one has not taken place. In the current session, while this lives.
class ServerSteps {
 public:
  /// Null where there is no server: an instant that asks for a value fails.
  explicit ServerSteps(Connection* server);
  ~ServerSteps();
  ServerSteps(const ServerSteps&) = delete;
  ServerSteps& operator=(const ServerSteps&) = delete;

  /// One instant. After a ConnectionFault, or an exception of the library, the state is the one
  /// before.
  void step(Simulation& simulation);
  /// What came behind the last reply shows now; throws ConnectionFault.
  void finish();

 private:
  Connection* server_;
  bool asked_ = false;  ///< in this instant
  bool ever_asked_ = false;
};

}  // namespace kiva
