#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

#include "language/channel.h"
#include "language/workspace.h"

namespace kiva::language {

/// A server of the Language Server Protocol for source texts, in one thread: while messages wait it
/// answers them, then it looks at the texts that have changed. What is asked while a text is
/// compiled is answered in between; an edit gives the compilation up, and it is begun anew. (An
/// editor asks whenever diagnostics come: if that gave them up as well, none would come to an end.)
class Server {
 public:
  Server(int in, int out) : channel_(in, out) {}
  /// Until the editor ends it; gives the exit status: 0 where it had announced that.
  int run();

 private:
  using json = nlohmann::json;

  bool receive();
  void receive_between();
  void take(const json& message);
  void answer(const json& id, const std::string& method, const json& params);
  json result_of(const std::string& method, const json& params);
  json initialize(const json& params);
  void note(const std::string& method, const json& params);
  void change(const json& params);
  void fail(const json& id, int code, const std::string& reason) const;
  DocumentPtr document_of(const json& params) const;
  void check_next();
  void publish(const std::string& uri, const json& diagnostics) const;

  Channel channel_;
  Workspace workspace_;
  std::set<std::string> unchecked_;  ///< by uri
  size_t edits_ = 0;                 ///< notes that may change what a compilation finds
  bool initialized_ = false, shut_down_ = false, ended_ = false;
};

}  // namespace kiva::language
