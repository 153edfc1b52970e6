#pragma once

#include "tarn/model/data.h"
#include "tarn/model/sexception.h"

namespace kiva {

/// Counts the levels of a recursion over data expressions while it lives; beyond
/// `DataExpr::deepest` it throws IllegalOperationException with the operation.
class DepthGuard {
 public:
  explicit DepthGuard(const char* operation) {
    if (depth_ >= DataExpr::deepest)
      throw IllegalOperationException(operation, "data expression nested too deep");
    ++depth_;
  }
  ~DepthGuard() { --depth_; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

 private:
  struct Levels {
    int open = 0;
  };
  int& depth_ = Session::current().part<Levels>().open;
};

}  // namespace kiva
