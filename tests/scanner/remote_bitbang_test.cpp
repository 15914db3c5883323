// The protocol of OpenOCD's driver remote_bitbang, without an OpenOCD.

#include "remote_bitbang.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "probe.h"

namespace {

using scanner::RemoteBitbangServer;
using scanner::SimulatedChain;
using scanner::TapDescription;

constexpr std::uint32_t kIdcode = 0x59604093;

std::vector<TapDescription> OneDevice() {
  TapDescription description;
  description.irLength = 8;
  description.idcode = kIdcode;
  return {description};
}

/// The commands of a clock for each '0' and '1' of `tms`; `look` comes while TCK is low.
std::string Walk(const std::string& tms, const char* look = "") {
  std::string commands;
  for (const char bit : tms) commands += (bit == '1' ? "3" : "1") + std::string(look) + (bit == '1' ? "7" : "5");
  return commands;
}

const std::string kResetAndShiftDr = Walk("111110100");
const std::string kRead32Bits = Walk(std::string(31, '0') + "1", "R");

std::string Answer(SimulatedChain& chain, const std::string& commands) {
  std::string answer;
  EXPECT_TRUE(scanner::Obey(commands, chain, answer));
  return answer;
}

/// A client of the server, and its requests.
class Client {
 public:
  explicit Client(int port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    EXPECT_EQ(connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~Client() { close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  void Say(const std::string& commands) {
    EXPECT_EQ(send(socket_, commands.data(), commands.size(), MSG_NOSIGNAL), static_cast<ssize_t>(commands.size()));
  }

  /// The answer of the server, up to `count` characters or until it closes the connection.
  std::string Hear(std::size_t count) {
    std::string answer;
    for (char c; answer.size() < count && recv(socket_, &c, 1, 0) == 1;) answer += c;
    return answer;
  }

 private:
  int socket_;
};

TEST(RemoteBitbang, SetsThePinsAndReadsTdo) {
  SimulatedChain chain(OneDevice());
  EXPECT_EQ(Answer(chain, kResetAndShiftDr + kRead32Bits), scanner::Bits(kIdcode, 32));
}

TEST(RemoteBitbang, ResetsTheChainByTrstAlone) {
  const struct {
    const char* command;
    const char* tdo;  // the bypass bit in Shift-DR; undriven after a reset
  } cases[] = {{"r", "0"}, {"s", "0"}, {"t", "1"}, {"u", "1"}, {"B", "0"}, {"b", "0"}};
  for (const auto& c : cases) {
    SimulatedChain chain({TapDescription()});
    EXPECT_EQ(Answer(chain, kResetAndShiftDr + "1" + c.command + "R"), c.tdo) << "row: " << c.command;
  }
}

TEST(RemoteBitbang, AnswersNothingButForR) {
  SimulatedChain chain(OneDevice());
  EXPECT_EQ(Answer(chain, "01234567rstuBb\n"), "");
  EXPECT_EQ(Answer(chain, "R"), "1");
}

TEST(RemoteBitbang, EndsWithQ) {
  SimulatedChain chain(OneDevice());
  std::string answer;
  EXPECT_FALSE(scanner::Obey("RQR", chain, answer));
  EXPECT_EQ(answer, "1");
}

TEST(RemoteBitbangServer, ServesOneClientAfterTheOther) {
  const RemoteBitbangServer server(OneDevice());
  for (const char* goodBye : {"Q", ""}) {  // OpenOCD may send it, or be killed
    Client client(server.Port());
    client.Say(kResetAndShiftDr + kRead32Bits + goodBye);
    EXPECT_EQ(client.Hear(32), scanner::Bits(kIdcode, 32)) << "row: " << goodBye;
  }
  Client last(server.Port());
  last.Say("R");
  EXPECT_EQ(last.Hear(1).size(), 1U);
}

TEST(RemoteBitbangServer, ClosesTheConnectionAfterGoodBye) {
  const RemoteBitbangServer server(OneDevice());
  Client client(server.Port());
  client.Say("RQ");
  EXPECT_EQ(client.Hear(2), "1");
}

TEST(RemoteBitbangServer, ListensOnAPortOfItsOwn) {
  const RemoteBitbangServer one(OneDevice());
  const RemoteBitbangServer other(OneDevice());
  EXPECT_NE(one.Port(), other.Port());
}

}  // namespace
