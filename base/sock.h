#pragma once

#include <string>

namespace kiva {

/// One end of an IPv4 TCP connection, or a listening socket.
struct socket_type {
  int portnum;     ///< in host byte order
  char* hostname;  ///< name of the peer, owned; null on a listening socket
  char* hostip;    ///< address of the peer as dotted decimal text, owned; null when listening
  int fd;          ///< -1 after SOCK_shutdown
};
/// Null means that there is no socket.
using Sock = socket_type*;

// Calls block, and each failure is one line "Sock error: ..." on the error stream.

void SOCK_init();
/// Connects to the first address of the host; null on failure.
Sock SOCK_make_client(const char* host, unsigned short port);
/// A handle that owns the descriptor, which may be none.
Sock SOCK_of(int descriptor, const std::string& host, unsigned short port);
/// Listens on any address, with port 0 on one that the system chooses; null on failure.
Sock SOCK_make_server(unsigned short port);
/// Waits for a client; the handle becomes that connection, and no longer listens. 0 on failure.
int SOCK_accept(Sock sock);
/// A second handle, with texts of its own, on the same connection; null on failure.
Sock SOCK_dup(Sock sock);
/// One transfer, perhaps a short one; -1 on failure, a closed peer included.
int SOCK_write(Sock sock, const void* buffer, int length);
/// One transfer; 0 at the end of the stream, -1 on failure.
int SOCK_read(Sock sock, void* buffer, int length);
/// Closes; `release` not 0 frees the handle as well.
void SOCK_shutdown(Sock sock, int release);
/// Null for a null handle.
const char* SOCK_hostname(Sock sock);
const char* SOCK_host_address(Sock sock);
/// Dotted decimal text, valid until the next call; null on failure.
const char* SOCK_local_address(Sock sock);

}  // namespace kiva
