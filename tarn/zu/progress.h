#pragma once

#include <functional>
#include <string>

#include "tarn/session/diagnostic.h"
#include "tarn/session/session.h"

namespace kiva {

/// What the session calls as the compilation of each statement begins, copies included; empty (the
/// default) calls nobody. For programs that show how far a long compilation has come.
inline std::function<void()>& statement_begun() {
  struct Listener {
    std::function<void()> call;
  };
  return Session::current().part<Listener>().call;
}

/// What the session calls as a longer piece of a module's compilation begins, with its name; empty
/// calls nobody.
inline std::function<void(const std::string&)>& stage_begun() {
  struct Listener {
    std::function<void(const std::string&)> call;
  };
  return Session::current().part<Listener>().call;
}

/// What the session calls with a warning of a module's cycle before the long work of finding out
/// whether it settles; empty calls nobody.
inline std::function<void(Diagnostic)>& cycle_met() {
  struct Listener {
    std::function<void(Diagnostic)> call;
  };
  return Session::current().part<Listener>().call;
}

}  // namespace kiva
