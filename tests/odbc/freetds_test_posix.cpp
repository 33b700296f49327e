// The driver for servers of the dialect, with no server behind the address.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "odbc_fixture.h"

using platform::RunTimeError;

namespace {

// A port of this machine that takes connections and never says a word, or one that nobody listens on.
class Port {
public:
  explicit Port(bool listening) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* a = reinterpret_cast<sockaddr*>(&address);
    if (bind(socket_, a, size) != 0 || getsockname(socket_, a, &size) != 0) ADD_FAILURE() << "no port";
    number_ = ntohs(address.sin_port);
    if (listening && listen(socket_, 5) != 0) ADD_FAILURE() << "no listening port";
  }
  ~Port() { close(socket_); }
  std::string text() const {
    return "Database=TqSystem;Server=odbc:Driver=FreeTDS;Server=127.0.0.1;Port=" + std::to_string(number_) +
           ";TDS_Version=7.1;UID=ledger;PWD=Tiger-99;";
  }

private:
  int socket_;
  int number_ = 0;
};

RunTimeError failureToConnect(const Port& port, int seconds) {
  odbc::Settings settings;
  settings.loginTimeoutSeconds = seconds;
  return failureOf([&] { odbc::makeConnection(settings)->ConnectionOpen(port.text()); });
}

void expectClear(const RunTimeError& e) {
  EXPECT_EQ(e.number(), RunTimeError::connectionClosed);
  EXPECT_NE(e.description().find("cannot be opened"), std::string::npos) << e.description();
  EXPECT_NE(e.description().find("127.0.0.1"), std::string::npos) << e.description();
  EXPECT_EQ(e.description().find("Tiger"), std::string::npos) << e.description();
}

}  // namespace

TEST(FreeTds, a_server_that_is_not_there_is_a_clear_failure_at_once) {
  const auto start = std::chrono::steady_clock::now();
  expectClear(failureToConnect(Port(false), 10));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(FreeTds, a_server_that_does_not_answer_is_given_up_after_the_login_time) {
  const Port silent(true);
  const auto start = std::chrono::steady_clock::now();
  expectClear(failureToConnect(silent, 1));
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_GE(waited, std::chrono::milliseconds(800));
  EXPECT_LT(waited, std::chrono::seconds(6));
}
