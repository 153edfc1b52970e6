#pragma once

#include <functional>
#include <string>

namespace kiva {

/// Who answers the requests of data expressions: a part of the session. Where nobody is chosen,
/// `Compilation::Socket_call` does, with the socket at hand, and what it gives stands. A service
/// throws what its caller is to know, and then no value has come.
struct EvaluationService {
  std::function<std::string(const std::string& request)> ask;
  std::string name;  ///< for a person
};

}  // namespace kiva
