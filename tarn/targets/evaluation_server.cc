// The text of a module's evaluation server: a C++17 program which, compiled with the user's data
// headers, listens on a port of the system's choice, starts the simulator with the module's file,
// the host and the port, and answers one request a message until the simulator leaves.
//
// What depends on the module's data is written clause by clause from the three tables; the rest is
// fixed text. User methods and constants are called as "::name", so that neither the names of the
// standard library nor the locals of the text come in between.

#include <algorithm>
#include <fstream>
#include <iostream>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/session_files.h"

namespace kiva {

namespace {

/// Names of the data types in their order; none without a table.
std::vector<std::string> type_names() {
  std::vector<std::string> names;
  if (Compilation::GDataTypeTable() != nullptr)
    for (const auto& [name, index] : Compilation::GDataTypeTable()->entries())
      names.push_back(name);
  return names;
}

std::vector<MethodDecl*> methods() {
  if (Compilation::GDataMethodTable() == nullptr) return {};
  return Compilation::GDataMethodTable()->getMethodList();
}

/// The constants that the user supplies.
std::vector<ConstantDecl*> external_constants() {
  std::vector<ConstantDecl*> constants;
  if (Compilation::GDataConstantTable() != nullptr)
    for (ConstantDecl* constant : Compilation::GDataConstantTable()->getConstantList())
      if (constant->getValue() == nullptr) constants.push_back(constant);
  return constants;
}

/// Field `i` of a request, in the text.
std::string field(size_t i) {
  return "v[" + std::to_string(i) + "]";
}

/// Fields that the clauses read at most.
size_t field_number() {
  size_t number = 6;
  for (const MethodDecl* method : methods())
    number = std::max(number, method->getArgTypeList().size() + 2);
  return number;
}

// A name of ZUC text may hold "@" and "." and begin with a digit; one of the user's C++ may not.
void require_cpp_name(const std::string& name) {
  if (name.find_first_of("@.") != std::string::npos || (name[0] >= '0' && name[0] <= '9'))
    throw explained(
        IllegalOperationException("Module::save_kiva_code: no name for the user's C++ code:", name),
        "the name \"" + name + "\" cannot stand in C++");
}

void require_cpp_names() {
  for (const std::string& name : type_names()) require_cpp_name(name);
  for (const MethodDecl* method : methods()) require_cpp_name(method->getName());
  for (const ConstantDecl* constant : external_constants()) require_cpp_name(constant->getName());
}

struct Operation {
  const char* function;
  const char* op;
};
constexpr Operation computations[] = {
    {"binop_plus", "+"}, {"binop_minus", "-"}, {"binop_mult", "*"}, {"binop_div", "/"}};
constexpr Operation comparisons[] = {{"binop_equal", "=="}, {"binop_notequal", "!="},
                                     {"binop_inf", "<"},    {"binop_infe", "<="},
                                     {"binop_sup", ">"},    {"binop_supe", ">="}};

/// The two arguments turned into values of the type, with the operator between them.
std::string operands(const std::string& type, const char* op) {
  return "string_to_" + type + " (arg1) " + op + " string_to_" + type + " (arg2)";
}

const char* const socket_class = R"(
#define KIVA_BUFFER_RECEPT_LENGTH 1024

#include <cstdlib>
#include <cstring>
#ifdef WIN32
#include <winsock.h>
typedef int socklen_t;
#define KIVA_BAD_SOCKET(s) ((s) == (int) INVALID_SOCKET)
#else
#include <arpa/inet.h>
#include <csignal>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#define KIVA_BAD_SOCKET(s) ((s) < 0)
#endif

// A listening socket, then the connection to its one client.
class sockserv
{
 public:
  sockserv (unsigned short port, bool any);
  int accept_connection ();
  int read (string & text);
  int write (const string & text);
  unsigned portnumber () const { return internal_portnumber; }
  int fd () const { return internal_fd; }

 private:
  static void init ();
  static void close_fd (int fd);

  unsigned short internal_portnumber;
  string internal_hostname;
  string internal_hostip;
  int internal_fd;
};

void sockserv::init ()
{
#ifdef WIN32
  WSADATA data;
  if (WSAStartup (MAKEWORD (1, 1), & data) != 0)
    {
      cerr << "initialisation failed" << endl;
      abort ();
    }
#else
  signal (SIGPIPE, SIG_IGN);  // a client that has gone is told by the calls themselves
#endif
}

void sockserv::close_fd (int fd)
{
#ifdef WIN32
  closesocket (fd);
#else
  ::close (fd);
#endif
}

sockserv::sockserv (unsigned short port, bool any) : internal_portnumber (port), internal_fd (-1)
{
  init ();
  struct sockaddr_in address;
  memset (& address, 0, sizeof address);
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl (any ? INADDR_ANY : INADDR_LOOPBACK);
  address.sin_port = htons (port);
  internal_fd = (int) ::socket (AF_INET, SOCK_STREAM, 0);
  if (KIVA_BAD_SOCKET (internal_fd)
      || ::bind (internal_fd, (struct sockaddr *) & address, sizeof address) != 0)
    {
      cerr << "Cannot create socket" << endl;
      exit (1);
    }
  socklen_t size = sizeof address;
  if (::getsockname (internal_fd, (struct sockaddr *) & address, & size) != 0
      || ::listen (internal_fd, 5) != 0)
    {
      cerr << "cannot create socket" << endl;
      exit (1);
    }
  internal_portnumber = ntohs (address.sin_port);
}

int sockserv::accept_connection ()
{
  fd_set waiting;
  FD_ZERO (& waiting);
  FD_SET (internal_fd, & waiting);
  struct timeval minute = { 60, 0 };
  if (select (internal_fd + 1, & waiting, NULL, NULL, & minute) == 0)
    {
      cerr << "nobody has come within a minute" << endl;
      return 0;
    }
  struct sockaddr_in address;
  memset (& address, 0, sizeof address);
  socklen_t size = sizeof address;
  int fd = (int) ::accept (internal_fd, (struct sockaddr *) & address, & size);
  if (KIVA_BAD_SOCKET (fd))
    {
      cerr << "unable to make connexion" << endl;
      return 0;
    }
  internal_hostip = inet_ntoa (address.sin_addr);
  struct hostent * host
    = gethostbyaddr ((const char *) & address.sin_addr, sizeof address.sin_addr, AF_INET);
  internal_hostname = host != NULL ? string (host->h_name) : internal_hostip;
  close_fd (internal_fd);
  internal_fd = fd;
  return 1;
}

int sockserv::read (string & text)
{
  char buffer[KIVA_BUFFER_RECEPT_LENGTH];
  int count = (int) ::recv (internal_fd, buffer, KIVA_BUFFER_RECEPT_LENGTH - 1, 0);
  text = count > 0 ? string (buffer, count) : string ();
  return count;
}

int sockserv::write (const string & text)
{
  return (int) ::send (internal_fd, text.data (), text.size (), 0);
}

string unsint2s (unsigned d)
{
  string digits;
  do
    {
      digits = (char) ('0' + d % 10) + digits;
      d = d / 10;
    }
  while (d != 0);
  return digits;
}
)";

const char* const main_function = R"(
int main (int argc, char ** argv)
{
  bool any = argc == 3 && string (argv[1]) == "--listen" && string (argv[2]) == "any";
  if (argc > 1 && ! any)
    {
      cerr << "usage: " << argv[0] << " [--listen any]" << endl;
      return 2;
    }
  sockserv socket_server (0, any);
  cerr << "allocated port number is " << socket_server.portnumber () << endl;
  char hostname[1024] = "localhost";
  if (any && gethostname (hostname, sizeof hostname) != 0)
    {
      cerr << "cannot get host name" << endl;
      return 1;
    }
  hostname[sizeof hostname - 1] = 0;
  string command = string ("kiva ") + application + " " + hostname + " "
    + unsint2s (socket_server.portnumber ()) + " &";
  if (system (command.c_str ()) != 0)
    {
      cerr << "cannot run: " << command << endl;
      return 1;
    }
  if (socket_server.accept_connection () == 0)
    return 1;
  cerr << "SOCKET accepted ..." << endl;
#ifdef WIN32
  u_long entier = 0;
  ioctlsocket (socket_server.fd (), FIONBIO, & entier);
#else
  int entier = 0;
  ioctl (socket_server.fd (), FIONBIO, & entier);
#endif
  while (true)
    {
      string text;
      int count = socket_server.read (text);
      cerr << "reading SOCKET ..." << endl;
      if (count > 0)
        {
          cerr << "BUFFER RECEIVED:" << text << endl;
          string data = compute_data_value (text);
          if (data.empty ())
            data = "--";  // a reply of no bytes would leave the client waiting for ever
          cerr << "TRANSMIT:" << data << endl;
          socket_server.write (data);
        }
      else if (count == 0)
        exit (0);
    }
}
)";

}  // namespace

void Module::save_kiva_code() const {
  require_cpp_names();
  const std::string file = SimulationZucDir() + "/kiva_" + name + ".cc";
  SessionOutput whole(file);
  if (!whole.opened()) {
    report_file(file, "cannot be written", "Cannot open kiva file:" + file);
    return;
  }
  SIMUL_ZUC_put(whole.out());
  if (!whole.finish()) report_file(file, "cannot be written", "Cannot write kiva file:" + file);
}

void Module::SIMUL_ZUC_put(std::ostream& out) const {
  out << "#include <iostream>\n#include <vector>\n#include <string>\n#include <sys/ioctl.h>\n";
  for (const std::string& type : type_names())
    out << "#include \"kiva_data_user_" << type << ".h\"\n";
  out << "\n#define application \"" << name << ".zuc\"\n\n";
  SIMUL_ZUC_put_predef_func(out);
  out << "\nstring compute_data_value (const string & param)\n"
         "{\n"
         "  string data;\n"
         "  vector<string> v;\n"
         "  string one;\n"
         "  for (char c : param)\n"
         "    if (c == ',')\n"
         "      {\n"
         "        v.push_back (one);\n"
         "        one.clear ();\n"
         "      }\n"
         "    else\n"
         "      one += c;\n"
         "  v.push_back (one);\n"
         "  if (v.size () < "
      << field_number() << ")\n    v.resize (" << field_number() << ");\n";
  if (Compilation::GDataMethodTable() != nullptr) SIMUL_ZUC_put_method(out);
  SIMUL_ZUC_put_binary_op(out);
  SIMUL_ZUC_put_unary_op(out);
  if (Compilation::GDataConstantTable() != nullptr) SIMUL_ZUC_put_const(out);
  out << "  return data;\n}\n" << socket_class << main_function;
}

void Module::SIMUL_ZUC_put_predef_func(std::ostream& out) const {
  const std::vector<std::string> types = type_names();
  out << "using namespace std;\n"
         "\n"
         "//\n"
         "// Is the text a value of the type?\n"
         "//\n"
         "bool check_type (string type, string arg)\n"
         "{\n"
         "  bool result = false;\n";
  for (const std::string& type : types)
    out << "  if (type == \"" << type << "\")\n    result = check_" << type << " (arg);\n";
  out << "  return result;\n}\n";
  // The header of a data type "bool" supplies this one.
  if (std::find(types.begin(), types.end(), "bool") == types.end())
    out << "\nbool string_to_bool (string s)\n{\n  return s == \"true\";\n}\n";

  // A user's type may be bool itself.
  out << "\n#ifdef __GNUC__\n#pragma GCC diagnostic ignored \"-Wint-in-bool-context\"\n#endif\n";
  for (const auto& [function, op] : computations) {
    out << "\nstring " << function << " (string type, string arg1, string arg2)\n"
        << "{\n  string result = \"--\";\n";
    for (const std::string& type : types)
      out << "  if (type == \"" << type << "\")\n    result = " << type << "_to_string ("
          << operands(type, op) << ");\n";
    out << "  return result;\n}\n";
  }
  for (const auto& [function, op] : comparisons) {
    out << "\nbool " << function << " (string type, string arg1, string arg2)\n"
        << "{\n  bool result = false;\n";
    for (const std::string& type : types)
      out << "  if (type == \"" << type << "\")\n    result = " << operands(type, op) << ";\n";
    out << "  return result;\n}\n";
  }
}

void Module::SIMUL_ZUC_put_method(std::ostream& out) const {
  out << "  if (v[0] == \"MC\")\n    {\n";
  for (const MethodDecl* method : methods()) {
    std::string checks, arguments;
    size_t i = 2;
    for (const std::string& type : method->getArgTypeList()) {
      const std::string separator = i == 2 ? "" : ", ";
      checks += (i == 2 ? "" : " && ") + ("check_" + type) + " (" + field(i) + ")";
      arguments += separator + "string_to_" + type + " (" + field(i) + ")";
      ++i;
    }
    const std::string result =
        method->getReturnType() + "_to_string (::" + method->getName() + " (" + arguments + "))";
    out << "      if (v[1] == \"" << method->getName() << "\")\n";
    if (checks.empty()) {
      out << "        data = " << result << ";\n";
    } else {
      out << "        {\n"
          << "          if (" << checks << ")\n"
          << "            data = " << result << ";\n"
          << "          else\n"
          << "            data = \"--\";\n"
          << "        }\n";
    }
  }
  out << "    }\n";
}

void Module::SIMUL_ZUC_put_binary_op(std::ostream& out) const {
  out << "  if (v[0] == \"BOP\")\n"
         "    {\n"
         "      if (v[2] != v[5])\n"
         "        data = \"--\";\n"
         "      else if (check_type (v[2], v[1]) && check_type (v[2], v[4]))\n"
         "        {\n";
  const char* indent = "          ";
  for (const auto& [function, op] : computations) {
    out << indent << "if (v[3] == \" " << op << " \")\n            data = " << function
        << " (v[2], v[1], v[4]);\n";
    indent = "          else ";
  }
  for (const char* op : {"&&", "|"})
    out << indent << "if (v[3] == \" " << op << " \")\n            data = string_to_bool (v[1]) "
        << op << " string_to_bool (v[4]) ? \"true\" : \"false\";\n";
  for (const auto& [function, op] : comparisons)
    out << indent << "if (v[3] == \" " << op << " \")\n            data = " << function
        << " (v[2], v[1], v[4]) ? \"true\" : \"false\";\n";
  out << "          else\n"
         "            data = \"--\";\n"
         "        }\n"
         "      else\n"
         "        data = \"--\";\n"
         "    }\n";
}

void Module::SIMUL_ZUC_put_unary_op(std::ostream& out) const {
  out << "  if (v[0] == \"UOP\")\n"
         "    {\n"
         "      if (check_type (v[3], v[2]))\n"
         "        {\n"
         "          if (v[1] == \" -\")\n"
         "            data = \" -\" + v[2];\n"
         "          else if (v[1] == \" !\")\n"
         "            data = ! string_to_bool (v[2]) ? \"true\" : \"false\";\n"
         "          else\n"
         "            data = \"--\";\n"
         "        }\n"
         "      else\n"
         "        data = \"--\";\n"
         "    }\n";
}

void Module::SIMUL_ZUC_put_const(std::ostream& out) const {
  out << "  if (v[0] == \"CONST\")\n"
         "    {\n"
         "      data = \"--\";\n";
  for (const ConstantDecl* constant : external_constants())
    out << "      if (v[1] == \"" << constant->getName()
        << "\")\n        data = " << constant->getType() << "_to_string (::" << constant->getName()
        << ");\n";
  out << "    }\n";
}

}  // namespace kiva
