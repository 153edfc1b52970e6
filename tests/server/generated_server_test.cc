// The evaluation server's source text: compiled with a user's headers, started, and asked.

#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "base/sock.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;
using testing::Not;

void declare_method(const std::string& type, const std::string& name,
                    std::list<std::string> arguments) {
  Compilation::methodTable().addMethod(make_kept<MethodDecl>(type, name, std::move(arguments)));
}

void declare_constant(const std::string& type, const std::string& name,
                      const char* literal = nullptr) {
  DataExpr* value = literal == nullptr ? nullptr : make_kept<DataValue>(literal);
  Compilation::constantTable().addConstant(make_kept<ConstantDecl>(type, name, value));
}

/// Writes the text for a module of that name into the folder and compiles it there, warnings being
/// errors; the compiler's output.
std::string compiled(const TempDir& dir, const std::string& name) {
  Module::SimulationZucDir() = dir.path().string();
  Module module(name);
  module.save_kiva_code();
  const std::string program = dir.file("kiva_" + name);
  const std::string command = "'" KIVA_CXX
                              "' -std=c++17 -O1 -Wall -Werror -Wno-bitwise-conditional-parentheses "
                              "-Wno-bitwise-instead-of-logical -I'" +
                              dir.path().string() + "' -o '" + program + "' '" + program +
                              ".cc' >'" + dir.file("compiler") + "' 2>&1";
  const int result = std::system(command.c_str());
  return result == 0 ? "" : "failed: " + read_text(dir.file("compiler"));
}

/// A server at work, with the test as the simulator that it starts.
class RunningServer {
 public:
  RunningServer(const TempDir& dir, const std::string& name) {
    dir.write("kiva", "#!/bin/sh\necho \"started: $*\"\n");
    std::filesystem::permissions(dir.path() / "kiva", std::filesystem::perms::owner_all);
    const std::string folder = dir.path().string();
    output_ = popen(("cd '" + folder + "' && PATH='" + folder +
                     "':\"$PATH\" exec timeout 60 ./kiva_" + name + " 2>&1")
                        .c_str(),
                    "r");
    char line[200] = "";
    if (std::fgets(line, sizeof line, output_) == nullptr) return;
    text_ = line;
    std::istringstream words(text_.substr(text_.rfind("is ") + 3));
    words >> port_;
    client_ = SOCK_make_client("127.0.0.1", port_);
  }
  ~RunningServer() {
    SOCK_shutdown(client_, 1);
    if (output_ != nullptr) pclose(output_);
  }
  RunningServer(const RunningServer&) = delete;
  RunningServer& operator=(const RunningServer&) = delete;

  std::string ask(const std::string& request) {
    return client_ == nullptr ? "no server" : Compilation::Socket_call(request, client_);
  }
  unsigned short port() const { return port_; }
  /// Leaves the server; gives the exit status and all that it wrote.
  int leave(std::string& text) {
    SOCK_shutdown(client_, 1);
    client_ = nullptr;
    char buffer[4096];
    while (const size_t count = std::fread(buffer, 1, sizeof buffer, output_))
      text_.append(buffer, count);
    text = text_;
    return pclose(std::exchange(output_, nullptr));
  }

 private:
  std::FILE* output_ = nullptr;
  Sock client_ = nullptr;
  std::string text_;
  unsigned short port_ = 0;
};

const char* const integer_header = R"(
#pragma once
#include <cstdlib>
#include <string>
typedef long integer;
inline bool check_integer(std::string s) { char* e; std::strtol(s.c_str(), &e, 10); return !s.empty() && *e == 0; }
inline integer string_to_integer(std::string s) { return std::atol(s.c_str()); }
inline std::string integer_to_string(integer i) { return std::to_string(i); }
const integer limit = 10;
const integer data = 11;
inline integer add(integer a, integer b) { return a + b; }
inline integer plus(integer a, integer b) { return a + b + 1000; }
inline integer now() { return 99; }
inline bool even(integer i) { return i % 2 == 0; }
)";
const char* const bool_header = R"(
#pragma once
#include <string>
inline bool check_bool(std::string s) { return s == "true" || s == "false"; }
inline bool string_to_bool(std::string s) { return s == "true"; }
inline std::string bool_to_string(bool b) { return b ? "true" : "false"; }
)";
// A word under its own order: the shorter one is less. The empty word is its own text.
const char* const word_header = R"(
#pragma once
#include "kiva_data_user_integer.h"
struct word { std::string s; };
inline bool check_word(const std::string& s) { return s.find(' ') == std::string::npos; }
inline word string_to_word(const std::string& s) { return word{s}; }
inline std::string word_to_string(const word& w) { return w.s; }
inline word operator+(const word& a, const word& b) { return word{a.s + b.s}; }
inline word operator-(const word& a, const word&) { return a; }
inline word operator*(const word& a, const word&) { return a; }
inline word operator/(const word& a, const word&) { return a; }
inline bool operator==(const word& a, const word& b) { return a.s == b.s; }
inline bool operator!=(const word& a, const word& b) { return a.s != b.s; }
inline bool operator<(const word& a, const word& b) { return a.s.size() < b.s.size(); }
inline bool operator<=(const word& a, const word& b) { return a.s.size() <= b.s.size(); }
inline bool operator>(const word& a, const word& b) { return a.s.size() > b.s.size(); }
inline bool operator>=(const word& a, const word& b) { return a.s.size() >= b.s.size(); }
const word left{"west"};
inline integer length(word w) { return static_cast<integer>(w.s.size()); }
inline word nothing() { return word(); }
)";

/// Request, then reply. Behind the good ones: different types, unfit values, unknown types and
/// operators; at last what no simulator sends, which must not leave the asker waiting.
const char* const requests = R"(BOP,7,integer, + ,2,integer => 9
BOP,7,integer, - ,2,integer => 5
BOP,7,integer, * ,2,integer => 14
BOP,7,integer, / ,2,integer => 3
BOP,7,integer, == ,2,integer => false
BOP,7,integer, == ,7,integer => true
BOP,7,integer, != ,2,integer => true
BOP,7,integer, < ,2,integer => false
BOP,7,integer, <= ,7,integer => true
BOP,7,integer, > ,2,integer => true
BOP,7,integer, >= ,8,integer => false
BOP,true,bool, && ,false,bool => false
BOP,true,bool, | ,false,bool => true
BOP,ab,word, + ,cd,word => abcd
BOP,zz,word, < ,abc,word => true
BOP,3,integer, + ,4,word => --
BOP,3,integer, + ,--,integer => --
BOP,x,integer, + ,4,integer => --
BOP,3,real, + ,4,real => --
BOP,3,integer,+,4,integer => --
BOP,3,integer, ! ,4,integer => --
BOP,3,integer, + ,4 => --
UOP, -,3,integer =>  -3
UOP, -,--,integer => --
UOP, !,true,bool => false
UOP, !,3,integer => true
UOP, +,3,integer => --
UOP, -,3,real => --
MC,add,3,4 => 7
MC,plus,3,4 => 1007
MC,now, => 99
MC,now => 99
MC,even,4 => true
MC,length, => 0
MC,length,a b => --
MC,add,3 => --
MC,add,3,four => --
CONST,limit => 10
CONST,data => 11
CONST,left => west
CONST,three => --
CONST,unknown => --
MC,unknown,1 => --
MC,nothing, => --
BOP => --
,,, => --
hello => --)";

TEST(GeneratedServer, AnswersEveryRequest) {
  Session session;
  const Session::Use use(session);
  const TempDir dir;
  dir.write("kiva_data_user_integer.h", integer_header);
  dir.write("kiva_data_user_bool.h", bool_header);
  dir.write("kiva_data_user_word.h", word_header);
  for (const char* type : {"word", "integer", "bool"}) Compilation::typeTable().addType(type);
  declare_method("integer", "add", {"integer", "integer"});
  declare_method("integer", "plus", {"integer", "integer"});
  declare_method("integer", "now", {});
  declare_method("bool", "even", {"integer"});
  declare_method("integer", "length", {"word"});
  declare_method("word", "nothing", {});
  declare_constant("integer", "limit");
  declare_constant("integer", "data");
  declare_constant("word", "left");
  declare_constant("integer", "three", "3");
  ASSERT_EQ(compiled(dir, "m"), "");
  RunningServer server(dir, "m");

  std::istringstream cases(requests);
  run_captured([&] {
    for (std::string line; std::getline(cases, line);) {
      const size_t arrow = line.find(" => ");
      EXPECT_EQ(server.ask(line.substr(0, arrow)), line.substr(arrow + 4)) << line;
    }
  });

  std::string text;
  EXPECT_EQ(server.leave(text), 0) << "the server ends with its client";
  const std::string port = std::to_string(server.port());
  EXPECT_THAT(text, testing::StartsWith("allocated port number is " + port + "\n"));
  EXPECT_THAT(text, HasSubstr("started: m.zuc localhost " + port + "\n"));
  EXPECT_THAT(text, HasSubstr("SOCKET accepted ...\n"));
  EXPECT_THAT(text, HasSubstr("reading SOCKET ...\nBUFFER RECEIVED:MC,add,3,4\nTRANSMIT:7\n"));
}

TEST(GeneratedServer, HasNoClauseWithoutItsTable) {
  Session session;
  const Session::Use use(session);
  const TempDir dir;
  ASSERT_EQ(compiled(dir, "plain"), "");
  const std::string text = read_text(dir.file("kiva_plain.cc"));
  EXPECT_THAT(text, HasSubstr("#define application \"plain.zuc\"\n"));
  for (const char* absent : {"kiva_data_user_", "\"MC\"", "\"CONST\""})
    EXPECT_THAT(text, Not(HasSubstr(absent)));

  size_t at = 0;
  for (const char* part :
       {"#include <iostream>", "#include <vector>", "#include <string>", "#include <sys/ioctl.h>",
        "#define application", "using namespace std;", "bool check_type (", "bool string_to_bool (",
        "string binop_plus (", "bool binop_supe", "string compute_data_value", "\"BOP\"", "\"UOP\"",
        "#define KIVA_BUFFER_RECEPT_LENGTH 1024", "class sockserv", "string unsint2s (unsigned d)",
        "int main (int argc"}) {
    const size_t found = text.find(part);
    ASSERT_NE(found, std::string::npos) << part;
    EXPECT_GT(found + 1, at) << part << " stands too early";
    at = found;
  }

  RunningServer server(dir, "plain");
  run_captured([&] {
    EXPECT_EQ(server.ask("BOP,1,int, + ,1,int"), "--");
    EXPECT_EQ(server.ask("MC,now,"), "--");
  });
}

TEST(GeneratedServer, TellsWhatCannotBeWritten) {
  Session session;
  const Session::Use use(session);
  const TempDir dir;
  Module module("m");
  Module::SimulationZucDir() = dir.file("missing");
  const Outcome outcome = run_captured([&] { module.save_kiva_code(); });
  EXPECT_EQ(outcome.err, "Cannot open kiva file:" + dir.file("missing") + "/kiva_m.cc\n");

  Module::SimulationZucDir() = dir.path().string();
  declare_constant("integer", "a.b", "3");
  declare_constant("integer", "12x");
  EXPECT_THROW(module.save_kiva_code(), IllegalOperationException);
  EXPECT_FALSE(std::filesystem::exists(dir.file("kiva_m.cc")));
}

}  // namespace
}  // namespace kiva::test
