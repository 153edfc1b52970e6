#pragma once

#include <functional>

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

}  // namespace kiva
