// A connection as a handle that owns its descriptor. Every failure is a line on the error stream
// and a null or negative result; a peer that has gone raises no signal.

#include "base/sock.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>

namespace kiva {

namespace {

constexpr int backlog = 5;

void report(const std::string& text) {
  std::cerr << "Sock error: " << text << '\n';
}

std::nullptr_t failed(const std::string& text) {
  report(text);
  return nullptr;
}

/// `allocated`, or the end of the program.
template <class T>
T* required(T* allocated, const char* complaint) {
  if (allocated == nullptr) {
    report(complaint);
    std::abort();
  }
  return allocated;
}

Sock new_handle(const char* complaint) {
  Sock sock = required(static_cast<Sock>(std::calloc(1, sizeof(socket_type))), complaint);
  sock->fd = -1;
  return sock;
}

char* copied(const char* text, const char* complaint) {
  return text == nullptr ? nullptr : required(strdup(text), complaint);
}

std::string dotted(const in_addr& address) {
  char text[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &address, text, sizeof text);
  return text;
}

sockaddr* generic(sockaddr_in* address) {
  return reinterpret_cast<sockaddr*>(address);
}

/// The local address of the descriptor; false on failure.
bool local_name(int fd, sockaddr_in& address) {
  socklen_t size = sizeof address;
  return getsockname(fd, generic(&address), &size) == 0;
}

}  // namespace

void SOCK_init() {}

Sock SOCK_make_client(const char* host, unsigned short port) {
  constexpr const char* no_memory = "memory exausted";
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_CANONNAME;
  addrinfo* found = nullptr;
  if (host == nullptr || getaddrinfo(host, nullptr, &hints, &found) != 0 || found == nullptr)
    return failed("unknown or misspelled host name `" + std::string(host ? host : "") + "'");
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, freeaddrinfo);

  sockaddr_in address{};
  std::memcpy(&address, found->ai_addr, sizeof address);
  address.sin_port = htons(port);
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  if (fd < 0) return failed("cannot create socket");
  if (connect(fd, generic(&address), sizeof address) != 0) {
    close(fd);
    return failed("cannot set connexion");
  }
  Sock sock = new_handle(no_memory);
  sock->portnum = port;
  sock->hostname = copied(found->ai_canonname != nullptr ? found->ai_canonname : host, no_memory);
  sock->hostip = copied(dotted(address.sin_addr).c_str(), no_memory);
  sock->fd = fd;
  return sock;
}

Sock SOCK_of(int descriptor, const std::string& host, unsigned short port) {
  Sock sock = new_handle("memory exausted");
  sock->portnum = port;
  sock->hostname = copied(host.c_str(), "memory exausted");
  sock->fd = descriptor;
  return sock;
}

Sock SOCK_make_server(unsigned short port) {
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  if (fd < 0) return failed("Cannot create socket");
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_ANY);
  address.sin_port = htons(port);
  if (bind(fd, generic(&address), sizeof address) != 0) {
    close(fd);
    return failed("Cannot create socket");
  }
  if (!local_name(fd, address) || listen(fd, backlog) != 0) {
    close(fd);
    return failed("cannot create socket");
  }
  Sock sock = new_handle("memory exhausted");
  sock->portnum = ntohs(address.sin_port);
  sock->fd = fd;
  return sock;
}

int SOCK_accept(Sock sock) {
  if (sock == nullptr) return 0;
  sockaddr_in address{};
  socklen_t size = sizeof address;
  const int fd = accept(sock->fd, generic(&address), &size);
  if (fd < 0) {
    report("unable to make connexion");
    return 0;
  }
  constexpr const char* no_memory = "memory exhausted";
  const std::string ip = dotted(address.sin_addr);
  char name[NI_MAXHOST];
  const bool has_name =
      getnameinfo(generic(&address), size, name, sizeof name, nullptr, 0, NI_NAMEREQD) == 0;
  std::free(sock->hostip);
  std::free(sock->hostname);
  sock->hostip = copied(ip.c_str(), no_memory);
  sock->hostname = copied(has_name ? name : ip.c_str(), no_memory);
  close(sock->fd);
  sock->fd = fd;
  return 1;
}

Sock SOCK_dup(Sock sock) {
  constexpr const char* no_memory = "memory exhausted";
  const int fd = sock == nullptr ? -1 : dup(sock->fd);
  if (fd < 0) return failed("cannot duplicate socket");
  Sock copy = new_handle(no_memory);
  copy->portnum = sock->portnum;
  copy->hostname = copied(sock->hostname, no_memory);
  copy->hostip = copied(sock->hostip, no_memory);
  copy->fd = fd;
  return copy;
}

int SOCK_write(Sock sock, const void* buffer, int length) {
  // A peer that has closed is a failure like any other, not a signal.
  return static_cast<int>(send(sock->fd, buffer, static_cast<std::size_t>(length), MSG_NOSIGNAL));
}

int SOCK_read(Sock sock, void* buffer, int length) {
  return static_cast<int>(recv(sock->fd, buffer, static_cast<std::size_t>(length), 0));
}

void SOCK_shutdown(Sock sock, int release) {
  if (sock == nullptr) return;
  if (sock->fd >= 0) close(sock->fd);
  sock->fd = -1;
  if (release == 0) return;
  std::free(sock->hostname);
  std::free(sock->hostip);
  std::free(sock);
}

const char* SOCK_hostname(Sock sock) {
  return sock == nullptr ? nullptr : sock->hostname;
}

const char* SOCK_host_address(Sock sock) {
  return sock == nullptr ? nullptr : sock->hostip;
}

const char* SOCK_local_address(Sock sock) {
  static thread_local std::string text;
  sockaddr_in address{};
  if (sock == nullptr || !local_name(sock->fd, address)) return failed("cannot get socket name");
  text = dotted(address.sin_addr);
  return text.c_str();
}

}  // namespace kiva
