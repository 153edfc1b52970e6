#pragma once

namespace kiva::test {

/// What is made to fail: a request for memory by C++ or C code of ours, or a call by which a file
/// is written, synced or renamed.
enum class Faulty { memory, write };

/// From here to the destructor, the n-th call of the kind in this process fails, and all after it
/// where the fault is `lasting`. With n 0 calls are only counted.
class Injection {
 public:
  Injection(Faulty kind, long n, bool lasting = false);
  ~Injection();
  Injection(const Injection&) = delete;
  Injection& operator=(const Injection&) = delete;
  /// The calls so far.
  static long calls();
};

}  // namespace kiva::test
