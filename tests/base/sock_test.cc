#include "base/sock.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>

#include "tests/support/process_end.h"

namespace kiva::test {

namespace {

/// A client and its server in one process: the connection waits in the server's queue.
class Connection : public ::testing::Test {
 protected:
  void SetUp() override {
    SOCK_init();
    server = SOCK_make_server(0);
    ASSERT_NE(server, nullptr);
    ASSERT_GT(server->portnum, 0);
    ASSERT_EQ(SOCK_hostname(server), nullptr);
    ASSERT_EQ(SOCK_host_address(server), nullptr);
    client = SOCK_make_client("localhost", static_cast<unsigned short>(server->portnum));
    ASSERT_NE(client, nullptr);
    ASSERT_EQ(SOCK_accept(server), 1);
  }
  void TearDown() override {
    SOCK_shutdown(server, 1);
    SOCK_shutdown(client, 1);
  }
  static std::string read_text(Sock sock, std::size_t length) {
    std::string text(length, '\0');
    std::size_t done = 0;
    while (done < length) {
      const int got = SOCK_read(sock, text.data() + done, static_cast<int>(length - done));
      if (got <= 0) break;
      done += static_cast<std::size_t>(got);
    }
    text.resize(done);
    return text;
  }
  Sock server = nullptr, client = nullptr;
};

}  // namespace

TEST_F(Connection, CarriesBytesBothWays) {
  EXPECT_EQ(SOCK_write(client, "to server", 9), 9);
  EXPECT_EQ(read_text(server, 9), "to server");
  EXPECT_EQ(SOCK_write(server, "back", 4), 4);
  EXPECT_EQ(read_text(client, 4), "back");
  EXPECT_STREQ(SOCK_host_address(server), "127.0.0.1");
  EXPECT_STREQ(SOCK_host_address(client), "127.0.0.1");
  EXPECT_STREQ(SOCK_local_address(client), "127.0.0.1");
  EXPECT_STREQ(SOCK_hostname(client), "localhost");
}

TEST_F(Connection, CopyHasItsOwnTextsAndEnd) {
  Sock copy = SOCK_dup(client);
  ASSERT_NE(copy, nullptr);
  SOCK_shutdown(client, 1);
  client = nullptr;
  EXPECT_STREQ(SOCK_hostname(copy), "localhost");
  EXPECT_EQ(SOCK_write(copy, "x", 1), 1);
  EXPECT_EQ(read_text(server, 1), "x");
  SOCK_shutdown(copy, 1);
  char byte;
  EXPECT_EQ(SOCK_read(server, &byte, 1), 0);
}

TEST_F(Connection, WriteToClosedPeerIsAFailure) {
  SOCK_shutdown(server, 0);
  EXPECT_EQ(server->fd, -1);
  // The first write may still be taken; its answer is the reset that the next one meets.
  int result = 1;
  for (int i = 0; i < 100 && result >= 0; ++i) result = SOCK_write(client, "x", 1);
  EXPECT_EQ(result, -1);
}

TEST(Sock, Failures) {
  Sock server = SOCK_make_server(0);
  ASSERT_NE(server, nullptr);
  const auto port = static_cast<unsigned short>(server->portnum);
  Outcome outcome = run_captured([&] { EXPECT_EQ(SOCK_make_server(port), nullptr); });
  EXPECT_EQ(outcome.err, "Sock error: Cannot create socket\n");
  SOCK_shutdown(server, 0);
  outcome = run_captured([&] {
    EXPECT_EQ(SOCK_make_client("127.0.0.1", port), nullptr);
    EXPECT_EQ(SOCK_accept(server), 0);
    EXPECT_EQ(SOCK_dup(server), nullptr);
    EXPECT_EQ(SOCK_local_address(server), nullptr);
    EXPECT_EQ(SOCK_make_client("no such host", 1), nullptr);
  });
  EXPECT_EQ(outcome.err,
            "Sock error: cannot set connexion\n"
            "Sock error: unable to make connexion\n"
            "Sock error: cannot duplicate socket\n"
            "Sock error: cannot get socket name\n"
            "Sock error: unknown or misspelled host name `no such host'\n");
  SOCK_shutdown(server, 1);
  EXPECT_EQ(SOCK_hostname(nullptr), nullptr);
  EXPECT_EQ(SOCK_host_address(nullptr), nullptr);
  EXPECT_EQ(SOCK_accept(nullptr), 0);
}

}  // namespace kiva::test
